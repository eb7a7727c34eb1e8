-- Tables of the wider product: the assets, which the component reads and whose meters it moves, and those that the
-- sibling library keeps for itself.

-- One asset. The chapter of an asset is the first character of its key. The last two columns are the sibling
-- library's: the last whole reading and the note that came with a reading. Their names are used bare by no statement.
CREATE TABLE Activo (
    ID_Activo TEXT PRIMARY KEY,
    Descripcion TEXT,
    Equipo_Parado INTEGER DEFAULT 0,
    ID_Grupo_Activo TEXT,
    estatus_actual INTEGER DEFAULT 0,
    sc_proyecto INTEGER,
    SC_Unidad_Lectura INTEGER,
    Acumulado_Lectura REAL DEFAULT 0,
    Ultima_Lectura REAL DEFAULT 0,
    id_localidad_fisica INTEGER,
    Activo_Lectura_Entera INTEGER,
    Activo_Nota_Lectura TEXT
);

-- One counter of keys: the last key handed out for a table, in whatever spelling it was asked for.
CREATE TABLE Clave (
    Tabla TEXT PRIMARY KEY COLLATE NOCASE,
    Ultima_Clave INTEGER DEFAULT 0
);

-- One process that work orders go through. The active one with the smallest key is put on new orders.
CREATE TABLE Proceso (
    SC_Proceso INTEGER PRIMARY KEY,
    Descripcion TEXT,
    Estatus_Valido INTEGER DEFAULT 0,
    Activo INTEGER DEFAULT 1
);

-- One work order. Origen is 0 for an order of the calendar and 1 for one of a meter.
CREATE TABLE Orden_Trabajo (
    SC_Orden_Trabajo INTEGER PRIMARY KEY,
    Descripcion TEXT,
    Fecha_Solicitud TEXT,
    Fecha_Deseada TEXT,
    Origen INTEGER DEFAULT 0,
    SC_Ejecutor_Interno INTEGER,
    Texto_Trabajo TEXT,
    SC_Usuario_Destino INTEGER,
    Prioridad INTEGER,
    ID_Activo TEXT,
    SC_Tipo_Intervencion INTEGER,
    SC_Proceso INTEGER,
    SC_Ejecutor_Externo INTEGER,
    SC_Imputacion_Sistematica INTEGER,
    SC_Gama INTEGER,
    Hombres INTEGER,
    Tiempo REAL
);

-- One line of material of a work order. Lines of one order may share their number.
CREATE TABLE Material_OT (
    SC_Material_OT INTEGER PRIMARY KEY,
    SC_Orden_Trabajo INTEGER,
    Linea INTEGER,
    Descripcion TEXT,
    Costo_Unitario NUMERIC,
    Cantidad REAL
);

-- Assets under a prefix.
CREATE INDEX Activo_Prefijo ON Activo (ID_Activo COLLATE NOCASE);
-- The materials of an order.
CREATE INDEX Material_OT_Orden ON Material_OT (SC_Orden_Trabajo);

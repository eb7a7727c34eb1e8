-- Tables that the component owns and writes. Named columns first, in the order in which the statements know them, then
-- those that only some statements need. No constraint but the primary keys: the operations store what they are given,
-- and whoever deletes a parent leaves its children.
--
-- A column whose type holds the word QUALIFIED_ONLY is meant only by a name with its table in front: a bare name in a
-- join passes it over. SQLite keeps the word and ignores it.

-- One weekly work sheet of one asset, launched from one calendar assignment.
CREATE TABLE Boletin (
    SC_Boletin INTEGER PRIMARY KEY,
    SC_Imputacion_Preventiva INTEGER,
    ID_Equipo TEXT,
    Fecha_Lanzamiento TEXT,
    Fecha_Entrega TEXT,
    Fecha_Real_Entrega TEXT,
    Lunes TEXT,
    Martes TEXT,
    Miercoles TEXT,
    Jueves TEXT,
    Viernes TEXT,
    Sabado TEXT,
    Domingo TEXT,
    Semana_Del_Ano INTEGER,
    SC_Usuario INTEGER,
    Nota TEXT,
    Estatus INTEGER DEFAULT 0,
    sc_Orden_Trabajo INTEGER,
    Boletin_En_Ejecucion INTEGER DEFAULT 0,
    Boletin_Realizado INTEGER DEFAULT 0
);

-- One document of an item of equipment. No unique key: saving gives one key to every document of the item.
CREATE TABLE Documento_Equipo (
    SC_Documento_Equipo INTEGER,
    Descripcion TEXT,
    Nombre_Documento TEXT,
    Documento_Digital INTEGER DEFAULT 0,
    Localizacion TEXT,
    ID_Equipo TEXT,
    SC_Archivo_Digital INTEGER
);

-- One item of plant, somewhere in the tree under its asset. The client gives the key.
CREATE TABLE Equipo (
    ID_Equipo TEXT PRIMARY KEY,
    Descripcion TEXT,
    Nivel INTEGER,
    Equipo_Padre TEXT,
    ID_Activo TEXT,
    Fecha_Ultimo_Mantenimiento TEXT,
    Foto TEXT,
    SC_Archivo_Digital INTEGER
);

-- One maintenance task: instructions, cost, time and crew.
CREATE TABLE Gama (
    SC_Gama INTEGER PRIMARY KEY,
    Descripcion TEXT,
    Texto_Mantenimiento TEXT,
    Equipo_Parado INTEGER DEFAULT 0,
    SC_Grupo_Gama INTEGER,
    SC_Ejecutor_Gama INTEGER,
    Numero_Gama INTEGER,
    Tipo_Gama TEXT,
    Costo_Actual NUMERIC,
    Tiempo_Necesario TEXT,
    Esquema TEXT,
    Coordinaciones TEXT,
    Seguridades TEXT,
    Materiales_Herramientas TEXT,
    SC_Contratista INTEGER,
    Hombres_Necesarios INTEGER,
    Especialista TEXT,
    SC_Archivo_Digital INTEGER,
    Frecuencia_Gama TEXT
);

-- One group of tasks. Key 0 is legal.
CREATE TABLE Grupo_Gama (
    SC_Grupo_Gama INTEGER PRIMARY KEY,
    Descripcion TEXT,
    Orden_Lista INTEGER
);

-- One trade or crew that carries tasks out.
CREATE TABLE Ejecutor_Gama (
    SC_Ejecutor_Gama INTEGER PRIMARY KEY,
    Descripcion TEXT,
    Orden_En_Lista INTEGER
);

-- One link of a user to an executor. No unique key: saving gives one key to every link of the executor.
CREATE TABLE Usuario_Ejecutor_Gama (
    SC_Usuario_Ejecutor_Gama INTEGER,
    SC_Usuario INTEGER,
    SC_Ejecutor_Gama INTEGER
);

-- One calendar assignment: a task tied to an asset with a frequency.
CREATE TABLE Imputacion_Preventiva (
    SC_Imputacion_Preventiva INTEGER PRIMARY KEY,
    ID_Activo TEXT,
    SC_Gama INTEGER,
    Fecha_Imputacion TEXT,
    Anulada INTEGER DEFAULT 0,
    SC_Usuario INTEGER,
    Frecuencia TEXT,
    Intervalo_Frecuencia INTEGER,
    Numero_Repeticion_Ciclo INTEGER,
    Acumulado_Ciclo INTEGER,
    Fecha_Inicio TEXT,
    Fecha_Ultimo_Lanzamiento TEXT,
    Fecha_Ultima_Modificacion TEXT,
    Causa_Modificacion TEXT,
    Semana INTEGER,
    Finaliza INTEGER DEFAULT 0,
    Programacion TEXT,
    Es_Sincronizada INTEGER DEFAULT 0,
    Descripcion_Breve TEXT
);

-- One meter-driven assignment: a task tied to an asset with a reading interval. Acumulado_Lectura here is only what a
-- reset writes; the reading that counts is the asset's.
CREATE TABLE Imputacion_Sistematica (
    SC_Imputacion_Sistematica INTEGER PRIMARY KEY,
    ID_Activo TEXT,
    SC_Gama INTEGER,
    Fecha_Imputacion TEXT,
    Anulada INTEGER DEFAULT 0,
    SC_Usuario INTEGER,
    Fecha_Inicio TEXT,
    Fecha_Fin TEXT,
    Aproximacion_Lectura INTEGER,
    Fecha_Ultima_Modificacion TEXT,
    Causa_Modificacion TEXT,
    Lectura_Limite INTEGER,
    Ultimo_Acumulado INTEGER,
    Fecha_Ultimo_Lanzamiento TEXT,
    SC_Unidad_Lectura INTEGER QUALIFIED_ONLY,
    ID_Equipo TEXT,
    Acumulado_Lectura REAL QUALIFIED_ONLY DEFAULT 0,
    Finaliza INTEGER DEFAULT 0
);

-- One directed link from a meter-driven assignment to another that is reset with it.
CREATE TABLE Imputacion_Paralela (
    SC_Imputacion_Paralela INTEGER PRIMARY KEY,
    SC_Imputacion_Sistematica INTEGER,
    SC_Paralela INTEGER
);

-- One meter reading of an asset. The order of keys is the order of entry.
CREATE TABLE Lectura_Equipo (
    SC_Lectura INTEGER PRIMARY KEY,
    Fecha TEXT,
    ID_Equipo TEXT,
    SC_Unidad_Lectura INTEGER,
    Valor_Real REAL,
    Lectura REAL,
    Lectura_Anterior REAL,
    Combustible_Consumido REAL,
    Nota TEXT,
    Departamento_A_Quien_Se_Carga TEXT,
    Valor_Del_Vale_Salida NUMERIC,
    Numero_Vale TEXT
);

-- One work order that a launch created. SC_Imputacion is written by saving alone.
CREATE TABLE Orden_Generada (
    SC_Orden_Generada INTEGER PRIMARY KEY,
    SC_Orden_Trabajo INTEGER,
    SC_Imputacion_Sistematica INTEGER,
    Fecha_Generacion TEXT,
    SC_Imputacion INTEGER
);

-- One unit in which meters are read. Key 0 is legal.
CREATE TABLE Unidad_Lectura (
    SC_Unidad_Lectura INTEGER PRIMARY KEY,
    Descripcion TEXT
);

-- One line of the materials that a task needs.
CREATE TABLE materiales_gama (
    sc_materiales_gama INTEGER PRIMARY KEY,
    Descripcion TEXT,
    Costo_Unitario NUMERIC,
    Cantidad_Necesaria REAL,
    sc_gama INTEGER,
    item INTEGER
);

-- A new assignment is read in its asset's unit, so that the list of parallels finds it. A unit once set stays.
CREATE TRIGGER Imputacion_Sistematica_Unidad
AFTER INSERT ON Imputacion_Sistematica
WHEN NEW.SC_Unidad_Lectura IS NULL
BEGIN
    UPDATE Imputacion_Sistematica
    SET SC_Unidad_Lectura = (SELECT Activo.SC_Unidad_Lectura FROM Activo WHERE Activo.ID_Activo = NEW.ID_Activo)
    WHERE SC_Imputacion_Sistematica = NEW.SC_Imputacion_Sistematica;
END;

-- Indexes for what a launch and an overdue question select. None of them holds Fecha_Inicio and none leads on a flag:
-- a launch walks the assignments by their key, and so it is repeatable.

-- The assignments of one asset, by its exact key.
CREATE INDEX Imputacion_Preventiva_Activo ON Imputacion_Preventiva (ID_Activo);
CREATE INDEX Imputacion_Sistematica_Activo ON Imputacion_Sistematica (ID_Activo);
-- The assignments of all assets under a prefix: LIKE ignores case, so only an index that does too can serve it.
CREATE INDEX Imputacion_Preventiva_Prefijo ON Imputacion_Preventiva (ID_Activo COLLATE NOCASE);
CREATE INDEX Imputacion_Sistematica_Prefijo ON Imputacion_Sistematica (ID_Activo COLLATE NOCASE);
-- The materials of a task, copied onto each order.
CREATE INDEX materiales_gama_Gama ON materiales_gama (sc_gama);
-- Parallels of an assignment, reset after its launch.
CREATE INDEX Imputacion_Paralela_Imputacion ON Imputacion_Paralela (SC_Imputacion_Sistematica);
-- The readings of one asset, the newest by key.
CREATE INDEX Lectura_Equipo_Equipo ON Lectura_Equipo (ID_Equipo);
-- Keys that are no primary key: each is looked up, and its largest value asked for.
CREATE INDEX Documento_Equipo_Clave ON Documento_Equipo (SC_Documento_Equipo);
CREATE INDEX Usuario_Ejecutor_Gama_Clave ON Usuario_Ejecutor_Gama (SC_Usuario_Ejecutor_Gama);

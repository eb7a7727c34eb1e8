// The VBScript client's session, in JScript. Its arguments are by value, so nothing comes back in them, and its dates
// are texts.

function escaped(text) {
    var made = "";
    for (var i = 0; i < text.length; ++i) {
        var code = text.charCodeAt(i);
        made += code < 32 || code > 126 ? "\\u" + ("000" + code.toString(16)).slice(-4) : text.charAt(i);
    }
    return made;
}

function shown(value) {
    if (value === null) return "null";
    if (value === undefined) return "empty";
    return typeof value === "string" ? '"' + escaped(value) + '"' : String(value);
}

function tell(label, value) { WScript.Echo(label + " = " + shown(value)); }

// What holds for this language alone: silent as long as it does.
function expect(label, actual, expected) {
    if (actual !== expected) WScript.Echo("FAILED " + label + ": " + actual + " instead of " + expected);
}

function tellRows(label, rows, columns) {
    tell(label, rows.TotalRegistros);
    for (rows.MoverPrimero(); !rows.FinDeDatos; rows.MoverSiguiente()) {
        var line = "";
        for (var i = 0; i < columns.length; ++i) line += " " + shown(rows.Campos.Item(columns[i]).Valor);
        WScript.Echo(" " + line);
    }
}

function tellNotices(label, list) {
    tell(label, list.Total);
    for (var i = 1; i <= list.Total; ++i) WScript.Echo("  " + escaped(list.Elemento(i)));
}

// The report's second line tells time, program and computer.
function tellReport(description) {
    var lines = description.split("\r\n");
    for (var i = 0; i < lines.length; ++i) {
        if (i !== 1) WScript.Echo("  " + escaped(lines[i]));
    }
}

// A run-time error's number comes with 0x800A0000.
function numberOf(number) { return (number & 0xFFFF0000) === (0x800A0000 | 0) ? number & 0xFFFF : number; }

function failure(work) {
    try {
        work();
    } catch (error) {
        return error;
    }
    return { number: 0, description: "" };
}

function tellError(label, work) {
    var error = failure(work);
    tell(label, numberOf(error.number));
    tellReport(error.description);
}

var session = new ActiveXObject("Perluma.SesionGlobal");
session.Abrir(":memory:", true, true);
tell("open", session.EstaAbierta);
var facade = new ActiveXObject("Zontara.CGlobalPreventivo");
expect("one object a property", facade.Boletin === facade.Boletin, true);

// The catalogue. The last character lies beyond the basic plane.
var unit = facade.UnidadLectura.Nuevo("Kil\u00f3metros N\u00ba 5 \ud83d\ude00");
var group = facade.GrupoGama.Nuevo("Lubricaci\u00f3n", 1);
var executor = facade.EjecutorGama.Nuevo("Mec\u00e1nicos", 1);
var task = facade.Gama.Nuevo("Cambio de aceite", "Vaciar, filtro, llenar.", 1, group, executor, 1, "P", 40.5, "1.5", "", "",
    "Bloquear el motor", "", 0, 2, "", "cada 250 h");
tellRows("units", facade.UnidadLectura.Seleccionar(), ["SC_Unidad_Lectura", "Descripcion"]);
var materials = facade.MaterialGama;
materials.AgregarItem(1, "Aceite, litro", 8.1, 5, task);
tell("cost", materials.CostoTotalMaterialesGama(task));

// Assets: null and the empty text are told apart.
session.Ejecutar("INSERT INTO Activo (ID_Activo, Descripcion, ID_Grupo_Activo, SC_Unidad_Lectura) VALUES " +
    "('P-100', 'Bomba N\u00ba 1', '', 1), ('P-200', NULL, 'G', 1)");
tellRows("assets", session.Consultar("SELECT ID_Activo, Descripcion, ID_Grupo_Activo, Acumulado_Lectura FROM Activo"),
    ["ID_Activo", "Descripcion", "ID_Grupo_Activo", "Acumulado_Lectura"]);

// Two synchronised assignments and a conventional one, a launch into bulletins and one into work orders.
var calendar = facade.ImputacionPreventiva;
var other = new ActiveXObject("Zontara.CImputacionPreventiva");
calendar.OTPreventivaGenerada = other.OTPreventivaGenerada;
tell("first", calendar.Nuevo("P-100", task, "2026-03-01", 0, 7, "Semanal", 1, 0, 0, "2026-03-01", "2026-02-26", "", "", 9, 0,
    "", true, "aceite"));
tell("second", calendar.Nuevo("P-200", task, "2026-03-01", 0, 7, "Diaria", 1, 0, 0, "2026-03-01", "2026-02-26", "", "", 9, 0,
    "", true, "aceite"));
tell("third", calendar.Nuevo("P-200", task, "2026-03-01", 0, 7, "Semanal", 1, 0, 0, "2026-01-01", "2026-01-01", "", "", 0, 0,
    "1", false, "filtro"));
tell("launched", calendar.LanzarPreventivo("2026-03-05", 7, "Breve"));
tellRows("bulletins", session.Consultar("SELECT * FROM Boletin"),
    ["SC_Boletin", "SC_Imputacion_Preventiva", "Fecha_Lanzamiento", "Semana_Del_Ano", "Nota"]);
var orders = new ActiveXObject("Zontara.CConfiguracionOTBoletin");
orders.CodigoEjecutorOT = executor;
orders.EsEjecutorExterno = false;
orders.PrioridadSolicitada = 2;
tell("launched into orders", calendar.LanzarPreventivoConvensional("2026-03-05", 7, "Breve", orders));
tellRows("orders", session.Consultar("SELECT * FROM Orden_Trabajo"),
    ["SC_Orden_Trabajo", "ID_Activo", "Descripcion", "Prioridad", "Hombres", "Tiempo"]);
tellNotices("catalogue notices", calendar.CatalogoModificado);
tellNotices("launch notices", other.OTPreventivaGenerada);

// A meter reading, and the question.
var readings = facade.LecturaEquipo;
tell("reading", readings.Nuevo("2026-03-05", "P-100", 1, 260, 260, 0, 0.5, "", "", 12.3456, ""));
tell("readings", readings.ObtenerLecturas("2026-03-01", "2026-03-31", "0").TotalRegistros);
tell("overdue", facade.ElActivoTieneMantenimientoVencido("P-100", "2026-04-01"));

// Errors, with the number and the report that the component raised.
tellError("refused statement", function () { calendar.SeleccionarTodos(""); });
tellError("unknown column", function () { readings.ObtenerLecturas("2026-03-01", "2026-03-31", "", 0, 0, "Nada"); });
tellError("nothing to end", function () { facade.TerminarTransaccion(); });
expect("what isn't a number", numberOf(failure(function () { facade.GrupoGama.Borrar("x"); }).number), 13);
expect("no such member", numberOf(failure(function () { facade.GrupoGama.Nada(); }).number), 438);

facade.IniciarTransaccion();
facade.GrupoGama.Nuevo("Se va", 2);
tell("depth", session.ProfundidadTransaccion);
facade.AbortarTransaccion();
tellRows("groups", facade.GrupoGama.Seleccionar(), ["SC_Grupo_Gama", "Descripcion"]);

tellNotices("trace", session.Traza);
session.Cerrar();

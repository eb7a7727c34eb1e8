"""The clients' session on this system, through the scripting bridge of `zontara`: what they have to see."""

import json
import subprocess
import sys


class Bridge:
    def __init__(self, program):
        self.process = subprocess.Popen([program, "rpc", ":memory:", "--create", "--trace"], stdin=subprocess.PIPE,
                                        stdout=subprocess.PIPE, encoding="utf-8")
        self.traced = []

    def request(self, method, **params):
        """The result, or the error's object."""
        request = {"jsonrpc": "2.0", "id": 1, "method": method, "params": params}
        print(json.dumps(request), file=self.process.stdin, flush=True)
        answer = json.loads(self.process.stdout.readline())
        outcome = answer["result"] if "result" in answer else answer["error"]
        told = outcome.get("data", outcome) if "error" in answer else outcome
        if isinstance(told, dict):
            self.traced += told.get("trace", [])
        return outcome

    def create(self, name):
        return self.request("create", **{"class": name})["object"]

    def get(self, handle, member):
        value = self.request("invoke", object=handle, member=member)["value"]
        return value["object"] if isinstance(value, dict) else value

    def call(self, handle, member, *args):
        return self.request("invoke", object=handle, member=member, args=list(args))["value"]

    def query(self, sql):
        return self.request("query", sql=sql)


def trace_line(entry):
    if "sql" in entry:
        return "sql " + entry["sql"]
    if "transaction" in entry:
        return entry["transaction"]
    if "key" in entry:
        return f"key {entry['key']} {entry['value']}"
    if "service" in entry:
        return "service " + entry["service"]
    if "event" in entry:
        return f"event {entry['event']} {entry['args'][0]}"
    return "notice " + entry["notice"]


def escaped(text):
    units = text.encode("utf-16-be")
    codes = [int.from_bytes(units[i:i + 2], "big") for i in range(0, len(units), 2)]
    return "".join(f"\\u{code:04x}" if code < 32 or code > 126 else chr(code) for code in codes)


def shown(value):
    if isinstance(value, str):
        return f'"{escaped(value)}"'
    if isinstance(value, float) and value.is_integer():
        return str(int(value))
    return json.dumps(value)


def tell(label, value):
    print(f"{label} = {shown(value)}")


def tell_rows(label, answer, columns):
    recordset = answer["recordset"]
    tell(label, len(recordset["rows"]))
    places = [recordset["columns"].index(column) for column in columns.split(",")]
    for row in recordset["rows"]:
        print(" ", *(shown(row[place]) for place in places))


def tell_notices(label, notices):
    tell(label, len(notices))
    for notice in notices:
        print("  " + escaped(notice))


def tell_error(label, error):
    tell(label, error["code"])
    for number, line in enumerate(error["message"].split("\r\n")):
        if number != 1:
            print("  " + escaped(line))


def main():
    z = Bridge(sys.argv[1])
    tell("open", True)
    facade = z.create("CGlobalPreventivo")
    units, groups = z.get(facade, "UnidadLectura"), z.get(facade, "GrupoGama")
    z.call(units, "Nuevo", "Kilómetros Nº 5 😀")
    group = z.call(groups, "Nuevo", "Lubricación", 1)
    executor = z.call(z.get(facade, "EjecutorGama"), "Nuevo", "Mecánicos", 1)
    task = z.call(z.get(facade, "Gama"), "Nuevo", "Cambio de aceite", "Vaciar, filtro, llenar.", 1, group, executor, 1, "P",
                  40.5, "1.5", "", "", "Bloquear el motor", "", 0, 2, "", "cada 250 h")
    tell_rows("units", z.call(units, "Seleccionar"), "SC_Unidad_Lectura,Descripcion")
    materials = z.get(facade, "MaterialGama")
    z.call(materials, "AgregarItem", 1, "Aceite, litro", 8.1, 5, task)
    tell("cost", z.call(materials, "CostoTotalMaterialesGama", task))

    z.request("execute", sql="INSERT INTO Activo (ID_Activo, Descripcion, ID_Grupo_Activo, SC_Unidad_Lectura) VALUES "
              "('P-100', 'Bomba Nº 1', '', 1), ('P-200', NULL, 'G', 1)")
    tell_rows("assets", z.query("SELECT ID_Activo, Descripcion, ID_Grupo_Activo, Acumulado_Lectura FROM Activo"),
              "ID_Activo,Descripcion,ID_Grupo_Activo,Acumulado_Lectura")

    calendar = z.get(facade, "ImputacionPreventiva")
    other = z.create("CImputacionPreventiva")
    launches = z.get(other, "OTPreventivaGenerada")
    z.request("set", object=calendar, member="OTPreventivaGenerada", value={"object": launches})
    tell("first", z.call(calendar, "Nuevo", "P-100", task, "2026-03-01", 0, 7, "Semanal", 1, 0, 0, "2026-03-01",
                         "2026-02-26", "", "", 9, 0, "", True, "aceite"))
    tell("second", z.call(calendar, "Nuevo", "P-200", task, "2026-03-01", 0, 7, "Diaria", 1, 0, 0, "2026-03-01",
                          "2026-02-26", "", "", 9, 0, "", True, "aceite"))
    tell("third", z.call(calendar, "Nuevo", "P-200", task, "2026-03-01", 0, 7, "Semanal", 1, 0, 0, "2026-01-01",
                         "2026-01-01", "", "", 0, 0, "1", False, "filtro"))
    tell("launched", z.call(calendar, "LanzarPreventivo", "2026-03-05", 7, "Breve"))
    tell_rows("bulletins", z.query("SELECT * FROM Boletin"),
              "SC_Boletin,SC_Imputacion_Preventiva,Fecha_Lanzamiento,Semana_Del_Ano,Nota")
    orders = z.create("CConfiguracionOTBoletin")
    for member, value in (("CodigoEjecutorOT", executor), ("EsEjecutorExterno", False), ("PrioridadSolicitada", 2)):
        z.request("set", object=orders, member=member, value=value)
    tell("launched into orders",
         z.call(calendar, "LanzarPreventivoConvensional", "2026-03-05", 7, "Breve", {"object": orders}))
    tell_rows("orders", z.query("SELECT * FROM Orden_Trabajo"),
              "SC_Orden_Trabajo,ID_Activo,Descripcion,Prioridad,Hombres,Tiempo")
    tell_notices("catalogue notices", z.call(calendar, "CatalogoModificado")["list"])
    tell_notices("launch notices", z.call(other, "OTPreventivaGenerada")["list"])

    readings = z.get(facade, "LecturaEquipo")
    tell("reading", z.call(readings, "Nuevo", "2026-03-05", "P-100", 1, 260, 260, 0, 0.5, "", "", 12.3456, ""))
    found = z.call(readings, "ObtenerLecturas", "2026-03-01", "2026-03-31", "0")
    tell("readings", len(found["recordset"]["rows"]))
    tell("overdue", z.call(facade, "ElActivoTieneMantenimientoVencido", "P-100", "2026-04-01"))

    tell_error("refused statement", z.request("invoke", object=calendar, member="SeleccionarTodos", args=[""]))
    tell_error("unknown column", z.request("invoke", object=readings, member="ObtenerLecturas",
                                           args=["2026-03-01", "2026-03-31", "", 0, 0, "Nada"]))
    tell_error("nothing to end", z.request("invoke", object=facade, member="TerminarTransaccion"))

    z.call(facade, "IniciarTransaccion")
    z.call(groups, "Nuevo", "Se va", 2)
    tell("depth", z.request("session")["depth"])
    z.call(facade, "AbortarTransaccion")
    tell_rows("groups", z.call(groups, "Seleccionar"), "SC_Grupo_Gama,Descripcion")

    tell_notices("trace", [trace_line(entry) for entry in z.traced])


main()

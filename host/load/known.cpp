#include "host/load/known.h"

namespace host::load {

namespace {

void Read(dhRichClient3::Connection& database, std::string_view sql, Codes& codes) {
    auto rows = database.Prepare(sql);
    while (rows.Step())
        codes.Add(rows.Text(0), rows.Int(1));
}

}  // namespace

std::string AssignmentCode(std::initializer_list<std::string> parts) {
    std::string code;
    for (const std::string& part : parts)
        code += part + '\n';
    return code;
}

Known ReadKnown(dhRichClient3::Connection& database) {
    Known known;
    Read(database, "SELECT Descripcion, SC_Grupo_Gama FROM Grupo_Gama", known.groups);
    Read(database, "SELECT Descripcion, SC_Ejecutor_Gama FROM Ejecutor_Gama", known.executors);
    Read(database, "SELECT Descripcion, SC_Unidad_Lectura FROM Unidad_Lectura", known.units);
    Read(database, "SELECT Descripcion, SC_Proceso FROM Proceso", known.processes);
    Read(database, "SELECT Numero_Gama, SC_Gama FROM Gama", known.tasks);
    Read(database, "SELECT ID_Equipo, 0 FROM Equipo", known.equipment);

    auto assets = database.Prepare("SELECT ID_Activo, SC_Unidad_Lectura, Ultima_Lectura FROM Activo");
    while (assets.Step()) {
        known.assets.Add(assets.Text(0), assets.Int(1));
        known.lastReadings[assets.Text(0)] = static_cast<float>(assets.Real(2));
    }
    auto calendar = database.Prepare(
        "SELECT i.ID_Activo, g.Numero_Gama, i.Es_Sincronizada, i.Frecuencia, i.SC_Imputacion_Preventiva"
        " FROM Imputacion_Preventiva i JOIN Gama g ON g.SC_Gama = i.SC_Gama WHERE i.Anulada = 0");
    while (calendar.Step()) {
        known.calendar.Add(AssignmentCode({calendar.Text(0), calendar.Text(1), calendar.Text(2), calendar.Text(3)}),
                           calendar.Int(4));
    }
    auto meter = database.Prepare(
        "SELECT i.ID_Activo, g.Numero_Gama, i.SC_Imputacion_Sistematica"
        " FROM Imputacion_Sistematica i JOIN Gama g ON g.SC_Gama = i.SC_Gama");
    while (meter.Step())
        known.meter.Add(AssignmentCode({meter.Text(0), meter.Text(1)}), meter.Int(2));
    return known;
}

}  // namespace host::load

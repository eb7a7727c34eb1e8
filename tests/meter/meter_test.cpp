#include "tests/meter/meter_test.h"

#include <algorithm>

using namespace Zontara;

namespace support {

MeterTest::MeterTest() {
    world.Run(
        "INSERT INTO Unidad_Lectura (SC_Unidad_Lectura, Descripcion) VALUES (1, 'km'), (2, 'h');"
        "INSERT INTO Grupo_Gama (SC_Grupo_Gama, Descripcion) VALUES (5, 'Motor');"
        "INSERT INTO Ejecutor_Gama (SC_Ejecutor_Gama, Descripcion) VALUES (4, 'Taller');"
        "INSERT INTO Gama (SC_Gama, Numero_Gama, Descripcion, SC_Grupo_Gama, SC_Ejecutor_Gama, Hombres_Necesarios)"
        " VALUES (30, 3, 'Aceite', 5, 4, 1), (31, 8, 'Filtro', 5, 4, 1);"
        "INSERT INTO Proceso (SC_Proceso, Descripcion, Estatus_Valido, Activo) VALUES (6, 'Normal', 2, 1);");
}

void MeterTest::AddAsset(const std::string& key, const std::string& accumulated, const std::string& last) {
    world.Run(
        "INSERT INTO Activo (ID_Activo, Descripcion, SC_Unidad_Lectura, Acumulado_Lectura, Ultima_Lectura)"
        " VALUES ('" +
        key + "', 'Activo " + key + "', 1, " + accumulated + ", " + last + ")");
}

void MeterTest::AddAssignment(const Assignment& a) {
    world.Run(
        "INSERT INTO Imputacion_Sistematica (SC_Imputacion_Sistematica, ID_Activo, SC_Gama, Lectura_Limite,"
        " Ultimo_Acumulado, Aproximacion_Lectura, Anulada, Fecha_Inicio) VALUES (" +
        std::to_string(a.key) + ", '" + a.asset + "', " + std::to_string(a.task) + ", " + std::to_string(a.limit) +
        ", " + std::to_string(a.reference) + ", " + std::to_string(a.approximation) + ", " +
        std::to_string(a.annulled) + ", '2026-01-01')");
}

void MeterTest::AddMaterials() {
    world.Run(
        "INSERT INTO materiales_gama (sc_materiales_gama, Descripcion, Costo_Unitario, Cantidad_Necesaria,"
        " sc_gama, item) VALUES (1, 'Aceite', 2.5, 10, 30, 1), (2, 'Filtro', 3, 1, 30, 2);"
        "UPDATE Gama SET Hombres_Necesarios = 2, Tiempo_Necesario = '1.5' WHERE SC_Gama = 30");
}

std::string MeterTest::Reference(int key) {
    return world.Scalar("SELECT Ultimo_Acumulado FROM Imputacion_Sistematica WHERE SC_Imputacion_Sistematica = " +
                        std::to_string(key));
}

std::string MeterTest::Accumulated(const std::string& asset) {
    return world.Scalar("SELECT printf('%g', Acumulado_Lectura) FROM Activo WHERE ID_Activo = '" + asset + "'");
}

std::vector<std::string> MeterTest::Stored() {
    std::vector<std::string> all;
    for (const char* table : {"Activo", "Imputacion_Sistematica", "Imputacion_Paralela", "Orden_Generada",
                              "Orden_Trabajo", "Material_OT"}) {
        all.push_back(table);
        const std::vector<std::string> rows = world.Rows("SELECT * FROM " + std::string(table) + " ORDER BY 1");
        all.insert(all.end(), rows.begin(), rows.end());
    }
    return all;
}

std::vector<int> MeterTest::Notices() {
    return {imputaciones->ActivoReprogramado()->Total(), imputaciones->OrdenesSistematicasGeneradas()->Total(),
            imputaciones->CatalogoModificado()->Total()};
}

std::vector<std::string> MeterTest::Column(const Ref<Recordset>& rs, const std::string& field) {
    std::vector<std::string> values;
    for (rs->MoverPrimero(); !rs->FinDeDatos(); rs->MoverSiguiente())
        values.push_back(ToText(rs->Valor(field)));
    return values;
}

std::vector<std::string> CallsOf(const ErrorRecord& error) {
    const std::string start = "Call Stack: ";
    std::vector<std::string> calls;
    for (const std::string& line : CallStackOf(error.description)) {
        const std::size_t at = line.find(start);
        const std::string call = at == std::string::npos ? line : line.substr(at + start.size());
        calls.push_back(call.substr(0, call.rfind(')') + 1));
    }
    return calls;
}

}  // namespace support

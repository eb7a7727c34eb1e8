#include "tests/faults/plant.h"

#include "bulletins/CConfiguracionOTBoletin.h"
#include "calendar/CImputacionPreventiva.h"
#include "frame/convert.h"
#include "frame/creation.h"
#include "meter/CImputacionSistematica.h"
#include "schema/create.h"

namespace faults {

using dhRichClient3::Connection;
using Zontara::Create;
using Zontara::Ref;

namespace {

constexpr const char* kCatalogue = R"(
INSERT INTO Unidad_Lectura VALUES (1, 'h');
INSERT INTO Grupo_Gama VALUES (1, 'Bombas', 1);
INSERT INTO Ejecutor_Gama VALUES (1, 'Taller', 1);
INSERT INTO Proceso (SC_Proceso, Descripcion, Estatus_Valido) VALUES (1, 'Preventivo', 1);
INSERT INTO Gama (SC_Gama, Descripcion, SC_Grupo_Gama, SC_Ejecutor_Gama, Numero_Gama, Tiempo_Necesario,
    Hombres_Necesarios) VALUES (1, 'Engrase', 1, 1, 7, '1.5', 2);
INSERT INTO materiales_gama VALUES (1, 'Grasa', 9.8, 0.5, 1, 1), (2, 'Trapo', 0.25, 4, 1, 2);
)";

/// Inserts one row for each number `i` of the plant's.
std::string ForEach(const std::string& insert, const std::string& values, int count) {
    return "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < " + std::to_string(count) +
           ") INSERT INTO " + insert + " SELECT " + values + " FROM n;";
}

/// The asset of the assignment `i`, of which an asset has so many.
std::string AssetOf(int each) { return "printf('P-%05d', (i - 1) / " + std::to_string(each) + " + 1)"; }

constexpr const char* kCalendarColumns =
    "Imputacion_Preventiva (ID_Activo, SC_Gama, Frecuencia, Intervalo_Frecuencia, Numero_Repeticion_Ciclo,"
    " Acumulado_Ciclo, Fecha_Inicio, Fecha_Ultimo_Lanzamiento, Semana, Finaliza, Programacion, Es_Sincronizada)";

Ref<Zontara::CConfiguracionOTBoletin> Configuration(Paper paper) {
    return paper == Paper::Orders ? Create<Zontara::CConfiguracionOTBoletin>() : nullptr;
}

}  // namespace

void MakePlant(const std::string& path, int assets) {
    dhRichClient3::Options options;
    options.mode = dhRichClient3::Options::Mode::Create;
    const auto connection = Connection::Open(path, options);
    schema::Create(*connection);
    connection->IniciarTrans("");
    connection->RunScript(kCatalogue);
    connection->RunScript(ForEach("Activo (ID_Activo, Descripcion, SC_Unidad_Lectura, Acumulado_Lectura)",
                                  AssetOf(1) + ", 'Bomba ' || i, 1, 1000", assets));
    connection->RunScript(
        ForEach(kCalendarColumns,
                AssetOf(kSynchronised) + ", 1, 'Semanal', 1, 3, 0, '2026-01-01', '2026-02-23', 9, i % 2, '', 1",
                kSynchronised * assets));
    connection->RunScript(ForEach(kCalendarColumns,
                                  AssetOf(kConventional) + ", 1, 'Mensual', 1, 0, 0, '2026-01-01', '2026-01-05', 1, 0, "
                                                           "'1', 0",
                                  kConventional * assets));
    connection->RunScript(
        ForEach("Imputacion_Sistematica (ID_Activo, SC_Gama, Lectura_Limite, Ultimo_Acumulado, Fecha_Inicio)",
                AssetOf(kMeter) + ", 1, 500, 0, '2026-01-01'", kMeter * assets));
    connection->ConfirmarTrans("");
}

Session::Session(const std::string& path, const dhRichClient3::Options& options)
    : Session(Connection::Open(path, options)) {}

Session::Session(Ref<Connection> connection) : connection_(std::move(connection)), world_(connection_) {
    world_.Platform().now = support::World::Day("2026-03-02 08:00:00");
}

int Session::LaunchSynchronised(Paper paper) {
    return Create<Zontara::CImputacionPreventiva>()->LanzarPreventivo(support::World::Day("2026-03-02"), 7, "",
                                                                      Configuration(paper));
}

int Session::LaunchConventional(Paper paper) {
    return Create<Zontara::CImputacionPreventiva>()->LanzarPreventivoConvensional(support::World::Day("2026-03-02"), 7,
                                                                                  "", Configuration(paper));
}

void Session::LaunchMeter() {
    Create<Zontara::CImputacionSistematica>()->GenerarOTSSistematicas(support::World::Day("2026-03-02"),
                                                                      Configuration(Paper::Orders));
}

void Session::LaunchCalendar(Paper synchronised) {
    LaunchSynchronised(synchronised);
    LaunchConventional(synchronised == Paper::Orders ? Paper::Bulletins : Paper::Orders);
}

void Session::LaunchAll(Paper synchronised) {
    LaunchCalendar(synchronised);
    LaunchMeter();
}

std::vector<std::string> Rows(Connection& database, const std::string& sql) {
    auto query = database.Prepare(sql);
    std::vector<std::string> rows;
    while (query.Step()) {
        std::string row;
        for (int i = 0; i < query.ColumnCount(); ++i)
            row += (i > 0 ? "|" : "") + (query.IsNull(i) ? "NULL" : query.Text(i));
        rows.push_back(std::move(row));
    }
    return rows;
}

std::string Scalar(Connection& database, const std::string& sql) {
    const std::vector<std::string> rows = Rows(database, sql);
    return rows.empty() ? std::string() : rows.front();
}

std::vector<std::string> Contents(Connection& database) {
    std::vector<std::string> contents;
    for (const std::string& table : schema::Tables()) {
        for (std::string& row : Rows(database, "SELECT '" + table + "', rowid, * FROM " + table + " ORDER BY rowid"))
            contents.push_back(std::move(row));
    }
    return contents;
}

std::vector<std::string> TablesWithSharedKeys(Connection& database) {
    std::vector<std::string> found;
    for (const std::string& table : schema::Tables()) {
        if (table == "Documento_Equipo" || table == "Usuario_Ejecutor_Gama") continue;
        const std::string key =
            Scalar(database, "SELECT name FROM pragma_table_info('" + table + "') ORDER BY pk <> 1, cid LIMIT 1");
        if (Scalar(database, "SELECT count(*) = count(DISTINCT " + key + ") FROM " + table) != "1")
            found.push_back(table);
    }
    return found;
}

}  // namespace faults

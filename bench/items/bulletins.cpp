#include "bench/items/compared.h"
#include "bench/items/items.h"
#include "bench/items/streams.h"
#include "bench/plant.h"
#include "calendar/CImputacionPreventiva.h"

#include <SQLiteCpp/SQLiteCpp.h>

#include <string>
#include <vector>

namespace bench {

namespace {

constexpr char kMakeDue[] =
    "UPDATE Imputacion_Preventiva SET Semana = 9, Fecha_Ultimo_Lanzamiento = '2026-02-23'; DELETE FROM Boletin";

/// The launch as a program writes it that makes a text for each statement and gives it to a wrapper of the engine.
int LaunchWithTexts(SQLite::Database& database) {
    struct Row {
        int key;
        std::string asset;
        std::string frequency;
        int week;
        int interval;
    };
    std::vector<Row> rows;
    SQLite::Statement select(database, kSelectActive);
    while (select.executeStep()) {
        rows.push_back({select.getColumn(0).getInt(), select.getColumn(1).getString(), select.getColumn(2).getString(),
                        select.getColumn(3).getInt(), select.getColumn(4).getInt()});
    }
    SQLite::Transaction transaction(database, SQLite::TransactionBehavior::IMMEDIATE);
    int bulletins = 0;
    for (const Row& row : rows) {
        if (row.frequency != "Semanal" || row.week == 10 || row.interval > 1) continue;
        SQLite::Statement key(
            database,
            "INSERT INTO Clave (Tabla, Ultima_Clave) VALUES ('Boletin', 1)"
            " ON CONFLICT (Tabla) DO UPDATE SET Ultima_Clave = Ultima_Clave + 1 RETURNING Ultima_Clave");
        key.executeStep();
        const std::string next = std::to_string(key.getColumn(0).getInt());
        key.executeStep();
        database.exec(
            "INSERT INTO Boletin (SC_Boletin, SC_Imputacion_Preventiva, ID_Equipo, Fecha_Lanzamiento, Fecha_Entrega,"
            " Fecha_Real_Entrega, Lunes, Martes, Miercoles, Jueves, Viernes, Sabado, Domingo, Semana_Del_Ano, "
            "SC_Usuario)"
            " VALUES (" +
            next + "," + std::to_string(row.key) + ",'" + row.asset +
            "','2026-03-02','2026-03-09','2026-03-02','','','','','','','',10,7)");
        database.exec(
            "UPDATE Imputacion_Preventiva SET Fecha_Ultimo_Lanzamiento = '2026-03-02', Semana = 10"
            " WHERE SC_Imputacion_Preventiva = " +
            std::to_string(row.key));
        ++bulletins;
    }
    transaction.commit();
    return bulletins;
}

void MeasureWhere(Component::Where where, const Scale& scale, Table& table) {
    const int rows = scale.Rows(100'000);
    const bool onFile = where == Component::Where::OnFile;
    const std::string place = PlaceOf(where);
    Progress(std::to_string(rows) + " bulletins" + place);
    const Plant plant("bulletins");
    plant.AddWeekly(rows);
    const Component component(plant.Path(), where);
    const Database bound = onFile ? Database::OnFile(plant.Path()) : Database::InMemory(plant.Path());
    constexpr auto kLocked = Database::Threads::Locked;
    const Database locked =
        onFile ? Database::OnFile(plant.Path(), kLocked) : Database::InMemory(plant.Path(), kLocked);
    SQLite::Database texts(onFile ? plant.Path() : ":memory:", SQLite::OPEN_READWRITE);
    if (onFile) {
        texts.exec("PRAGMA synchronous = FULL");
    } else {
        texts.backup(plant.Path().c_str(), SQLite::Database::Load);
        texts.exec("PRAGMA journal_mode = MEMORY");
    }
    // On a file by a connection of its own, so that no side begins with a page cache that the others lack.
    const Database other = Database::OnFile(plant.Path());
    const auto reset = [&](auto alone) {
        return [&other, alone, onFile] {
            if (onFile) {
                other.Run(kMakeDue);
            } else {
                alone();
            }
        };
    };
    Zontara::CImputacionPreventiva calendar;
    const auto times = Alternate(
        scale.rounds,
        {{reset([&] { component.Connection().RunScript(kMakeDue); }),
          [&] { Require(calendar.LanzarPreventivo(LaunchDay(), 7, "Breve") == rows, "a bulletin for each row"); }},
         {reset([&] { bound.Run(kMakeDue); }),
          [&] { Require(LaunchBulletins(bound, Keys::Way::ByStatement) == rows, "a bulletin for each row"); }},
         {reset([&] { bound.Run(kMakeDue); }),
          [&] { Require(LaunchBulletins(bound, Keys::Way::InMemory) == rows, "a bulletin for each row"); }},
         {reset([&] { texts.exec(kMakeDue); }),
          [&] { Require(LaunchWithTexts(texts) == rows, "a bulletin for each row"); }},
         {reset([&] { locked.Run(kMakeDue); }),
          [&] { Require(LaunchBulletins(locked, Keys::Way::ByStatement) == rows, "a bulletin for each row"); }}});
    const std::string what = "LanzarPreventivo, " + std::to_string(rows) + " bulletins" + place;
    table.AddRatio("1", what + " : bound by hand", times[0], times[1], 1.15);
    table.AddRatio("1", what + " : the same with a mutex", times[0], times[4], 0);
    table.AddRatio("1", what + " : the same, keys in memory too", times[0], times[2], 0);
    table.AddRatio("1", "SQLiteCpp, a text per statement" + place + " : component", times[3], times[0], 2, true);
}

}  // namespace

Times CompareBulletins(Component::Where where, int rows, int rounds) {
    const Plant plant("bulletins");
    plant.AddWeekly(rows);
    const Pair pair(plant.Path(), where);
    Zontara::CImputacionPreventiva calendar;
    const auto times = Alternate(
        rounds,
        {{[&] { pair.component.Connection().RunScript(kMakeDue); },
          [&] { Require(calendar.LanzarPreventivo(LaunchDay(), 7, "Breve") == rows, "a bulletin for each row"); }},
         {[&] { pair.bound.Run(kMakeDue); },
          [&] { Require(LaunchBulletins(pair.bound, Keys::Way::InMemory) == rows, "a bulletin for each row"); }}});
    return {times[0], times[1]};
}

void MeasureBulletins(const Scale& scale, Table& table) {
    MeasureWhere(Component::Where::InMemory, scale, table);
    MeasureWhere(Component::Where::OnFile, scale, table);
}

}  // namespace bench

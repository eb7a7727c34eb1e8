#include "bench/items/items.h"
#include "bench/items/streams.h"
#include "bench/plant.h"

#include <sqlite3.h>

#include <string>
#include <vector>

namespace bench {

namespace {

constexpr char kMakeDue[] =
    "UPDATE Imputacion_Preventiva SET Semana = 9, Fecha_Ultimo_Lanzamiento = '2026-02-23'; DELETE FROM Boletin";

/// Something that can be set otherwise, and its price to a launch bound by hand.
struct Setting {
    std::string what;
    /// Run on the plant's file, or on each connection that is opened.
    std::string onPlant;
    std::string onConnection;
    Database::Threads threads = Database::Threads::Unlocked;
    bool memoryStatistics = true;
    Keys::Way keys = Keys::Way::ByStatement;
};

const std::vector<Setting> kSettings = {
    {"index on Boletin (SC_Imputacion_Preventiva)", "CREATE INDEX x ON Boletin (SC_Imputacion_Preventiva)", ""},
    {"index on Boletin (ID_Equipo)", "CREATE INDEX x ON Boletin (ID_Equipo)", ""},
    {"no index on the assignments' ID_Activo",
     "DROP INDEX Imputacion_Preventiva_Activo; DROP INDEX Imputacion_Preventiva_Prefijo", ""},
    {"index on the assignments' SC_Gama", "CREATE INDEX x ON Imputacion_Preventiva (SC_Gama)", ""},
    {"a mutex around the connection", "", "", Database::Threads::Locked},
    {"no memory statistics", "", "", Database::Threads::Unlocked, false},
    {"a page cache of 64 MB", "", "PRAGMA cache_size = -64000"},
    {"the file mapped into memory, 1 GB", "", "PRAGMA mmap_size = 1000000000"},
    {"synchronous NORMAL", "", "PRAGMA synchronous = NORMAL"},
    {"counter column NOT NULL",
     "DROP TABLE Clave; CREATE TABLE Clave (Tabla TEXT PRIMARY KEY COLLATE NOCASE, Ultima_Clave INTEGER NOT NULL)", ""},
    {"keys counted in memory", "", "", Database::Threads::Unlocked, true, Keys::Way::InMemory},
};

/// A launch with or without a setting, everything opened anew. The engine can only be told about memory statistics
/// while nothing is open.
void Launch(const Plant& plant, const Setting& setting, int rows) {
    const Database database = Database::OnFile(plant.Path(), setting.threads);
    if (!setting.onConnection.empty()) Prepared(database, setting.onConnection).Step();
    Require(LaunchBulletins(database, setting.keys) == rows, "a bulletin for each row");
}

void Configure(bool memoryStatistics) {
    sqlite3_shutdown();
    sqlite3_config(SQLITE_CONFIG_MEMSTATUS, memoryStatistics ? 1 : 0);
    sqlite3_initialize();
}

Side SideOf(const Plant& plant, const Setting& setting, int rows) {
    return {[&plant, &setting] {
                Configure(setting.memoryStatistics);
                Database::OnFile(plant.Path()).Run(kMakeDue);
            },
            [&plant, &setting, rows] { Launch(plant, setting, rows); }};
}

}  // namespace

void MeasureSettings(const Scale& scale, Table& table) {
    const int rows = scale.Rows(100'000);
    const Setting asItIs{"", "", ""};
    for (const Setting& setting : kSettings) {
        Progress("setting: " + setting.what);
        const Plant plain("plain");
        const Plant changed("changed");
        plain.AddWeekly(rows);
        changed.AddWeekly(rows);
        if (!setting.onPlant.empty()) changed.Run(setting.onPlant);
        const auto times = Alternate(scale.rounds, {SideOf(changed, setting, rows), SideOf(plain, asItIs, rows)});
        table.AddRatio("9", "bound launch, file, " + setting.what + " : without", times[0], times[1], 0);
    }
    // As the component sets it.
    Configure(false);
}

}  // namespace bench

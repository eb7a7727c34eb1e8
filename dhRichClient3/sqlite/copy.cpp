#include "dhRichClient3/sqlite/engine.h"

#include <sqlite3.h>

/// Copying: the engine's backup reads the database page by page within one snapshot, as any other reader does.
namespace dhRichClient3 {
namespace {

/// Names a database of the engine's own: in memory up to the size of its cache, beyond that in a temporary file that
/// nobody else sees.
constexpr const char* kPrivate = "";
constexpr std::string_view kReady = "PRAGMA cache_size=-262144; PRAGMA journal_mode=MEMORY; PRAGMA foreign_keys=OFF";

}  // namespace

std::shared_ptr<Engine> Engine::Copy() const {
    Options options;
    options.stepLimit = stepLimit_;
    options.rowBytesLimit = rowBytesLimit_;
    sqlite3* database = nullptr;
    const int code =
        sqlite3_open_v2(kPrivate, &database, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_NOMUTEX, nullptr);
    if (!database) RaiseCode(SQLITE_NOMEM, "Out of memory.");
    auto copy = std::make_shared<Engine>(database, options);
    if (code != SQLITE_OK) copy->RaiseLast();
    copy->RunScript(kReady);

    sqlite3_backup* const backup = sqlite3_backup_init(database, "main", database_, "main");
    if (!backup) copy->RaiseLast();
    constexpr int kAllPages = -1;
    sqlite3_backup_step(backup, kAllPages);
    // Whatever stopped the copy is told here, and is from then on the last error of the copy.
    if (sqlite3_backup_finish(backup) != SQLITE_OK) copy->RaiseLast();
    return copy;
}

}  // namespace dhRichClient3

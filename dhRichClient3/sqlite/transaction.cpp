#include "dhRichClient3/sqlite/engine.h"
#include "frame/raised_error.h"

#include <sqlite3.h>

/// A transaction that is meant is never lost silently: between the begin, even a refused one, and the commit or
/// rollback that succeeds, nothing runs without a transaction of the engine's.
namespace dhRichClient3 {

void Engine::RunOwn(std::string_view sql) {
    auto statement = own_.Take(sql);
    if (!statement) statement = Compile(std::string(sql));
    StartRun();
    Step(*statement);
    Reset(*statement);
    own_.Put(std::move(statement));
}

void Engine::Begin() {
    RequireTransaction();
    meant_ = true;
    RunOwn("BEGIN IMMEDIATE");
    // From here to the end nobody else changes anything.
    if (DataVersion() != versionAtEnd_) changes_.ChangedAll();
}

/// Another number when the database was changed since by anyone.
std::uint32_t Engine::DataVersion() const {
    std::uint32_t version = 0;
    sqlite3_file_control(database_, "main", SQLITE_FCNTL_DATA_VERSION, &version);
    return version;
}

void Engine::Commit() {
    RequireTransaction();
    RunOwn("COMMIT");
    versionAtEnd_ = DataVersion();
    meant_ = false;
}

void Engine::Rollback() {
    try {
        if (InTransaction()) RunOwn("ROLLBACK");
    } catch (const Zontara::RaisedError&) {
        if (InTransaction()) throw;
    }
    changes_.ChangedAll();
    meant_ = false;
}

bool Engine::InTransaction() const { return sqlite3_get_autocommit(database_) == 0; }

bool Engine::IsAlone() const {
    // An attached database, behind the main and the temporary one, is left to others until something is read from it.
    return InTransaction() && sqlite3_db_name(database_, 2) == nullptr;
}

void Engine::RequireTransaction() const {
    if (!meant_ || InTransaction()) return;
    RaiseCode(
        SQLITE_ABORT,
        "The transaction was lost: its begin was refused or the database rolled it back by itself, so nothing of it is "
        "stored and nothing more is done in it. Abort the transaction, then start again.");
}

}  // namespace dhRichClient3

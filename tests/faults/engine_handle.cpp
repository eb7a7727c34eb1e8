#include "tests/faults/engine_handle.h"

#include <sqlite3.h>

namespace faults {

namespace {

sqlite3* last = nullptr;

int Opened(sqlite3* database, const char**, const sqlite3_api_routines*) {
    last = database;
    return SQLITE_OK;
}

/// The type that SQLite wants, whatever the routine's own.
auto* Routine() { return reinterpret_cast<void (*)()>(&Opened); }

}  // namespace

EngineHandle::EngineHandle() { sqlite3_auto_extension(Routine()); }

EngineHandle::~EngineHandle() { sqlite3_cancel_auto_extension(Routine()); }

sqlite3* EngineHandle::Last() { return last; }

}  // namespace faults

#pragma once

struct sqlite3;

namespace faults {

/// SQLite's own handle of each database that is opened while this lives, for faults that only the engine can make.
class EngineHandle {
public:
    EngineHandle();
    ~EngineHandle();
    EngineHandle(const EngineHandle&) = delete;
    EngineHandle& operator=(const EngineHandle&) = delete;

    /// Of the database that was opened last.
    static sqlite3* Last();
};

}  // namespace faults

#pragma once

#include <cstdint>
#include <string>
#include <string_view>

struct sqlite3;
struct sqlite3_stmt;

namespace bench {

/// The engine that both sides of a measurement use: version, where it comes from, and those of its options that cost or
/// save time.
std::string EngineName();

/// A database through the engine's own interface: what every figure is measured against.
class Database {
public:
    enum class Threads {
        Locked,    ///< with a mutex, as the engine opens a database when it isn't told otherwise
        Unlocked,  ///< without
    };

    /// Opens a file, or a copy of it in memory, with `synchronous=FULL`.
    static Database OnFile(const std::string& path, Threads threads = Threads::Unlocked);
    static Database InMemory(const std::string& copied, Threads threads = Threads::Unlocked);
    Database(Database&& other) noexcept;
    Database& operator=(Database&&) = delete;
    ~Database();

    /// Runs statements that give no rows.
    void Run(const std::string& sql) const;
    sqlite3* Handle() const { return handle_; }

private:
    explicit Database(sqlite3* handle) : handle_(handle) {}
    sqlite3* handle_;
};

/// A statement that is prepared once and whose values are bound by hand.
class Prepared {
public:
    Prepared(const Database& database, std::string_view sql);
    ~Prepared();
    Prepared(const Prepared&) = delete;
    Prepared& operator=(const Prepared&) = delete;

    Prepared& Bind(int position, std::int64_t value);
    Prepared& Bind(int position, int value) { return Bind(position, std::int64_t{value}); }
    Prepared& Bind(int position, double value);
    /// The text must outlive the run.
    Prepared& Bind(int position, std::string_view text);
    Prepared& Bind(int position, const char* text) { return Bind(position, std::string_view(text)); }
    Prepared& Bind(int position, const std::string& text) { return Bind(position, std::string_view(text)); }

    bool Step();
    /// One step, and back to the beginning.
    void Run();
    void Reset();
    /// Steps over all rows, reads every cell and drops it; gives their number.
    int DropAll();

    int Columns() const;
    int Int(int column) const;
    double Real(int column) const;
    std::string Text(int column) const;

private:
    sqlite3* database_;
    sqlite3_stmt* statement_ = nullptr;
};

/// Keys as a table's rows take them: by one statement each, or counted in memory and written once a transaction.
class Keys {
public:
    enum class Way { ByStatement, InMemory };
    Keys(const Database& database, const std::string& table, const std::string& column, Way way);
    /// Reads where to count on. After the begin.
    void Begin();
    int Next();
    /// Writes the counter. Before the commit.
    void Save();

private:
    Way way_;
    int last_ = 0;
    Prepared read_;
    Prepared move_;
    Prepared save_;
};

}  // namespace bench

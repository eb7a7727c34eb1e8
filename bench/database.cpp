#include "bench/database.h"

#include <fmt/format.h>
#include <sqlite3.h>

#include <stdexcept>
#include <utility>

namespace bench {

namespace {

[[noreturn]] void Fail(sqlite3* database) { throw std::runtime_error(sqlite3_errmsg(database)); }

sqlite3* Opened(const std::string& path, Database::Threads threads) {
    const int mutex = threads == Database::Threads::Unlocked ? SQLITE_OPEN_NOMUTEX : SQLITE_OPEN_FULLMUTEX;
    sqlite3* handle = nullptr;
    if (sqlite3_open_v2(path.c_str(), &handle, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | mutex, nullptr) !=
        SQLITE_OK) {
        Fail(handle);
    }
    return handle;
}

}  // namespace

std::string EngineName() {
    std::string name =
        fmt::format("SQLite {} ({}): THREADSAFE={}", sqlite3_libversion(), ZONTARA_ENGINE, sqlite3_threadsafe());
    for (const char* const option : {"DEFAULT_MEMSTATUS=0", "OMIT_LOOKASIDE", "OMIT_SHARED_CACHE", "SECURE_DELETE",
                                     "ENABLE_PREUPDATE_HOOK", "ENABLE_UNLOCK_NOTIFY"}) {
        if (sqlite3_compileoption_used(option) != 0) name += fmt::format(" {}", option);
    }
    return name;
}

Database Database::OnFile(const std::string& path, Threads threads) {
    Database database(Opened(path, threads));
    database.Run("PRAGMA synchronous = FULL");
    return database;
}

Database Database::InMemory(const std::string& copied, Threads threads) {
    const Database source(Opened(copied, threads));
    Database database(Opened(":memory:", threads));
    sqlite3_backup* const backup = sqlite3_backup_init(database.handle_, "main", source.handle_, "main");
    sqlite3_backup_step(backup, -1);
    if (sqlite3_backup_finish(backup) != SQLITE_OK) Fail(database.handle_);
    // The copy of a file in WAL mode would say so too, which a database in memory can't be.
    database.Run("PRAGMA journal_mode = MEMORY");
    return database;
}

Database::Database(Database&& other) noexcept : handle_(std::exchange(other.handle_, nullptr)) {}

Database::~Database() { sqlite3_close(handle_); }

void Database::Run(const std::string& sql) const {
    if (sqlite3_exec(handle_, sql.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK) Fail(handle_);
}

Prepared::Prepared(const Database& database, std::string_view sql) : database_(database.Handle()) {
    if (sqlite3_prepare_v3(database_, sql.data(), static_cast<int>(sql.size()), SQLITE_PREPARE_PERSISTENT, &statement_,
                           nullptr) != SQLITE_OK) {
        Fail(database_);
    }
}

Prepared::~Prepared() { sqlite3_finalize(statement_); }

Prepared& Prepared::Bind(int position, std::int64_t value) {
    sqlite3_bind_int64(statement_, position, value);
    return *this;
}

Prepared& Prepared::Bind(int position, double value) {
    sqlite3_bind_double(statement_, position, value);
    return *this;
}

Prepared& Prepared::Bind(int position, std::string_view text) {
    sqlite3_bind_text(statement_, position, text.data(), static_cast<int>(text.size()), SQLITE_STATIC);
    return *this;
}

bool Prepared::Step() {
    const int code = sqlite3_step(statement_);
    if (code != SQLITE_ROW && code != SQLITE_DONE) Fail(database_);
    return code == SQLITE_ROW;
}

void Prepared::Run() {
    Step();
    Reset();
}

void Prepared::Reset() { sqlite3_reset(statement_); }

int Prepared::DropAll() {
    int rows = 0;
    const int count = Columns();
    std::int64_t dropped = 0;
    for (; Step(); ++rows) {
        for (int i = 0; i < count; ++i) {
            switch (sqlite3_column_type(statement_, i)) {
                case SQLITE_INTEGER:
                    dropped += sqlite3_column_int64(statement_, i);
                    break;
                case SQLITE_FLOAT:
                    dropped += static_cast<std::int64_t>(sqlite3_column_double(statement_, i));
                    break;
                case SQLITE_NULL:
                    break;
                default:
                    dropped += sqlite3_column_text(statement_, i)[0] + sqlite3_column_bytes(statement_, i);
            }
        }
    }
    Reset();
    // Used, so that nothing of it is left out.
    return dropped == -1 ? -1 : rows;
}

int Prepared::Columns() const { return sqlite3_column_count(statement_); }

int Prepared::Int(int column) const { return sqlite3_column_int(statement_, column); }

double Prepared::Real(int column) const { return sqlite3_column_double(statement_, column); }

std::string Prepared::Text(int column) const {
    const auto* const text = reinterpret_cast<const char*>(sqlite3_column_text(statement_, column));
    return text != nullptr ? std::string(text, static_cast<std::size_t>(sqlite3_column_bytes(statement_, column)))
                           : std::string();
}

Keys::Keys(const Database& database, const std::string& table, const std::string& column, Way way)
    : way_(way),
      read_(database, "SELECT max(ifnull((SELECT max(" + column + ") FROM " + table +
                          "), 0), ifnull((SELECT Ultima_Clave FROM Clave WHERE Tabla = '" + table + "'), 0))"),
      move_(database,
            "INSERT INTO Clave (Tabla, Ultima_Clave) VALUES ('" + table +
                "', 1) ON CONFLICT (Tabla) DO UPDATE SET Ultima_Clave = Ultima_Clave + 1 RETURNING Ultima_Clave"),
      save_(database, "INSERT INTO Clave (Tabla, Ultima_Clave) VALUES ('" + table +
                          "', ?1) ON CONFLICT (Tabla) DO UPDATE SET Ultima_Clave = excluded.Ultima_Clave") {}

void Keys::Begin() {
    if (way_ == Way::ByStatement) return;
    read_.Step();
    last_ = read_.Int(0);
    read_.Reset();
}

int Keys::Next() {
    if (way_ == Way::InMemory) return ++last_;
    move_.Step();
    last_ = move_.Int(0);
    move_.Run();
    return last_;
}

void Keys::Save() {
    if (way_ == Way::InMemory) save_.Bind(1, last_).Run();
}

}  // namespace bench

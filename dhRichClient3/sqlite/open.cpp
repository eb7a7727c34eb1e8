#include "dhRichClient3/sqlite/engine.h"
#include "frame/raised_error.h"

#include <sqlite3.h>

#include <array>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <system_error>

/// Opening: what is looked at before SQLite is asked, what SQLite is told, and its refusals in words that help.
namespace dhRichClient3 {
namespace {

using Mode = Options::Mode;
using Zontara::RaisedError;

constexpr std::string_view kInMemory = ":memory:";
constexpr std::string_view kFileHeader{"SQLite format 3\0", 16};

[[noreturn]] void Refuse(int code, const std::string& path, const std::string& what) {
    Engine::RaiseCode(code, "The database \"" + path + "\" " + what);
}

/// SQLite would take anything that isn't a database for an encrypted one, and make a missing one.
void LookAtFile(const std::string& path, Mode mode) {
    std::error_code error;
    // Paths are UTF-8, whatever the system takes a plain text for.
    const std::filesystem::path file(std::u8string(path.begin(), path.end()));
    const auto folder = file.parent_path();
    if (!folder.empty() && !std::filesystem::is_directory(folder, error)) {
        Refuse(SQLITE_CANTOPEN, path, "can't be opened: its folder does not exist. Check the path.");
    }
    if (std::filesystem::is_directory(file, error)) {
        Refuse(SQLITE_CANTOPEN, path, "can't be opened: it is a folder. Give the path of a file.");
    }
    if (!std::filesystem::exists(file, error)) {
        if (mode == Mode::Create) return;
        Refuse(SQLITE_CANTOPEN, path, "does not exist. Check the path, or create the database first.");
    }
    std::ifstream stream(file, std::ios::binary);
    if (!stream) {
        Refuse(SQLITE_CANTOPEN, path, "can't be read. Check the permissions of the file and of its folder.");
    }
    std::array<char, kFileHeader.size()> header{};
    stream.read(header.data(), header.size());
    const std::string_view begin(header.data(), static_cast<std::size_t>(stream.gcount()));
    if (!begin.empty() && begin != kFileHeader) {
        Refuse(SQLITE_NOTADB, path, "is no SQLite database. Check the path, or restore the file from a copy.");
    }
}

[[noreturn]] void Explain(const RaisedError& refusal, const std::string& path, Mode mode) {
    const int code = refusal.Number() - Zontara::vbObjectError;
    switch (code) {
        case SQLITE_BUSY:
        case SQLITE_LOCKED:
            Refuse(code, path, "is locked by another program. Close that program, or try again later.");
        case SQLITE_NOTADB:
            Refuse(code, path, "is no SQLite database. Check the path, or restore the file from a copy.");
        case SQLITE_CANTOPEN:
        case SQLITE_READONLY:
            Refuse(SQLITE_CANTOPEN, path,
                   mode == Mode::ReadOnly
                       ? "can't be read where it is: its folder can't be written. Allow that, or copy it elsewhere."
                       : "can't be used: its folder can't be written. Check the permissions of the folder.");
        case SQLITE_CORRUPT:
            Refuse(code, path, "is damaged. Restore the file from a copy.");
        case SQLITE_FULL:
            Refuse(code, path, "can't be opened: the disk is full. Make room, then try again.");
        case SQLITE_IOERR:
            Refuse(code, path, "can't be opened: the disk refused. Check it, then try again.");
        default:
            Refuse(code, path, "can't be opened: " + refusal.Description() + ".");
    }
}

int FlagsOf(Mode mode) {
    switch (mode) {
        case Mode::ReadOnly:
            return SQLITE_OPEN_READONLY;
        case Mode::Create:
            return SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE;
        case Mode::Existing:
            break;
    }
    return SQLITE_OPEN_READWRITE;
}

void Say(Engine& engine, const std::string& sql) {
    const auto statement = engine.Compile(sql);
    engine.StartRun();
    engine.Step(*statement);
}

/// The change to WAL needs the file alone for a moment and doesn't wait by itself, as when two programs start at once.
void TurnToWal(Engine& engine, int waitMilliseconds) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(waitMilliseconds);
    for (;;) {
        try {
            return Say(engine, "PRAGMA journal_mode=WAL");
        } catch (const RaisedError& refusal) {
            if (refusal.Number() != Zontara::vbObjectError + SQLITE_BUSY) throw;
            if (std::chrono::steady_clock::now() >= end) throw;
        }
        sqlite3_sleep(10);
    }
}

}  // namespace

std::shared_ptr<Engine> Engine::Open(const std::string& path, const Options& options) {
    // Statistics of memory, which nobody asks for, cost a lock at each allocation. Refused, and no harm done, when the
    // engine runs already.
    static const int configured = sqlite3_config(SQLITE_CONFIG_MEMSTATUS, 0);
    static_cast<void>(configured);
    if (path.empty()) RaiseCode(SQLITE_CANTOPEN, "No database is named. Give the path of a file, or :memory:.");
    const bool isFile = path != kInMemory;
    if (isFile) LookAtFile(path, options.mode);

    // A path is a path: SQLite reads one that begins with "file:" as a URI with options.
    const std::string name = path.rfind("file:", 0) == 0 ? "./" + path : path;
    sqlite3* database = nullptr;
    const int code = sqlite3_open_v2(name.c_str(), &database,
                                     FlagsOf(isFile ? options.mode : Mode::Create) | SQLITE_OPEN_NOMUTEX, nullptr);
    if (!database) RaiseCode(SQLITE_NOMEM, "Out of memory.");
    auto engine = std::make_shared<Engine>(database, options);
    try {
        if (code != SQLITE_OK) engine->RaiseLast();
        Say(*engine, "SELECT count(*) FROM sqlite_schema");
        if (isFile && options.mode != Mode::ReadOnly) {
            if (sqlite3_db_readonly(database, "main") == 1) {
                Refuse(SQLITE_READONLY, path,
                       "may not be written. Check the permissions of the file, or open it read-only.");
            }
            TurnToWal(*engine, options.busyMilliseconds);
        }
        Say(*engine, "PRAGMA synchronous=FULL");
        Say(*engine, "PRAGMA foreign_keys=OFF");
    } catch (const RaisedError& refusal) {
        if (refusal.Description().rfind("The database \"", 0) == 0) throw;
        Explain(refusal, path, options.mode);
    }
    return engine;
}

}  // namespace dhRichClient3

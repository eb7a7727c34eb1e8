#include "dhRichClient3/sqlite/engine.h"

#include "dhRichClient3/dialect/tokens.h"
#include "dhRichClient3/row_store.h"
#include "frame/raised_error.h"

#include <sqlite3.h>

#include <algorithm>
#include <utility>

namespace dhRichClient3 {
namespace {

constexpr std::int64_t kMostStepsPerCall = 10'000;
constexpr int kLongestValue = 256 * 1024 * 1024;
constexpr int kLongestStatement = 64 * 1024 * 1024;

/// A text in UTF-8, whatever the database is kept in; the bytes of a BLOB as they are.
std::string_view TextOf(sqlite3_value* cell, int type) {
    const void* const bytes =
        type == SQLITE_BLOB ? sqlite3_value_blob(cell) : static_cast<const void*>(sqlite3_value_text(cell));
    return {static_cast<const char*>(bytes), static_cast<std::size_t>(sqlite3_value_bytes(cell))};
}

/// Adds the cells of the current row. Columns are read as values, which spares the engine's checks at each call and is
/// in order as long as one thread at a time uses the connection.
void AddRow(sqlite3_stmt* row, int count, RowStore& rows) {
    for (int i = 0; i < count; ++i) {
        sqlite3_value* const cell = sqlite3_column_value(row, i);
        const int type = sqlite3_value_type(cell);
        switch (type) {
            case SQLITE_INTEGER:
                rows.AddInteger(sqlite3_value_int64(cell));
                break;
            case SQLITE_FLOAT:
                rows.AddReal(sqlite3_value_double(cell));
                break;
            case SQLITE_NULL:
                rows.AddNull();
                break;
            default:
                rows.AddText(TextOf(cell, type));
        }
    }
}

/// The names of a statement's columns, read anew when the engine has compiled it anew since, as after a change of the
/// schema.
const std::shared_ptr<const ColumnNames>& ColumnsOf(Compiled& statement) {
    const int times = sqlite3_stmt_status(statement.handle, SQLITE_STMTSTATUS_REPREPARE, 0);
    if (!statement.columns || statement.timesCompiledAnew != times) {
        const int count = sqlite3_column_count(statement.handle);
        std::vector<std::string> names;
        names.reserve(static_cast<std::size_t>(count));
        for (int i = 0; i < count; ++i)
            names.emplace_back(sqlite3_column_name(statement.handle, i));
        statement.columns = std::make_shared<const ColumnNames>(std::move(names));
        statement.timesCompiledAnew = times;
    }
    return statement.columns;
}

bool HoldsNothing(std::string_view tail) {
    std::vector<dialect::Token> tokens;
    dialect::Tokenize(tail, tokens);
    return std::all_of(tokens.begin(), tokens.end(), [](const auto& token) { return token.IsSymbol(';'); });
}

}  // namespace

Compiled::~Compiled() { sqlite3_finalize(handle); }

Engine::Engine(sqlite3* database, const Options& options)
    : database_(database),
      stepLimit_(options.stepLimit),
      rowBytesLimit_(options.rowBytesLimit),
      stepsPerCall_(std::clamp<std::int64_t>(options.stepLimit, 1, kMostStepsPerCall)),
      longestWait_(options.busyMilliseconds) {
    sqlite3_busy_handler(database_, &Engine::WaitForOthers, this);
    sqlite3_db_config(database_, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
    sqlite3_db_config(database_, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
    sqlite3_db_config(database_, SQLITE_DBCONFIG_ENABLE_LOAD_EXTENSION, 0, nullptr);
    sqlite3_limit(database_, SQLITE_LIMIT_LENGTH, kLongestValue);
    sqlite3_limit(database_, SQLITE_LIMIT_SQL_LENGTH, kLongestStatement);
    sqlite3_set_authorizer(database_, &Engine::Authorize, this);
    if (stepLimit_ > 0) {
        sqlite3_progress_handler(database_, static_cast<int>(stepsPerCall_), &Engine::Progress, this);
    }
}

Engine::~Engine() {
    own_.Clear();
    sqlite3_close_v2(database_);
}

int Engine::Progress(void* self) {
    auto& engine = *static_cast<Engine*>(self);
    engine.steps_ += engine.stepsPerCall_;
    engine.overLimit_ = engine.steps_ >= engine.stepLimit_;
    return engine.overLimit_ ? 1 : 0;
}

/// SQLite's own waiting looks ever more seldom, ten times a second in the end, and so loses every race against a
/// program that writes without a pause. This one looks as often as it may.
int Engine::WaitForOthers(void* self, int tries) {
    auto& engine = *static_cast<Engine*>(self);
    const auto now = std::chrono::steady_clock::now();
    if (tries == 0) engine.waitingSince_ = now;
    if (now - engine.waitingSince_ >= engine.longestWait_) return 0;
    sqlite3_sleep(1);
    return 1;
}

void Engine::StartRun() {
    steps_ = 0;
    overLimit_ = false;
    refusal_.clear();
}

bool Engine::Compile(const char* sql, int length, unsigned flags, Compiled& into, const char*& tail) {
    ++compilations_;
    reach_ = {};
    compiling_ = true;
    const int code = sqlite3_prepare_v3(database_, sql, length, flags, &into.handle, &tail);
    compiling_ = false;
    into.reach = std::exchange(reach_, {});
    return code == SQLITE_OK;
}

std::unique_ptr<Compiled> Engine::TryCompile(const std::string& sql, std::string_view key) {
    refusal_.clear();
    auto compiled = std::make_unique<Compiled>(std::string(key), nullptr);
    const char* tail = nullptr;
    const int length = sql.size() < kLongestStatement ? static_cast<int>(sql.size()) + 1 : kLongestStatement + 1;
    if (!Compile(sql.c_str(), length, SQLITE_PREPARE_PERSISTENT, *compiled, tail)) return nullptr;
    if (!compiled->handle) RaiseCode(SQLITE_AUTH, "There is no statement in the text.");
    if (*tail != '\0' && !HoldsNothing(tail)) {
        RaiseCode(SQLITE_AUTH, "More than one statement in the text: give them one at a time.");
    }
    return compiled;
}

std::unique_ptr<Compiled> Engine::Compile(const std::string& sql) {
    auto compiled = TryCompile(sql, sql);
    if (!compiled) RaiseLast();
    return compiled;
}

Statement Engine::Lend(std::string_view sql) {
    RequireTransaction();
    auto held = own_.Take(sql);
    if (!held) held = Compile(std::string(sql));
    return Statement(shared_from_this(), std::move(held));
}

void Engine::GiveBack(std::unique_ptr<Compiled> statement) noexcept {
    ClearParameters(*statement);
    own_.Put(std::move(statement));
}

void Engine::Bind(Compiled& statement, int parameter, std::int64_t value) {
    if (sqlite3_bind_int64(statement.handle, parameter, value) != SQLITE_OK) RaiseLast();
}

void Engine::Bind(Compiled& statement, int parameter, double value) {
    if (sqlite3_bind_double(statement.handle, parameter, value) != SQLITE_OK) RaiseLast();
}

void Engine::Bind(Compiled& statement, int parameter, std::string_view value, bool keep) {
    const char* text = value.data() ? value.data() : "";
    const int code = sqlite3_bind_text64(statement.handle, parameter, text, value.size(),
                                         keep ? SQLITE_STATIC : SQLITE_TRANSIENT, SQLITE_UTF8);
    if (code != SQLITE_OK) RaiseLast();
}

void Engine::BindNull(Compiled& statement, int parameter) {
    if (sqlite3_bind_null(statement.handle, parameter) != SQLITE_OK) RaiseLast();
}

void Engine::Bind(Compiled& statement, const dialect::Literal* literals, std::size_t count) {
    int parameter = 0;
    for (const dialect::Literal* literal = literals; literal != literals + count; ++literal) {
        ++parameter;
        if (literal->kind == dialect::TokenKind::Integer) {
            Bind(statement, parameter, literal->whole);
        } else if (literal->kind == dialect::TokenKind::Decimal) {
            Bind(statement, parameter, literal->exact ? literal->decimal : NumberIn(literal->text));
        } else if (literal->doubled) {
            Bind(statement, parameter, dialect::WithSingleQuotes(literal->text), false);
        } else {
            Bind(statement, parameter, literal->text, true);
        }
    }
}

double Engine::NumberIn(std::string_view decimal) {
    const OpenedDoor opened(*this);
    Statement read = Lend("SELECT CAST(?1 AS REAL)");
    read.BindKept(1, decimal).Step();
    return read.Real(0);
}

int Engine::ParameterCount(const Compiled& statement) { return sqlite3_bind_parameter_count(statement.handle); }

void Engine::Reset(Compiled& statement) noexcept { sqlite3_reset(statement.handle); }

void Engine::ClearParameters(Compiled& statement) noexcept { sqlite3_clear_bindings(statement.handle); }

/// A statement that was compiled anew may reach further, by a new trigger or view; and so may what isn't run now.
void Engine::NoteNewReach(Compiled& statement) {
    compiledAnew_ = false;
    statement.reach.Add(std::exchange(reach_, {}));
    changes_.ChangedAll();
}

bool Engine::Step(Compiled& statement) {
    if (statement.reach.writes != 0) changes_.Changed(statement.reach.writes);
    const int code = sqlite3_step(statement.handle);
    if (compiledAnew_) NoteNewReach(statement);
    if (code == SQLITE_ROW) return true;
    sqlite3_reset(statement.handle);
    if (code != SQLITE_DONE) RaiseLast();
    return false;
}

RowStore Engine::FetchAll(Compiled& statement) {
    // A fetch that breaks off leaves the statement in the middle of its rows, where it could not be bound again.
    std::unique_ptr<Compiled, decltype([](Compiled* fetched) { Reset(*fetched); })> brokenOff(&statement);
    bool more = Step(statement);
    RowStore rows(ColumnsOf(statement));
    const auto count = static_cast<int>(rows.Columns());
    for (; more; more = Step(statement)) {
        AddRow(statement.handle, count, rows);
        if (rows.Bytes() > rowBytesLimit_) {
            RaiseCode(SQLITE_TOOBIG, "The rows take more than " + std::to_string(rowBytesLimit_) +
                                         " bytes, the limit of this connection. Ask for fewer.");
        }
    }
    static_cast<void>(brokenOff.release());
    return rows;
}

void Engine::RunScript(std::string_view sql) {
    if (sql.find('\0') != std::string_view::npos) RaiseCode(SQLITE_AUTH, "There is a NUL character in the text.");
    RequireTransaction();
    const std::string script(sql);
    changes_.ChangedAll();
    for (const char* next = script.c_str(); *next != '\0';) {
        Compiled statement({}, nullptr);
        if (!Compile(next, -1, 0, statement, next)) RaiseLast();
        if (!statement.handle) continue;
        StartRun();
        while (Step(statement)) {
        }
    }
    if (InTransaction()) meant_ = true;
}

std::int64_t Engine::RowsChanged() const { return sqlite3_changes64(database_); }

std::string Engine::LastMessage() const { return sqlite3_errmsg(database_); }

void Engine::RaiseLast() {
    const int code = sqlite3_errcode(database_) & 0xFF;
    if (!refusal_.empty()) RaiseCode(SQLITE_AUTH, std::exchange(refusal_, {}));
    if (code == SQLITE_INTERRUPT && overLimit_) {
        RaiseCode(code,
                  "The statement took more than " + std::to_string(stepLimit_) +
                      " steps of the engine, the limit of this connection, and was stopped. Ask for less, or raise "
                      "the limit.");
    }
    RaiseCode(code, LastMessage());
}

void Engine::RaiseCode(int code, std::string description) {
    Zontara::RaiseError(Zontara::vbObjectError + (code & 0xFF), "dhRichClient3", std::move(description));
}

}  // namespace dhRichClient3

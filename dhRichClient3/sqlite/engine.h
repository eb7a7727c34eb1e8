#pragma once

#include "dhRichClient3/connection.h"
#include "dhRichClient3/dialect/literal.h"
#include "dhRichClient3/sqlite/compiled.h"
#include "dhRichClient3/sqlite/table_changes.h"
#include "dhRichClient3/statement_cache.h"

#include <chrono>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

struct sqlite3;

namespace dhRichClient3 {

class RowStore;

/// SQLite's handle of one database and everything that is said to it: compiling, binding, stepping, transactions, the
/// second lock of the closed door, the limit of steps. The only part of the library that knows SQLite's C interface.
class Engine : public std::enable_shared_from_this<Engine> {
public:
    /// Opens a database and makes it ready; errors as `Connection::Open`.
    static std::shared_ptr<Engine> Open(const std::string& path, const Options& options);
    /// Takes a database over, to close it at the end.
    Engine(sqlite3* database, const Options& options);
    Engine(const Engine&) = delete;
    Engine& operator=(const Engine&) = delete;
    ~Engine();
    /// A database of the engine's own with the content of this one; see `Connection::Copy`.
    std::shared_ptr<Engine> Copy() const;

    /// While one of these lives, whatever is compiled passes the second lock. One at a time.
    class ClosedDoor {
    public:
        explicit ClosedDoor(Engine& engine) : engine_(engine) { engine_.doorClosed_ = true; }
        ClosedDoor(const ClosedDoor&) = delete;
        ClosedDoor& operator=(const ClosedDoor&) = delete;
        ~ClosedDoor() { engine_.doorClosed_ = false; }

    private:
        Engine& engine_;
    };

    /// Opens the door again for a question of the library's own.
    class OpenedDoor {
    public:
        explicit OpenedDoor(Engine& engine) : engine_(engine), closed_(std::exchange(engine.doorClosed_, false)) {}
        OpenedDoor(const OpenedDoor&) = delete;
        OpenedDoor& operator=(const OpenedDoor&) = delete;
        ~OpenedDoor() { engine_.doorClosed_ = closed_; }

    private:
        Engine& engine_;
        bool closed_;
    };

    /// Compiles one statement to be kept under a key; none when the engine refuses it, see `RaiseLast`.
    std::unique_ptr<Compiled> TryCompile(const std::string& sql, std::string_view key);
    /// The same, raising what the engine refuses.
    std::unique_ptr<Compiled> Compile(const std::string& sql);
    /// Lends a statement of the library's own, from the cache if it is there.
    Statement Lend(std::string_view sql);
    /// Takes a statement back that stands before its first row.
    void GiveBack(std::unique_ptr<Compiled> statement) noexcept;

    void Bind(Compiled& statement, int parameter, std::int64_t value);
    void Bind(Compiled& statement, int parameter, double value);
    /// `keep`: the text outlives the run of the statement, so that it needn't be copied.
    void Bind(Compiled& statement, int parameter, std::string_view value, bool keep);
    void BindNull(Compiled& statement, int parameter);
    /// Binds literals to the parameters from the first one on. Their texts must outlive the run.
    void Bind(Compiled& statement, const dialect::Literal* literals, std::size_t count);
    /// What the engine makes of the text of a decimal number.
    double NumberIn(std::string_view decimal);
    static int ParameterCount(const Compiled& statement);
    static void Reset(Compiled& statement) noexcept;
    static void ClearParameters(Compiled& statement) noexcept;

    /// Before a statement's run: its steps are counted anew.
    void StartRun();
    /// To the next row; false at the end. On failure the statement is reset.
    bool Step(Compiled& statement);
    /// Steps to the end and puts all rows into a new store.
    RowStore FetchAll(Compiled& statement);
    /// Runs several statements one after the other.
    void RunScript(std::string_view sql);

    void Begin();
    void Commit();
    void Rollback();
    bool InTransaction() const;
    /// Whether nobody else can change what statements read, until the transaction ends.
    bool IsAlone() const;
    bool TransactionMeant() const { return meant_; }
    /// Error 4 when the transaction that is meant is no longer there.
    void RequireTransaction() const;

    /// When tables were changed: by statements of this connection, and by others as far as the beginning of a
    /// transaction has to know.
    const TableChanges& Changes() const { return changes_; }
    std::int64_t RowsChanged() const;
    std::int64_t Compilations() const { return compilations_; }

    std::string LastMessage() const;
    /// Raises what the engine refused last.
    [[noreturn]] void RaiseLast();
    /// Raises an error of the engine's kind with a text of the library's own.
    [[noreturn]] static void RaiseCode(int code, std::string description);

private:
    static int Authorize(void* self, int action, const char* first, const char* second, const char* database,
                         const char* trigger);
    static int Progress(void* self);
    static int WaitForOthers(void* self, int tries);
    const char* ReasonAgainst(int action, const char* first, const char* second) const;
    void NoteReach(int action, const char* first, const char* second) noexcept;
    void NoteNewReach(Compiled& statement);
    std::uint32_t DataVersion() const;
    void RunOwn(std::string_view sql);
    /// Compiles the first statement of a text; false when the engine refuses it.
    bool Compile(const char* sql, int length, unsigned flags, Compiled& into, const char*& tail);

    sqlite3* database_;
    StatementCache<Compiled> own_;
    std::int64_t stepLimit_;
    std::size_t rowBytesLimit_;
    std::int64_t stepsPerCall_;
    std::int64_t steps_ = 0;
    std::int64_t compilations_ = 0;
    TableChanges changes_;
    /// What is compiled just now reaches that far.
    Reach reach_;
    /// The engine compiled a statement anew by itself, since the schema was changed.
    bool compiledAnew_ = false;
    bool compiling_ = false;
    /// `DataVersion` at the end of the latest transaction.
    std::uint32_t versionAtEnd_ = 0;
    /// Why the second lock refused what was compiled last; empty if it didn't.
    std::string refusal_;
    /// How long to wait for others that hold the database, and since when it is waited.
    std::chrono::milliseconds longestWait_;
    std::chrono::steady_clock::time_point waitingSince_;
    bool doorClosed_ = false;
    bool overLimit_ = false;
    /// A transaction is meant.
    bool meant_ = false;
};

}  // namespace dhRichClient3

#pragma once

#include "dhRichClient3/statement.h"
#include "frame/neighbours.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

/// Connection and recordset over SQLite, as the component expects them of its neighbour.
namespace dhRichClient3 {

class Engine;
class RowStore;

/// How a database is opened.
struct Options {
    enum class Mode {
        Existing,  ///< a file that must be there; the default, so that a misspelt path doesn't make an empty database
        Create,    ///< a file that is made when it isn't there
        ReadOnly,  ///< a file that must be there and is never written
    } mode = Mode::Existing;
    /// How long a statement or a begin waits for another process that holds the database.
    int busyMilliseconds = 10000;
    /// Steps of the engine (instructions of its virtual machine) that one statement may take; 0 for no limit.
    std::int64_t stepLimit = 1'000'000'000;
    /// Memory that the rows of one recordset may take, in bytes.
    std::size_t rowBytesLimit = std::size_t{1} << 30;
};

/// Where a recordset gets its rows. A connection is one; a wrapper of a connection (a tracer, a fault injector) is
/// another and hands the call on. A recordset finds it by asking the connection that it was given.
class RowSource {
public:
    virtual ~RowSource() = default;
    /// Runs one statement that gives rows and gives all of them; several may share them. Errors as
    /// `Connection::Ejecutar`, and 18 for rows that take more memory than the limit.
    virtual std::shared_ptr<const RowStore> Fetch(const std::string& sql) = 0;
};

/// One open database: a file or, with the path ":memory:", a database that lives as long as the connection.
///
/// Files are kept in WAL mode with `synchronous=FULL`: a commit survives a power cut. Foreign keys are off. A
/// transaction takes the right to write at once (BEGIN IMMEDIATE), so that two processes queue up, each for up to
/// `busyMilliseconds`, instead of failing half-way.
///
/// Everything that comes through `Ejecutar` and `Fetch` passes a closed door: one SELECT, INSERT, UPDATE or DELETE per
/// text, no NUL in it, no ATTACH, PRAGMA, DDL, transaction word, extension or file function. What the door refuses is
/// an error of code 23. The texts are otherwise run as they come, with one exception: when SQLite calls a bare column
/// of an outermost SELECT ambiguous, the first table of its FROM list is meant that has the column and doesn't mark it
/// QUALIFIED_ONLY in its declared type.
///
/// Errors are `Zontara::RaisedError` with the number vbObjectError + SQLite's primary result code, the source
/// "dhRichClient3" and the engine's message. One thread at a time. Statements and recordsets may outlive the
/// connection object; the database is closed with the last statement.
class Connection : public Zontara::Conexion, public RowSource {
public:
    /// Opens a database. Error 14 for a file that is missing, can't be read or whose folder can't be written,
    /// 26 for a file that is no database, 5 for one that another process keeps locked beyond the waiting time, 8 for
    /// one that may not be written; each text says what is wrong and what to do.
    static Zontara::Ref<Connection> Open(const std::string& path, const Options& options = {});
    ~Connection() override;

    /// A private copy of what the database holds, as of the last commit. It has the same limits, stays in memory up to
    /// 256 MiB and in a temporary file of the engine's beyond, and goes with its connection; what is written to it is
    /// written nowhere else.
    ///
    /// Copying is one read of the whole database. It takes no right to write, so that others write meanwhile; open the
    /// database with `Options::Mode::ReadOnly` to be sure that nothing is written to its file either. Error 5 inside a
    /// transaction of this connection, and when another program locks the whole file for longer than the waiting time;
    /// 13 when there is no room for the copy.
    Zontara::Ref<Connection> Copy() const;

    /// Begins the transaction, waiting for other writers. From here on, even if it fails, a transaction is meant until
    /// `ConfirmarTrans` or `RevertirTrans` succeeds. Error 5 when others hold the database for too long.
    void IniciarTrans(const std::string& texto) override;
    /// Commits. Refused with error 4 when the transaction that is meant was lost; the way out is `RevertirTrans`.
    void ConfirmarTrans(const std::string& texto) override;
    /// Rolls back what there is: nothing when the begin had failed, when the engine had rolled back by itself, and when
    /// no transaction is meant. So a rollback can be tried again.
    void RevertirTrans(const std::string& texto, std::int32_t modo) override;
    /// Runs one statement that gives no rows (those of a SELECT are left unread). Error 23 when the door refuses it, 4
    /// when the transaction that is meant was lost, 9 when it takes more steps than the limit, 18 for a value of more
    /// than 256 MiB, else the engine's.
    void Ejecutar(const std::string& sql) override;
    /// Inside a transaction, a question that was asked before is answered with the rows read then, as long as they are
    /// what it would give: small ones, of tables that nothing has changed since, and with no look at the clock.
    std::shared_ptr<const RowStore> Fetch(const std::string& sql) override;

    /// The administrator's door: runs several statements, DDL and PRAGMA included, and reads columns and marks again
    /// afterwards. Joins the open transaction. Stops at the first failure; outside a transaction what ran before it
    /// stays.
    void RunScript(std::string_view sql);

    /// A statement of the sibling library's own, with parameters `?1`, `?2`, ...; kept for the next time under its
    /// exact text. It passes neither the door nor a tracer. Error 4 as `Ejecutar`, 1 for a text that doesn't compile.
    Statement Prepare(std::string_view sql);

    /// Whether the engine has a transaction open.
    bool InTransaction() const;
    /// Whether one is meant: begun, even in vain, and neither committed nor rolled back.
    bool TransactionMeant() const;
    /// Rows that the latest INSERT, UPDATE or DELETE changed.
    std::int64_t RowsChanged() const;

    /// Calls `beforeCommit` inside the transaction just before each commit (if it raises, nothing is committed and the
    /// transaction stays open) and `afterEnd` after each commit or rollback that succeeded. They take the place of the
    /// former ones; empty ones take these away.
    void WatchCommit(std::function<void()> beforeCommit, std::function<void()> afterEnd);

    /// How often a text was compiled since the database was opened: a measure of what the statement cache saves.
    std::int64_t Compilations() const;
    /// How many questions were answered with rows that had been read before.
    std::int64_t Remembered() const;

private:
    struct Parts;
    explicit Connection(std::shared_ptr<Engine> engine);

    std::unique_ptr<Parts> parts_;
};

}  // namespace dhRichClient3

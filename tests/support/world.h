#pragma once

#include "frame/neighbours.h"
#include "frame/platform.h"
#include "frame/provider.h"
#include "frame/raised_error.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace dhRichClient3 {
class Connection;
}

/// A small live world for tests: a fresh database in memory with the whole schema, the sibling library on it, a fixed
/// clock, and a record of everything that the component asked for.
namespace support {

/// One thing that the component asked of its neighbours, in the order in which it did.
struct Asked {
    enum class What { Sql, Begin, Commit, Rollback, Key, Service, Event, Notice };
    What what;
    /// The statement; the table of a key; "OrdenTrabajo.CrearOrden" of a service; the event's name; the notice's text.
    std::string text;
    /// Arguments of a service call in order, of an event its one argument.
    std::vector<Zontara::Value> arguments;
    /// The key that was handed out, or what a service gave.
    Zontara::Value result;
};

/// A platform whose answers a test sets.
class TestPlatform : public Zontara::Platform {
public:
    Zontara::Date now;  // 2026-03-05 08:00:00 at first
    std::string shortDate = "dd/mm/yyyy";
    std::string computer = "PLANT-1";
    std::string application = "planner";
    mutable int yields = 0;
    mutable std::function<void()> onYield;

    TestPlatform();
    Zontara::Date Now() const override { return now; }
    std::string ComputerName() const override { return computer; }
    std::string ApplicationName() const override { return application; }
    std::string ShortDateForm() const override { return shortDate; }
    void Yield() const override;
};

class World {
public:
    World();
    /// On an open database that has its schema.
    explicit World(const Zontara::Ref<dhRichClient3::Connection>& connection);
    ~World();
    World(const World&) = delete;
    World& operator=(const World&) = delete;

    /// Runs any SQL by the administrator's door, several statements and DDL included. Not recorded.
    void Run(std::string_view sql);
    /// Rows of a query as texts, fields joined by "|", null as "NULL". Not recorded.
    std::vector<std::string> Rows(const std::string& sql);
    /// The one field of the one row of a query; "NULL" for null, "" for no row.
    std::string Scalar(const std::string& sql);

    /// What the component asked for since the last `Forget`.
    const std::vector<Asked>& Record() const;
    /// Only the statements of it, letter for letter.
    std::vector<std::string> Statements() const;
    /// Everything of it in short: "begin", "commit", "rollback", "key Boletin", "sql <text>", "service
    /// OrdenTrabajo.CrearOrden", "event ProcesandoImputacion", "notice <text>".
    std::vector<std::string> Story() const;
    void Forget();

    /// From now on the first request whose line in `Story` contains `part` raises this error, once, before it reaches
    /// the database. The request is recorded. `skip` lets so many matching requests pass first.
    void FailOn(std::string part, std::int32_t number = -2147221504 + 19, std::string description = "forced failure",
                int skip = 0);
    /// No request fails any more.
    void Heal();

    /// From now on this is called ahead of each request with its line in `Story`, and is free to raise. An empty one
    /// ends that.
    void OnRequest(std::function<void(const std::string& line)> hook);

    /// Depth of the nesting transactions, and whether the database has one open.
    int Depth() const;
    bool InTransaction() const;
    /// `AbortarTransaccion` by way of the session, for a test's clean-up.
    void Abort();

    TestPlatform& Platform();
    Zontara::SesionGlobal& Session();
    dhRichClient3::Connection& Database();

    /// A day as a date: Day("2026-03-05"), or with a time "2026-03-05 08:00:00".
    static Zontara::Date Day(std::string_view iso);

private:
    struct Parts;
    std::unique_ptr<Parts> parts_;
};

/// Runs something that must raise and gives the error; a test failure when it doesn't raise.
Zontara::ErrorRecord ErrorOf(const std::function<void()>& work);

/// The call-stack lines of a report, without the dashes that pad them.
std::vector<std::string> CallStackOf(const std::string& report);

}  // namespace support

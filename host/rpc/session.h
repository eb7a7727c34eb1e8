#pragma once

#include "dhRichClient3/connection.h"
#include "frame/date.h"
#include "frame/platform.h"
#include "frame/provider.h"
#include "host/rpc/trace.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

namespace host::rpc {

/// How a session is opened.
struct Settings {
    /// Path of the database, or ":memory:".
    std::string database;
    /// Make a missing file, and the schema in an empty database.
    bool create = false;
    bool trace = false;
    /// The present date and time; none for the system's clock.
    std::optional<Zontara::Date> now;
    std::string shortDate = "dd/mm/yyyy";
    /// Steps of the engine that one statement may take.
    std::int64_t stepLimit = dhRichClient3::Options().stepLimit;
};

/// The component's world while a bridge is open: the connection, the sibling library's session on it, the clock and the
/// short date form, all of them the process's. What was in place before comes back at the end.
class Session {
public:
    /// The connection's errors for a database that can't be opened; error 5 for a short date form that is none.
    explicit Session(const Settings& settings);
    /// Rolls back what is open.
    ~Session();
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    dhRichClient3::Connection& Database() { return *database_; }
    const Zontara::Ref<dhRichClient3::Connection>& Connection() const { return database_; }
    /// What the component asks for, when it is traced; else none.
    Trace* Traced() { return trace_.get(); }
    /// Sets the clock. None puts back what the session was opened with.
    void SetNow(std::optional<Zontara::Date> now);

private:
    class Clock;

    std::optional<Zontara::Date> firstNow_;
    Zontara::Ref<dhRichClient3::Connection> database_;
    std::shared_ptr<Trace> trace_;
    std::shared_ptr<Clock> clock_;
    std::shared_ptr<const Zontara::Platform> formerPlatform_;
    std::shared_ptr<Zontara::Provider> formerProvider_;
};

}  // namespace host::rpc

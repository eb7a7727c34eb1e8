#pragma once

#include "host/rpc/handles.h"
#include "host/rpc/json.h"
#include "host/rpc/session.h"

#include <cstddef>
#include <istream>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>

namespace host::rpc {

class Params;

/// A session that is driven by requests, one a line. Everything that it can call stands in the member tables. One
/// bridge at a time in a process, since the session is the process's.
class Bridge {
public:
    /// Opens the database; errors as `Session`.
    explicit Bridge(const Settings& settings);
    /// Lets go of all objects, and rolls back what is open.
    ~Bridge();
    Bridge(const Bridge&) = delete;
    Bridge& operator=(const Bridge&) = delete;

    /// Carries out the request on a line and gives the answer as one line; none for a notification. Nothing leaves as
    /// an exception but for lack of memory while the answer is put together.
    std::optional<std::string> Answer(std::string_view line);

private:
    struct Request;
    using Method = Json (Bridge::*)(const Input* params);
    static Method MethodOf(std::string_view name);

    static Request ReadRequest(const Input& json);
    Json Outcome(const Request& request, bool numberTooLarge);
    Json Failed(int code, const std::string& message, Json data, bool traced);

    Json Create(const Input* params);
    Json Release(const Input* params);
    Json Invoke(const Input* params);
    Json Set(const Input* params);
    Json Describe(const Input* params);
    Json Depth(const Input* params);
    Json Now(const Input* params);
    Json Query(const Input* params);
    Json Execute(const Input* params);

    Zontara::Ref<Zontara::Object> HeldObject(const Params& params) const;

    Session session_;
    Handles handles_;
};

/// Longest line that is read. A longer one is passed over and answered as no JSON.
inline constexpr std::size_t kLongestLine = std::size_t{16} * 1024 * 1024;

/// Answers line by line until the input ends or the output takes no more.
void Serve(Bridge& bridge, std::istream& in, std::ostream& out);

}  // namespace host::rpc

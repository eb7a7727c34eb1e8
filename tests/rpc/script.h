#pragma once

#include "host/rpc/json.h"

#include <optional>
#include <string>
#include <vector>

namespace support {

/// One request of a script, and what must come back.
struct Step {
    int line = 0;
    /// create, call, set, execute, query or depth.
    std::string verb;
    /// The class of a create, the object of a call or a set, the text of an execute or a query, the number of a depth.
    std::string target;
    std::string member;
    /// Arguments of a call, value of a set, as they stand.
    std::string arguments;

    host::rpc::Json value;
    host::rpc::Json byref = host::rpc::Json::object();
    host::rpc::Json trace = host::rpc::Json::array();
    /// Set when the value is a recordset of these columns and rows, under whatever handle.
    std::optional<host::rpc::Json> columns;
    host::rpc::Json rows = host::rpc::Json::array();
    std::optional<int> error;
    /// What the error's message must hold.
    std::string words;
    std::string stack;
};

/// Reads a script. A request begins at the margin; what must come back stands indented below it:
///
///     call CGrupoGama#1 Buscar [1]
///       sql "SELECT * " "FROM Grupo_Gama " ...      trace, in order: sql, begin, commit, rollback, key TABLE N,
///           "continued"                             notice "TEXT", event NAME ARGS, service NAME ARGS -> RESULT
///       = 3                                         the value (null if nothing is said)
///       columns [...] / row [...]                   a recordset as the value
///       byref {...}                                 changed arguments (none if nothing is said)
///       error NUMBER "words" / stack "location"     the error instead, and the call-stack line in its report
///
/// `$last` in arguments is the reference to the object that came last as a value. Lines that begin with # are comments.
std::vector<Step> ReadScript(const std::string& path);

}  // namespace support

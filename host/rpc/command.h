#pragma once

#include "host/console.h"

#include <istream>

namespace CLI {
class App;
}

namespace host {

/// `zontara rpc DB [--create] [--trace] [--now ISO] [--short-date PATTERN]`: a session for another program, driven by
/// JSON-RPC 2.0 over lines until the input ends. The requests come from the standard input, or from `in`, which
/// outlives the command.
void AddRpcCommand(CLI::App& app, Console& console);
void AddRpcCommand(CLI::App& app, Console& console, std::istream& in);

}  // namespace host

#pragma once

#include "host/console.h"

namespace CLI {
class App;
}

namespace host {

/// `zontara idl [--library NAME] [--out DIR] [--text]`: the type libraries as IDL or as a listing, all three or one, on
/// the output or as files of a folder, which is made if it isn't there.
void AddIdlCommand(CLI::App& app, Console& console);

}  // namespace host

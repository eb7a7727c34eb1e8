#pragma once

#include <ostream>

namespace host {

/// Where a command writes. The streams outlive the command.
struct Console {
    std::ostream& out;
    std::ostream& err;
    /// Both streams go to a terminal: progress is worth showing.
    bool terminal = false;
};

}  // namespace host

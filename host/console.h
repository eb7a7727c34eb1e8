#pragma once

#include <ostream>

namespace host {

/// Where a command writes. The streams outlive the command.
struct Console {
    std::ostream& out;
    std::ostream& err;
    /// Both streams go to a terminal that can redraw a line: progress is worth showing.
    bool terminal = false;
    /// The exit status of a command that did what it was asked to.
    int status = 0;
};

}  // namespace host

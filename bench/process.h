#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace bench {

/// What a program took from its start to its end.
struct Spent {
    double wallSeconds = 0;
    double processorSeconds = 0;
    std::size_t peakBytes = 0;
};

/// Runs a program, found on the path unless it is named with a folder, its output thrown away. Ends this one when it
/// fails.
Spent RunProgram(const std::vector<std::string>& arguments);

}  // namespace bench

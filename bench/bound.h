#pragma once

#include <string>

namespace bench {

/// The practical limit: the statement stream of a launch into bulletins through the engine's own interface, each
/// statement prepared once and its values bound, rows of the selection held in plain structures. Gives the number of
/// bulletins.
int LaunchBound(const std::string& path);

}  // namespace bench

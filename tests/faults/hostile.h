#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace faults {

/// A text that somebody gives an operation who means harm.
struct Hostile {
    /// What it is, short enough for a test's message.
    std::string name;
    std::string text;
};

/// More than two hundred of them: statements that try to get out of the one they are put into, functions that reach for
/// files, queries that never end, quotes and comments of every kind, NUL, broken UTF-8.
std::vector<Hostile> HostileValues();

/// Texts of ten megabytes.
std::vector<Hostile> HugeValues();

}  // namespace faults

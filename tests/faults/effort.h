#pragma once

#include <string>

/// Each test of this folder has a short form, for every day, and a long form, for `./run faults`: the environment
/// variable ZONTARA_FAULTS=long asks for the long ones.
namespace faults {

bool IsLong();

/// The number that goes with the form.
inline int Effort(int shortForm, int longForm) { return IsLong() ? longForm : shortForm; }

/// Prints the figures of a test in one line: "faults: kill: 300 launches killed, ...".
void Say(const std::string& figures);

}  // namespace faults

#pragma once

#include <chrono>
#include <string>

/// Each test of this folder has a short form, for every day, and a long form, for `./run faults`: the environment
/// variable ZONTARA_FAULTS=long asks for the long ones.
namespace faults {

bool IsLong();

/// The number that goes with the form.
inline int Effort(int shortForm, int longForm) { return IsLong() ? longForm : shortForm; }

/// The time that a test's long form may take: its loops end when it is used up, and its figures tell how far they came.
class Budget {
public:
    bool Left() const { return std::chrono::steady_clock::now() < end_; }

private:
    std::chrono::steady_clock::time_point end_ = std::chrono::steady_clock::now() + std::chrono::minutes(13);
};

/// Prints the figures of a test in one line: "faults: kill: 300 launches killed, ...".
void Say(const std::string& figures);

}  // namespace faults

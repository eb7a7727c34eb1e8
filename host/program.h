#pragma once

#include "host/console.h"

#include <string>
#include <vector>

namespace host {

/// How the program ends: done; failed, with a message or an error report on the error stream; called in a wrong way.
inline constexpr int kDone = 0;
inline constexpr int kFailed = 1;
inline constexpr int kUsage = 2;
/// Done, and a question whose answer is an exit status too was answered with yes: there are findings.
inline constexpr int kFindings = 3;

/// Runs one command, its words without the program's own name ("init", "plant.db"), and gives the exit status. Nothing
/// leaves it as an exception. A command that writes is whole or undone when it returns.
int Run(const std::vector<std::string>& words, Console console);

/// The program: `Run` on the command line and the standard streams.
int Main(int argc, char** argv);

}  // namespace host

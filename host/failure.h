#pragma once

#include "frame/raised_error.h"

#include <optional>
#include <ostream>
#include <stdexcept>
#include <string>

namespace host {

/// A command can't do what it was asked to, for a reason that the user can mend. The text says what was wrong and what
/// to do; it may have several lines.
class Failure : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// A command was called in a wrong way that the parser of the command line can't see.
class UsageFailure : public Failure {
public:
    using Failure::Failure;
};

/// The engine's primary result code behind an error; none for an error of another origin.
std::optional<int> EngineCode(const Zontara::RaisedError& error);

/// What the user can do about an engine's refusal; empty where there is nothing general to say.
std::string AdviceOn(const Zontara::RaisedError& error);

/// The first line of an error: its cause in the words of the one who raised it, without the report behind.
std::string CauseOf(const Zontara::RaisedError& error);

/// Writes the exception in flight: a failure's own text, or an error's cause, the advice and the report. Call it inside
/// a catch block. Gives the exit status.
int ReportFailure(std::ostream& err, const std::string& command);

}  // namespace host

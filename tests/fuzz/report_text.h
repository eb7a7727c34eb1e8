#pragma once

#include "errors/trap.h"
#include "frame/raised_error.h"
#include "tests/fuzz/check.h"

#include <algorithm>
#include <string>

namespace fuzz {

/// An input of the error report's target: the first line is the location, the second the description of the error, and
/// each line behind them the value of an argument. The number survives two levels, and the second one adds to the
/// first one's report.
inline void FeedReport(std::string_view input) {
    const auto line = [&] {
        const std::string text(input.substr(0, input.find('\n')));
        input.remove_prefix(std::min(input.size(), text.size() + 1));
        return text;
    };
    const std::string location = line();
    const std::string description = line();
    Zontara::Array values;
    while (!input.empty())
        values.emplace_back(line());

    constexpr std::int32_t kNumber = Zontara::vbObjectError + 1;
    std::string inner;
    const auto refuse = [&] {
        try {
            Zontara::TrapWithoutConnection(
                location, [&] { Zontara::RaiseError(kNumber, "fuzz", description); },
                [&] { return Zontara::Value(values); });
        } catch (const Zontara::RaisedError& error) {
            inner = error.Description();
            throw;
        }
    };
    try {
        Zontara::TrapWithoutConnection("Outer(x)", refuse, [&] { return Zontara::Value(location); });
    } catch (const Zontara::RaisedError& error) {
        Require(error.Number() == kNumber && error.Source() == "HuntERR.ErrorIn", "the number is lost");
        Require(error.Description().rfind(inner, 0) == 0, "the outer report doesn't begin with the inner one");
        Require(error.Description().find("  Call Stack: Outer(", inner.size()) != std::string::npos,
                "the outer level is missing");
        return;
    }
    Require(false, "nothing was raised");
}

}  // namespace fuzz

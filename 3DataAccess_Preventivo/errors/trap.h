#pragma once

#include "frame/value.h"

#include <cstdint>
#include <string_view>
#include <type_traits>
#include <utility>

namespace Zontara {

/// The values of a method's arguments as its report shows them: one value as itself, several as a list.
template <class... T> Value Arguments(const T&... values) {
    if constexpr (sizeof...(T) == 0) {
        return Absent{};
    } else if constexpr (sizeof...(T) == 1) {
        return Value(values...);
    } else {
        return Array{Value(values)...};
    }
}

namespace trap_detail {

/// Called inside a catch block. Takes up the exception in flight as the current error and asks for the step dialog.
/// True: the work is to be run again.
bool StepAgain();
/// Ends a failure by `ErrorIn` with the flags 51 and the shared connection, or 43 and no database object.
[[noreturn]] void Report(std::string_view location, const Value& arguments);
[[noreturn]] void ReportWithoutConnection(std::string_view location, const Value& arguments);

/// The values, or none of them when they can't be gathered: then the report is the shorter for it.
template <class Values> Value Gathered(Values& values) {
    try {
        return values();
    } catch (...) {
        return Array();
    }
}

template <class Work, class Values, class Finish>
auto Run(std::string_view location, Work& work, Values& values, Finish finish) -> decltype(work()) {
    for (;;) {
        try {
            return work();
        } catch (...) {
            if (StepAgain()) continue;
            finish(location, Gathered(values));
        }
    }
}

inline Value NoArguments() { return Absent{}; }

}  // namespace trap_detail

/// The frame of a data method: runs the work, and on a failure of any kind raises it again with one more call-stack
/// line of `location`. `values` gives the argument values and is asked only after a failure, so that the normal path
/// pays for nothing but the trap itself.
///
///     return Trap("CBoletin.Borrar(SC_Boletin)", [&] { ... }, [&] { return Arguments(SC_Boletin); });
template <class Work, class Values> auto Trap(std::string_view location, Work work, Values values) -> decltype(work()) {
    return trap_detail::Run(location, work, values, trap_detail::Report);
}
template <class Work> auto Trap(std::string_view location, Work work) -> decltype(work()) {
    return trap_detail::Run(location, work, trap_detail::NoArguments, trap_detail::Report);
}

/// The same without a database object: for the helpers of `Libreria` and the private routines of the launches.
template <class Work, class Values>
auto TrapWithoutConnection(std::string_view location, Work work, Values values) -> decltype(work()) {
    return trap_detail::Run(location, work, values, trap_detail::ReportWithoutConnection);
}
template <class Work> auto TrapWithoutConnection(std::string_view location, Work work) -> decltype(work()) {
    return trap_detail::Run(location, work, trap_detail::NoArguments, trap_detail::ReportWithoutConnection);
}

}  // namespace Zontara

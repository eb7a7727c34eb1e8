#pragma once

#include <string_view>

namespace planning {

/// How an assignment falls due: by the calendar, together with its asset's other tasks or by itself, or by the meter.
/// Each kind has a launch of its own; together they run in this order.
enum class Kind { Synchronised, Conventional, Meter };

/// The word that commands and pages use for a kind, in small letters.
std::string_view NameOf(Kind kind);

}  // namespace planning

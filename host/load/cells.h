#pragma once

#include "host/load/sheet.h"

#include <optional>
#include <string>
#include <string_view>

namespace host::load {

/// A cell as a value of its column's kind: Empty for an empty cell. On failure gives none and sets `reason`.
std::optional<Zontara::Value> Cell(std::string_view text, CellKind kind, std::string& reason);

/// A date written as yyyy-mm-dd or dd/mm/yyyy (two-digit parts may lack their leading nought) as yyyy-mm-dd; none for
/// what is no day of the calendar.
std::optional<std::string> IsoDate(std::string_view text);

/// The text without blanks around it.
std::string_view Trimmed(std::string_view text);

}  // namespace host::load

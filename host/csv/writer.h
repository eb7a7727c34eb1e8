#pragma once

#include <ostream>
#include <string>
#include <string_view>
#include <vector>

/// Writes comma-separated text by RFC 4180, lines ending in LF.
namespace host::csv {

/// The text in quotes, those inside it doubled.
std::string Quoted(std::string_view text);

/// The text as a cell: in quotes where it needs them.
std::string Cell(std::string_view text);

/// One line of texts.
void WriteLine(std::ostream& out, const std::vector<std::string>& texts);

}  // namespace host::csv

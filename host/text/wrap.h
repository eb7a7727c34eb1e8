#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace host::text {

/// The text in lines of at most so many characters, broken at blanks, each behind so many blanks and ended by a line
/// break. A word that is longer stands alone.
std::string Wrapped(std::string_view text, std::size_t width, std::size_t indent = 0);

}  // namespace host::text

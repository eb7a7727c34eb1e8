#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/// The few services on texts that a report needs. Each is linear in the length of its text.
namespace Zontara::HuntERR31 {

/// Ends every line of a report.
inline constexpr std::string_view kLineBreak = "\r\n";

/// Length in bytes of the character that a text, which isn't empty, begins with. A byte that begins no valid UTF-8
/// sequence is a character by itself.
std::size_t FirstCharacter(std::string_view text);

/// Number of characters of a text, counted up to `enough` and no further.
std::size_t CountCharacters(std::string_view text, std::size_t enough = std::string_view::npos);

/// The text without its first character, or without its last. An empty one stays empty.
std::string_view WithoutFirst(std::string_view text);
std::string_view WithoutLast(std::string_view text);

/// The pieces between the separators: one for a text without any, none for the empty text.
std::vector<std::string_view> Split(std::string_view text, char separator);

/// Every occurrence of `what`, which isn't empty, replaced. What was put in isn't looked at again.
std::string ReplaceAll(std::string_view text, std::string_view what, std::string_view by);

}  // namespace Zontara::HuntERR31

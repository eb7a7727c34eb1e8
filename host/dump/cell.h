#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <variant>

/// Rows of a table as CSV and back, so that nothing is lost on the way. One line a row; the first line names the
/// columns.
///
///     nothing         null
///     "A ""text"""    a text, always in quotes; "" is the empty text
///     12   -3         a whole number
///     2.5   1e+20     a number with decimals; inf and -inf too
///     x'0aff'         bytes
///     t'c3'           the bytes of a text that isn't UTF-8, or that holds the character of code 0
namespace host::dump {

/// Bytes that are no text.
struct Bytes {
    std::string bytes;
};

/// What a cell of a table holds.
using Stored = std::variant<std::monostate, std::int64_t, double, std::string, Bytes>;

std::string ToCsv(const Stored& value);

/// The value of a cell that stood in quotes, or didn't; none for what is none of the forms above.
std::optional<Stored> FromCsv(const std::string& cell, bool quoted);

}  // namespace host::dump

#pragma once

#include "dhRichClient3/dialect/tokens.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace dhRichClient3::dialect {

/// A literal of a text, read in passing.
struct Literal {
    TokenKind kind;
    /// Of a string what stands between the quotes, doubled ones and all; of a number its text.
    std::string_view text;
    /// It is a string that holds doubled quotes.
    bool doubled = false;
    /// The value of a whole number.
    std::int64_t whole = 0;
    /// The value of a decimal number of at most fifteen digits, three of them behind the point: it is one division of
    /// whole numbers, and every reader gets the same. None for a longer one, or one with an exponent.
    std::optional<double> decimal{};

    bool IsFlag() const { return Token{kind, text}.IsFlag(); }
};

/// Reads the literal of a kind (string, short whole number, decimal number) that begins at a place of a text, and moves
/// the place behind it. False when there is none; the place says nothing then.
bool TakeLiteral(std::string_view text, std::size_t& at, Literal& literal);

/// What a string means that holds doubled quotes.
std::string WithSingleQuotes(std::string_view inside);

}  // namespace dhRichClient3::dialect

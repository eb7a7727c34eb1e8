#pragma once

#include "dhRichClient3/dialect/tokens.h"

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <string>
#include <string_view>

namespace dhRichClient3::dialect {

/// A literal of a text, read in passing.
struct Literal {
    TokenKind kind = TokenKind::String;
    /// It is a string that holds doubled quotes.
    bool doubled = false;
    /// It is a decimal number of at most fifteen digits, three of them behind the point: one division of whole numbers,
    /// with which every reader gets the same. Not a longer one, nor one with an exponent.
    bool exact = false;
    /// Of a string what stands between the quotes, doubled ones and all; of a number its text.
    std::string_view text;
    /// The value of a whole number.
    std::int64_t whole = 0;
    /// The value of an exact decimal number.
    double decimal = 0;

    bool IsFlag() const { return Token{kind, text}.IsFlag(); }
};

namespace reading {

inline constexpr std::size_t kMostExactDigits = 15;
inline constexpr double kUnits[] = {1, 10, 100, 1000};

/// Behind the digits that stand at a place. They are put behind those of a number, which wraps round when there are too
/// many.
inline std::size_t TakeDigits(std::string_view text, std::size_t at, std::uint64_t& number) {
    for (; at < text.size() && IsDigit(text[at]); ++at)
        number = number * 10 + static_cast<std::uint64_t>(text[at] - '0');
    return at;
}

inline bool TakeString(std::string_view text, std::size_t& at, Literal& literal) {
    if (text[at] != '\'') return false;
    literal.kind = TokenKind::String;
    literal.doubled = false;
    const std::size_t begin = ++at;
    for (;; at += 2) {
        at = text.find('\'', at);
        if (at == std::string_view::npos) return false;
        if (at + 1 == text.size() || text[at + 1] != '\'') break;
        literal.doubled = true;
    }
    literal.text = text.substr(begin, at - begin);
    ++at;
    return true;
}

inline bool KeepInteger(std::string_view digits, std::uint64_t number, Literal& literal) {
    literal.kind = TokenKind::Integer;
    literal.text = digits;
    literal.whole = static_cast<std::int64_t>(number);
    return !digits.empty() && digits.size() <= kLongestInteger;
}

inline bool TakeInteger(std::string_view text, std::size_t& at, Literal& literal) {
    const std::size_t begin = at;
    std::uint64_t number = 0;
    at = TakeDigits(text, begin, number);
    return KeepInteger(text.substr(begin, at - begin), number, literal);
}

inline bool TakeNumber(std::string_view text, std::size_t& at, Literal& literal) {
    const std::size_t begin = at;
    std::uint64_t digits = 0;
    at = TakeDigits(text, begin, digits);
    std::size_t count = at - begin;
    std::size_t decimals = 0;
    bool exact = false;
    const bool point = at < text.size() && text[at] == '.';
    if (point) {
        const std::size_t end = TakeDigits(text, at + 1, digits);
        decimals = end - at - 1;
        count += decimals;
        at = end;
    }
    if (count == 0) return false;
    if (at < text.size() && (text[at] == 'e' || text[at] == 'E')) {
        const bool sign = at + 1 < text.size() && (text[at + 1] == '+' || text[at + 1] == '-');
        const std::size_t exponent = at + (sign ? 2 : 1);
        at = TakeDigits(text, exponent, digits);
        if (at == exponent) return false;
    } else if (!point) {
        return KeepInteger(text.substr(begin, at - begin), digits, literal);
    } else if (count <= kMostExactDigits && decimals < std::size(kUnits)) {
        exact = true;
        literal.decimal = static_cast<double>(digits) / kUnits[decimals];
    }
    literal.kind = TokenKind::Decimal;
    literal.exact = exact;
    literal.text = text.substr(begin, at - begin);
    return true;
}

}  // namespace reading

/// Reads the literal of a kind that begins at a place of a text, and moves the place behind it: a string, a short whole
/// number, or where a decimal number is looked for one of both kinds, which then is the literal's. False when there is
/// none; the place and the literal say nothing then.
inline bool TakeLiteral(TokenKind kind, std::string_view text, std::size_t& at, Literal& literal) {
    if (at >= text.size()) return false;
    switch (kind) {
        case TokenKind::String:
            return reading::TakeString(text, at, literal);
        case TokenKind::Integer:
            return reading::TakeInteger(text, at, literal);
        default:
            return reading::TakeNumber(text, at, literal);
    }
}

/// What a string means that holds doubled quotes.
std::string WithSingleQuotes(std::string_view inside);

}  // namespace dhRichClient3::dialect

#pragma once

#include "dhRichClient3/dialect/tokens.h"

#include <cstddef>
#include <cstdint>
#include <cstring>
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

inline constexpr std::ptrdiff_t kMostExactDigits = 15;
inline constexpr double kUnits[] = {1, 10, 100, 1000};

/// Behind the digits that stand at a place. They are put behind those of a number, which wraps round when there are too
/// many.
inline const char* TakeDigits(const char* at, const char* end, std::uint64_t& number) {
    for (; at != end && IsDigit(*at); ++at)
        number = number * 10 + static_cast<std::uint64_t>(*at - '0');
    return at;
}

inline std::string_view Between(const char* begin, const char* end) {
    return {begin, static_cast<std::size_t>(end - begin)};
}

inline const char* TakeString(const char* at, const char* end, Literal& literal) {
    if (*at != '\'') return nullptr;
    literal.kind = TokenKind::String;
    literal.doubled = false;
    const char* const begin = ++at;
    for (;; at += 2) {
        at = static_cast<const char*>(std::memchr(at, '\'', static_cast<std::size_t>(end - at)));
        if (at == nullptr) return nullptr;
        if (at + 1 == end || at[1] != '\'') break;
        literal.doubled = true;
    }
    literal.text = Between(begin, at);
    return at + 1;
}

/// A whole number that was read up to a place.
inline const char* KeepInteger(const char* begin, const char* end, std::uint64_t number, Literal& literal) {
    literal.kind = TokenKind::Integer;
    literal.text = Between(begin, end);
    literal.whole = static_cast<std::int64_t>(number);
    return begin != end && literal.text.size() <= kLongestInteger ? end : nullptr;
}

inline const char* TakeInteger(const char* begin, const char* end, Literal& literal) {
    std::uint64_t number = 0;
    const char* const at = TakeDigits(begin, end, number);
    return KeepInteger(begin, at, number, literal);
}

inline const char* TakeNumber(const char* begin, const char* end, Literal& literal) {
    std::uint64_t number = 0;
    const char* at = TakeDigits(begin, end, number);
    const bool exponent = at != end && (*at == 'e' || *at == 'E');
    if (!exponent && (at == end || *at != '.')) return KeepInteger(begin, at, number, literal);
    std::ptrdiff_t digits = at - begin;
    std::ptrdiff_t decimals = 0;
    if (!exponent) {
        const char* const point = at;
        at = TakeDigits(point + 1, end, number);
        decimals = at - point - 1;
        digits += decimals;
    }
    if (digits == 0) return nullptr;
    literal.kind = TokenKind::Decimal;
    literal.exact = digits <= kMostExactDigits && decimals < static_cast<std::ptrdiff_t>(std::size(kUnits));
    if (literal.exact) literal.decimal = static_cast<double>(number) / kUnits[decimals];
    if (at != end && (*at == 'e' || *at == 'E')) {
        literal.exact = false;
        const bool sign = at + 1 != end && (at[1] == '+' || at[1] == '-');
        const char* const power = at + (sign ? 2 : 1);
        at = TakeDigits(power, end, number);
        if (at == power) return nullptr;
    }
    literal.text = Between(begin, at);
    return at;
}

}  // namespace reading

/// Reads the literal of a kind that begins at a place of a text and gives the place behind it: a string, a short whole
/// number, or where a decimal number is looked for one of both kinds, which then is the literal's. Null when there is
/// none; the literal says nothing then.
inline const char* TakeLiteral(TokenKind kind, const char* at, const char* end, Literal& literal) {
    if (at == end) return nullptr;
    switch (kind) {
        case TokenKind::String:
            return reading::TakeString(at, end, literal);
        case TokenKind::Integer:
            return reading::TakeInteger(at, end, literal);
        default:
            return reading::TakeNumber(at, end, literal);
    }
}

/// What a string means that holds doubled quotes.
std::string WithSingleQuotes(std::string_view inside);

}  // namespace dhRichClient3::dialect

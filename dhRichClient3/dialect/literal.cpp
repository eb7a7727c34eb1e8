#include "dhRichClient3/dialect/literal.h"

#include <iterator>

namespace dhRichClient3::dialect {
namespace {

constexpr std::size_t kMostExactDigits = 15;
constexpr double kUnits[] = {1, 10, 100, 1000};

/// Behind the digits that stand at a place. They are put behind those of a number, which wraps round when there are too
/// many.
std::size_t TakeDigits(std::string_view text, std::size_t at, std::uint64_t& number) {
    for (; at < text.size() && IsDigit(text[at]); ++at)
        number = number * 10 + static_cast<std::uint64_t>(text[at] - '0');
    return at;
}

bool TakeString(std::string_view text, std::size_t& at, Literal& literal) {
    if (text[at] != '\'') return false;
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

bool TakeInteger(std::string_view text, std::size_t& at, Literal& literal) {
    const std::size_t begin = at;
    std::uint64_t number = 0;
    at = TakeDigits(text, begin, number);
    literal.text = text.substr(begin, at - begin);
    literal.whole = static_cast<std::int64_t>(number);
    return at > begin && at - begin <= kLongestInteger;
}

bool TakeDecimal(std::string_view text, std::size_t& at, Literal& literal) {
    const std::size_t begin = at;
    std::uint64_t digits = 0;
    at = TakeDigits(text, begin, digits);
    std::size_t count = at - begin;
    std::size_t decimals = 0;
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
        return false;
    } else if (count <= kMostExactDigits && decimals < std::size(kUnits)) {
        literal.decimal = static_cast<double>(digits) / kUnits[decimals];
    }
    literal.text = text.substr(begin, at - begin);
    return true;
}

}  // namespace

bool TakeLiteral(std::string_view text, std::size_t& at, Literal& literal) {
    if (at >= text.size()) return false;
    switch (literal.kind) {
        case TokenKind::String:
            return TakeString(text, at, literal);
        case TokenKind::Integer:
            return TakeInteger(text, at, literal);
        default:
            return TakeDecimal(text, at, literal);
    }
}

std::string WithSingleQuotes(std::string_view inside) {
    std::string text;
    text.reserve(inside.size());
    for (std::size_t at = 0; at < inside.size(); ++at) {
        text += inside[at];
        if (inside[at] == '\'') ++at;
    }
    return text;
}

}  // namespace dhRichClient3::dialect

#include "dhRichClient3/dialect/shape.h"

#include <cstring>

namespace dhRichClient3::dialect {
namespace {

/// The engine reads a decimal number as it reads its own literals. The sign takes the affinity of a cast off it.
constexpr const char* kDecimalParameter = "+CAST(? AS REAL)";

/// Calls `piece` with each piece of a text between the literals, the last one included, and `literal` with each
/// literal.
template <class Piece, class Literal>
void TakeApart(std::string_view text, const std::vector<Token>& literals, Piece piece, Literal literal) {
    std::size_t done = 0;
    for (const Token& token : literals) {
        const auto begin = static_cast<std::size_t>(token.text.data() - text.data());
        piece(text.substr(done, begin - done));
        literal(token);
        done = begin + token.text.size();
    }
    piece(text.substr(done));
}

/// Behind the digits that stand at a place.
std::size_t DigitsEnd(std::string_view text, std::size_t at) {
    while (at < text.size() && IsDigit(text[at]))
        ++at;
    return at;
}

/// Behind the closing quote of the string that begins at a place, or npos; tells whether quotes are doubled in it.
std::size_t StringEnd(std::string_view text, std::size_t at, bool& doubled) {
    for (++at;; at += 2) {
        at = text.find('\'', at);
        if (at == std::string_view::npos) return at;
        if (at + 1 == text.size() || text[at + 1] != '\'') return at + 1;
        doubled = true;
    }
}

/// Behind the decimal number that begins at a place; the place itself for a whole number or none.
std::size_t DecimalEnd(std::string_view text, std::size_t at) {
    std::size_t end = DigitsEnd(text, at);
    const bool point = end < text.size() && text[end] == '.';
    if (point) {
        end = DigitsEnd(text, end + 1);
        if (end == at + 1) return at;
    } else if (end == at) {
        return at;
    }
    if (end == text.size() || (text[end] != 'e' && text[end] != 'E')) return point ? end : at;
    const bool sign = end + 1 < text.size() && (text[end + 1] == '+' || text[end + 1] == '-');
    const std::size_t exponent = end + (sign ? 2 : 1);
    const std::size_t behind = DigitsEnd(text, exponent);
    return behind > exponent ? behind : at;
}

}  // namespace

bool TakeLiteral(std::string_view text, std::size_t& at, TokenKind kind, Literal& literal) {
    const std::size_t begin = at;
    literal = {kind, {}};
    if (begin >= text.size()) return false;
    if (kind == TokenKind::String) {
        if (text[begin] != '\'') return false;
        at = StringEnd(text, begin, literal.doubled);
        if (at == std::string_view::npos) return false;
        literal.text = text.substr(begin + 1, at - begin - 2);
        return true;
    }
    at = kind == TokenKind::Integer ? DigitsEnd(text, begin) : DecimalEnd(text, begin);
    literal.text = text.substr(begin, at - begin);
    return at > begin && (kind != TokenKind::Integer || at - begin <= kLongestInteger);
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

Shape::Shape(std::string_view text, const std::vector<Token>& lifted, bool flagsDiffer) : flagsDiffer_(flagsDiffer) {
    rest_.reserve(text.size());
    cuts_.reserve(lifted.size());
    TakeApart(
        text, lifted, [&](std::string_view piece) { rest_ += piece; },
        [&](const Token& token) {
            cuts_.push_back({rest_.size(), token.kind});
        });
}

bool Shape::Matches(std::string_view text, std::vector<Literal>& literals) const {
    literals.clear();
    std::size_t at = 0;
    std::size_t done = 0;
    const auto agrees = [&](std::size_t end) {
        const std::size_t length = end - done;
        if (text.size() - at < length || std::memcmp(text.data() + at, rest_.data() + done, length) != 0) return false;
        at += length;
        done = end;
        return true;
    };
    for (const auto& [end, kind] : cuts_) {
        if (!agrees(end)) return false;
        Literal literal{kind, {}};
        if (!TakeLiteral(text, at, kind, literal) || (flagsDiffer_ && literal.IsFlag())) return false;
        literals.push_back(literal);
    }
    return agrees(rest_.size()) && at == text.size();
}

std::string Shape::Text() const {
    std::string text;
    std::size_t done = 0;
    for (const auto& [at, kind] : cuts_) {
        text.append(rest_, done, at - done).append(kind == TokenKind::Decimal ? kDecimalParameter : "?");
        done = at;
    }
    return text.append(rest_, done);
}

void ShapeOf(std::string_view text, const std::vector<Token>& tokens, std::string& shape) {
    shape.clear();
    std::vector<Token> literals;
    for (const Token& token : tokens) {
        if (token.IsLiteral()) literals.push_back(token);
    }
    TakeApart(
        text, literals, [&](std::string_view piece) { shape += piece; }, [&](const Token&) { shape += '?'; });
}

}  // namespace dhRichClient3::dialect

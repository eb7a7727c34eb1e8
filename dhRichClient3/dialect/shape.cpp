#include "dhRichClient3/dialect/shape.h"

#include <cstring>

namespace dhRichClient3::dialect {
namespace {

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

}  // namespace

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
    if (literals.size() < cuts_.size()) literals.resize(cuts_.size());
    Literal* literal = literals.data();
    const char* at = text.data();
    const char* const end = at + text.size();
    std::size_t done = 0;
    const auto agrees = [&](std::size_t upTo) {
        const std::size_t length = upTo - done;
        if (static_cast<std::size_t>(end - at) < length) return false;
        const char* const ours = rest_.data() + done;
        // Between literals there is mostly a comma and perhaps quotes.
        if (length > 0 && *ours != *at) return false;
        if (length > 1 && std::memcmp(ours, at, length) != 0) return false;
        at += length;
        done = upTo;
        return true;
    };
    for (const auto& [upTo, kind] : cuts_) {
        if (!agrees(upTo)) return false;
        at = TakeLiteral(kind, at, end, *literal);
        if (at == nullptr || (flagsDiffer_ && literal->IsFlag())) return false;
        ++literal;
    }
    return agrees(rest_.size()) && at == end;
}

std::string Shape::Text() const {
    std::string text;
    std::size_t done = 0;
    for (const Cut& cut : cuts_) {
        text.append(rest_, done, cut.at - done).append("?");
        done = cut.at;
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

#include "dhRichClient3/dialect/tokens.h"

#include <algorithm>

namespace dhRichClient3::dialect {
namespace {

constexpr bool IsHexDigit(char c) { return IsDigit(c) || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F'); }
constexpr bool IsLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' || static_cast<unsigned char>(c) >= 0x80;
}
constexpr bool IsWordPart(char c) { return IsLetter(c) || IsDigit(c) || c == '$'; }
constexpr bool IsBlank(char c) { return c == ' ' || (c >= '\t' && c <= '\r' && c != '\v'); }
constexpr char Lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

/// Walks over a text; each function takes the place where a token starts and gives the place behind it.
class Scanner {
public:
    explicit Scanner(std::string_view text) : text_(text) {}

    std::size_t SkipBlanks(std::size_t at) const {
        for (;;) {
            while (at < text_.size() && IsBlank(text_[at]))
                ++at;
            if (At(at) == '-' && At(at + 1) == '-') {
                at = std::min(text_.find('\n', at), text_.size());
            } else if (At(at) == '/' && At(at + 1) == '*' && at + 2 < text_.size()) {
                const auto end = text_.find("*/", at + 2);
                at = end == std::string_view::npos ? text_.size() : end + 2;
            } else {
                return at;
            }
        }
    }

    Token Take(std::size_t at) const {
        const char c = text_[at];
        if ((c == 'x' || c == 'X') && At(at + 1) == '\'') return Closed(at, QuotedEnd(at + 1, '\''), TokenKind::Blob);
        if (IsLetter(c)) return Cut(at, WordEnd(at), TokenKind::Word);
        if (IsDigit(c) || (c == '.' && IsDigit(At(at + 1)))) return TakeNumber(at);
        switch (c) {
            case '\'':
                return Closed(at, QuotedEnd(at, c), TokenKind::String);
            case '"':
            case '`':
                return Closed(at, QuotedEnd(at, c), TokenKind::Quoted);
            case '[': {
                const auto end = text_.find(']', at);
                return Closed(at, end == std::string_view::npos ? end : end + 1, TokenKind::Quoted);
            }
            case '?':
            case ':':
            case '@':
            case '#':
            case '$':
                return Cut(at, WordEnd(at + 1), TokenKind::Variable);
            default:
                return Cut(at, at + 1, IsSymbol(c) ? TokenKind::Symbol : TokenKind::Broken);
        }
    }

private:
    char At(std::size_t at) const { return at < text_.size() ? text_[at] : '\0'; }
    static bool IsSymbol(char c) { return std::string_view("()*+,-./;<=>!%&|~").find(c) != std::string_view::npos; }

    Token Cut(std::size_t at, std::size_t end, TokenKind kind) const { return {kind, text_.substr(at, end - at)}; }
    Token Closed(std::size_t at, std::size_t end, TokenKind kind) const {
        return end == std::string_view::npos ? Cut(at, text_.size(), TokenKind::Broken) : Cut(at, end, kind);
    }

    std::size_t WordEnd(std::size_t at) const {
        while (at < text_.size() && IsWordPart(text_[at]))
            ++at;
        return at;
    }

    /// Behind the closing quote, or npos. A doubled quote is part of the text.
    std::size_t QuotedEnd(std::size_t at, char quote) const {
        for (++at;; at += 2) {
            at = text_.find(quote, at);
            if (at == std::string_view::npos) return at;
            if (At(at + 1) != quote) return at + 1;
        }
    }

    std::size_t DigitsEnd(std::size_t at) const {
        while (IsDigit(At(at)))
            ++at;
        return at;
    }

    Token TakeNumber(std::size_t at) const {
        std::size_t end = at;
        if (text_[at] == '0' && Lower(At(at + 1)) == 'x' && IsHexDigit(At(at + 2))) {
            for (end = at + 2; IsHexDigit(At(end));)
                ++end;
        } else {
            end = DigitsEnd(at);
            if (At(end) == '.') end = DigitsEnd(end + 1);
            if (Lower(At(end)) == 'e') {
                const std::size_t sign = At(end + 1) == '+' || At(end + 1) == '-' ? 1 : 0;
                if (IsDigit(At(end + 1 + sign))) end = DigitsEnd(end + 1 + sign);
            }
        }
        if (IsWordPart(At(end))) return Cut(at, WordEnd(end), TokenKind::Broken);
        const auto number = text_.substr(at, end - at);
        if (std::all_of(number.begin(), number.end(), IsDigit)) {
            return {number.size() <= kLongestInteger ? TokenKind::Integer : TokenKind::Number, number};
        }
        return {number.size() > 1 && Lower(number[1]) == 'x' ? TokenKind::Number : TokenKind::Decimal, number};
    }

    std::string_view text_;
};

}  // namespace

bool SameName(std::string_view left, std::string_view right) {
    return left.size() == right.size() && HasPrefix(left, right);
}

bool HasPrefix(std::string_view name, std::string_view prefix) {
    return name.size() >= prefix.size() &&
           std::equal(prefix.begin(), prefix.end(), name.begin(), [](char a, char b) { return Lower(a) == Lower(b); });
}

bool Token::IsWord(std::string_view keyword) const { return kind == TokenKind::Word && SameName(text, keyword); }

bool Token::IsFlag() const {
    if (kind != TokenKind::Integer) return false;
    const std::size_t digit = text.find_first_not_of('0');
    return digit == std::string_view::npos || (digit + 1 == text.size() && text.back() == '1');
}

bool Token::Names(std::string_view name) const {
    if (kind == TokenKind::Word) return SameName(text, name);
    return kind == TokenKind::Quoted && SameName(Unquoted(*this), name);
}

std::string Unquoted(const Token& token) {
    if (token.kind != TokenKind::Quoted && token.kind != TokenKind::String) return std::string(token.text);
    const char quote = token.text.back();
    std::string name;
    name.reserve(token.text.size());
    for (std::size_t at = 1; at + 1 < token.text.size(); ++at) {
        name += token.text[at];
        if (quote != ']' && token.text[at] == quote) ++at;
    }
    return name;
}

void Tokenize(std::string_view text, std::vector<Token>& tokens) {
    tokens.clear();
    const Scanner scanner(text);
    const bool marked = text.substr(0, 3) == "\xEF\xBB\xBF";
    for (std::size_t at = scanner.SkipBlanks(marked ? 3 : 0); at < text.size(); at = scanner.SkipBlanks(at)) {
        tokens.push_back(scanner.Take(at));
        at += tokens.back().text.size();
    }
}

}  // namespace dhRichClient3::dialect

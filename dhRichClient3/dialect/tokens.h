#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

/// SQLite's dialect of SQL as far as the connection has to understand it: what a text is made of, whether it may pass,
/// which column a bare name means, which texts have one shape. Knows no engine.
namespace dhRichClient3::dialect {

/// Digits of the longest whole number that is sure to fit 64 bits.
inline constexpr std::size_t kLongestInteger = 18;

constexpr bool IsDigit(char c) { return c >= '0' && c <= '9'; }

enum class TokenKind : std::uint8_t {
    Word,      ///< keyword or bare identifier
    Quoted,    ///< identifier in "", `` or []
    String,    ///< text in single quotes
    Integer,   ///< digits only, few enough to fit 64 bits
    Decimal,   ///< a number with a point or an exponent
    Number,    ///< any other number
    Blob,      ///< X'...'
    Variable,  ///< ?1, :name, ...
    Symbol,    ///< one character of an operator or a bracket
    Broken,    ///< a quote that is never closed, a character that starts nothing
};

/// A piece of a text, without blanks and comments. Refers to the text it was found in.
struct Token {
    TokenKind kind;
    std::string_view text;

    bool IsSymbol(char symbol) const { return kind == TokenKind::Symbol && text.front() == symbol; }
    /// Whether it is a keyword, given in capitals.
    bool IsWord(std::string_view keyword) const;
    /// A bare or quoted identifier, keywords included.
    bool IsName() const { return kind == TokenKind::Word || kind == TokenKind::Quoted; }
    /// Whether it is an identifier that names this, without regard to case.
    bool Names(std::string_view name) const;
    /// A string or a short integer: what differs between texts of one shape.
    bool IsLiteral() const { return kind == TokenKind::String || kind == TokenKind::Integer; }
    /// Whether it is 0 or 1 as a whole number.
    bool IsFlag() const;
};

/// The pieces of a text, in order, into a vector that a caller may use again and again.
void Tokenize(std::string_view text, std::vector<Token>& tokens);

/// Whether two identifiers are the same: without regard to the case of ASCII letters.
bool SameName(std::string_view left, std::string_view right);

/// Whether a name begins with a prefix, without regard to case.
bool HasPrefix(std::string_view name, std::string_view prefix);

/// What stands between the quotes of a quoted token, doubled quotes made single; a bare one as it is.
std::string Unquoted(const Token& token);

}  // namespace dhRichClient3::dialect

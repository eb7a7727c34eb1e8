#include "dhRichClient3/dialect/tokens.h"

#include "dhRichClient3/dialect/shape.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace dhRichClient3::dialect {
namespace {

/// Each token as a letter of its kind and its text.
std::vector<std::string> Pieces(std::string_view text) {
    constexpr std::string_view kLetters = "WQSIDNBV.!";
    std::vector<Token> tokens;
    Tokenize(text, tokens);
    std::vector<std::string> pieces;
    for (const Token& token : tokens) {
        pieces.push_back(kLetters[static_cast<std::size_t>(token.kind)] + std::string(token.text));
    }
    return pieces;
}

struct Case {
    std::string_view text;
    std::vector<std::string> pieces;
};

TEST(Tokens, TextsFallIntoTheirPieces) {
    const Case cases[] = {
        {"", {}},
        {" \t\r\n\f", {}},
        {"Select a.b", {"WSelect", "Wa", "..", "Wb"}},
        {"año$1", {"Waño$1"}},
        {"'it''s'", {"S'it''s'"}},
        {"''", {"S''"}},
        {"'a''", {"!'a''"}},
        {"\"a\"\"b\" `c` [d e]", {"Q\"a\"\"b\"", "Q`c`", "Q[d e]"}},
        {"\"open", {"!\"open"}},
        {"[open", {"![open"}},
        {"1 12.5 .5 1e3 1E-3 5. 0x1F", {"I1", "D12.5", "D.5", "D1e3", "D1E-3", "D5.", "N0x1F"}},
        {"123456789012345678", {"I123456789012345678"}},
        {"1234567890123456789", {"N1234567890123456789"}},
        {"12ab", {"!12ab"}},
        {"1e", {"!1e"}},
        {"-5", {".-", "I5"}},
        {"x'0f' X'' xy", {"Bx'0f'", "BX''", "Wxy"}},
        {"?1 ? :a @b $c", {"V?1", "V?", "V:a", "V@b", "V$c"}},
        {"a--b;c\nd", {"Wa", "Wd"}},
        {"a--b", {"Wa"}},
        {"a/*;'*/b", {"Wa", "Wb"}},
        {"a/*b", {"Wa"}},
        {"a/*", {"Wa", "./", ".*"}},
        {"a<>b||c", {"Wa", ".<", ".>", "Wb", ".|", ".|", "Wc"}},
        {"\xEF\xBB\xBF a", {"Wa"}},
        {"a^b{", {"Wa", "!^", "Wb", "!{"}},
    };
    for (const auto& [text, pieces] : cases)
        EXPECT_EQ(Pieces(text), pieces) << text;
}

TEST(Tokens, NamesAreTheSameWithoutRegardToCaseOrQuotes) {
    std::vector<Token> tokens;
    Tokenize("ID_Activo \"id_activo\" [Id_Activo] `a``b` other", tokens);
    EXPECT_TRUE(tokens[0].Names("id_ACTIVO"));
    EXPECT_TRUE(tokens[1].Names("ID_Activo"));
    EXPECT_TRUE(tokens[2].Names("ID_Activo"));
    EXPECT_EQ(Unquoted(tokens[3]), "a`b");
    EXPECT_FALSE(tokens[4].Names("ID_Activo"));
    EXPECT_FALSE(tokens[1].IsWord("ID_ACTIVO"));
}

TEST(Shape, LiteralsBecomeQuestionMarksAndAllElseStays) {
    const std::pair<std::string_view, std::string_view> cases[] = {
        {"  DELETE From Boletin WHERE SC_Boletin =5", "  DELETE From Boletin WHERE SC_Boletin =?"},
        {"  DELETE From Boletin WHERE SC_Boletin =77", "  DELETE From Boletin WHERE SC_Boletin =?"},
        {"UPDATE t SET a='x',b= -3 , \"c'\"=1.5", "UPDATE t SET a=?,b= -? , \"c'\"=1.5"},
        {"a5 = '5'' 6' --7", "a5 = ? --7"},
        {"", ""},
    };
    for (const auto& [text, expected] : cases) {
        std::vector<Token> tokens;
        Tokenize(text, tokens);
        std::string shape = "what was there before";
        ShapeOf(text, tokens, shape);
        EXPECT_EQ(shape, expected);
    }
}

}  // namespace
}  // namespace dhRichClient3::dialect

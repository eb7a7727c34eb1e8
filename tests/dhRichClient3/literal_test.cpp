#include "dhRichClient3/dialect/literal.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <utility>

namespace dhRichClient3::dialect {
namespace {

struct LiteralCase {
    TokenKind kind;
    std::string text;
    /// What is taken, and how much of the text is left.
    std::string taken;
    std::string left;
};

/// The literal at the head of a text, and what is left of the text; no rest if there is none.
std::pair<Literal, std::optional<std::string>> Taken(TokenKind kind, const std::string& text) {
    std::pair<Literal, std::optional<std::string>> taken;
    const char* const end = text.data() + text.size();
    if (const char* const behind = TakeLiteral(kind, text.data(), end, taken.first)) {
        taken.second = std::string(behind, end);
    }
    return taken;
}

TEST(LiteralTest, IsTakenFromTheHeadOfATextAndNoFurther) {
    const LiteralCase cases[] = {
        {TokenKind::String, "'abc',5", "abc", ",5"},
        {TokenKind::String, "''", "", ""},
        {TokenKind::String, "'it''s'x", "it''s", "x"},
        {TokenKind::Integer, "007)", "007", ")"},
        {TokenKind::Integer, "5.5", "5", ".5"},
        {TokenKind::Integer, "999999999999999999", "999999999999999999", ""},
        {TokenKind::Decimal, "2.5,", "2.5", ","},
        {TokenKind::Decimal, "007)", "007", ")"},
        {TokenKind::Decimal, ".5", ".5", ""},
        {TokenKind::Decimal, "5.", "5.", ""},
        {TokenKind::Decimal, "1E-05 ", "1E-05", " "},
        {TokenKind::Decimal, "1.5e+3x", "1.5e+3", "x"},
    };
    for (const LiteralCase& each : cases) {
        const auto [literal, left] = Taken(each.kind, each.text);
        ASSERT_TRUE(left) << each.text;
        EXPECT_EQ(literal.text, each.taken);
        EXPECT_EQ(*left, each.left);
    }
}

TEST(LiteralTest, IsNoneWhereNothingOfItsKindBegins) {
    const LiteralCase cases[] = {
        {TokenKind::String, "", {}, {}},
        {TokenKind::String, "abc'", {}, {}},
        {TokenKind::String, "'abc", {}, {}},
        {TokenKind::String, "'abc''", {}, {}},
        {TokenKind::Integer, "x", {}, {}},
        {TokenKind::Integer, "1000000000000000000", {}, {}},
        {TokenKind::Decimal, "1000000000000000000", {}, {}},
        {TokenKind::Decimal, ".", {}, {}},
        {TokenKind::Decimal, "1e", {}, {}},
        {TokenKind::Decimal, "1.5e+", {}, {}},
        {TokenKind::Decimal, "-1.5", {}, {}},
        {TokenKind::Decimal, "e5", {}, {}},
    };
    for (const LiteralCase& each : cases)
        EXPECT_FALSE(Taken(each.kind, each.text).second) << each.text;
}

TEST(LiteralTest, KnowsItsValueWhereEveryReaderGetsTheSame) {
    const std::pair<std::string, std::optional<double>> cases[] = {
        {"2.5", 2.5},
        {"0.1", 0.1},
        {"123456789012.345", 123456789012.345},
        {"1234567890123.456", std::nullopt},
        {"0.1234", std::nullopt},
        {"5.", 5.0},
        {"1.5e3", std::nullopt},
    };
    for (const auto& [text, value] : cases) {
        const Literal literal = Taken(TokenKind::Decimal, text).first;
        EXPECT_EQ(literal.exact ? std::optional(literal.decimal) : std::nullopt, value) << text;
    }
    EXPECT_EQ(Taken(TokenKind::Integer, "00123456789012345").first.whole, 123456789012345);
}

TEST(LiteralTest, DoubledQuotesMeanOne) {
    const std::string text = "'it''s ''it'''";
    const Literal literal = Taken(TokenKind::String, text).first;
    EXPECT_TRUE(literal.doubled);
    EXPECT_EQ(WithSingleQuotes(literal.text), "it's 'it'");
}

}  // namespace
}  // namespace dhRichClient3::dialect

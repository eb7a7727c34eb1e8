#include "errors/text.h"

#include <gtest/gtest.h>

namespace errors_test {
namespace {

using namespace Zontara::HuntERR31;

TEST(ErrorText, CountsCharactersAndEachInvalidByte) {
    const struct {
        const char* label;
        std::string_view text;
        std::size_t count;
    } rows[] = {
        {"nothing", "", 0},
        {"letters", "abc", 3},
        {"a zero character", std::string_view("a\0b", 3), 3},
        {"two bytes", "\xC3\xB1", 1},
        {"three bytes", "\xE2\x82\xAC", 1},
        {"four bytes", "\xF0\x9F\x94\xA7", 1},
        {"the last code point", "\xF4\x8F\xBF\xBF", 1},
        {"beyond it", "\xF4\x90\x80\x80", 4},
        {"a sequence that is too long", "\xC0\xAF", 2},
        {"three bytes too long", "\xE0\x80\xAF", 3},
        {"four bytes too long", "\xF0\x80\x80\xAF", 4},
        {"half a surrogate pair", "\xED\xA0\x80", 3},
        {"the last before the surrogates", "\xED\x9F\xBF", 1},
        {"a continuation alone", "\x80", 1},
        {"cut short", "\xE2\x82", 2},
        {"cut short by a letter",
         "\xE2\x82"
         "a",
         3},
        {"never valid", "\xFE\xFF", 2},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.label);
        EXPECT_EQ(CountCharacters(row.text), row.count);
    }
}

TEST(ErrorText, CountsNoFurtherThanAsked) {
    EXPECT_EQ(CountCharacters("abcdef", 4), 4U);
    EXPECT_EQ(CountCharacters("abc", 4), 3U);
    EXPECT_EQ(CountCharacters("abc", 0), 0U);
}

TEST(ErrorText, TakesWholeCharactersOffEitherEnd) {
    EXPECT_EQ(WithoutFirst("\xC3\xB1o"), "o");
    EXPECT_EQ(WithoutFirst("\xC3"), "");
    EXPECT_EQ(WithoutFirst(""), "");
    EXPECT_EQ(WithoutLast("o\xC3\xB1"), "o");
    EXPECT_EQ(WithoutLast("o\xF0\x9F\x94\xA7"), "o");
    EXPECT_EQ(WithoutLast("o\x94\xA7"), "o\x94");
    EXPECT_EQ(WithoutLast("a"), "");
    EXPECT_EQ(WithoutLast(""), "");
}

TEST(ErrorText, SplitsAtEachSeparator) {
    using Pieces = std::vector<std::string_view>;
    EXPECT_EQ(Split("", ','), Pieces{});
    EXPECT_EQ(Split("a", ','), Pieces{"a"});
    EXPECT_EQ(Split("a,b", ','), (Pieces{"a", "b"}));
    EXPECT_EQ(Split(",a,,", ','), (Pieces{"", "a", "", ""}));
}

TEST(ErrorText, ReplacesWithoutLookingAtWhatItPutIn) {
    EXPECT_EQ(ReplaceAll("aXaX", "X", "XX"), "aXXaXX");
    EXPECT_EQ(ReplaceAll("aaa", "aa", "b"), "ba");
    EXPECT_EQ(ReplaceAll("abc", "x", "y"), "abc");
    EXPECT_EQ(ReplaceAll("", "x", "y"), "");
}

}  // namespace
}  // namespace errors_test

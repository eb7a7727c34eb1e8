#include "frame/convert.h"

#include "frame/object.h"
#include "frame/raised_error.h"
#include "frame/sql.h"

#include <gtest/gtest.h>

#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <functional>
#include <limits>
#include <random>
#include <string>

namespace {

using namespace Zontara;

std::int32_t NumberOf(const std::function<void()>& work) {
    try {
        work();
    } catch (const RaisedError& error) {
        return error.Number();
    }
    return 0;
}

TEST(ConvertTest, HalfGoesToTheEvenNeighbour) {
    EXPECT_EQ(ConvertTo<std::int32_t>(2.5), 2);
    EXPECT_EQ(ConvertTo<std::int32_t>(3.5), 4);
    EXPECT_EQ(ConvertTo<std::int32_t>(-2.5), -2);
    EXPECT_EQ(ConvertTo<std::int16_t>(Value("0.5")), 0);
    EXPECT_EQ(ConvertTo<std::uint8_t>(1.5F), 2);
    EXPECT_EQ(RoundToInt32(99.6), 100);
}

TEST(ConvertTest, NarrowingIsChecked) {
    EXPECT_EQ(ConvertTo<std::int16_t>(32767), 32767);
    EXPECT_EQ(NumberOf([] { ConvertTo<std::int16_t>(32768); }), 6);
    EXPECT_EQ(NumberOf([] { ConvertTo<std::int16_t>(-32769); }), 6);
    EXPECT_EQ(ConvertTo<std::uint8_t>(255), 255);
    EXPECT_EQ(NumberOf([] { ConvertTo<std::uint8_t>(256); }), 6);
    EXPECT_EQ(NumberOf([] { ConvertTo<std::uint8_t>(-1); }), 6);
    EXPECT_EQ(ConvertTo<std::int32_t>(2147483647.4), 2147483647);
    EXPECT_EQ(NumberOf([] { ConvertTo<std::int32_t>(2147483648.0); }), 6);
    EXPECT_EQ(NumberOf([] { ConvertTo<std::int32_t>(std::nan("")); }), 6);
    EXPECT_EQ(NumberOf([] { ConvertTo<float>(1e300); }), 6);
    EXPECT_EQ(NumberOf([] { ConvertTo<Money>(1e18); }), 6);
}

TEST(ConvertTest, TextGoesToANumberOnlyIfItIsOne) {
    EXPECT_EQ(ConvertTo<std::int32_t>(" 12 "), 12);
    EXPECT_EQ(ConvertTo<double>("-1.5E2"), -150.0);
    EXPECT_EQ(ConvertTo<double>("+.5"), 0.5);
    for (const char* text : {"", " ", "doce", "12 h", "1,5", "0x10", "nan", "inf", "--1", "+-1", "1e", "."}) {
        EXPECT_EQ(NumberOf([text] { ConvertTo<std::int32_t>(text); }), 13) << text;
        EXPECT_FALSE(NumberIn(text)) << text;
    }
}

TEST(ConvertTest, WhatCannotBeConvertedSaysWhy) {
    EXPECT_EQ(NumberOf([] { ConvertTo<std::int32_t>(Null{}); }), 94);
    EXPECT_EQ(NumberOf([] { ConvertTo<std::string>(Null{}); }), 94);
    EXPECT_EQ(NumberOf([] { ConvertTo<std::int32_t>(Absent{}); }), 13);
    EXPECT_EQ(NumberOf([] { ConvertTo<std::string>(Array{Value(1)}); }), 13);
    EXPECT_EQ(NumberOf([] { ConvertTo<std::int32_t>(nullptr); }), 91);
    EXPECT_EQ(NumberOf([] { ConvertTo<std::int32_t>(std::make_shared<Object>()); }), 13);
    EXPECT_EQ(NumberOf([] { ConvertTo<Date>("ayer"); }), 13);
    EXPECT_EQ(NumberOf([] { ConvertTo<Ref<Object>>(1); }), 13);
    EXPECT_EQ(ToText(Value(Null{})), "");
}

TEST(ConvertTest, EmptyAndBoolsAreNumbersToo) {
    EXPECT_EQ(ConvertTo<std::int32_t>(Value()), 0);
    EXPECT_EQ(ConvertTo<std::string>(Value()), "");
    EXPECT_EQ(ConvertTo<std::int16_t>(true), -1);
    EXPECT_EQ(ConvertTo<std::uint8_t>(true), 255);
    EXPECT_EQ(ConvertTo<std::string>(false), "False");
    EXPECT_TRUE(ConvertTo<bool>("True"));
    EXPECT_FALSE(ConvertTo<bool>("false"));
    EXPECT_TRUE(ConvertTo<bool>(2));
    EXPECT_EQ(NumberOf([] { ConvertTo<bool>("si"); }), 13);
}

struct FloatCase {
    float number;
    const char* text;
};

TEST(NumberTextTest, Float32IsTheShortestThatReadsBack) {
    const FloatCase cases[] = {
        {0.0F, "0"},
        {-0.0F, "0"},
        {12.5F, "12.5"},
        {-2.25F, "-2.25"},
        {0.1F, "0.1"},
        {1520.0F, "1520"},
        {1.0F / 3.0F, "0.33333334"},
        {16777216.0F, "16777216"},
        {131072.02F, "131072.02"},
        {123456792.0F, "123456790"},
        {1e-5F, "0.00001"},
        {1e-6F, "1E-06"},
        {1.5e-7F, "1.5E-07"},
        {1e14F, "100000000000000"},
        {1e15F, "1E+15"},
        {3.4028235e38F, "3.4028235E+38"},
        {1e-45F, "1E-45"},
    };
    for (const FloatCase& each : cases)
        EXPECT_EQ(ToText(each.number), each.text);
}

/// What stands in a picture of three decimals, without the zeros at its end.
std::string Thousandths(int number) {
    std::array<char, 16> text;
    std::snprintf(text.data(), text.size(), "%.3f", number / 1000.0);
    std::string digits = text.data();
    digits.erase(digits.find_last_not_of('0') + 1);
    if (digits.back() == '.') digits.pop_back();
    return digits;
}

TEST(NumberTextTest, AFloat32OfAtMostSixDigitsIsTheNumberOfThatText) {
    for (int number = -1'000'500; number <= 1'000'500; number += 7) {
        const auto single = static_cast<float>(number / 1000.0);
        ASSERT_EQ(ToText(single), Thousandths(number));
        ASSERT_EQ(NumberAsWritten(single), std::stod(ToText(single))) << number;
    }
    EXPECT_EQ(NumberAsWritten(0.1F), 0.1);
    EXPECT_EQ(NumberAsWritten(1.0F / 3.0F), 0.33333334);
    EXPECT_EQ(NumberOf([] { NumberAsWritten(std::numeric_limits<float>::infinity()); }), 6);
}

TEST(NumberTextTest, Float32HasTheDigitsThatTheLibraryFindsToBeTheFewest) {
    std::mt19937 random(20261122);
    std::array<char, 64> fewest;
    for (int i = 0; i < 200'000; ++i) {
        // Eighths, tenths, hundredths and any number, as meters count.
        constexpr unsigned kParts[] = {8, 10, 100, 1'000'003};
        const unsigned parts = kParts[i % 4];
        const auto whole = static_cast<unsigned>(random() % 300'000);
        const auto number = static_cast<float>(whole + static_cast<unsigned>(random() % parts) / double(parts));
        const auto end =
            std::to_chars(fewest.data(), fewest.data() + fewest.size(), number, std::chars_format::fixed).ptr;
        ASSERT_EQ(ToText(number), std::string(fewest.data(), end));
        ASSERT_EQ(NumberAsWritten(number), std::stod(ToText(number)));
    }
}

TEST(NumberTextTest, EveryFloat32ReadsBackAsItself) {
    std::mt19937 random(20260305);
    for (int i = 0; i < 20000; ++i) {
        const auto bits = static_cast<std::uint32_t>(random());
        float number = 0.0F;
        static_assert(sizeof number == sizeof bits);
        std::memcpy(&number, &bits, sizeof number);
        if (!std::isfinite(number)) continue;
        ASSERT_EQ(static_cast<float>(std::stod(ToText(number))), number) << ToText(number);
    }
}

TEST(NumberTextTest, Float64HasAtMostFifteenDigits) {
    EXPECT_EQ(ToText(0.1), "0.1");
    EXPECT_EQ(ToText(1.0 / 3.0), "0.333333333333333");
    EXPECT_EQ(ToText(0.1 + 0.2), "0.3");
    EXPECT_EQ(ToText(99.6), "99.6");
    EXPECT_EQ(ToText(1e15), "1E+15");
    EXPECT_EQ(ToText(999999999999999.0), "999999999999999");
    EXPECT_EQ(ToText(-123456.789), "-123456.789");
    EXPECT_EQ(NumberOf([] { ToText(std::nan("")); }), 6);
    EXPECT_EQ(NumberOf([] { ToText(std::numeric_limits<float>::infinity()); }), 6);
}

TEST(MoneyTest, TextIsExact) {
    EXPECT_EQ(Money::FromTenThousandths(25000).ToText(), "2.5");
    EXPECT_EQ(Money::FromTenThousandths(-1).ToText(), "-0.0001");
    EXPECT_EQ(Money::FromTenThousandths(100000).ToText(), "10");
    EXPECT_EQ(Money::FromTenThousandths(-100450).ToText(), "-10.045");
    EXPECT_EQ(Money().ToText(), "0");
    EXPECT_EQ(Money::FromTenThousandths(std::numeric_limits<std::int64_t>::min()).ToText(), "-922337203685477.5808");
    EXPECT_EQ(Money::FromNumber(0.00005).TenThousandths(), 0);
    EXPECT_EQ(Money::FromNumber(28).ToText(), "28");
}

TEST(CompareTest, NoComparisonWithNullHolds) {
    EXPECT_FALSE(Equal(Null{}, Null{}));
    EXPECT_FALSE(Differ(Null{}, Null{}));
    EXPECT_FALSE(Differ(12, Null{}));
    EXPECT_FALSE(Equal(Null{}, 12));
    EXPECT_TRUE(Differ(12, 13));
    EXPECT_TRUE(Equal("12", 12));
    EXPECT_TRUE(Equal("a", "a"));
    EXPECT_TRUE(Differ("a", "A"));
    EXPECT_EQ(NumberOf([] { Equal("doce", 12); }), 13);
}

TEST(SqlTest, PiecesAreJoinedWithNothingBetween) {
    EXPECT_EQ(Sql({"a =", std::int16_t{-7}, ",b ='", std::string("it's"), "',c =", std::uint8_t{255}, ",d =", 12.5F,
                   ",e =", Money::FromTenThousandths(12345), ",f ='", DateOf(2026, 3, 5), "'"}),
              "a =-7,b ='it's',c =255,d =12.5,e =1.2345,f ='2026-03-05'");
    EXPECT_EQ(Sql({}), "");
    EXPECT_EQ(Sql({std::numeric_limits<std::int32_t>::min(), 0}), "-21474836480");
}

TEST(SqlTest, PiecesOfAnyLengthAreCopiedWhole) {
    const std::string letters = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ";
    for (std::size_t length = 0; length <= letters.size(); ++length) {
        const std::string piece = letters.substr(0, length);
        EXPECT_EQ(Sql({"<", piece, "><", piece, ">"}), "<" + piece + "><" + piece + ">");
    }
    std::string statement = "a";
    for (int i = 0; i < 3; ++i)
        Append(statement, {letters, i});
    EXPECT_EQ(statement, "a" + letters + "0" + letters + "1" + letters + "2");
}

TEST(SqlTest, ACallersColumnsReplaceTheHeadWhole) {
    EXPECT_EQ(SelectHead("SELECT a ", ""), "SELECT a ");
    EXPECT_EQ(SelectHead("SELECT a ", " b"), "Select  b");
}

}  // namespace

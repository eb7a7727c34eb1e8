#include "frame/regional.h"

#include "frame/platform.h"
#include "frame/raised_error.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>

namespace {

using namespace Zontara;

struct ReadCase {
    const char* form;
    const char* text;
    /// As yyyy-mm-dd hh:nn:ss; empty for what is no date.
    const char* expected;
};

class RegionalRead : public testing::TestWithParam<ReadCase> {};

TEST_P(RegionalRead, ReadsJustWhatItShould) {
    const ReadCase& each = GetParam();
    const std::optional<Date> date = Regional(each.form).Read(each.text);
    EXPECT_EQ(date ? Format(*date, "yyyy-mm-dd hh:nn:ss") : "", each.expected) << each.form << " reads " << each.text;
}

INSTANTIATE_TEST_SUITE_P(
    Texts, RegionalRead,
    testing::Values(ReadCase{"dd/mm/yyyy", "05/03/2026", "2026-03-05 00:00:00"},
                    ReadCase{"dd/mm/yyyy", "5-3-26", "2026-03-05 00:00:00"},
                    ReadCase{"dd/mm/yyyy", "5.3.2026", "2026-03-05 00:00:00"},
                    ReadCase{"dd/mm/yyyy", "5.3/2026", "2026-03-05 00:00:00"},
                    ReadCase{"dd/mm/yyyy", "12/25/2026", "2026-12-25 00:00:00"},
                    ReadCase{"mm/dd/yyyy", "05/03/2026", "2026-05-03 00:00:00"},
                    ReadCase{"mm/dd/yyyy", "25/12/2026", "2026-12-25 00:00:00"},
                    ReadCase{"yyyy-mm-dd", "2026-03-05", "2026-03-05 00:00:00"},
                    ReadCase{"yyyy-mm-dd", "26-03-05", "2026-03-05 00:00:00"},
                    ReadCase{"yyyy-mm-dd", "05-03-2026", "2026-05-03 00:00:00"},
                    ReadCase{"dd/mm/yyyy", "2026-03-05", "2026-03-05 00:00:00"},
                    ReadCase{"mm/dd/yyyy", "2026/3/5", "2026-03-05 00:00:00"},
                    ReadCase{"dd/mm/yyyy", "  05/03/2026 8:05 ", "2026-03-05 08:05:00"},
                    ReadCase{"dd/mm/yyyy", "05/03/2026 23:59:59", "2026-03-05 23:59:59"},
                    ReadCase{"dd/mm/yyyy", "01/01/29", "2029-01-01 00:00:00"},
                    ReadCase{"dd/mm/yyyy", "01/01/30", "1930-01-01 00:00:00"},
                    ReadCase{"dd/mm/yyyy", "29/02/2024", "2024-02-29 00:00:00"},
                    ReadCase{"dd/mm/yyyy", "29/02/2026", ""}, ReadCase{"dd/mm/yyyy", "", ""},
                    ReadCase{"dd/mm/yyyy", "05/03", ""}, ReadCase{"dd/mm/yyyy", "12:30", ""},
                    ReadCase{"dd/mm/yyyy", "46086", ""}, ReadCase{"dd/mm/yyyy", "05/03/2026x", ""},
                    ReadCase{"dd/mm/yyyy", "05/03/2026 24:00", ""}, ReadCase{"dd/mm/yyyy", "05/03/2026 8", ""},
                    ReadCase{"dd/mm/yyyy", "05/03/2026 8:60", ""}, ReadCase{"dd/mm/yyyy", "05/03/2026 8:05:06:07", ""},
                    ReadCase{"dd/mm/yyyy", "05//2026", ""}, ReadCase{"dd/mm/yyyy", "005/03/2026", ""},
                    ReadCase{"dd/mm/yyyy", "05/03/226", ""}, ReadCase{"dd/mm/yyyy", "99/99/2026", ""},
                    ReadCase{"dd/mm/yyyy", "2026-13-05", ""}, ReadCase{"dd/mm/yyyy", "05/03/99999", ""},
                    ReadCase{"dd/mm/yyyy", "cinco de marzo", ""}));

TEST(RegionalTest, WritesTheShortFormAndATimeUnlessItIsMidnight) {
    const Regional regional("mm/dd/yyyy");
    EXPECT_EQ(regional.ToText(DateOf(2026, 3, 5)), "03/05/2026");
    EXPECT_EQ(regional.ToText(WithTime(DateOf(2026, 3, 5), {8, 4, 9})), "03/05/2026 08:04:09");
    EXPECT_EQ(regional.ToShortDate(WithTime(DateOf(2026, 3, 5), {8, 4, 9})), "03/05/2026");
    EXPECT_EQ(Regional().ToText(Date{}), "30/12/1899");
}

TEST(RegionalTest, WhatItWritesItReads) {
    for (const char* form : {"dd/mm/yyyy", "mm/dd/yyyy", "yyyy-mm-dd", "dd.mm.yyyy", "d-m-yyyy"}) {
        const Regional regional(form);
        for (Date date = DateOf(2024, 1, 1); DaysBetween(date, DateOf(2028, 1, 1)) > 0; date = AddDays(date, 1)) {
            ASSERT_EQ(regional.Read(regional.ToText(date)), date) << form << " " << regional.ToText(date);
        }
    }
}

TEST(RegionalTest, RefusesAFormThatHoldsNoWholeDate) {
    for (const char* form : {"", "dd/mm/yy", "dd/yyyy", "dd mm yyyy", "dd/mm/yyyy/dd", "hh:nn"}) {
        try {
            Regional regional(form);
            FAIL() << form;
        } catch (const RaisedError& error) {
            EXPECT_EQ(error.Number(), 5) << form;
        }
    }
}

TEST(RegionalTest, NoDateIsATypeMismatch) {
    try {
        Regional().ToDate("mañana");
        FAIL();
    } catch (const RaisedError& error) {
        EXPECT_EQ(error.Number(), 13);
        EXPECT_EQ(error.Source(), "Zontara");
        EXPECT_EQ(error.Description(), "Type mismatch");
    }
}

struct AmericanPlatform : Platform {
    std::string ShortDateForm() const override { return "mm/dd/yyyy"; }
};

TEST(RegionalTest, FormatRewritesATextThatIsADateUnderTheSettingsInForce) {
    EXPECT_EQ(Format("05/03/2026", "YYYY-MM-DD"), "2026-03-05");
    const auto before = ReplacePlatform(std::make_shared<AmericanPlatform>());
    EXPECT_EQ(Format("05/03/2026", "YYYY-MM-DD"), "2026-05-03");
    ReplacePlatform(before);
    EXPECT_EQ(Format("05/03/2026", "YYYY-MM-DD"), "2026-03-05");
    EXPECT_EQ(Format("", "YYYY-MM-DD"), "");
    EXPECT_EQ(Format("pronto", "YYYY-MM-DD"), "pronto");
    EXPECT_EQ(SqlDate("2026-3-5 10:00"), "2026-03-05");
    for (const Date date :
         {DateOf(100, 1, 1), DateOf(9999, 12, 31), DateOf(1899, 12, 29), Date{-1.25}, Date{46086.999}})
        EXPECT_EQ(SqlDate(date), Format(date, "YYYY-MM-DD"));
}

TEST(RegionalTest, ATextThatWasReadBeforeIsReadUnderTheSettingsInForce) {
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(SqlDate("05/03/2026"), "2026-03-05");
        EXPECT_EQ(ToDate("05/03/2026"), DateOf(2026, 3, 5));
    }
    const auto before = ReplacePlatform(std::make_shared<AmericanPlatform>());
    EXPECT_EQ(SqlDate("05/03/2026"), "2026-05-03");
    EXPECT_EQ(ToDate("05/03/2026"), DateOf(2026, 5, 3));
    ReplacePlatform(before);
    EXPECT_EQ(SqlDate("05/03/2026"), "2026-03-05");
}

TEST(RegionalTest, ManyTextsPushEachOtherOutAndStayRight) {
    const Regional regional;
    for (int round = 0; round < 3; ++round) {
        for (Date day = DateOf(2026, 1, 1); day.days < DateOf(2026, 6, 1).days; day = AddDays(day, 1)) {
            const Date moment = WithTime(day, {8, 4, 9});
            ASSERT_EQ(SqlDate(regional.ToText(day)), SqlDate(day));
            ASSERT_EQ(ToDate(regional.ToText(moment)), moment);
            ASSERT_EQ(SqlDate("no date " + regional.ToText(day)), "no date " + regional.ToText(day));
        }
    }
    for (const std::string text : {"", "5/3/26", "pronto", "pronto, pero no sabemos cuándo"})
        EXPECT_EQ(SqlDate(text), text == "5/3/26" ? "2026-03-05" : text);
    for (int i = 0; i < 2; ++i)
        EXPECT_THROW(ToDate("mañana mismo"), RaisedError);
}

TEST(RegionalTest, PicturesAreFilledWithAllTheirDigits) {
    const Date date = WithTime(DateOf(2026, 3, 5), {8, 4, 9});
    EXPECT_EQ(Format(date, "YYYYMMDD"), "20260305");
    EXPECT_EQ(Format(date, "Mm/Dd/yy Hh:Nn:Ss"), "03/05/26 08:04:09");
    EXPECT_EQ(Format(date, "d-m-yyyy"), "5-3-2026");
    EXPECT_EQ(Format(DateOf(476, 9, 4), "yyyy"), "0476");
}

}  // namespace

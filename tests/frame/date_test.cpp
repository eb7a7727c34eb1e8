#include "frame/date.h"

#include "frame/raised_error.h"

#include <gtest/gtest.h>

#include <cstdint>

namespace {

using namespace Zontara;

/// A calendar that counts one day after the other, with nothing clever in it.
struct SlowCalendar {
    CivilDate day{1899, 12, 30};
    std::int32_t serial = 0;
    std::int32_t weekday = 6;  // 1899-12-30 was a Saturday
    std::int32_t week = 53;

    static std::int32_t LengthOf(std::int32_t year, std::int32_t month) {
        if (month == 2) return (year % 4 == 0 && year % 100 != 0) || year % 400 == 0 ? 29 : 28;
        return month == 4 || month == 6 || month == 9 || month == 11 ? 30 : 31;
    }

    void Next() {
        ++serial;
        weekday = weekday % 7 + 1;
        if (weekday == 1) ++week;
        if (++day.day <= LengthOf(day.year, day.month)) return;
        day.day = 1;
        if (++day.month <= 12) return;
        day.month = 1;
        ++day.year;
        week = 1;
    }
};

TEST(DateTest, AgreesWithADayByDayCalendarUntil2100) {
    SlowCalendar slow;
    while (slow.day.year < 2101) {
        const Date date{static_cast<double>(slow.serial)};
        ASSERT_EQ(CivilOf(date), slow.day) << slow.serial;
        ASSERT_EQ(DateOf(slow.day.year, slow.day.month, slow.day.day), date) << slow.serial;
        ASSERT_EQ(WeekdayOf(date), slow.weekday) << slow.serial;
        if (slow.day.year >= 1900) {
            ASSERT_EQ(WeekOfYear(date), slow.week) << slow.serial;
        }
        slow.Next();
    }
}

struct WeekCase {
    const char* what;
    CivilDate day;
    std::int32_t week;
};

TEST(DateTest, WeekOneHoldsTheFirstOfJanuary) {
    const WeekCase cases[] = {
        {"a Sunday is alone in week 1", {2023, 1, 1}, 1},
        {"the Monday behind it begins week 2", {2023, 1, 2}, 2},
        {"a Monday", {2024, 1, 1}, 1},
        {"the last day of a common year", {2026, 12, 31}, 53},
        {"a leap year that begins on a Sunday has a week 54", {2012, 12, 31}, 54},
        {"and the Sunday before is in 53", {2012, 12, 30}, 53},
        {"a leap year that begins on a Saturday", {2000, 12, 31}, 53},
    };
    for (const WeekCase& each : cases) {
        SCOPED_TRACE(each.what);
        EXPECT_EQ(WeekOfYear(DateOf(each.day.year, each.day.month, each.day.day)), each.week);
    }
}

struct RollCase {
    const char* what;
    std::int32_t year, month, day;
    CivilDate expected;
};

TEST(DateTest, MonthsAndDaysRollOver) {
    const RollCase cases[] = {
        {"day 31 of a short month", 2026, 4, 31, {2026, 5, 1}},
        {"February 30 of a leap year", 2024, 2, 30, {2024, 3, 1}},
        {"February 30 of a common year", 2026, 2, 30, {2026, 3, 2}},
        {"month 13", 2026, 13, 5, {2027, 1, 5}},
        {"month 0", 2026, 0, 5, {2025, 12, 5}},
        {"day 0", 2026, 3, 0, {2026, 2, 28}},
        {"day -1", 2026, 1, -1, {2025, 12, 30}},
    };
    for (const RollCase& each : cases) {
        SCOPED_TRACE(each.what);
        EXPECT_EQ(CivilOf(DateOf(each.year, each.month, each.day)), each.expected);
    }
}

TEST(DateTest, DaysAndMonthsBetweenIgnoreTimesAndGoBothWays) {
    const Date evening = WithTime(DateOf(2026, 1, 31), {23, 59, 59});
    const Date morning = WithTime(DateOf(2026, 2, 1), {0, 0, 1});
    EXPECT_EQ(DaysBetween(evening, morning), 1);
    EXPECT_EQ(DaysBetween(morning, evening), -1);
    EXPECT_EQ(MonthsBetween(evening, morning), 1);
    EXPECT_EQ(MonthsBetween(morning, evening), -1);
    EXPECT_EQ(MonthsBetween(DateOf(2025, 11, 30), DateOf(2027, 1, 1)), 14);
    EXPECT_EQ(DaysBetween(DateOf(1899, 12, 29), DateOf(1900, 1, 1)), 3);
}

TEST(DateTest, TimeCountsForwardFromMidnightOnBothSidesOfTheZeroDate) {
    for (const std::int32_t year : {1750, 1899, 1900, 2026}) {
        const Date date = WithTime(DateOf(year, 6, 15), {6, 30, 15});
        EXPECT_EQ(TimeOf(date), (TimeOfDay{6, 30, 15})) << year;
        EXPECT_EQ(CivilOf(date), (CivilDate{year, 6, 15})) << year;
        EXPECT_EQ(CivilOf(AddDays(date, 20)), (CivilDate{year, 7, 5})) << year;
        EXPECT_EQ(TimeOf(AddDays(date, 20)), (TimeOfDay{6, 30, 15})) << year;
    }
    EXPECT_EQ(CivilOf(Date{-1.25}), (CivilDate{1899, 12, 29}));
    EXPECT_EQ(TimeOf(Date{-1.25}), (TimeOfDay{6, 0, 0}));
}

TEST(DateTest, AFractionAHairBelowMidnightBelongsToTheNextDay) {
    const Date date{46000.0 - 1e-9};
    EXPECT_EQ(CivilOf(date), CivilOf(Date{46000.0}));
    EXPECT_EQ(TimeOf(date), TimeOfDay{});
}

TEST(DateTest, OutsideTheCalendarIsAnError) {
    const auto numberOf = [](auto work) {
        try {
            work();
        } catch (const RaisedError& error) {
            return error.Number();
        }
        return 0;
    };
    EXPECT_EQ(numberOf([] { DateOf(10000, 1, 1); }), 5);
    EXPECT_EQ(numberOf([] { DateOf(9999, 12, 32); }), 5);
    EXPECT_EQ(numberOf([] { DateOf(99, 12, 31); }), 5);
    EXPECT_EQ(numberOf([] { CivilOf(Date{3e6}); }), 6);
    EXPECT_EQ(numberOf([] { CivilOf(Date{-1e300}); }), 6);
    EXPECT_EQ(numberOf([] { AddDays(DateOf(9999, 12, 31), 1); }), 6);
    EXPECT_EQ(CivilOf(DateOf(9999, 12, 31)), (CivilDate{9999, 12, 31}));
    EXPECT_EQ(CivilOf(DateOf(100, 1, 1)), (CivilDate{100, 1, 1}));
    EXPECT_EQ(TimeOf(WithTime(DateOf(100, 1, 1), {12, 0, 0})), (TimeOfDay{12, 0, 0}));
    EXPECT_EQ(TimeOf(WithTime(DateOf(9999, 12, 31), {12, 0, 0})), (TimeOfDay{12, 0, 0}));
}

TEST(DateTest, CalendarDays) {
    EXPECT_TRUE(IsCalendarDay(2024, 2, 29));
    EXPECT_FALSE(IsCalendarDay(2026, 2, 29));
    EXPECT_FALSE(IsCalendarDay(1900, 2, 29));
    EXPECT_TRUE(IsCalendarDay(2000, 2, 29));
    EXPECT_FALSE(IsCalendarDay(2026, 13, 1));
    EXPECT_FALSE(IsCalendarDay(2026, 4, 31));
    EXPECT_FALSE(IsCalendarDay(2026, 4, 0));
}

}  // namespace

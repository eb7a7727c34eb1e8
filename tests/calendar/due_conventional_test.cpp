#include "calendar/due.h"

#include "frame/regional.h"
#include "tests/calendar/made_up_row.h"
#include "tests/support/world.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using namespace Zontara::calendar;
using support::DueRow;
using support::ErrorOf;
using support::World;
using Zontara::Null;
using Zontara::Value;

struct Case {
    const char* label;
    const char* frequency;
    Value anchor;
    Value last;
    const char* day;
    int step;
    /// The day that is booked; none where the row isn't due.
    const char* booked;
};

class DueConventionalTest : public testing::Test {
protected:
    void Check(const std::vector<Case>& cases) {
        for (const Case& each : cases) {
            SCOPED_TRACE(std::string(each.frequency) + ": " + each.label);
            const Zontara::Date day = World::Day(each.day);
            const Due due = DueConventional(DueRow(each.frequency, each.anchor, each.last), day);
            EXPECT_EQ(due.step, each.step);
            EXPECT_EQ(due.booking ? Zontara::Format(due.booking->On(day), "yyyy-mm-dd") : "", each.booked);
        }
    }

    World world;
};

TEST_F(DueConventionalTest, FechaComparesTextsFromTheDayOfTheMonthOn) {
    Check({
        {"on its day", "Fecha", "05/03/2026", "2026-01-01", "2026-03-05", 1, "2026-03-05"},
        {"anchor in another form", "Fecha", "2026-03-05", "2026-01-01", "2026-03-05", 1, "2026-03-05"},
        {"anchor with one digit", "Fecha", "5/3/2026", "2026-01-01", "2026-03-05", 1, "2026-03-05"},
        {"the day before", "Fecha", "05/03/2026", "2026-01-01", "2026-03-04", 0, ""},
        {"later in the month", "Fecha", "05/03/2026", "2026-01-01", "2026-03-09", 1, "2026-03-09"},
        {"a month later on an earlier day", "Fecha", "05/03/2026", "2026-01-01", "2026-04-02", 0, ""},
        {"a month before on a later day", "Fecha", "05/03/2026", "2026-01-01", "2026-02-10", 1, "2026-02-10"},
        {"launched on its day", "Fecha", "05/03/2026", "2026-03-05", "2026-03-05", 0, ""},
        {"last launch on a later day of a month before", "Fecha", "05/03/2026", "2026-01-31", "2026-03-05", 0, ""},
        {"never launched", "Fecha", "05/03/2026", "", "2026-03-05", 1, "2026-03-05"},
        {"last launch null", "Fecha", "05/03/2026", Null{}, "2026-03-05", 1, "2026-03-05"},
        {"no date", "Fecha", "soon", "2026-01-01", "2026-03-05", 0, ""},
        {"empty", "Fecha", "", "2026-01-01", "2026-03-05", 0, ""},
        {"null", "Fecha", Null{}, "2026-01-01", "2026-03-05", 0, ""},
    });
}

TEST_F(DueConventionalTest, DiariaComparesTextsFromTheDayOfTheMonthOn) {
    Check({
        {"the next day", "Diaria", "", "2026-03-04", "2026-03-05", 1, "2026-03-05"},
        {"the same day", "Diaria", "", "2026-03-05", "2026-03-05", 0, ""},
        {"the same day later", "Diaria", "", "2026-03-05", "2026-03-05 18:00:00", 0, ""},
        {"over the end of February", "Diaria", "", "2026-02-28", "2026-03-02", 0, ""},
        {"still the day before", "Diaria", "", "2026-02-28", "2026-03-27", 0, ""},
        {"the first day that sorts behind", "Diaria", "", "2026-02-28", "2026-03-28", 1, "2026-03-28"},
        {"leap day", "Diaria", "", "2028-02-28", "2028-02-29", 1, "2028-02-29"},
        {"behind the leap day", "Diaria", "", "2028-02-29", "2028-03-01", 0, ""},
        {"the same day of the next year", "Diaria", "", "2025-12-31", "2026-12-31", 1, "2026-12-31"},
        {"new year", "Diaria", "", "2025-12-31", "2026-01-01", 0, ""},
        {"never launched", "Diaria", "", "", "2026-03-05", 1, "2026-03-05"},
        {"the anchor isn't read", "Diaria", "x,y", "2026-03-04", "2026-03-05", 1, "2026-03-05"},
    });
}

TEST_F(DueConventionalTest, SemanalBooksTheWeekdayOfTheWeek) {
    Check({
        {"a Tuesday before Wednesday", "Semanal", "3", "2026-02-24", "2026-03-03", 0, ""},
        {"the Wednesday", "Semanal", "3", "2026-02-25", "2026-03-04", 1, "2026-03-04"},
        {"a Friday books Wednesday", "Semanal", "3", "2026-02-25", "2026-03-06", 1, "2026-03-04"},
        {"a Thursday books Monday", "Semanal", "1", "2026-02-20", "2026-03-05", 1, "2026-03-02"},
        {"six days", "Semanal", "1", "2026-02-27", "2026-03-05", 0, ""},
        {"seven days by the clock's day", "Semanal", "1", "2026-02-26 23:00:00", "2026-03-05 01:00:00", 1,
         "2026-03-02"},
        {"Sunday is 7", "Semanal", "7", "2026-03-01", "2026-03-08", 1, "2026-03-08"},
        {"Saturday is not", "Semanal", "7", "2026-02-01", "2026-03-07", 0, ""},
        {"over the end of a year", "Semanal", "1", "2026-12-25", "2027-01-01", 1, "2026-12-28"},
        {"over a leap day", "Semanal", "2", "2028-02-24", "2028-03-02", 1, "2028-02-29"},
        {"an anchor of 0 books the Sunday before", "Semanal", "0", "2026-02-01", "2026-03-05", 1, "2026-03-01"},
        {"last launch still to come", "Semanal", "1", "2026-04-01", "2026-03-05", 0, ""},
        {"null never compares", "Semanal", Null{}, "2026-01-01", "2026-03-05", 0, ""},
    });
}

TEST_F(DueConventionalTest, QuincenalBooksTheFirstOrTheFifteenth) {
    Check({
        {"fourteen days", "Quincenal", "", "2026-03-02", "2026-03-16", 0, ""},
        {"fifteen days", "Quincenal", "", "2026-03-01", "2026-03-16", 1, "2026-03-15"},
        {"on the 15th", "Quincenal", "", "2026-02-28", "2026-03-15", 1, "2026-03-01"},
        {"on the 1st", "Quincenal", "", "2026-02-01", "2026-03-01", 1, "2026-03-01"},
        {"on the 29th", "Quincenal", "", "2026-03-01", "2026-03-29", 1, "2026-03-15"},
        {"on the 30th", "Quincenal", "", "2020-01-01", "2026-03-30", 0, ""},
        {"on the 31st", "Quincenal", "", "2020-01-01", "2026-03-31", 0, ""},
        {"at the end of February", "Quincenal", "", "2026-02-01", "2026-02-28", 1, "2026-02-15"},
        {"the anchor isn't read", "Quincenal", "none", "2026-02-01", "2026-02-28", 1, "2026-02-15"},
    });
}

TEST_F(DueConventionalTest, MensualGoesByTheDayOfTheMonthAndRollsOver) {
    Check({
        {"the day before", "Mensual", "20", "2026-01-20", "2026-02-19", 0, ""},
        {"on the day", "Mensual", "20", "2026-01-20", "2026-02-20", 1, "2026-02-20"},
        {"two months books ahead", "Mensual", "20", "2026-01-20", "2026-03-01", 1, "2026-03-20"},
        {"the same month", "Mensual", "1", "2026-01-01", "2026-01-31", 0, ""},
        {"one month is a month's end", "Mensual", "1", "2026-01-31", "2026-02-01", 1, "2026-02-01"},
        {"launched late, anchored on the 10th", "Mensual", "10", "2026-02-10", "2026-03-25", 1, "2026-03-10"},
        {"day 31 in a month of 30 days", "Mensual", "31", "2026-03-31", "2026-04-30", 0, ""},
        {"day 31 a month later", "Mensual", "31", "2026-03-31", "2026-05-01", 1, "2026-05-31"},
        {"day 31 rolls over", "Mensual", "31", "2026-04-10", "2026-06-15", 1, "2026-07-01"},
        {"day 31 of February", "Mensual", "31", "2026-12-01", "2027-02-10", 1, "2027-03-03"},
        {"day 31 of a leap February", "Mensual", "31", "2027-12-01", "2028-02-10", 1, "2028-03-02"},
        {"day 29 of a leap February", "Mensual", "29", "2028-01-29", "2028-02-29", 1, "2028-02-29"},
        {"day 31 of December", "Mensual", "31", "2026-11-30", "2026-12-31", 1, "2026-12-31"},
        {"day 0", "Mensual", "0", "2026-01-20", "2026-03-05", 1, "2026-02-28"},
        {"further items are ignored", "Mensual", "20,x,,", "2026-01-20", "2026-02-20", 1, "2026-02-20"},
        {"blanks around", "Mensual", " 20 ", "2026-01-20", "2026-02-20", 1, "2026-02-20"},
    });
}

TEST_F(DueConventionalTest, LongFrequenciesGoByMonthsAndTheDay) {
    const struct {
        const char* word;
        int months;
    } words[] = {{"Bimestral", 2}, {"Trimestral", 3}, {"Semestral", 6}, {"Anual", 12}};
    for (const auto& each : words) {
        SCOPED_TRACE(each.word);
        const auto step = [&](const Zontara::Date& day) {
            return DueConventional(DueRow(each.word, "10,4", "2026-01-31"), day).step;
        };
        EXPECT_EQ(step(Zontara::DateOf(2026, each.months, 28)), 0);
        EXPECT_EQ(step(Zontara::DateOf(2026, 1 + each.months, 9)), 0);
        EXPECT_EQ(step(Zontara::DateOf(2026, 1 + each.months, 10)), each.months);
        EXPECT_EQ(step(Zontara::DateOf(2026, 2 + each.months, 1)), each.months);
    }
    Check({
        {"the day before", "Anual", "5,8", "2025-05-05", "2026-05-04", 0, ""},
        {"the month of the anchor has no influence", "Anual", "5,8", "2025-05-05", "2026-05-05", 12, "2026-05-05"},
        {"later", "Anual", "5,8", "2025-05-05", "2026-08-01", 12, "2026-08-05"},
        {"rolls over", "Bimestral", "31,1", "2026-03-01", "2026-06-02", 2, "2026-07-01"},
        {"a third item", "Semestral", "1,2,x", "2025-09-30", "2026-03-05", 6, "2026-03-01"},
    });
}

TEST_F(DueConventionalTest, UnknownWordsAreNeverDueAndReadNothingElse) {
    const auto row = DueRow("mensual", "", "");
    EXPECT_EQ(DueConventional(row, World::Day("2026-03-05")).step, 0);
    EXPECT_THAT(row.read, testing::ElementsAre("Frecuencia"));
}

TEST_F(DueConventionalTest, ABadRowFailsEvenWhereItWouldNotBeDue) {
    const Value today = "2026-03-05";
    const struct {
        const char* label;
        const char* frequency;
        Value anchor;
        Value last;
        std::int32_t error;
    } cases[] = {
        {"monthly, anchor empty", "Mensual", "", today, 9},
        {"monthly, first item empty", "Mensual", ",4", today, 13},
        {"monthly, anchor no number", "Mensual", "first", today, 13},
        {"monthly, anchor null", "Mensual", Null{}, today, 94},
        {"monthly, anchor beyond 16 bits", "Mensual", "40000", today, 6},
        {"monthly, last empty", "Mensual", "5", "", 13},
        {"monthly, last null", "Mensual", "5", Null{}, 94},
        {"long, anchor empty", "Anual", "", today, 9},
        {"long, no comma", "Bimestral", "5", today, 9},
        {"long, second item empty", "Trimestral", "5,", today, 13},
        {"long, second item no number", "Semestral", "5,May", today, 13},
        {"long, first item no number", "Semestral", "May,5", today, 13},
        {"long, the anchor before the date", "Anual", "5", "never", 9},
        {"weekly, anchor no number", "Semanal", "Monday", today, 13},
        {"weekly, anchor empty", "Semanal", "", today, 13},
        {"weekly, last empty", "Semanal", "1", "", 13},
        {"weekly, last null", "Semanal", "1", Null{}, 94},
        {"fortnightly, last empty", "Quincenal", "", "", 13},
    };
    for (const auto& each : cases) {
        EXPECT_EQ(ErrorOf([&] {
                      DueConventional(DueRow(each.frequency, each.anchor, each.last), World::Day("2026-03-05"));
                  }).number,
                  each.error)
            << each.label;
    }
}

}  // namespace

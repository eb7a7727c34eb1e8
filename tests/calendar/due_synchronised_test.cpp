#include "calendar/due.h"

#include "calendar/CImputacionPreventiva.h"
#include "frame/creation.h"
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
using testing::Contains;
using testing::Not;
using Zontara::Null;
using Zontara::Value;

/// The day that a row books, "" for none.
std::string Booked(const Due& due, const std::string& day) {
    if (!due.booking) return "";
    return Zontara::Format(due.booking->On(World::Day(day)), "yyyy-mm-dd");
}

TEST(DueSynchronised, ShortFrequencies) {
    const struct {
        const char* label;
        const char* frequency;
        const char* anchor;
        std::int32_t week;
        const char* day;
        int step;
        const char* booked;
    } cases[] = {
        {"daily, another week", "Diaria", "", 9, "2026-03-05", 1, "2026-03-05"},
        {"daily, the same week", "Diaria", "", 10, "2026-03-08", 0, ""},
        {"weekly, the week before", "Semanal", "", 10, "2026-03-09", 1, "2026-03-09"},
        {"weekly, a week still to come", "Semanal", "", 11, "2026-03-08", 1, "2026-03-08"},
        {"weekly, the same number in another year", "Semanal", "", 12, "2027-03-16", 0, ""},
        {"fortnightly, anchor 1, week 1", "Quincenal", "1", 9, "2026-03-05", 1, "2026-03-05"},
        {"fortnightly, anchor 1, week 2", "Quincenal", "1", 9, "2026-03-08", 0, "2026-03-08"},
        {"fortnightly, anchor 1, week 3", "Quincenal", "1", 9, "2026-03-16", 1, "2026-03-16"},
        {"fortnightly, anchor 1, week 4", "Quincenal", "1", 9, "2026-03-31", 0, "2026-03-31"},
        {"fortnightly, anchor 2, week 4", "Quincenal", "2", 9, "2026-03-22", 1, "2026-03-22"},
        {"fortnightly, anchor 3, week 1", "Quincenal", "3", 9, "2026-03-05", 1, "2026-03-05"},
        {"fortnightly, anchor 4, week 2", "Quincenal", "4", 9, "2026-03-09", 1, "2026-03-09"},
        {"fortnightly, an anchor beyond the month", "Quincenal", "5", 9, "2026-03-16", 1, "2026-03-16"},
        {"fortnightly, the same week", "Quincenal", "1", 10, "2026-03-05", 0, ""},
        {"monthly, week of the anchor", "Mensual", "2", 9, "2026-03-09", 1, "2026-03-09"},
        {"monthly, two weeks off", "Mensual", "2", 9, "2026-03-22", 0, "2026-03-22"},
        {"monthly, anchor with a point", "Mensual", "2.0", 9, "2026-03-09", 1, "2026-03-09"},
        {"monthly, an anchor that no week has", "Mensual", "0", 9, "2026-03-09", 0, "2026-03-09"},
        {"monthly, the same week", "Mensual", "2", 11, "2026-03-09", 0, ""},
        {"a fixed date", "Fecha", "05/03/2026", 9, "2026-03-05", 0, ""},
        {"a word in small letters", "semanal", "1", 9, "2026-03-05", 0, ""},
        {"no word", "", "1", 9, "2026-03-05", 0, ""},
    };
    for (const auto& each : cases) {
        SCOPED_TRACE(each.label);
        const Due due =
            DueSynchronised(DueRow(each.frequency, each.anchor, "2026-01-01", each.week), World::Day(each.day));
        EXPECT_EQ(due.step, each.step);
        EXPECT_EQ(Booked(due, each.day), each.booked);
    }
}

TEST(DueSynchronised, TheWeekIsThatOfTheYearWithMondayFirst) {
    const struct {
        const char* day;
        std::int32_t week;
    } cases[] = {{"2026-01-01", 1},  {"2026-01-04", 1},  {"2026-01-05", 2},  {"2026-12-31", 53}, {"2027-01-01", 1},
                 {"2027-01-03", 1},  {"2027-01-04", 2},  {"2023-01-01", 1},  {"2023-01-02", 2},  {"2023-12-31", 53},
                 {"2024-02-29", 9},  {"2024-03-01", 9},  {"2024-12-31", 53}, {"2028-12-31", 53}, {"2012-12-30", 53},
                 {"2012-12-31", 54}, {"2040-12-31", 54}, {"2025-12-29", 53}, {"2021-02-28", 9},  {"2021-03-01", 10}};
    for (const auto& each : cases) {
        SCOPED_TRACE(each.day);
        const Zontara::Date day = World::Day(each.day);
        EXPECT_EQ(DueSynchronised(DueRow("Semanal", "", "", each.week), day).step, 0);
        EXPECT_EQ(DueSynchronised(DueRow("Semanal", "", "", each.week + 1), day).step, 1);
    }
}

TEST(DueSynchronised, LongFrequenciesBookTheFirstOfTheMonth) {
    const struct {
        const char* frequency;
        const char* anchor;
        const char* last;
        const char* day;
        int step;
        const char* booked;
    } cases[] = {
        {"Bimestral", "1", "2026-01-31", "2026-03-20", 2, "2026-03-01"},
        {"Bimestral", "2", "2026-01-31", "2026-03-20", 0, ""},
        {"Trimestral", "3", "2025-12-20", "2026-03-20", 3, "2026-03-01"},
        {"Trimestral", "3", "2026-01-01", "2026-03-20", 0, ""},
        {"Semestral", "2", "2027-08-31", "2028-02-29", 6, "2028-02-01"},
        {"Semestral", "1", "2027-08-31", "2028-02-29", 0, ""},
        {"Anual", "12", "2025-12-31", "2026-12-01", 12, "2026-12-01"},
        {"Anual", "11", "2025-12-31", "2026-12-01", 0, ""},
    };
    for (const auto& each : cases) {
        SCOPED_TRACE(std::string(each.frequency) + " " + each.anchor);
        const Due due = DueSynchronised(DueRow(each.frequency, each.anchor, each.last), World::Day(each.day));
        EXPECT_EQ(due.step, each.step);
        EXPECT_EQ(Booked(due, each.day), each.booked);
    }
}

TEST(DueSynchronised, AComparisonWithNullNeverHolds) {
    const Zontara::Date day = World::Day("2026-03-05");
    EXPECT_EQ(DueSynchronised(DueRow("Semanal", "1", "", Null{}), day).step, 0);
    EXPECT_FALSE(DueSynchronised(DueRow("Semanal", "1", "", Null{}), day).booking);
    for (const char* frequency : {"Quincenal", "Mensual"}) {
        const Due due = DueSynchronised(DueRow(frequency, Null{}, "", 9), day);
        EXPECT_EQ(due.step, 0);
        EXPECT_TRUE(due.booking);
    }
}

TEST(DueSynchronised, ReadsTheAnchorOfAShortRowOnlyWhenTheWeekDiffers) {
    const auto same = DueRow("Mensual", "no number", "2026-01-01", 10);
    EXPECT_EQ(DueSynchronised(same, World::Day("2026-03-05")).step, 0);
    EXPECT_THAT(same.read, Not(Contains("Programacion")));
    const auto other = DueRow("Mensual", "no number", "2026-01-01", 9);
    EXPECT_EQ(ErrorOf([&] { DueSynchronised(other, World::Day("2026-03-05")); }).number, 13);
    const auto weekly = DueRow("Semanal", "no number", "no date", 9);
    EXPECT_EQ(DueSynchronised(weekly, World::Day("2026-03-05")).step, 1);
    EXPECT_THAT(weekly.read, testing::ElementsAre("Frecuencia", "Semana"));
}

TEST(DueSynchronised, ConvertsAnchorAndLastLaunchOfALongRowBeforeItCountsMonths) {
    const Zontara::Date day = World::Day("2026-03-05");
    const struct {
        const char* label;
        Value anchor;
        Value last;
        std::int32_t error;
    } cases[] = {
        {"anchor no number", "May", "2026-03-01", 13},
        {"anchor empty", "", "2026-03-01", 13},
        {"anchor null", Null{}, "2026-03-01", 94},
        {"anchor beyond 16 bits", "32768", "2026-03-01", 6},
        {"last no date", "3", "never", 13},
        {"last empty", "3", "", 13},
        {"last null", "3", Null{}, 94},
        {"the anchor before the date", Null{}, "never", 94},
    };
    for (const auto& each : cases) {
        EXPECT_EQ(ErrorOf([&] { DueSynchronised(DueRow("Bimestral", each.anchor, each.last), day); }).number,
                  each.error)
            << each.label;
    }
}

class ImputacionEstaVencidaTest : public testing::Test {
protected:
    bool Due(const std::string& frequency, const Value& anchor, const Value& last, const Value& week,
             const Value& interval, const std::string& day) {
        const auto row =
            std::make_shared<support::MadeUpRow>(support::MadeUpRow::Fields{{"frecuencia", frequency},
                                                                            {"Semana", week},
                                                                            {"Programacion", anchor},
                                                                            {"Fecha_Ultimo_Lanzamiento", last},
                                                                            {"Intervalo_Frecuencia", interval}});
        return preventive->ImputacionEstaVencida(row, World::Day(day));
    }

    Zontara::Ref<Zontara::CImputacionPreventiva> preventive = Zontara::Create<Zontara::CImputacionPreventiva>();
};

TEST_F(ImputacionEstaVencidaTest, AWeeklyRowIsNotDueInAWeekOfTheSameNumberOfAnyYear) {
    EXPECT_FALSE(Due("Semanal", "", "", 12, 1, "2026-03-18"));
    EXPECT_FALSE(Due("Semanal", "", "", 12, 1, "2031-03-18"));
    EXPECT_TRUE(Due("Semanal", "", "", 12, 1, "2026-03-23"));
}

TEST_F(ImputacionEstaVencidaTest, ATwoMonthlyRowFromJanuaryIsDueInMarchAndMay) {
    const auto due = [&](const char* day) { return Due("Bimestral", "1", "2026-01-15", 3, 1, day); };
    EXPECT_FALSE(due("2026-02-15"));
    EXPECT_TRUE(due("2026-03-15"));
    EXPECT_FALSE(due("2026-04-15"));
    EXPECT_TRUE(due("2026-05-15"));
}

TEST_F(ImputacionEstaVencidaTest, AYearlyRowGoesByMonths) {
    EXPECT_TRUE(Due("Anual", "6", "2025-06-30", 26, 1, "2026-06-01"));
    EXPECT_FALSE(Due("Anual", "6", "2025-06-30", 26, 1, "2026-05-31"));
}

TEST_F(ImputacionEstaVencidaTest, TheStepMustReachTheInterval) {
    const struct {
        const char* frequency;
        Value interval;
        bool due;
    } cases[] = {{"Semanal", 1, true},    {"Semanal", 2, false},  {"Bimestral", 2, true},  {"Bimestral", 3, false},
                 {"Trimestral", 3, true}, {"Semestral", 6, true}, {"Semestral", 7, false}, {"Anual", 12, true},
                 {"Anual", 13, false},    {"Fecha", 1, false},    {"Fecha", 0, true},      {"Other", -3, true},
                 {"Semanal", "1", true},  {"Semanal", 1.5, false}};
    for (const auto& each : cases) {
        EXPECT_EQ(Due(each.frequency, "3", "2025-03-01", 9, each.interval, "2026-03-05"), each.due) << each.frequency;
    }
    EXPECT_TRUE(Due("Semanal", "", "", 10, 0, "2026-03-05"));
    EXPECT_FALSE(Due("Semanal", "", "", 10, 1, "2026-03-05"));
}

TEST_F(ImputacionEstaVencidaTest, DoesNotLookAtTheKind) {
    const auto row = std::make_shared<support::MadeUpRow>(support::MadeUpRow::Fields{
        {"Es_Sincronizada", 0}, {"frecuencia", "Diaria"}, {"Semana", 9}, {"Intervalo_Frecuencia", 1}});
    EXPECT_TRUE(preventive->ImputacionEstaVencida(row, World::Day("2026-03-05")));
    EXPECT_THAT(row->read, Not(Contains("Es_Sincronizada")));
}

TEST_F(ImputacionEstaVencidaTest, FailuresComeAsTheyAre) {
    const struct {
        const char* label;
        std::int32_t number;
        std::function<void()> ask;
    } cases[] = {
        {"no recordset", 91, [&] { preventive->ImputacionEstaVencida(nullptr, World::Day("2026-03-05")); }},
        {"interval beyond 16 bits", 6, [&] { Due("Semanal", "", "", 9, 32768, "2026-03-05"); }},
        {"interval null", 94, [&] { Due("Semanal", "", "", 9, Null{}, "2026-03-05"); }},
        {"interval no number", 13, [&] { Due("Semanal", "", "", 9, "often", "2026-03-05"); }},
        {"anchor no number", 13, [&] { Due("Quincenal", "first", "", 9, 1, "2026-03-05"); }},
        {"column missing", 3265,
         [&] {
             preventive->ImputacionEstaVencida(
                 std::make_shared<support::MadeUpRow>(support::MadeUpRow::Fields{{"frecuencia", "Diaria"}}),
                 World::Day("2026-03-05"));
         }},
    };
    for (const auto& each : cases) {
        SCOPED_TRACE(each.label);
        const Zontara::ErrorRecord error = ErrorOf(each.ask);
        EXPECT_EQ(error.number, each.number);
        EXPECT_NE(error.source, "HuntERR.ErrorIn");
    }
}

TEST_F(ImputacionEstaVencidaTest, FrecuenciaValidaKnowsTwoClassesOfWords) {
    const struct {
        const char* word;
        bool isShort;
        bool isLong;
    } cases[] = {{"Fecha", true, false},      {"Diaria", true, false},    {"Semanal", true, false},
                 {"Quincenal", true, false},  {"Mensual", true, false},   {"Bimestral", false, true},
                 {"Trimestral", false, true}, {"Semestral", false, true}, {"Anual", false, true},
                 {"diaria", false, false},    {"MENSUAL", false, false},  {"", false, false},
                 {" Anual", false, false},    {"Bienal", false, false}};
    for (const auto& each : cases) {
        SCOPED_TRACE(each.word);
        EXPECT_EQ(preventive->FrecuenciaValida(each.word, "Breve"), each.isShort);
        EXPECT_EQ(preventive->FrecuenciaValida(each.word, "Larga"), each.isLong);
        for (const char* other : {"", "breve", "LARGA", "Media"}) {
            EXPECT_FALSE(preventive->FrecuenciaValida(each.word, other)) << other;
        }
    }
}

}  // namespace

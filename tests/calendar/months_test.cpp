#include "calendar/months.h"

#include "calendar/CImputacionPreventiva.h"
#include "frame/creation.h"
#include "tests/support/world.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <set>

namespace {

using namespace Zontara::calendar;
using support::ErrorOf;
using support::World;

TEST(CalcularSemanaMes, GoesByTheDayOfTheMonthAlone) {
    const struct {
        const char* day;
        int week;
    } cases[] = {{"2026-03-01", 1}, {"2026-03-07", 1}, {"2026-03-08", 2}, {"2026-03-14", 2},         {"2026-03-15", 3},
                 {"2026-03-21", 3}, {"2026-03-22", 4}, {"2026-03-31", 4}, {"2026-02-28", 4},         {"2028-02-29", 4},
                 {"2026-04-30", 4}, {"2026-12-31", 4}, {"2027-01-01", 1}, {"2026-03-07 23:59:59", 1}};
    for (const auto& each : cases)
        EXPECT_EQ(CalcularSemanaMes(World::Day(each.day)), each.week) << each.day;
}

TEST(CalcularSemanaMes, ReportsItselfWithoutADatabaseObject) {
    World world;
    const Zontara::ErrorRecord error = ErrorOf([] { CalcularSemanaMes(Zontara::Date{1e9}); });
    EXPECT_EQ(error.number, 6);
    EXPECT_EQ(error.source, "HuntERR.ErrorIn");
    EXPECT_THAT(support::CallStackOf(error.description),
                testing::ElementsAre(testing::StartsWith("  Call Stack: CImputacionPreventiva.CalcularSemanaMes(")));
}

TEST(CumpleFrecuenciaLarga, AsksForEnoughMonthsAndAMonthOnTheCycle) {
    const struct {
        const char* label;
        Frequency frequency;
        std::int16_t anchor;
        const char* last;
        const char* day;
        bool due;
    } cases[] = {
        {"one month is too early", Frequency::Bimestral, 1, "2026-01-10", "2026-02-28", false},
        {"two months, on the cycle", Frequency::Bimestral, 1, "2026-01-31", "2026-03-01", true},
        {"three months, off the cycle", Frequency::Bimestral, 1, "2026-01-10", "2026-04-10", false},
        {"four months, on the cycle", Frequency::Bimestral, 1, "2026-01-10", "2026-05-10", true},
        {"two months, off the cycle", Frequency::Bimestral, 2, "2026-01-10", "2026-03-10", false},
        {"over the end of a year", Frequency::Bimestral, 12, "2025-12-31", "2026-02-01", true},
        {"two of three months", Frequency::Trimestral, 1, "2026-01-01", "2026-03-31", false},
        {"three months", Frequency::Trimestral, 1, "2026-01-31", "2026-04-01", true},
        {"five of six months", Frequency::Semestral, 2, "2025-09-01", "2026-02-28", false},
        {"six months", Frequency::Semestral, 2, "2025-08-31", "2026-02-01", true},
        {"a year by its months, not by its days", Frequency::Anual, 6, "2025-06-30", "2026-06-01", true},
        {"eleven months", Frequency::Anual, 5, "2025-06-30", "2026-05-31", false},
        {"a year, in another month", Frequency::Anual, 7, "2025-06-30", "2026-06-30", false},
        {"a year and more, in the month", Frequency::Anual, 3, "2024-02-29", "2026-03-01", true},
        {"a launch still to come", Frequency::Bimestral, 3, "2026-05-01", "2026-03-01", false},
        {"a short word", Frequency::Mensual, 3, "2025-01-01", "2026-03-01", false},
        {"no word at all", Frequency::Unknown, 3, "2020-01-01", "2026-03-01", false},
    };
    for (const auto& each : cases) {
        EXPECT_EQ(CumpleFrecuenciaLarga(each.anchor, each.frequency, World::Day(each.last), World::Day(each.day)),
                  each.due)
            << each.label;
    }
}

class CImputacionPreventivaMonthsTest : public testing::Test {
protected:
    bool Coordinates(int month, int anchor, int step) {
        return preventive->MesCoordinaConProgramacion(
            static_cast<std::int16_t>(month), static_cast<std::int16_t>(anchor), static_cast<std::int16_t>(step));
    }
    int Before(int month, int step) {
        return preventive->ObtenerProgramacionAnteriorA(static_cast<std::int16_t>(month),
                                                        static_cast<std::int16_t>(step));
    }
    int NotAbove(int month, int anchor, int step) {
        return preventive->ObtenerProgramacionMenorAMesActual(
            static_cast<std::int16_t>(month), static_cast<std::int16_t>(anchor), static_cast<std::int16_t>(step));
    }
    static std::int32_t Number(const std::function<void()>& work) { return ErrorOf(work).number; }

    Zontara::Ref<Zontara::CImputacionPreventiva> preventive = Zontara::Create<Zontara::CImputacionPreventiva>();
};

TEST_F(CImputacionPreventivaMonthsTest, AMonthCoordinatesWhenItLiesAWholeNumberOfStepsFromTheAnchor) {
    for (int step = 1; step <= 11; ++step) {
        for (int anchor = 1; anchor <= 12; ++anchor) {
            std::set<int> cycle;
            for (int steps = 0; steps < 12; ++steps)
                cycle.insert((anchor - 1 + steps * step) % 12 + 1);
            for (int month = 1; month <= 12; ++month) {
                EXPECT_EQ(Coordinates(month, anchor, step), cycle.count(month) == 1)
                    << month << " from " << anchor << " by " << step;
            }
        }
    }
}

TEST_F(CImputacionPreventivaMonthsTest, TheCycleOfThreeMonthsFromFebruary) {
    EXPECT_FALSE(Coordinates(4, 2, 3));
    EXPECT_TRUE(Coordinates(8, 2, 3));
}

TEST_F(CImputacionPreventivaMonthsTest, AStepOfNothingOrOfAYearMeetsOnlyTheAnchor) {
    for (const int step : {0, 12}) {
        EXPECT_TRUE(Coordinates(4, 4, step));
        EXPECT_FALSE(Coordinates(5, 4, step));
        EXPECT_FALSE(Coordinates(5, 13, step));
        EXPECT_FALSE(Coordinates(5, -3, step));
    }
}

TEST_F(CImputacionPreventivaMonthsTest, AnAnchorOutsideTheYearEndsWithFalseWhenItsWalkComesRound) {
    EXPECT_FALSE(Coordinates(4, 13, 2));
    EXPECT_TRUE(Coordinates(5, 13, 2));
    EXPECT_FALSE(Coordinates(4, 0, 6));
    EXPECT_TRUE(Coordinates(12, 0, 6));
    EXPECT_FALSE(Coordinates(1, -4, 2));
    EXPECT_TRUE(Coordinates(2, -32768, 2));
    EXPECT_FALSE(Coordinates(1, -32768, 2));
    EXPECT_FALSE(Coordinates(13, 5, 2));
}

TEST_F(CImputacionPreventivaMonthsTest, AWalkThatLeavesSixteenBitsIsAnOverflow) {
    EXPECT_EQ(Number([&] { Coordinates(2, 3, 13); }), 6);
    EXPECT_EQ(Number([&] { Coordinates(4, 2, -1); }), 6);
    EXPECT_EQ(Number([&] { Coordinates(4, 32767, 1); }), 6);
    EXPECT_EQ(Number([&] { Coordinates(4, -32768, -1); }), 6);
    EXPECT_EQ(Number([&] { Before(-32768, 1); }), 6);
    EXPECT_EQ(Number([&] { Before(32767, -1); }), 6);
    EXPECT_EQ(Number([&] { Before(-32767, 1); }), 6);
    EXPECT_EQ(Number([&] { NotAbove(1, 2, -1); }), 6);
}

TEST_F(CImputacionPreventivaMonthsTest, NoWalkOfAnyAnchorAndStepEverHangs) {
    for (const int anchor : {-40, -13, -1, 0, 1, 5, 12, 13, 14, 25, 40}) {
        for (int step = -3; step <= 40; ++step) {
            for (const int month : {-1, 0, 1, 6, 12, 13, 14}) {
                try {
                    Coordinates(month, anchor, step);
                    NotAbove(month, anchor, step);
                } catch (const Zontara::RaisedError& error) {
                    EXPECT_TRUE(error.Number() == 5 || error.Number() == 6) << error.Number();
                }
            }
        }
    }
}

TEST_F(CImputacionPreventivaMonthsTest, TheMonthBeforeRollsBackOverTheYear) {
    EXPECT_EQ(Before(2, 2), 12);
    EXPECT_EQ(Before(1, 2), 11);
    EXPECT_EQ(Before(3, 2), 1);
    EXPECT_EQ(Before(1, 12), 1);
    EXPECT_EQ(Before(12, 12), 12);
    EXPECT_EQ(Before(12, 6), 6);
    EXPECT_EQ(Before(3, 0), 3);
    EXPECT_EQ(Before(1, 30), -17);
    EXPECT_EQ(Before(20, -5), 25);
}

TEST_F(CImputacionPreventivaMonthsTest, WalksBackAtLeastOnceToAMonthThatIsNotAbove) {
    EXPECT_EQ(NotAbove(6, 1, 2), 5);
    EXPECT_EQ(NotAbove(6, 4, 3), 1);
    EXPECT_EQ(NotAbove(12, 1, 3), 10);
    EXPECT_EQ(NotAbove(1, 5, 12), 5);
    EXPECT_EQ(NotAbove(3, 5, 0), 5);
    EXPECT_EQ(NotAbove(2, 2, 2), 2);
    EXPECT_EQ(NotAbove(11, 12, 12), 12);
}

TEST_F(CImputacionPreventivaMonthsTest, AWalkBackThatNeverEndsIsAnInvalidCall) {
    EXPECT_EQ(Number([&] { NotAbove(-5, -3, 2); }), 5);
    EXPECT_EQ(Number([&] { NotAbove(0, 0, 2); }), 5);
}

}  // namespace

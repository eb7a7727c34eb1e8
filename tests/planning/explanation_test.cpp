#include "planning/explanation.h"

#include "frame/regional.h"
#include "planning/day_search.h"
#include "tests/planning/plant.h"

namespace {

using planning::ExplainAsset;
using planning::ExplainAssignment;
using planning::Explanation;
using planning::Fact;
using planning::Kind;
using support::Assignment;
using support::World;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using State = Explanation::State;

std::string Iso(const std::optional<Zontara::Date>& day) { return day ? Zontara::Format(*day, "yyyy-mm-dd") : "never"; }

struct ExplanationTest : support::PlanningTest {
    std::vector<Explanation> Of(const std::string& asset, const std::string& on = "2026-03-05") {
        return ExplainAsset(component, asset, World::Day(on));
    }
    Explanation Only(const std::string& on = "2026-03-05") {
        const auto all = Of("A-1", on);
        EXPECT_THAT(all, SizeIs(1));
        return all.empty() ? Explanation() : all.front();
    }
};

struct Case {
    const char* label;
    bool synchronised;
    const char* frequency;
    const char* anchor;
    const char* last;
    int week;
    int interval;
    const char* on;
    State state;
    const char* next;
    const char* books;
};

// 2026-03-05 is a Thursday in week 10 of the year and week 1 of the month.
const Case kCases[] = {
    {"another week", true, "Semanal", "", "2026-02-23", 9, 1, "2026-03-05", State::Due, "2026-03-05", "2026-03-05"},
    {"the same week", true, "Semanal", "", "2026-03-02", 10, 1, "2026-03-05", State::NotDue, "2026-03-09", "never"},
    {"once a week", true, "Diaria", "", "2026-03-02", 10, 1, "2026-03-05", State::NotDue, "2026-03-09", "never"},
    {"week of the month ahead", true, "Mensual", "2", "", 9, 1, "2026-03-05", State::NotDue, "2026-03-08", "never"},
    {"fortnight off its anchor", true, "Quincenal", "3", "", 9, 1, "2026-03-05", State::Due, "2026-03-05",
     "2026-03-05"},
    {"fortnight ahead", true, "Quincenal", "4", "", 9, 1, "2026-03-05", State::NotDue, "2026-03-08", "never"},
    {"two months begun", true, "Bimestral", "1", "2026-01-01", 1, 1, "2026-03-05", State::Due, "2026-03-05",
     "2026-03-01"},
    {"off the cycle", true, "Trimestral", "2", "2026-01-15", 1, 1, "2026-03-05", State::NotDue, "2026-05-01", "never"},
    {"month of the year", true, "Anual", "6", "2025-06-30", 1, 1, "2026-03-05", State::NotDue, "2026-06-01", "never"},
    {"an interval out of reach", true, "Semanal", "", "", 9, 2, "2026-03-05", State::NotDue, "never", "never"},
    {"a date on the grid", true, "Fecha", "2026-04-10", "", 9, 1, "2026-03-05", State::NotDue, "never", "never"},
    {"an unknown word", true, "semanal", "", "", 9, 1, "2026-03-05", State::NotDue, "never", "never"},
    {"an interval of 0", true, "Fecha", "", "", 9, 0, "2026-03-05", State::Due, "2026-03-05", "never"},
    {"weekday ahead", false, "Semanal", "5", "2026-02-27", 0, 1, "2026-03-05", State::NotDue, "2026-03-06", "never"},
    {"weekday gone by", false, "Semanal", "1", "2026-02-23", 0, 1, "2026-03-05", State::Due, "2026-03-05",
     "2026-03-02"},
    {"a fortnight gone by", false, "Quincenal", "", "2026-02-16", 0, 1, "2026-03-05", State::Due, "2026-03-05",
     "2026-03-01"},
    {"never on the 30th", false, "Quincenal", "", "2026-03-15", 0, 1, "2026-03-29", State::NotDue, "2026-04-01",
     "never"},
    {"day of the month ahead", false, "Mensual", "20", "2026-02-20", 0, 1, "2026-03-05", State::NotDue, "2026-03-20",
     "never"},
    {"a year ahead", false, "Anual", "5,8", "2025-05-05", 0, 1, "2026-03-05", State::NotDue, "2026-05-05", "never"},
    {"texts across a month's end", false, "Diaria", "", "2026-02-28", 0, 1, "2026-03-02", State::NotDue, "2026-03-28",
     "never"},
    {"a date compared as a text", false, "Fecha", "2026-04-10", "2026-01-01", 0, 1, "2026-03-05", State::NotDue,
     "2026-03-11", "never"},
};

TEST_F(ExplanationTest, TellsWhetherAnAssignmentIsDueAndWhenItWillBe) {
    for (const Case& each : kCases) {
        SCOPED_TRACE(each.label);
        Assignment row;
        row.frequency = each.frequency;
        row.anchor = each.anchor;
        row.last = each.last;
        row.week = each.week;
        row.interval = each.interval;
        row.synchronised = each.synchronised;
        world.Run("DELETE FROM Imputacion_Preventiva");
        Add(row);
        const Explanation told = Only(each.on);
        EXPECT_EQ(told.kind, each.synchronised ? Kind::Synchronised : Kind::Conventional);
        EXPECT_EQ(told.state, each.state);
        EXPECT_EQ(Iso(told.next), each.next);
        EXPECT_EQ(Iso(told.books), each.books);
        EXPECT_EQ(told.frequency, each.frequency);
        EXPECT_EQ(told.rule.substr(0, 4), "due ");
    }
}

TEST_F(ExplanationTest, TheNextDayIsTheFirstThatTheComponentCallsOverdue) {
    for (const Case& each : kCases) {
        SCOPED_TRACE(each.label);
        if (each.next == std::string("never")) continue;
        Assignment row;
        row.frequency = each.frequency;
        row.anchor = each.anchor;
        row.last = each.last;
        row.week = each.week;
        row.interval = each.interval;
        row.synchronised = each.synchronised;
        world.Run("DELETE FROM Imputacion_Preventiva");
        Add(row);
        const Explanation told = Only(each.on);
        const auto first =
            planning::FirstDay(World::Day(each.on), Zontara::AddDays(World::Day(each.on), 400), [&](Zontara::Date day) {
                const std::string text = Zontara::Format(day, "dd/mm/yyyy");
                return preventive->ActivoTieneMantenimientoVencido("A-1", 0, text) ||
                       preventive->ActivoTieneMantenimientoConvencionalVencido("A-1", 0, text);
            });
        EXPECT_EQ(Iso(told.next), Iso(first));
    }
}

TEST_F(ExplanationTest, NamesTheAssignmentAndTheValuesThatItsRuleRead) {
    Assignment row;
    row.key = 31;
    row.frequency = "Mensual";
    row.anchor = "2";
    row.week = 9;
    Add(row);
    const Explanation told = Only();
    EXPECT_EQ(told.key, 31);
    EXPECT_EQ(told.asset, "A-1");
    EXPECT_EQ(told.task, 12);
    EXPECT_EQ(told.taskName, "Oil change");
    EXPECT_EQ(told.rule,
              "due when the week of the year has another number than the week of the last launch, whatever the year, "
              "and the week of the month is the one in Programacion");
    EXPECT_THAT(told.facts, ElementsAre(Fact{"Semana", "9"}, Fact{"week of the year", "10"}, Fact{"Programacion", "2"},
                                        Fact{"week of the month", "1"}));
    EXPECT_EQ(told.reached, (Fact{"step", "0"}));
    EXPECT_EQ(told.threshold, (Fact{"Intervalo_Frecuencia", "1"}));
}

TEST_F(ExplanationTest, ConventionalRulesCountFromTheLastLaunch) {
    Assignment row;
    row.frequency = "Mensual";
    row.anchor = "20";
    row.last = "2026-01-20";
    AddConventional(row);
    EXPECT_THAT(Only().facts,
                ElementsAre(Fact{"Fecha_Ultimo_Lanzamiento", "2026-01-20"}, Fact{"months begun since", "2"},
                            Fact{"Programacion", "20"}, Fact{"day of the month", "5"}));
}

TEST_F(ExplanationTest, ABadAnchorIsToldAndNotRaised) {
    Assignment row;
    row.frequency = "Mensual";
    row.anchor = "soon";
    row.last = "";
    AddConventional(row);
    const Explanation told = Only();
    EXPECT_EQ(told.state, State::Unreadable);
    EXPECT_EQ(told.failure, "Type mismatch");
    EXPECT_EQ(Iso(told.next), "never");
    EXPECT_THAT(told.facts, ElementsAre(Fact{"Fecha_Ultimo_Lanzamiento", ""}, Fact{"Programacion", "soon"},
                                        Fact{"day of the month", "5"}));
}

TEST_F(ExplanationTest, AnAssignmentThatHasNotBegunIsDueFromItsFirstDayOn) {
    Assignment row;
    row.week = 9;
    row.start = "2026-05-01";
    Add(row);
    EXPECT_EQ(Only().state, State::NotBegun);
    EXPECT_EQ(Iso(Only().next), "2026-05-01");
    EXPECT_EQ(Iso(Only().books), "never");
    EXPECT_EQ(Only("2026-05-01").state, State::Due);
}

TEST_F(ExplanationTest, ACancelledAssignmentIsNeverDue) {
    Assignment row;
    row.week = 9;
    row.cancelled = 1;
    Add(row);
    const Explanation told = Only();
    EXPECT_EQ(told.state, State::Cancelled);
    EXPECT_EQ(Iso(told.next), "never");
}

TEST_F(ExplanationTest, AnAssetOutOfServiceIsMarked) {
    AddAsset("A-2", 3);
    Assignment row;
    row.asset = "A-2";
    row.week = 9;
    Add(row);
    const auto all = Of("A-2");
    ASSERT_THAT(all, SizeIs(1));
    EXPECT_EQ(all.front().state, State::Due);
    EXPECT_FALSE(all.front().inService);
    row.key = 2;
    row.asset = "A-1";
    Add(row);
    EXPECT_TRUE(Only().inService);
}

TEST_F(ExplanationTest, AMeterIsDueWhenItHasGrownByTheInterval) {
    SetMeter("A-1", 700);
    AddMeterAssignment(4, "A-1", 200, 500);
    const Explanation told = Only();
    EXPECT_EQ(told.kind, Kind::Meter);
    EXPECT_EQ(told.state, State::Due);
    EXPECT_EQ(Iso(told.next), "2026-03-05");
    EXPECT_EQ(told.frequency, "200 h");
    EXPECT_THAT(told.facts, ElementsAre(Fact{"Acumulado_Lectura", "700"}, Fact{"Ultimo_Acumulado", "500"}));
    EXPECT_EQ(told.reached, (Fact{"growth", "200"}));
    EXPECT_EQ(told.threshold, (Fact{"Lectura_Limite", "200"}));
}

TEST_F(ExplanationTest, AMeterComesDueByItsAverageUse) {
    SetMeter("A-1", 700);
    AddMeterAssignment(4, "A-1", 300, 500);
    UseFiveADay("A-1");
    const Explanation told = Only();
    EXPECT_EQ(told.state, State::NotDue);
    ASSERT_TRUE(told.use);
    EXPECT_DOUBLE_EQ(told.use->perDay, 5);
    EXPECT_EQ(Iso(told.next), "2026-03-21") << "100 h are left, 20 days from the last reading";
    EXPECT_EQ(Iso(Only("2026-06-01").next), "2026-06-02") << "it should have been due, but no reading says so";
}

TEST_F(ExplanationTest, AMeterWithoutUseStandsStill) {
    SetMeter("A-1", 700);
    AddMeterAssignment(4, "A-1", 300, 500);
    AddReading("A-1", "2026-03-01", 100);
    EXPECT_EQ(Only().state, State::NotDue);
    EXPECT_EQ(Iso(Only().next), "never");
    EXPECT_FALSE(Only().use->Known());
}

TEST_F(ExplanationTest, ACancelledMeterAssignmentIsNeverDue) {
    SetMeter("A-1", 700);
    AddMeterAssignment(4, "A-1", 200, 500, 1);
    EXPECT_EQ(Only().state, State::Cancelled);
    EXPECT_EQ(Iso(Only().next), "never");
}

TEST_F(ExplanationTest, AllOfAnAssetAreToldByKindAndKeyAndNoneOfItsNeighbours) {
    AddAsset("A-10");
    Add({9});
    Add({3});
    AddConventional({4});
    Assignment neighbour{5, "A-10"};
    neighbour.cancelled = 1;
    Add(neighbour);
    SetMeter("A-1", 0);
    SetMeter("A-10", 0);
    AddMeterAssignment(2, "A-10", 100, 0);
    AddMeterAssignment(1, "A-1", 100, 0);
    std::vector<std::pair<Kind, int>> told;
    for (const Explanation& each : Of("A-1"))
        told.emplace_back(each.kind, each.key);
    EXPECT_THAT(told, ElementsAre(std::pair{Kind::Synchronised, 3}, std::pair{Kind::Synchronised, 9},
                                  std::pair{Kind::Conventional, 4}, std::pair{Kind::Meter, 1}));
    EXPECT_THAT(Of("unknown"), IsEmpty());
}

TEST_F(ExplanationTest, AKeyNamesTheCalendarAssignmentAndTheMeterAssignment) {
    AddAsset("A-2");
    SetMeter("A-2", 0);
    Add({3});
    Add({4});
    AddMeterAssignment(3, "A-2", 100, 0);
    const auto told = ExplainAssignment(component, 3, World::Day("2026-03-05"));
    ASSERT_THAT(told, SizeIs(2));
    EXPECT_EQ(told[0].asset, "A-1");
    EXPECT_EQ(told[1].asset, "A-2");
    EXPECT_EQ(told[1].kind, Kind::Meter);
    EXPECT_THAT(ExplainAssignment(component, 99, World::Day("2026-03-05")), IsEmpty());
}

TEST_F(ExplanationTest, ACancelledAssignmentIsFoundByItsKey) {
    Assignment row{3};
    row.cancelled = 1;
    AddConventional(row);
    const auto told = ExplainAssignment(component, 3, World::Day("2026-03-05"));
    ASSERT_THAT(told, SizeIs(1));
    EXPECT_EQ(told[0].state, State::Cancelled);
    EXPECT_EQ(told[0].kind, Kind::Conventional);
}

TEST_F(ExplanationTest, AskingChangesNothing) {
    SetMeter("A-1", 700);
    AddMeterAssignment(4, "A-1", 300, 500);
    UseFiveADay("A-1");
    Add({3});
    const auto before = StoredAndMeters();
    EXPECT_THAT(Of("A-1"), SizeIs(2));
    EXPECT_EQ(StoredAndMeters(), before);
    EXPECT_EQ(world.Depth(), 0);
}

}  // namespace

#include "host/forecast/report.h"

#include "host/program.h"
#include "tests/host/run.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace {

using host_test::Execute;
using host_test::Folder;
using host_test::MakeSmallPlant;
using host_test::Ran;
using host_test::Zontara;
using nlohmann::json;
using testing::HasSubstr;
using testing::StartsWith;

struct ForecastTest : testing::Test {
    Folder folder;
    std::string database = MakeSmallPlant(folder);

    Ran Forecast(std::vector<std::string> more, const std::string& weeks = "3") {
        std::vector<std::string> words = {"forecast", database, "--from", "2026-01-05", "--weeks", weeks};
        words.insert(words.end(), more.begin(), more.end());
        return Zontara(words);
    }
};

TEST_F(ForecastTest, TellsWhatEachWeekMakesAndTakes) {
    const Ran ran = Forecast({});
    EXPECT_EQ(ran.status, host::kDone) << ran.err;
    EXPECT_EQ(ran.err, "");
    EXPECT_EQ(ran.out,
              "Forecast of 3 weeks from 2026-01-05, launched each week on that weekday\n"
              "\n"
              "Week  Starts      Synchronised  Conventional  Orders  Hours  Materials  Material cost   Cost\n"
              "----  ----------  ------------  ------------  ------  -----  ---------  -------------  -----\n"
              "   2  2026-01-05             2             1       1    9.0          6          17.70  37.50\n"
              "   3  2026-01-12             1             0       0    3.0          2           5.90  12.50\n"
              "   4  2026-01-19             1             0       0    3.0          2           5.90  12.50\n"
              "      all                    4             1       1   15.0         10          29.50  62.50\n"
              "\n"
              "Meters move on by the average use of the year before, those without a figure stand still\n"
              "\n"
              "Asset  Asset name  Use a day  Unit  Readings  First       Last\n"
              "-----  ----------  ---------  ----  --------  ----------  ----------\n"
              "A-1    Bomba           10.50  h            2  2026-01-02  2026-01-03\n"
              "A-2    Compresor              h            0\n");
}

TEST_F(ForecastTest, CsvHoldsTheWeeks) {
    EXPECT_EQ(Forecast({"--csv"}, "2").out,
              "week,starts,synchronised,conventional,orders,hours,materials,material_cost,cost\n"
              "2,2026-01-05,2,1,1,9,6,17.7,37.5\n"
              "3,2026-01-12,1,0,0,3,2,5.9,12.5\n");
}

TEST_F(ForecastTest, JsonHoldsTheWeeksTheMaterialsAndTheMeters) {
    const json told = json::parse(Forecast({"--json"}).out);
    EXPECT_EQ(told["from"], "2026-01-05");
    EXPECT_EQ(told["plant"], "plant.db");
    ASSERT_EQ(told["weeks"].size(), 3u);
    EXPECT_EQ(told["weeks"][0], (json{{"week", 2},
                                      {"starts", "2026-01-05"},
                                      {"synchronised", 2},
                                      {"conventional", 1},
                                      {"orders", 1},
                                      {"hours", 9.0},
                                      {"materials", 6},
                                      {"material_cost", 17.7},
                                      {"cost", 37.5},
                                      {"hours_by_trade", {{"Taller", 9.0}}}}));
    EXPECT_EQ(told["total"]["hours"], 15.0);
    EXPECT_EQ(told["total"]["hours_by_trade"], (json{{"Taller", 15.0}}));
    EXPECT_EQ(told["materials"], (json{{{"name", "Grasa, kg"}, {"unit_cost", 9.8}, {"quantity", 2.5}},
                                       {{"name", "Paño"}, {"unit_cost", 0.25}, {"quantity", 20.0}}}));
    EXPECT_EQ(told["meters"][0], (json{{"asset", "A-1"},
                                       {"asset_name", "Bomba"},
                                       {"use_a_day", 10.5},
                                       {"unit", "h"},
                                       {"readings", 2},
                                       {"first", "2026-01-02"},
                                       {"last", "2026-01-03"}}));
    EXPECT_EQ(told["meters"][1]["use_a_day"], nullptr);
}

TEST_F(ForecastTest, SaysTheSameTwiceAndLeavesTheFileAlone) {
    const std::string before = folder.Read("plant.db");
    for (const char* form : {"--csv", "--json", "--ics", "--html"}) {
        SCOPED_TRACE(form);
        const Ran ran = Forecast({form});
        EXPECT_EQ(ran.status, host::kDone) << ran.err;
        EXPECT_EQ(Forecast({form}).out, ran.out);
    }
    EXPECT_EQ(folder.Read("plant.db"), before);
}

TEST_F(ForecastTest, ShowsItsProgressOnATerminal) {
    const Ran ran = Zontara({"forecast", database, "--from", "2026-01-05", "--weeks", "2"}, true);
    EXPECT_EQ(ran.status, host::kDone);
    EXPECT_THAT(ran.err, HasSubstr("week 2 of 2 ["));
}

TEST_F(ForecastTest, WhatStopsALaunchStopsItAndIsReported) {
    Execute(database, "UPDATE Imputacion_Preventiva SET Programacion = 'soon' WHERE SC_Imputacion_Preventiva = 2");
    const Ran ran = Forecast({});
    EXPECT_EQ(ran.status, host::kFailed);
    EXPECT_THAT(ran.err, StartsWith("zontara forecast: Type mismatch\n"));
    EXPECT_THAT(ran.err, HasSubstr("CImputacionPreventiva.LanzarPreventivo"));
}

TEST_F(ForecastTest, WrongUsageIsRefused) {
    const std::pair<std::vector<std::string>, const char*> cases[] = {
        {{"--weeks", "-1"}, "--weeks: Value -1 not in range 1 to 520"},
        {{"--weeks", "0"}, "--weeks: Value 0 not in range 1 to 520"},
        {{"--weeks", "some"}, "--weeks"},
        {{"--from", "soon"}, "zontara forecast: --from: "},
        {{"--from", "9999-12-20"}, "--from: the weeks run past the year 9999. Name an earlier day."},
        {{"--csv", "--html"}, "excludes"},
    };
    for (const auto& [more, said] : cases) {
        SCOPED_TRACE(more.back());
        std::vector<std::string> words = {"forecast", database};
        words.insert(words.end(), more.begin(), more.end());
        const Ran ran = Zontara(words);
        EXPECT_EQ(ran.status, host::kUsage);
        EXPECT_EQ(ran.out, "");
        EXPECT_THAT(ran.err, HasSubstr(said));
    }
}

}  // namespace

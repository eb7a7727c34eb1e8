#include "host/explain/report.h"

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
using testing::Not;

struct ExplainTest : testing::Test {
    Folder folder;
    std::string database = MakeSmallPlant(folder);

    Ran Explain(const std::string& what, std::vector<std::string> more = {"--on", "2026-01-05"}) {
        std::vector<std::string> words = {"explain", database, what};
        words.insert(words.end(), more.begin(), more.end());
        return Zontara(words);
    }
};

TEST_F(ExplainTest, TellsRuleValuesThresholdAndNextDayOfEachAssignment) {
    const Ran ran = Explain("A-1");
    EXPECT_EQ(ran.status, host::kDone) << ran.err;
    EXPECT_EQ(ran.err, "");
    EXPECT_EQ(
        ran.out,
        "Asset A-1 on 2026-01-05 (week 2)\n"
        "\n"
        "Synchronised assignment 1, task 7 (Engrase), Semanal: due\n"
        "  Rule      due when the week of the year has another number than the week of the last launch, whatever "
        "the\n"
        "            year\n"
        "  Read      Semana 53, week of the year 2\n"
        "  Threshold step 1 where Intervalo_Frecuencia asks for 1\n"
        "  Books     2026-01-05\n"
        "  Next      2026-01-05\n"
        "\n"
        "Conventional assignment 2, task 8 (Revisión d'en Pere), Mensual: due\n"
        "  Rule      due when 1 month has begun since the last launch and the day of the month in Programacion has\n"
        "            come, or more months than that have begun\n"
        "  Read      Fecha_Ultimo_Lanzamiento 2025-12-05, months begun since 1, Programacion 5, day of the month "
        "5\n"
        "  Threshold step 1 where Intervalo_Frecuencia asks for 1\n"
        "  Books     2026-01-05\n"
        "  Next      2026-01-05\n"
        "\n"
        "Meter assignment 1, task 7 (Engrase), 250 h: not due\n"
        "  Rule      due when the accumulated reading has grown by the interval since the assignment's reference "
        "level\n"
        "  Read      Acumulado_Lectura 1040.5, Ultimo_Acumulado 800\n"
        "  Threshold growth 240.5 where Lectura_Limite asks for 250\n"
        "  Use       10.50 h a day, by 2 readings from 2026-01-02 to 2026-01-03\n"
        "  Next      2026-01-06, at the average use\n"
        "\n"
        "Meter assignment 2, task 8 (Revisión d'en Pere), 500 h: not due\n"
        "  Rule      due when the accumulated reading has grown by the interval since the assignment's reference "
        "level\n"
        "  Read      Acumulado_Lectura 1040.5, Ultimo_Acumulado 1000\n"
        "  Threshold growth 40.5 where Lectura_Limite asks for 500\n"
        "  Use       10.50 h a day, by 2 readings from 2026-01-02 to 2026-01-03\n"
        "  Next      2026-02-16, at the average use\n");
}

TEST_F(ExplainTest, AKeyNamesAnAssignmentOfEachSort) {
    const Ran ran = Explain("3");
    EXPECT_EQ(ran.status, host::kDone) << ran.err;
    EXPECT_THAT(ran.out, HasSubstr("Synchronised assignment 3, task 7 (Engrase), Mensual: due\n"));
    EXPECT_THAT(ran.out, HasSubstr("Meter assignment 3, task 7 (Engrase), 100 h: not due\n"));
    EXPECT_THAT(ran.out, HasSubstr("  Use       not known: the year before has no readings of two days"));
    EXPECT_THAT(ran.out, HasSubstr("  Next      never within 10 years\n"));
}

TEST_F(ExplainTest, AnAssetWhoseNameIsANumberComesBeforeAKey) {
    Execute(database, "INSERT INTO Activo (ID_Activo, Descripcion) VALUES ('3', 'Tank')");
    EXPECT_EQ(Explain("3").out, "Asset 3 has no assignments.\n");
}

TEST_F(ExplainTest, CancelledAndOutOfServiceAreSaid) {
    EXPECT_THAT(Explain("5").out,
                HasSubstr("Synchronised assignment 5, task 8 (Revisión d'en Pere), Semanal: cancelled"));
    EXPECT_THAT(Explain("5").out, HasSubstr("  Next      never: it is cancelled\n"));
    EXPECT_THAT(Explain("B-1").out, HasSubstr("It is out of service: no launch looks at it, due or not.\n"));
    EXPECT_THAT(Explain("A-2").out, Not(HasSubstr("out of service")));
}

TEST_F(ExplainTest, ARowThatStopsLaunchesIsToldAndDoesNotFail) {
    Execute(database, "UPDATE Imputacion_Preventiva SET Programacion = 'soon' WHERE SC_Imputacion_Preventiva = 2");
    const Ran ran = Explain("A-1");
    EXPECT_EQ(ran.status, host::kDone) << ran.err;
    EXPECT_THAT(ran.out, HasSubstr(", Mensual: unreadable\n"));
    EXPECT_THAT(ran.out,
                HasSubstr("  Failure   Type mismatch\n"
                          "  Next      not known; mend the row, since it stops the launch that looks at it\n"));
}

TEST_F(ExplainTest, JsonHoldsEveryField) {
    const json told = json::parse(Explain("A-1", {"--on", "05/01/2026", "--json"}).out);
    EXPECT_EQ(told["on"], "2026-01-05");
    ASSERT_EQ(told["assignments"].size(), 4u);
    EXPECT_EQ(told["assignments"][2], (json{{"kind", "meter"},
                                            {"key", 1},
                                            {"asset", "A-1"},
                                            {"task", 7},
                                            {"task_name", "Engrase"},
                                            {"frequency", "250 h"},
                                            {"state", "not due"},
                                            {"due", false},
                                            {"in_service", true},
                                            {"rule", told["assignments"][2]["rule"]},
                                            {"values", {{"Acumulado_Lectura", "1040.5"}, {"Ultimo_Acumulado", "800"}}},
                                            {"reached", {{"growth", "240.5"}}},
                                            {"threshold", {{"Lectura_Limite", "250"}}},
                                            {"books", nullptr},
                                            {"next", "2026-01-06"},
                                            {"use_a_day", 10.5},
                                            {"unit", "h"}}));
    EXPECT_EQ(told["assignments"][1]["books"], "2026-01-05");
}

TEST_F(ExplainTest, DoesNotTouchTheFile) {
    const std::string before = folder.Read("plant.db");
    EXPECT_EQ(Explain("A-1").status, host::kDone);
    EXPECT_EQ(folder.Read("plant.db"), before);
}

TEST_F(ExplainTest, WhatIsNotThereIsRefused) {
    const Ran asset = Explain("Z-9");
    EXPECT_EQ(asset.status, host::kFailed);
    EXPECT_EQ(asset.err,
              "zontara explain: there is no asset 'Z-9', and it is no key of an assignment. Check the identifier; case "
              "counts.\n");
    const Ran key = Explain("99");
    EXPECT_EQ(key.status, host::kFailed);
    EXPECT_THAT(key.err, HasSubstr("zontara explain: there is no asset and no assignment 99 "));
    const Ran day = Explain("A-1", {"--on", "soon"});
    EXPECT_EQ(day.status, host::kUsage);
    EXPECT_THAT(day.err, HasSubstr("zontara explain: --on: "));
}

}  // namespace

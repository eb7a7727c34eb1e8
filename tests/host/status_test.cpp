#include "host/program.h"

#include "tests/host/run.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <nlohmann/json.hpp>

namespace {

using host_test::Execute;
using host_test::Folder;
using host_test::MakeSmallPlant;
using host_test::Ran;
using host_test::Zontara;
using nlohmann::json;
using testing::HasSubstr;

json StatusOf(const std::string& database) {
    const Ran ran = Zontara({"status", database, "--on", "2026-01-06", "--json"});
    EXPECT_EQ(ran.status, host::kDone) << ran.err;
    return json::parse(ran.out);
}

TEST(Status, CountsWhatStandsInThePlant) {
    const Folder folder;
    const json status = StatusOf(MakeSmallPlant(folder));
    EXPECT_EQ(status["assets"], (json{{"all", 3}, {"in_service", 2}}));
    EXPECT_EQ(status["tasks"], 2);
    EXPECT_EQ(status["cancelled"], 1);
    EXPECT_EQ(status["assignments"],
              (json{{{"frequency", "Semanal"}, {"synchronised", 2}, {"conventional", 0}, {"meter", nullptr}},
                    {{"frequency", "Mensual"}, {"synchronised", 1}, {"conventional", 1}, {"meter", nullptr}},
                    {{"frequency", "by meter"}, {"synchronised", nullptr}, {"conventional", nullptr}, {"meter", 3}}}));
    EXPECT_EQ(status["overdue"]["on"], "2026-01-06");
    EXPECT_EQ(status["overdue"]["asked"], 3);
    EXPECT_EQ(status["latest"], json::array());
    EXPECT_EQ(status["bulletins"], json::array());
    EXPECT_EQ(status["orders"], json::array());
}

TEST(Status, OverdueIsCountedByReason) {
    const Folder folder;
    const std::string database = MakeSmallPlant(folder);
    const json overdue = json::parse(Zontara({"overdue", database, "--on", "2026-01-06", "--json"}).out)["overdue"];
    const auto count = [&](const std::string& reason) {
        return std::count_if(overdue.begin(), overdue.end(), [&](const json& each) {
            return std::find(each["reasons"].begin(), each["reasons"].end(), reason) != each["reasons"].end();
        });
    };
    const json status = StatusOf(database)["overdue"];
    EXPECT_EQ(status["any"], overdue.size());
    EXPECT_GT(overdue.size(), 0u);
    EXPECT_EQ(status["meter"], count("meter"));
    EXPECT_EQ(status["synchronised"], count("synchronised"));
    EXPECT_EQ(status["conventional"], count("conventional"));
    EXPECT_EQ(status["failed"], 0);
}

TEST(Status, TellsTheLatestPapersBulletinsByStatusAndOrdersByWeek) {
    const Folder folder;
    const std::string database = MakeSmallPlant(folder);
    Execute(database, "UPDATE Imputacion_Sistematica SET Ultimo_Acumulado = 0 WHERE SC_Imputacion_Sistematica = 1");
    EXPECT_EQ(Zontara({"launch", database, "--date", "2026-01-05", "--kind", "all"}).status, host::kDone);
    Execute(database, "UPDATE Boletin SET Estatus = 2, Boletin_Realizado = 1 WHERE SC_Boletin = 1");
    const json status = StatusOf(database);
    EXPECT_EQ(status["latest"],
              (json{{{"paper", "bulletin"}, {"of", "synchronised"}, {"day", "2026-01-05"}, {"papers", 2}},
                    {{"paper", "bulletin"}, {"of", "conventional"}, {"day", "2026-01-05"}, {"papers", 1}},
                    {{"paper", "order"}, {"of", "meter"}, {"day", "2026-01-05"}, {"papers", 1}}}));
    EXPECT_EQ(status["bulletins"],
              (json{{{"status", 0}, {"name", "Pendiente"}, {"bulletins", 2}, {"under_way", 0}, {"carried_out", 0}},
                    {{"status", 2}, {"name", "Ejecutado"}, {"bulletins", 1}, {"under_way", 0}, {"carried_out", 1}}}));
    EXPECT_EQ(status["orders"], (json{{{"year", 2026}, {"week", 2}, {"calendar_orders", 0}, {"meter_orders", 1}}}));
}

TEST(Status, AnAssetThatCantBeAskedAboutIsCounted) {
    const Folder folder;
    const std::string database = MakeSmallPlant(folder);
    Execute(database, "UPDATE Imputacion_Preventiva SET Programacion = 'x' WHERE SC_Imputacion_Preventiva = 2");
    EXPECT_EQ(StatusOf(database)["overdue"]["failed"], 1);
    EXPECT_THAT(Zontara({"status", database, "--on", "2026-01-06"}).out,
                HasSubstr("Not to be asked about: 1; `zontara lint` tells why\n"));
}

TEST(Status, FitsAScreen) {
    const Folder folder;
    const Ran ran = Zontara({"status", MakeSmallPlant(folder), "--on", "2026-01-06"});
    EXPECT_EQ(ran.status, host::kDone);
    EXPECT_THAT(ran.out,
                HasSubstr("3 assets, 2 in service; 2 tasks; 1 cancelled assignments\nOverdue on 2026-01-06: "));
    EXPECT_THAT(ran.out, HasSubstr("Frequency  Synchronised  Conventional  Meter\n"));
    EXPECT_LE(std::count(ran.out.begin(), ran.out.end(), '\n'), 40);
}

}  // namespace

#include "host/overdue.h"

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

TEST(Overdue, ListsEachOverdueAssetWithAllItsReasons) {
    const Folder folder;
    const std::string database = MakeSmallPlant(folder);
    EXPECT_EQ(Zontara({"reading", database, "A-1", "1055", "--date", "2026-01-05"}).status, host::kDone);
    const Ran ran = Zontara({"overdue", database, "--on", "2026-01-06"});
    EXPECT_EQ(ran.status, host::kDone) << ran.err;
    EXPECT_EQ(ran.out,
              "Overdue on 2026-01-06: 3 of 3 assets with assignments\n"
              "\n"
              "Asset  Asset name  Overdue by                         In service\n"
              "-----  ----------  ---------------------------------  ----------\n"
              "A-1    Bomba       meter, synchronised, conventional  yes\n"
              "A-2    Compresor   synchronised                       yes\n"
              "B-1    Grúa        synchronised                       no\n");
}

TEST(Overdue, AfterALaunchOnlyWhatIsOutOfServiceIsLeft) {
    const Folder folder;
    const std::string database = MakeSmallPlant(folder);
    EXPECT_EQ(Zontara({"launch", database, "--date", "2026-01-05", "--kind", "all"}).status, host::kDone);
    const Ran ran = Zontara({"overdue", database, "--on", "06/01/2026", "--json"});
    EXPECT_EQ(ran.status, host::kDone) << ran.err;
    EXPECT_EQ(
        json::parse(ran.out),
        (json{{"on", "2026-01-06"},
              {"overdue",
               {{{"asset", "B-1"}, {"asset_name", "Grúa"}, {"in_service", false}, {"reasons", {"synchronised"}}}}},
              {"failed", json::array()}}));
}

TEST(Overdue, AnswersForOneAsset) {
    const Folder folder;
    const std::string database = MakeSmallPlant(folder);
    EXPECT_EQ(Zontara({"overdue", database, "A-2", "--on", "2026-01-06"}).out,
              "Asset A-2 (Compresor) on 2026-01-06: overdue by synchronised\n");
    EXPECT_EQ(Zontara({"overdue", database, "A-2", "--on", "2025-01-06"}).out,
              "Asset A-2 (Compresor) on 2025-01-06: nothing overdue\n");
    const Ran unknown = Zontara({"overdue", database, "Z"});
    EXPECT_EQ(unknown.status, host::kFailed);
    EXPECT_EQ(unknown.err, "zontara overdue: there is no asset 'Z'. Check the identifier; case counts.\n");
}

TEST(Overdue, AnUnreadableAssignmentFailsForItsAssetAloneAndTheStatusTells) {
    const Folder folder;
    const std::string database = MakeSmallPlant(folder);
    Execute(database, "UPDATE Imputacion_Preventiva SET Programacion = 'x' WHERE Es_Sincronizada = 0");
    const Ran ran = Zontara({"overdue", database, "--on", "2026-01-06"});
    EXPECT_EQ(ran.status, host::kFailed);
    EXPECT_THAT(ran.out, HasSubstr("A-2    Compresor   synchronised"));
    EXPECT_EQ(ran.err,
              "zontara overdue: these assets couldn't be asked about, since one of their assignments can't be "
              "read:\nasset A-1: Type mismatch\n");
    const Ran asJson = Zontara({"overdue", database, "--on", "2026-01-06", "--json"});
    EXPECT_EQ(asJson.status, host::kFailed);
    EXPECT_EQ(json::parse(asJson.out)["failed"], (json{{{"asset", "A-1"}, {"reason", "Type mismatch"}}}));
}

TEST(Overdue, WritesNothing) {
    const Folder folder;
    const std::string database = MakeSmallPlant(folder);
    const std::string state = "SELECT * FROM Imputacion_Preventiva";
    const std::vector<std::string> before = host_test::Rows(database, state);
    EXPECT_EQ(Zontara({"overdue", database, "--on", "2026-01-06"}).status, host::kDone);
    EXPECT_EQ(host_test::Rows(database, state), before);
    EXPECT_EQ(host_test::Scalar(database, "SELECT count(*) FROM Boletin"), "0");
}

}  // namespace

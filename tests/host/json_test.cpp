#include "host/program.h"

#include "tests/host/run.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

namespace {

using host_test::Folder;
using host_test::MakeSmallPlant;
using host_test::Ran;
using host_test::Zontara;
using nlohmann::json;

json Answer(const std::vector<std::string>& words) {
    const Ran ran = Zontara(words);
    EXPECT_EQ(ran.status, host::kDone) << ran.err;
    return json::parse(ran.out);
}

TEST(Json, AnImportTellsItsFiles) {
    const Folder folder;
    folder.Write("plant/units.csv", "Descripcion\nh\nkm\n");
    ASSERT_EQ(Zontara({"init", folder / "plant.db"}).status, host::kDone);
    EXPECT_EQ(Answer({"import", folder / "plant.db", folder / "plant", "--json"}),
              (json{{{"file", "units.csv"}, {"rows", 2}}}));
}

TEST(Json, AReadingTellsTheMeterAndWhatItBringsDue) {
    const Folder folder;
    const json answer = Answer({"reading", MakeSmallPlant(folder), "A-1", "1055.7", "--date", "2026-01-09", "--json"});
    EXPECT_EQ(answer["reading"], 3);
    EXPECT_EQ(answer["asset"], "A-1");
    EXPECT_EQ(answer["date"], "2026-01-09");
    EXPECT_EQ(answer["shown"], 1055.7);
    EXPECT_EQ(answer["before"], 1040.5);
    EXPECT_NEAR(answer["accumulated"], 1055.7, 0.01);
    ASSERT_EQ(answer["assignments"].size(), 2u);
    const json& due = answer["assignments"][1];
    EXPECT_EQ(due["key"], 1);
    EXPECT_EQ(due["task_name"], "Engrase");
    EXPECT_EQ(due["interval"], 250);
    EXPECT_EQ(due["due"], true);
    EXPECT_EQ(answer["assignments"][0]["due"], false);
}

TEST(Json, AChangeOfAMeterTellsItsAssignments) {
    for (const char* command : {"advance", "reprogram"}) {
        SCOPED_TRACE(command);
        const Folder folder;
        const json answer = Answer({command, MakeSmallPlant(folder), "1", "A-1", "--json"});
        EXPECT_EQ(answer["asset"], "A-1");
        EXPECT_TRUE(answer["accumulated"].is_number());
        EXPECT_EQ(answer["assignments"][1]["key"], 1);
        EXPECT_EQ(answer["assignments"][1]["due"], true);
    }
}

}  // namespace

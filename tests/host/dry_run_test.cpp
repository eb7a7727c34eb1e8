#include "host/launching/launch.h"

#include "host/program.h"
#include "tests/host/run.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <nlohmann/json.hpp>

namespace {

using host_test::Execute;
using host_test::Folder;
using host_test::MakeSmallPlant;
using host_test::Ran;
using host_test::Scalar;
using host_test::Zontara;
using nlohmann::json;
using testing::HasSubstr;
using testing::StartsWith;

const char* const kMonday = "2026-01-05";

struct DryRunTest : testing::Test {
    Folder folder;
    std::string database = MakeSmallPlant(folder);

    Ran Launch(std::vector<std::string> more) {
        std::vector<std::string> words = {"launch", database, "--date", kMonday};
        words.insert(words.end(), more.begin(), more.end());
        return Zontara(words);
    }
};

TEST_F(DryRunTest, ShowsTheTableThatTheLaunchThenShows) {
    const Ran dry = Launch({"--kind", "all", "--dry-run"});
    EXPECT_EQ(dry.status, host::kDone) << dry.err;
    const std::string note = "Dry run: this is what would be launched; nothing is written.\n\n";
    EXPECT_THAT(dry.out, StartsWith(note));
    EXPECT_THAT(dry.out, HasSubstr("A-1    Bomba          7  Engrase"));
    const Ran launched = Launch({"--kind", "all"});
    EXPECT_EQ(dry.out, note + launched.out);
}

TEST_F(DryRunTest, ShowsTheTextsOfTheOrders) {
    const Ran dry = Launch({"--order-user", "100", "--dry-run"});
    EXPECT_EQ(dry.status, host::kDone) << dry.err;
    EXPECT_THAT(dry.out, HasSubstr("\nTexts of the orders\n\n"
                                   "Order  Text\n"
                                   "-----  ----------------------------------------\n"
                                   "    1  Execute Task --- Nº 7 ,Frequency Semanal\n"
                                   "    2  Execute Task --- Nº 7 ,Frequency Mensual\n"));
}

TEST_F(DryRunTest, JsonIsThatOfTheLaunchMarkedAsDry) {
    json dry = json::parse(Launch({"--kind", "all", "--dry-run", "--json"}).out);
    EXPECT_EQ(dry["dry_run"], true);
    dry.erase("dry_run");
    EXPECT_EQ(dry, json::parse(Launch({"--kind", "all", "--json"}).out));
}

TEST_F(DryRunTest, LeavesTheFileAloneToTheByte) {
    const std::string before = folder.Read("plant.db");
    const auto longAgo = std::filesystem::file_time_type::clock::now() - std::chrono::hours(48);
    std::filesystem::last_write_time(database, longAgo);
    EXPECT_EQ(Launch({"--kind", "all", "--dry-run"}).status, host::kDone);
    EXPECT_EQ(folder.Read("plant.db"), before);
    EXPECT_EQ(std::filesystem::last_write_time(database), longAgo);
    EXPECT_EQ(Scalar(database, "SELECT count(*) FROM Boletin"), "0");
}

TEST_F(DryRunTest, DoesNotWaitForAWriter) {
    dhRichClient3::Options options;
    options.busyMilliseconds = 0;
    const auto writer = dhRichClient3::Connection::Open(database, options);
    writer->IniciarTrans("");
    writer->Ejecutar("DELETE FROM Imputacion_Preventiva");
    const Ran dry = Launch({"--dry-run"});
    EXPECT_EQ(dry.status, host::kDone) << dry.err;
    EXPECT_THAT(dry.out, HasSubstr("synchronised          2         2\n")) << "as of the last commit";
    writer->RevertirTrans("", 0);
}

TEST_F(DryRunTest, FailsAsTheLaunchWould) {
    Execute(database, "UPDATE Imputacion_Preventiva SET Programacion = 'soon'");
    const Ran dry = Launch({"--kind", "conventional", "--dry-run"});
    EXPECT_EQ(dry.status, host::kFailed);
    EXPECT_THAT(dry.err, StartsWith("zontara launch: Type mismatch"));
}

}  // namespace

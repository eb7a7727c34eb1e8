#include "tests/faults/disk.h"
#include "tests/faults/child.h"
#include "tests/faults/effort.h"
#include "tests/faults/plant.h"
#include "tests/host/run.h"

#include "frame/CGlobalPreventivo.h"
#include "frame/creation.h"
#include "frame/raised_error.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <unistd.h>
#include <fstream>

namespace faults {
namespace {

using dhRichClient3::Connection;
using host_test::Ran;

constexpr int kAssets = 12;

class DiskTest : public testing::Test {
protected:
    DiskTest() {
        MakePlant(before_, kAssets);
        disk::Watch();
        Session session(Plant());
        const std::int64_t writes = disk::Writes();
        const std::int64_t reads = disk::Reads();
        session.LaunchAll(Paper::Orders);
        undisturbed_ = Contents(session.Database());
        writes_ = disk::Writes() - writes;
        reads_ = disk::Reads() - reads;
    }

    /// A fresh copy of the plant.
    std::string Plant() {
        for (const char* end : {"", "-wal", "-shm"})
            std::filesystem::remove(plant_ + end);
        std::filesystem::copy_file(before_, plant_);
        return plant_;
    }

    /// Launches with a fault after so many writes (or reads), aborts as a client does, and with a sound disk ends the
    /// work. The number of the error; 0 when the launches went well.
    std::int32_t LaunchWithFault(std::int64_t after, disk::Fault fault) {
        Session session(Plant());
        // A small cache brings pages to the disk, and back from it, in the midst of the launches too.
        session.Database().RunScript("PRAGMA cache_size = 10");
        std::int32_t number = 0;
        {
            const disk::Failing failing(after, fault);
            try {
                session.LaunchAll(Paper::Orders);
            } catch (const Zontara::RaisedError& error) {
                number = error.Number();
                EXPECT_EQ(error.Source(), "HuntERR.ErrorIn");
            }
        }
        Zontara::Create<Zontara::CGlobalPreventivo>()->AbortarTransaccion();
        EXPECT_EQ(Scalar(session.Database(), "PRAGMA integrity_check"), "ok");
        ExpectWhole(session.Database());
        session.LaunchAll(Paper::Orders);
        EXPECT_EQ(session.Database().InTransaction(), false);
        ExpectAllLaunched(session.Database());
        return number;
    }

    static void ExpectWhole(Connection& database) {
        EXPECT_THAT(Scalar(database, "SELECT count(*) FROM Boletin"),
                    testing::AnyOf("0", std::to_string(kConventional * kAssets)));
        EXPECT_THAT(Scalar(database, "SELECT count(*) FROM Orden_Trabajo WHERE Origen = 0"),
                    testing::AnyOf("0", std::to_string(kSynchronised * kAssets)));
        EXPECT_EQ(Scalar(database,
                         "SELECT count(*) FROM (SELECT 1 FROM Orden_Trabajo WHERE Origen = 1"
                         " GROUP BY ID_Activo HAVING count(*) <> " +
                             std::to_string(kMeter) + ")"),
                  "0");
    }
    static void ExpectAllLaunched(Connection& database) {
        ExpectWhole(database);
        EXPECT_EQ(Scalar(database, "SELECT (SELECT count(*) FROM Boletin) + (SELECT count(*) FROM Orden_Trabajo)"),
                  std::to_string(kAssignments * kAssets));
        EXPECT_THAT(TablesWithSharedKeys(database), testing::IsEmpty());
    }

    /// Tries a fault at moments all over the launches; the numbers of the errors must be among these.
    void TryEverywhere(disk::Fault fault, std::int64_t moments, const std::vector<std::int32_t>& codes,
                       const std::string& what) {
        const std::int64_t step = std::max<std::int64_t>(moments / Effort(12, 400), 1);
        int failed = 0;
        int tried = 0;
        for (std::int64_t after = 0; after < moments; after += step, ++tried) {
            SCOPED_TRACE(what + " after " + std::to_string(after));
            const std::int32_t number = LaunchWithFault(after, fault);
            if (number == 0) continue;
            ++failed;
            EXPECT_THAT(codes, testing::Contains(number - Zontara::vbObjectError));
        }
        EXPECT_GT(failed, 0);
        Say("disk " + what + ": " + std::to_string(tried) + " moments, " + std::to_string(failed) +
            " launches failed, whole or nothing each time");
    }

    /// Runs the program's launch on the plant.
    Ran Launch() { return host_test::Zontara({"launch", plant_, "--date", "2026-03-02", "--kind", "all"}); }
    void ExpectRefused(const std::string& remedy) {
        const Ran ran = Launch();
        EXPECT_EQ(ran.status, 1);
        EXPECT_THAT(ran.err, testing::StartsWith("zontara launch: "));
        EXPECT_THAT(ran.err, testing::HasSubstr(remedy));
    }

    host_test::Folder folder_;
    const std::string before_ = folder_ / "before.db";
    const std::string plant_ = folder_ / "plant.db";
    std::vector<std::string> undisturbed_;
    std::int64_t writes_ = 0;
    std::int64_t reads_ = 0;
};

TEST_F(DiskTest, AFullDiskLeavesNothingHalfWritten) { TryEverywhere(disk::Fault::Full, writes_, {4, 10, 13}, "full"); }

TEST_F(DiskTest, ADiskThatRefusesWritesLeavesNothingHalfWritten) {
    TryEverywhere(disk::Fault::Broken, writes_, {4, 10}, "write errors");
}

TEST_F(DiskTest, ADiskThatCannotBeReadLeavesNothingHalfWritten) {
    TryEverywhere(disk::Fault::Unread, reads_, {4, 10, 11}, "read errors");
}

TEST_F(DiskTest, TheProgramSaysThatTheDiskIsFull) {
    Plant();
    const disk::Failing failing(8, disk::Fault::Full);
    ExpectRefused("Make room, then try again.");
}

TEST_F(DiskTest, TheProgramSaysThatTheDiskRefuses) {
    Plant();
    const disk::Failing failing(8, disk::Fault::Broken);
    ExpectRefused("Check it, then try again.");
}

TEST_F(DiskTest, ATruncatedFileIsRefusedWithARemedy) {
    const auto size = std::filesystem::file_size(before_);
    int refused = 0;
    for (const auto kept : {size / 2, size - 4096, std::uintmax_t{5000}, std::uintmax_t{100}}) {
        SCOPED_TRACE(kept);
        Plant();
        std::filesystem::resize_file(plant_, kept);
        ExpectRefused("copy");
        ++refused;
    }
    EXPECT_EQ(refused, 4);
}

TEST_F(DiskTest, AFlippedPageIsRefusedOrHarmsNobody) {
    const auto pages = std::filesystem::file_size(before_) / 4096;
    int refused = 0;
    for (std::uintmax_t page = 0; page < pages; page += IsLong() ? 1 : 5) {
        SCOPED_TRACE("page " + std::to_string(page));
        Plant();
        std::fstream file(plant_, std::ios::binary | std::ios::in | std::ios::out);
        file.seekp(static_cast<std::streamoff>(page * 4096));
        file << std::string(4096, '\x5a');
        file.close();
        const Ran ran = Launch();
        EXPECT_THAT(ran.status, testing::AnyOf(0, 1));
        if (ran.status == 0) continue;
        ++refused;
        EXPECT_THAT(ran.err, testing::AnyOf(testing::HasSubstr("copy"), testing::HasSubstr("zontara init")));
    }
    EXPECT_GT(refused, 0);
    Say("disk flipped pages: " + std::to_string(refused) + " launches refused");
}

TEST_F(DiskTest, AFileThatIsNoDatabaseIsRefusedAndStaysAsItIs) {
    const std::string text = "This is a letter, not a database.";
    folder_.Write("plant.db", text);
    ExpectRefused("no SQLite database");
    EXPECT_EQ(folder_.Read("plant.db"), text);
}

TEST_F(DiskTest, ASchemaWithoutAColumnIsRefusedWithARemedy) {
    for (const char* column : {"Programacion", "Semana", "Acumulado_Ciclo"}) {
        SCOPED_TRACE(column);
        host_test::Execute(Plant(), "ALTER TABLE Imputacion_Preventiva DROP COLUMN " + std::string(column));
        ExpectRefused("zontara init");
        EXPECT_EQ(host_test::Scalar(plant_, "SELECT count(*) FROM Boletin"), "0");
    }
}

TEST_F(DiskTest, ADatabaseThatSomebodyHoldsIsRefusedAfterTheWaitAndLaunchedLater) {
    Plant();
    dhRichClient3::Options impatient;
    impatient.busyMilliseconds = 20;
    Session session(plant_, impatient);
    const auto holder = Connection::Open(plant_);
    holder->IniciarTrans("");
    const auto error = support::ErrorOf([&] { session.LaunchAll(Paper::Orders); });
    EXPECT_EQ(error.number, Zontara::vbObjectError + 5);
    EXPECT_THAT(error.description, testing::HasSubstr("database is locked"));
    EXPECT_FALSE(session.Database().TransactionMeant());
    holder->RevertirTrans("", 0);
    session.LaunchAll(Paper::Orders);
    EXPECT_EQ(Contents(session.Database()), undisturbed_);
}

TEST_F(DiskTest, TheProgramSaysThatAnotherHoldsTheDatabase) {
    if (!IsLong()) GTEST_SKIP() << "the program waits for ten seconds; the long form runs it";
    const auto holder = Connection::Open(Plant());
    holder->IniciarTrans("");
    ExpectRefused("Try again when it has finished.");
}

TEST_F(DiskTest, AFileThatMayNotBeWrittenIsRefusedWithARemedy) {
    Plant();
    std::filesystem::permissions(folder_.Path(), std::filesystem::perms::all);
    std::filesystem::permissions(plant_, std::filesystem::perms::owner_read | std::filesystem::perms::group_read |
                                             std::filesystem::perms::others_read);
    // The administrator may write everything, so somebody else asks.
    constexpr uid_t kNobody = 65534;
    const int status = Child([&] {
                           if (geteuid() == 0 && seteuid(kNobody) != 0) return 2;
                           ExpectRefused("may not be written");
                           return HasFailure() ? 1 : 0;
                       }).Wait();
    EXPECT_EQ(status, 0);
}

}  // namespace
}  // namespace faults

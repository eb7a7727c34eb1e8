#include "tests/faults/child.h"
#include "tests/faults/disk.h"
#include "tests/faults/effort.h"
#include "tests/faults/plant.h"
#include "tests/host/run.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <fstream>
#include <map>
#include <random>
#include <thread>

namespace faults {
namespace {

using dhRichClient3::Connection;
using std::chrono::microseconds;

constexpr const char* kPlantBeforeTheRun = "before.db";

/// How far a run had come when it was killed.
struct Stage {
    int synchronised = 0;
    int conventional = 0;
    /// Assets whose meter assignments were launched.
    int meter = 0;
};

class KillTest : public testing::Test {
protected:
    KillTest() : assets_(Effort(60, 400)) {
        MakePlant(folder_ / kPlantBeforeTheRun, assets_);
        disk::Watch();
    }

    /// A fresh copy of the plant.
    std::string Plant() {
        const std::string path = folder_ / "plant.db";
        for (const char* end : {"", "-wal", "-shm"})
            std::filesystem::remove(path + end);
        std::filesystem::copy_file(folder_ / kPlantBeforeTheRun, path);
        return path;
    }

    /// How long a run has taken, and how often it has written.
    struct Mark {
        std::int64_t microseconds = 0;
        std::int64_t writes = 0;
    };
    /// What a run that nobody disturbs leaves behind, and where its calendar launches and all of it end.
    struct Undisturbed {
        std::vector<std::string> contents;
        Mark calendar;
        Mark all;
    };
    Undisturbed RunUndisturbed(Paper paper) {
        const std::string path = Plant();
        const std::string told = folder_ / "marks";
        const auto begun = std::chrono::steady_clock::now();
        const std::int64_t before = disk::Writes();
        const auto mark = [&] {
            const auto time = std::chrono::steady_clock::now() - begun;
            std::ofstream(told, std::ios::app)
                << std::chrono::duration_cast<microseconds>(time).count() << ' ' << disk::Writes() - before << '\n';
        };
        const int status = Child([&] {
                               {
                                   Session session(path);
                                   session.LaunchCalendar(paper);
                                   mark();
                                   session.LaunchMeter();
                               }
                               mark();
                               return 0;
                           }).Wait();
        EXPECT_EQ(status, 0);
        Undisturbed run;
        std::ifstream(told) >> run.calendar.microseconds >> run.calendar.writes >> run.all.microseconds >>
            run.all.writes;
        std::filesystem::remove(told);
        run.contents = Contents(*Connection::Open(path));
        return run;
    }

    /// A moment of a run, every other time before the end of its calendar launches, which write least.
    std::int64_t Moment(int round, std::int64_t calendar, std::int64_t all) {
        return std::uniform_int_distribution<std::int64_t>(0, (round % 2 == 0 ? calendar : all) - 1)(random_);
    }

    Stage StageOf(Connection& database, Paper synchronised) {
        const bool orders = synchronised == Paper::Orders;
        const std::string bulletins = "SELECT count(*) FROM Boletin";
        const std::string fromCalendar = "SELECT count(*) FROM Orden_Trabajo WHERE Origen = 0";
        Stage stage;
        stage.synchronised = std::stoi(Scalar(database, orders ? fromCalendar : bulletins));
        stage.conventional = std::stoi(Scalar(database, orders ? bulletins : fromCalendar));
        stage.meter = std::stoi(Scalar(database, "SELECT count(DISTINCT ID_Activo) FROM Orden_Trabajo WHERE Origen"));
        return stage;
    }

    /// A calendar launch stands whole, its paper and its bookings, or not at all.
    void ExpectWholeOrNothing(Connection& database, int synchronised, int papers, int assignments) {
        EXPECT_THAT(papers, testing::AnyOf(0, assignments));
        EXPECT_EQ(Scalar(database,
                         "SELECT count(*) FROM Imputacion_Preventiva WHERE Fecha_Ultimo_Lanzamiento >= "
                         "'2026-03-01' AND Es_Sincronizada = " +
                             std::to_string(synchronised)),
                  std::to_string(papers));
    }

    /// Every order has its two materials, its crew and its line in the log, and an asset has all its orders or none.
    static void ExpectWholeOrders(Connection& database) {
        EXPECT_EQ(
            Scalar(database,
                   "SELECT count(*) FROM Orden_Trabajo o WHERE Hombres IS NOT 2"
                   " OR (SELECT count(*) FROM Material_OT m WHERE m.SC_Orden_Trabajo = o.SC_Orden_Trabajo) <> 2"
                   " OR (SELECT count(*) FROM Orden_Generada l WHERE l.SC_Orden_Trabajo = o.SC_Orden_Trabajo) <> 1"),
            "0");
        EXPECT_EQ(Scalar(database,
                         "SELECT count(*) FROM (SELECT 1 FROM Orden_Trabajo WHERE Origen = 1"
                         " GROUP BY ID_Activo HAVING count(DISTINCT SC_Imputacion_Sistematica) <> " +
                             std::to_string(kMeter) + " OR count(*) <> " + std::to_string(kMeter) + ")"),
                  "0");
        EXPECT_EQ(Scalar(database,
                         "SELECT count(*) FROM Imputacion_Sistematica i WHERE (Ultimo_Acumulado = 1000) <>"
                         " EXISTS (SELECT 1 FROM Orden_Trabajo o"
                         " WHERE o.SC_Imputacion_Sistematica = i.SC_Imputacion_Sistematica)"),
                  "0");
    }

    /// The database after a killed run is sound, and a run on it ends where one that nobody disturbed ends.
    Stage CheckAfterKill(const std::string& path, Paper paper, const Undisturbed& undisturbed) {
        Session session(path);
        Connection& database = session.Database();
        EXPECT_EQ(Scalar(database, "PRAGMA integrity_check"), "ok");
        const Stage stage = StageOf(database, paper);
        ExpectWholeOrNothing(database, 1, stage.synchronised, kSynchronised * assets_);
        ExpectWholeOrNothing(database, 0, stage.conventional, kConventional * assets_);
        ExpectWholeOrders(database);
        EXPECT_THAT(TablesWithSharedKeys(database), testing::IsEmpty());
        session.LaunchAll(paper);
        EXPECT_EQ(Contents(database), undisturbed.contents);
        return stage;
    }

    void Count(const Stage& stage, bool killed) {
        if (!killed) return void(++counts_["ended before"]);
        ++counts_["killed"];
        if (stage.synchronised == 0) return void(++counts_["nothing launched"]);
        if (stage.conventional == 0) return void(++counts_["one launch"]);
        if (stage.meter == 0) return void(++counts_["both launches"]);
        ++counts_[stage.meter < assets_ ? "some assets' meters" : "all"];
    }

    void SayCounts(const std::string& what) {
        std::string line = "kill " + what + ": " + std::to_string(kAssignments * assets_) + " assignments";
        for (const auto& [name, count] : counts_)
            line += ", " + name + " " + std::to_string(count);
        Say(line);
    }

    const int assets_;
    host_test::Folder folder_;
    /// Other moments with another --gtest_random_seed.
    std::mt19937 random_{static_cast<unsigned>(20260302 + testing::UnitTest::GetInstance()->random_seed())};
    std::map<std::string, int> counts_;
};

TEST_F(KillTest, AtARandomMomentLeavesWholeLaunchesAndTheNextRunEndsTheWork) {
    for (const Paper paper : {Paper::Bulletins, Paper::Orders}) {
        const Budget budget;
        const Undisturbed undisturbed = RunUndisturbed(paper);
        for (int round = 0; round < Effort(3, 75) && budget.Left(); ++round) {
            SCOPED_TRACE(round);
            const std::string path = Plant();
            Child run([&] {
                Session(path).LaunchAll(paper);
                return 0;
            });
            std::this_thread::sleep_for(
                microseconds(Moment(round, undisturbed.calendar.microseconds, undisturbed.all.microseconds)));
            run.Kill();
            const bool killed = run.Wait() == -SIGKILL;
            Count(CheckAfterKill(path, paper, undisturbed), killed);
            ASSERT_FALSE(HasFailure());
        }
    }
    SayCounts("at random moments");
}

TEST_F(KillTest, InTheMidstOfAWriteLeavesWholeLaunchesAndTheNextRunEndsTheWork) {
    for (const Paper paper : {Paper::Bulletins, Paper::Orders}) {
        const Budget budget;
        const Undisturbed undisturbed = RunUndisturbed(paper);
        ASSERT_GT(undisturbed.all.writes, 100);
        for (int round = 0; round < Effort(3, 75) && budget.Left(); ++round) {
            const std::int64_t at = Moment(round, undisturbed.calendar.writes, undisturbed.all.writes);
            SCOPED_TRACE("write " + std::to_string(at));
            const std::string path = Plant();
            const int status = Child([&] {
                                   disk::FailAfter(at, disk::Fault::PowerCut);
                                   Session(path).LaunchAll(paper);
                                   return 0;
                               }).Wait();
            EXPECT_EQ(status, -SIGKILL);
            Count(CheckAfterKill(path, paper, undisturbed), true);
            ASSERT_FALSE(HasFailure());
        }
    }
    SayCounts("in the midst of a write");
}

}  // namespace
}  // namespace faults

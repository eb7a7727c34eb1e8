#include "tests/faults/effort.h"
#include "tests/faults/plant.h"
#include "tests/support/folder.h"

#include "frame/CGlobalPreventivo.h"
#include "frame/creation.h"
#include "frame/raised_error.h"
#include "readings/CLecturaEquipo.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <mutex>
#include <thread>

namespace faults {
namespace {

constexpr int kThreads = 4;

/// One session serves the process, and the host lets its threads in one at a time, under a lock of its own.
class ThreadsTest : public testing::Test {
protected:
    ThreadsTest() { MakePlant(path_, 10); }

    template <class Work> static void RunInAllThreads(Work work) {
        std::vector<std::thread> threads;
        for (int i = 0; i < kThreads; ++i)
            threads.emplace_back([=] { work(i); });
        for (std::thread& thread : threads)
            thread.join();
    }

    support::Folder folder_;
    const std::string path_ = folder_ / "plant.db";
};

TEST_F(ThreadsTest, ThatEnterInTurnShareOneSession) {
    Session session(path_);
    std::mutex entrance;
    const int turns = Effort(20, 100);
    RunInAllThreads([&](int thread) {
        for (int turn = 0; turn < turns; ++turn) {
            const std::lock_guard<std::mutex> inside(entrance);
            const auto readings = Zontara::Create<Zontara::CLecturaEquipo>();
            readings->Nuevo("2026-03-02", "P-00001", 1, 1, 1, 0, 0, "", "", {}, "");
            readings->Ultimas10Lecturas("P-00001");
            if (turn % 5 == thread) session.LaunchAll(Paper::Orders);
        }
    });
    EXPECT_EQ(Scalar(session.Database(), "SELECT count(*) FROM Lectura_Equipo"), std::to_string(kThreads * turns));
    EXPECT_EQ(Scalar(session.Database(),
                     "SELECT count(*) = count(DISTINCT SC_Imputacion_Sistematica)"
                     " FROM Orden_Trabajo WHERE Origen = 1"),
              "1");
    Say("threads: " + std::to_string(kThreads) + " in turn, " + std::to_string(turns) + " times each");
}

TEST_F(ThreadsTest, EachHaveTheirOwnErrorAtHand) {
    Session session(path_);
    std::mutex entrance;
    RunInAllThreads([&](int thread) {
        for (int turn = 0; turn < 20; ++turn) {
            std::string report;
            {
                const std::lock_guard<std::mutex> inside(entrance);
                const std::string column = "columna_" + std::to_string(thread);
                report = support::ErrorOf([&] {
                             Zontara::Create<Zontara::CLecturaEquipo>()->SeleccionarTodos("1 = 1", column);
                         }).description;
            }
            EXPECT_THAT(report, testing::HasSubstr("no such column: columna_" + std::to_string(thread)));
        }
    });
}

}  // namespace
}  // namespace faults

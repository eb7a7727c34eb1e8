#include "tests/faults/child.h"
#include "tests/faults/effort.h"
#include "tests/faults/plant.h"
#include "tests/host/run.h"

#include "frame/CGlobalPreventivo.h"
#include "frame/creation.h"
#include "frame/provider.h"
#include "readings/CLecturaEquipo.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <unistd.h>
#include <chrono>
#include <fstream>
#include <memory>
#include <random>
#include <set>

namespace faults {
namespace {

using dhRichClient3::Connection;
using std::chrono::steady_clock;

constexpr int kLaunchers = 4;
constexpr int kRecorders = 8;

/// Holds processes back until all of them stand ready.
class StartingGun {
public:
    StartingGun() {
        if (pipe(ends_) != 0) throw std::runtime_error("no pipe for the test");
    }
    ~StartingGun() {
        close(ends_[0]);
        if (ends_[1] >= 0) close(ends_[1]);
    }
    StartingGun(const StartingGun&) = delete;
    StartingGun& operator=(const StartingGun&) = delete;

    /// In a child: waits for the shot.
    void Await() {
        close(std::exchange(ends_[1], -1));
        char none = 0;
        while (read(ends_[0], &none, 1) > 0) {
        }
    }
    void Fire() { close(std::exchange(ends_[1], -1)); }

private:
    int ends_[2] = {-1, -1};
};

class ProcessesTest : public testing::Test {
protected:
    std::string Plant(int assets) {
        std::string path = folder_ / "plant.db";
        MakePlant(path, assets);
        return path;
    }

    /// Starts a process that does its work once the gun is fired.
    void Start(const std::function<void()>& work) {
        children_.push_back(std::make_unique<Child>([this, work] {
            gun_.Await();
            work();
            return 0;
        }));
    }
    void RunAll() {
        gun_.Fire();
        for (const auto& child : children_)
            EXPECT_EQ(child->Wait(), 0);
    }

    host_test::Folder folder_;
    StartingGun gun_;
    std::vector<std::unique_ptr<Child>> children_;
};

/// All the launches of a plant in one transaction, as a host does it whose launches may run in several processes.
void LaunchInOneTransaction(Session& session, Paper paper) {
    const auto facade = Zontara::Create<Zontara::CGlobalPreventivo>();
    facade->IniciarTransaccion();
    session.LaunchAll(paper);
    facade->TerminarTransaccion();
}

TEST_F(ProcessesTest, FourLaunchesAtOnceLaunchEachAssignmentOnce) {
    const int assets = Effort(20, 400);
    const std::string path = Plant(assets);
    for (int i = 0; i < kLaunchers; ++i) {
        Start([&] {
            Session session(path);
            LaunchInOneTransaction(session, Paper::Bulletins);
        });
    }
    RunAll();
    const auto database = Connection::Open(path);
    EXPECT_EQ(Scalar(*database, "SELECT count(*), count(DISTINCT SC_Imputacion_Preventiva) FROM Boletin"),
              std::to_string(kSynchronised * assets) + "|" + std::to_string(kSynchronised * assets));
    EXPECT_EQ(Scalar(*database, "SELECT count(*), count(DISTINCT ID_Activo) FROM Orden_Trabajo WHERE Origen = 0"),
              std::to_string(kConventional * assets) + "|" + std::to_string(assets));
    EXPECT_EQ(Scalar(*database,
                     "SELECT count(*), count(DISTINCT SC_Imputacion_Sistematica) FROM Orden_Trabajo"
                     " WHERE Origen = 1"),
              std::to_string(kMeter * assets) + "|" + std::to_string(kMeter * assets));
    EXPECT_THAT(TablesWithSharedKeys(*database), testing::IsEmpty());
    Say("processes: " + std::to_string(kLaunchers) + " launches at once of " + std::to_string(kAssignments * assets) +
        " assignments, each launched once");
}

/// What one recorder did: written by the child, read by the test.
struct Work {
    std::int64_t readings = 0;
    std::int64_t sum = 0;
    std::vector<int> keys;
};

void Record(const std::string& path, const std::string& report, unsigned seed, std::chrono::seconds time, int assets) {
    Session session(path);
    const auto readings = Zontara::Create<Zontara::CLecturaEquipo>();
    std::mt19937 random(seed);
    Work work;
    for (const auto end = steady_clock::now() + time; steady_clock::now() < end;) {
        std::string asset = std::to_string(random() % static_cast<unsigned>(assets) + 1);
        asset = "P-" + std::string(5 - asset.size(), '0') + asset;
        const int value = static_cast<int>(random() % 9) + 1;
        readings->Nuevo("2026-03-02", asset, 1, static_cast<float>(value), 0, 0, 0, "", "", {}, "");
        ++work.readings;
        work.sum += value;
        work.keys.push_back(Zontara::Session().ElGeneradorClaves()->ProximaClave("Prueba"));
    }
    std::ofstream file(report);
    file << work.readings << ' ' << work.sum;
    for (const int key : work.keys)
        file << ' ' << key;
}

Work ReadWork(const std::string& report) {
    std::ifstream file(report);
    Work work;
    file >> work.readings >> work.sum;
    for (int key = 0; file >> key;)
        work.keys.push_back(key);
    return work;
}

TEST_F(ProcessesTest, ReadingsAndKeysOfEightProcessesAreAllThereWhileOneLaunches) {
    const std::chrono::seconds time(Effort(3, 60));
    constexpr int kAssets = 20;
    const std::string path = Plant(kAssets);
    const auto report = [&](int i) { return folder_ / ("report-" + std::to_string(i)); };
    for (int i = 0; i < kRecorders; ++i)
        Start([&, i] { Record(path, report(i), static_cast<unsigned>(i), time, kAssets); });
    Start([&] {
        Session session(path);
        for (const auto end = steady_clock::now() + time; steady_clock::now() < end;)
            LaunchInOneTransaction(session, Paper::Bulletins);
    });
    RunAll();

    Work all;
    for (int i = 0; i < kRecorders; ++i) {
        const Work own = ReadWork(report(i));
        EXPECT_GT(own.readings, 0) << "recorder " << i;
        all.readings += own.readings;
        all.sum += own.sum;
        all.keys.insert(all.keys.end(), own.keys.begin(), own.keys.end());
    }
    const auto database = Connection::Open(path);
    EXPECT_EQ(Scalar(*database, "SELECT count(*), CAST(sum(Valor_Real) AS INTEGER) FROM Lectura_Equipo"),
              std::to_string(all.readings) + "|" + std::to_string(all.sum));
    EXPECT_EQ(Scalar(*database,
                     "SELECT count(*) FROM Activo a WHERE Acumulado_Lectura <> 1000 + (SELECT "
                     "total(Valor_Real) FROM Lectura_Equipo l WHERE l.ID_Equipo = a.ID_Activo)"),
              "0");
    EXPECT_EQ(std::set<int>(all.keys.begin(), all.keys.end()).size(), all.keys.size());
    EXPECT_THAT(TablesWithSharedKeys(*database), testing::IsEmpty());
    EXPECT_EQ(Scalar(*database, "SELECT count(*) FROM Boletin"), std::to_string(kSynchronised * kAssets));
    Say("processes: " + std::to_string(kRecorders) + " recorders and a launcher for " + std::to_string(time.count()) +
        " s: " + std::to_string(all.readings) + " readings, " + std::to_string(all.keys.size()) + " keys, none lost");
}

}  // namespace
}  // namespace faults

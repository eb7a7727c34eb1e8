#include "tests/faults/memory.h"
#include "tests/faults/effort.h"
#include "tests/faults/operations.h"
#include "tests/faults/plant.h"

#include "Perluma/provider.h"
#include "calendar/CImputacionPreventiva.h"
#include "frame/CGlobalPreventivo.h"
#include "frame/creation.h"
#include "frame/raised_error.h"
#include "schema/create.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <new>

namespace faults {
namespace {

using memory::Shortage;

/// Stands for a `std::bad_alloc` that comes out as it is, since there was no memory for an error.
constexpr std::int32_t kRawBadAlloc = -7;

class MemoryTest : public testing::Test {
protected:
    /// A plant without a tracer, whose own allocations would be among those that fail, and objects made beforehand.
    struct Plant {
        Plant() : connection(dhRichClient3::Connection::Open(":memory:")) {
            schema::Create(*connection);
            connection->RunScript(kSmallPlant);
            provider = Perluma::OpenSession(connection);
        }
        ~Plant() { Zontara::InstallProvider(nullptr); }
        Plant(const Plant&) = delete;
        Plant& operator=(const Plant&) = delete;

        void Launch() const {
            calendar->LanzarPreventivo(day, 7, "");
            calendar->LanzarPreventivoConvensional(day, 7, "");
        }

        Zontara::Ref<dhRichClient3::Connection> connection;
        std::shared_ptr<Zontara::Provider> provider;
        Zontara::Ref<Zontara::CImputacionPreventiva> calendar = Zontara::Create<Zontara::CImputacionPreventiva>();
        Zontara::Date day = support::World::Day("2026-03-02");
    };

    /// How some work ended whose memory ran out.
    template <class Work> std::int32_t NumberOf(std::int64_t after, Shortage shortage, Work work) {
        const memory::Failing failing(after, shortage);
        try {
            work();
        } catch (const Zontara::RaisedError& error) {
            return error.Number();
        } catch (const std::bad_alloc&) {
            return kRawBadAlloc;
        }
        return 0;
    }

    static std::int64_t AllocationsOf(const Plant& plant) {
        const memory::Failing none(-1);
        try {
            plant.Launch();
        } catch (const Zontara::RaisedError&) {
        }
        return memory::Failing::Allocations();
    }

    /// Lets the memory of the launches run out at moments all over them, and looks at what is left. `spoil` is run on
    /// the plant before, `mend` after.
    void RunOut(const std::string& what, Shortage shortage, const std::vector<int>& ends, const char* spoil = "",
                const char* mend = "") {
        const auto makePlant = [&] {
            auto plant = std::make_unique<Plant>();
            plant->connection->RunScript(spoil);
            return plant;
        };
        const std::int64_t count = AllocationsOf(*makePlant());
        const std::int64_t stride = std::max<std::int64_t>(count / Effort(40, 2000), 1);
        std::map<std::int32_t, int> seen;
        for (std::int64_t after = 0; after < count; after += stride) {
            SCOPED_TRACE(what + ", allocation " + std::to_string(after) + " of " + std::to_string(count));
            const auto plant = makePlant();
            const auto before = Contents(*plant->connection);
            const std::int32_t number = NumberOf(after, shortage, [&] { plant->Launch(); });
            ++seen[number];
            EXPECT_THAT(ends, testing::Contains(number));
            Zontara::Create<Zontara::CGlobalPreventivo>()->AbortarTransaccion();
            EXPECT_FALSE(plant->connection->TransactionMeant());
            const std::string bulletins = Scalar(*plant->connection, "SELECT count(*) FROM Boletin");
            EXPECT_THAT(bulletins, testing::AnyOf("1", "3", "5"));
            if (bulletins == "1") {
                EXPECT_EQ(Contents(*plant->connection), before);
            }
            plant->connection->RunScript(mend);
            plant->Launch();
            EXPECT_EQ(Scalar(*plant->connection, "SELECT count(*) FROM Boletin"), "5");
        }
        std::string line = "memory, " + what + ": " + std::to_string(count) + " allocations, ends";
        for (const auto& [number, times] : seen)
            line += " " + std::to_string(number) + " (" + std::to_string(times) + ")";
        Say(line);
    }
};

constexpr int kOutOfMemory = 7;
constexpr int kEngineOutOfMemory = Zontara::vbObjectError + 7;
constexpr int kForcedFailure = Zontara::vbObjectError + 19;

/// The second bulletin of a launch is refused.
constexpr const char* kSpoil =
    "CREATE TRIGGER falla BEFORE INSERT ON Boletin WHEN NEW.SC_Imputacion_Preventiva = 2"
    " BEGIN SELECT RAISE(ABORT, 'forced failure'); END";
constexpr const char* kMend = "DROP TRIGGER falla";

TEST_F(MemoryTest, ALaunchThatGetsNoMemoryOnceIsReportedAsErrorSevenAndLaunchesNothing) {
    RunOut("a launch, once", Shortage::Once, {0, kOutOfMemory, kEngineOutOfMemory});
}

TEST_F(MemoryTest, ALaunchThatGetsNoMemoryAnyMoreEndsCleanly) {
    RunOut("a launch, for good", Shortage::ForGood, {kOutOfMemory, kEngineOutOfMemory, kRawBadAlloc});
}

/// The failure's own number goes out, or error 7, but for the moments at which a handler takes the failure up: what
/// fails there comes out as it is.
TEST_F(MemoryTest, AFailureWhoseReportGetsNoMemoryEndsCleanly) {
    RunOut("a failed launch, once", Shortage::Once, {kOutOfMemory, kEngineOutOfMemory, kForcedFailure, kRawBadAlloc},
           kSpoil, kMend);
}

TEST_F(MemoryTest, AFailureThatGetsNoMemoryAnyMoreEndsCleanly) {
    RunOut("a failed launch, for good", Shortage::ForGood,
           {kOutOfMemory, kEngineOutOfMemory, kRawBadAlloc, kForcedFailure}, kSpoil, kMend);
}

}  // namespace
}  // namespace faults

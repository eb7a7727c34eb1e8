#include "tests/faults/memory.h"
#include "tests/faults/effort.h"
#include "tests/faults/operations.h"
#include "tests/faults/plant.h"

#include "Perluma/line_trace.h"
#include "Perluma/provider.h"
#include "Perluma/tracing_provider.h"
#include "calendar/CImputacionPreventiva.h"
#include "catalogues/CEquipo.h"
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
        explicit Plant(const char* spoil = "") : connection(dhRichClient3::Connection::Open(":memory:")) {
            schema::Create(*connection);
            connection->RunScript(kSmallPlant);
            connection->RunScript(spoil);
            provider = Perluma::OpenSession(connection);
        }
        ~Plant() { Zontara::InstallProvider(nullptr); }
        Plant(const Plant&) = delete;
        Plant& operator=(const Plant&) = delete;

        /// From here on what is asked of the session is told in lines, which take memory too.
        void Trace() {
            provider = std::make_shared<Perluma::TracingProvider>(provider, std::make_shared<Perluma::LineTrace>());
            Zontara::InstallProvider(provider);
        }

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

    static std::unique_ptr<Plant> Untraced() { return std::make_unique<Plant>(); }
    static std::unique_ptr<Plant> Traced() {
        auto plant = std::make_unique<Plant>();
        plant->Trace();
        return plant;
    }
    /// The second bulletin of a launch is refused, until `kMend` is run.
    static std::unique_ptr<Plant> Spoiled() {
        return std::make_unique<Plant>(
            "CREATE TRIGGER falla BEFORE INSERT ON Boletin WHEN NEW.SC_Imputacion_Preventiva = 2"
            " BEGIN SELECT RAISE(ABORT, 'forced failure'); END");
    }
    static constexpr const char* kMend = "DROP TRIGGER IF EXISTS falla";

    /// Lets the memory of the launches run out at moments all over them, and looks at what is left.
    void RunOut(const std::string& what, Shortage shortage, const std::vector<int>& ends,
                std::unique_ptr<Plant> (*makePlant)()) {
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
            if (number == 0) {
                EXPECT_EQ(bulletins, "5");
            }
            if (bulletins == "1") {
                EXPECT_EQ(Contents(*plant->connection), before);
            }
            plant->connection->RunScript(kMend);
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
/// What a trigger or a key refuses.
constexpr int kRefused = Zontara::vbObjectError + 19;

TEST_F(MemoryTest, ALaunchThatGetsNoMemoryOnceIsReportedAsErrorSevenAndLaunchesNothing) {
    RunOut("a launch, once", Shortage::Once, {0, kOutOfMemory, kEngineOutOfMemory}, &Untraced);
}

TEST_F(MemoryTest, ATracedLaunchThatGetsNoMemoryOnceIsReportedOrItsLineIsLost) {
    RunOut("a traced launch, once", Shortage::Once, {0, kOutOfMemory, kEngineOutOfMemory}, &Traced);
}

TEST_F(MemoryTest, ALaunchThatGetsNoMemoryAnyMoreIsErrorSeven) {
    RunOut("a launch, for good", Shortage::ForGood, {kOutOfMemory, kEngineOutOfMemory}, &Untraced);
}

TEST_F(MemoryTest, ATracedLaunchThatGetsNoMemoryAnyMoreIsErrorSeven) {
    RunOut("a traced launch, for good", Shortage::ForGood, {kOutOfMemory, kEngineOutOfMemory}, &Traced);
}

TEST_F(MemoryTest, AFailureWhoseReportGetsNoMemoryIsReportedOrErrorSeven) {
    RunOut("a failed launch, once", Shortage::Once, {kOutOfMemory, kEngineOutOfMemory, kRefused}, &Spoiled);
}

TEST_F(MemoryTest, AFailureThatGetsNoMemoryAnyMoreIsReportedOrErrorSeven) {
    RunOut("a failed launch, for good", Shortage::ForGood, {kOutOfMemory, kEngineOutOfMemory, kRefused}, &Spoiled);
}

/// The refused statement and every value of the report hold long texts, which take memory at every turn.
TEST_F(MemoryTest, AReportOfLongArgumentsComesOutWhateverMomentOfItGetsNoMemory) {
    const Plant plant;
    const auto equipment = Zontara::Create<Zontara::CEquipo>();
    const std::string text(100, 'x');
    const auto refused = [&] { equipment->Nuevo("A-1", text, 1, text, text, text, text); };
    const auto abort = [] { Zontara::Create<Zontara::CGlobalPreventivo>()->AbortarTransaccion(); };
    for (const Shortage shortage : {Shortage::Once, Shortage::ForGood}) {
        std::map<std::int32_t, int> seen;
        std::int64_t after = 0;
        do {
            SCOPED_TRACE("allocation " + std::to_string(after));
            const std::int32_t number = NumberOf(after, shortage, refused);
            EXPECT_THAT(number, testing::AnyOf(kOutOfMemory, kEngineOutOfMemory, kRefused));
            ++seen[number];
            abort();
        } while (after++ < memory::Failing::Allocations());
        EXPECT_GT(seen[kOutOfMemory], 0);
        EXPECT_GT(seen[kRefused], 0);
    }
}

}  // namespace
}  // namespace faults

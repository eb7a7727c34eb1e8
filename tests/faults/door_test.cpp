#include "tests/faults/effort.h"
#include "tests/faults/hostile.h"
#include "tests/faults/operations.h"
#include "tests/faults/plant.h"
#include "tests/host/run.h"

#include "calendar/CImputacionPreventiva.h"
#include "frame/CGlobalPreventivo.h"
#include "frame/creation.h"
#include "frame/raised_error.h"
#include "schema/create.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <map>

namespace faults {
namespace {

using dhRichClient3::Connection;
using support::World;
using Zontara::TypeWord;

/// A plant on a file, in a folder that is the working folder, beside a file that nobody may touch.
class DoorTest : public testing::Test {
protected:
    DoorTest() : before_(std::filesystem::current_path()) {
        folder_.Write("decoy.txt", "untouched");
        std::filesystem::current_path(folder_.Path());
        dhRichClient3::Options options;
        options.mode = dhRichClient3::Options::Mode::Create;
        options.stepLimit = 300'000;
        options.rowBytesLimit = 32 << 20;
        const auto connection = Connection::Open(folder_ / "plant.db", options);
        schema::Create(*connection);
        world_ = std::make_unique<World>(connection);
        world_->Run(kSmallPlant);
        schema_ = Schema();
        contents_ = Contents(world_->Database());
        files_ = Files();
    }
    ~DoorTest() override { std::filesystem::current_path(before_); }

    /// All that the engine knows of: what it holds, what is attached, and its settings that a file keeps.
    std::vector<std::string> Schema() {
        std::vector<std::string> all;
        for (const char* sql : {"SELECT * FROM sqlite_schema", "SELECT * FROM sqlite_temp_schema",
                                "SELECT name, file FROM pragma_database_list", "PRAGMA user_version",
                                "PRAGMA journal_mode", "PRAGMA writable_schema"}) {
            for (std::string& row : Rows(world_->Database(), sql))
                all.push_back(std::move(row));
        }
        return all;
    }
    std::vector<std::string> Files() const {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(folder_.Path()))
            names.push_back(entry.path().filename().string());
        std::sort(names.begin(), names.end());
        return names;
    }

    /// Calls an operation with one of its arguments replaced, inside a transaction that is rolled back.
    void Try(const Operation& operation, std::size_t argument, const Hostile& hostile) {
        const auto begun = std::chrono::steady_clock::now();
        facade_->IniciarTransaccion();
        const auto object = operation.Object();
        std::vector<Zontara::Value> arguments = operation.Arguments();
        arguments[argument] = hostile.text;
        try {
            operation.Call(*object, arguments);
            ++accepted_;
        } catch (const Zontara::RaisedError&) {
            ++refused_;
        }
        facade_->AbortarTransaccion();
        slowest_ = std::max(slowest_, std::chrono::steady_clock::now() - begun);
    }

    void ExpectNothingTouched() {
        ASSERT_EQ(world_->Depth(), 0);
        ASSERT_FALSE(world_->InTransaction());
        ASSERT_EQ(Schema(), schema_);
        ASSERT_EQ(Contents(world_->Database()), contents_);
        ASSERT_EQ(Files(), files_);
        ASSERT_EQ(folder_.Read("decoy.txt"), "untouched");
    }

    /// Calls `work` for each text argument of each operation.
    template <class Work> static int ForEachTextArgument(Work work) {
        int count = 0;
        for (const Operation& operation : AllOperations()) {
            for (std::size_t i = 0; i < operation.member->arguments.size(); ++i) {
                if (operation.member->arguments[i].type.word != TypeWord::Text) continue;
                SCOPED_TRACE(operation.Name() + ", " + std::string(operation.member->arguments[i].name));
                work(operation, i, count++);
                if (HasFatalFailure()) return count;
            }
        }
        return count;
    }

    void SayCounts(const std::string& what, int arguments) {
        const auto slowest = std::chrono::duration_cast<std::chrono::milliseconds>(slowest_).count();
        Say("door " + what + ": " + std::to_string(arguments) + " text arguments, " +
            std::to_string(accepted_ + refused_) + " calls, " + std::to_string(accepted_) + " harmless, " +
            std::to_string(refused_) + " refused, the slowest " + std::to_string(slowest) + " ms");
    }

    std::filesystem::path before_;
    host_test::Folder folder_;
    std::unique_ptr<World> world_;
    Zontara::Ref<Zontara::CGlobalPreventivo> facade_ = Zontara::Create<Zontara::CGlobalPreventivo>();
    std::vector<std::string> schema_;
    std::vector<std::string> contents_;
    std::vector<std::string> files_;
    int accepted_ = 0;
    int refused_ = 0;
    std::chrono::steady_clock::duration slowest_{};
};

TEST_F(DoorTest, HostileTextsReachNeitherTheSchemaNorAnotherFileThroughAnyArgument) {
    const std::vector<Hostile> values = HostileValues();
    ASSERT_GE(values.size(), 200U);
    // In the short form an argument gets each so many-th of them, the next argument those beside.
    const int stride = Effort(16, 1);
    const int arguments = ForEachTextArgument([&](const Operation& operation, std::size_t argument, int number) {
        for (auto i = static_cast<std::size_t>(number % stride); i < values.size();
             i += static_cast<std::size_t>(stride)) {
            SCOPED_TRACE(values[i].name);
            Try(operation, argument, values[i]);
        }
        ExpectNothingTouched();
    });
    EXPECT_GE(arguments, 100);
    SayCounts(std::to_string(values.size()) + " hostile values", arguments);
}

TEST_F(DoorTest, TextsOfTenMegabytesEndInAnAnswerOrAnError) {
    const std::vector<Hostile> values = HugeValues();
    const int stride = Effort(60, 1);
    const int arguments = ForEachTextArgument([&](const Operation& operation, std::size_t argument, int number) {
        if (number % stride != 0) return;
        for (const Hostile& value : values) {
            SCOPED_TRACE(value.name);
            Try(operation, argument, value);
        }
        ExpectNothingTouched();
    });
    SayCounts("ten megabytes", arguments);
}

TEST_F(DoorTest, AQueryThatNeverEndsIsStoppedByTheDefaultLimit) {
    if (!IsLong()) GTEST_SKIP() << "takes as long as the limit allows; the long form runs it";
    World world;
    world.Run(kSmallPlant);
    const auto error = support::ErrorOf([] {
        Zontara::Create<Zontara::CImputacionPreventiva>()->SeleccionarTodos(
            "(WITH RECURSIVE r(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM r) SELECT count(*) FROM r) > 0",
            " Frecuencia ");
    });
    EXPECT_EQ(error.number, Zontara::vbObjectError + 9);
    EXPECT_THAT(error.description, testing::HasSubstr("steps of the engine"));
}

}  // namespace
}  // namespace faults

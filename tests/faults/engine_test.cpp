#include "tests/faults/effort.h"
#include "tests/faults/engine_handle.h"
#include "tests/faults/operations.h"
#include "tests/faults/plant.h"
#include "tests/host/run.h"

#include "frame/CGlobalPreventivo.h"
#include "frame/Libreria.h"
#include "frame/creation.h"
#include "frame/raised_error.h"
#include "schema/create.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sqlite3.h>

#include <algorithm>

namespace faults {
namespace {

using dhRichClient3::Connection;
using support::World;

constexpr std::int32_t Refusal(int code) { return Zontara::vbObjectError + code; }

/// An engine that stops a statement, or gives a transaction up, in the midst of an operation.
class EngineTest : public testing::Test {
protected:
    void StartAnew(const Operation& operation) {
        operation_ = operation;
        world_.reset();
        world_ = MakeSmallPlant();
        object_ = operation_.Object();
        arguments_ = operation_.Arguments();
        world_->Forget();
    }

    /// Every row but the counters of keys, which may move on for nothing.
    std::vector<std::string> Stored() {
        std::vector<std::string> rows = Contents(world_->Database());
        const auto isCounter = [](const std::string& row) { return row.rfind("Clave|", 0) == 0; };
        rows.erase(std::remove_if(rows.begin(), rows.end(), isCounter), rows.end());
        return rows;
    }

    /// What an operation does that nobody disturbs.
    struct Undisturbed {
        /// The states of the database between its transactions, the last one too.
        std::vector<std::vector<std::string>> states;
        /// How it ends when it is called again.
        std::int32_t again = 0;
    };
    Undisturbed RunUndisturbed(const Operation& operation) {
        Undisturbed run;
        StartAnew(operation);
        world_->OnRequest([&](const std::string&) {
            if (!world_->InTransaction()) run.states.push_back(Stored());
        });
        operation_.Call(*object_, arguments_);
        world_->OnRequest({});
        run.states.push_back(Stored());
        run.again = CallAnew();
        return run;
    }

    /// Calls the operation; the number of its error, 0 for none.
    std::int32_t Call() {
        try {
            operation_.Call(*object_, arguments_);
        } catch (const Zontara::RaisedError& error) {
            return error.Number();
        }
        return 0;
    }

    std::int32_t CallAnew() {
        object_ = operation_.Object();
        arguments_ = operation_.Arguments();
        return Call();
    }

    /// What was not committed is gone after the abort, and the next operation works. What the engine interrupts at the
    /// very step that commits is stored, so that the next one is the second.
    void ExpectWholeAfterAbort(const Undisturbed& undisturbed) {
        Zontara::Create<Zontara::CGlobalPreventivo>()->AbortarTransaccion();
        EXPECT_EQ(world_->Depth(), 0);
        EXPECT_FALSE(world_->Database().TransactionMeant());
        const std::vector<std::string> stored = Stored();
        EXPECT_THAT(undisturbed.states, testing::Contains(stored));
        EXPECT_EQ(CallAnew(), stored == undisturbed.states.back() ? undisturbed.again : 0);
    }

    EngineHandle handle_;
    Operation operation_;
    std::unique_ptr<World> world_;
    Zontara::Ref<Zontara::Object> object_;
    std::vector<Zontara::Value> arguments_;
};

/// Counts the engine's steps and stops it at one of them.
struct Stopper {
    std::int64_t steps = 0;
    std::int64_t stopAt = -1;

    static int Step(void* self) {
        auto& stopper = *static_cast<Stopper*>(self);
        return stopper.steps++ == stopper.stopAt ? 1 : 0;
    }
};

TEST_F(EngineTest, AnInterruptAtAnyStepLeavesWholeTransactionsOnly) {
    int interrupts = 0;
    for (const Operation& operation : OperationsBesideTransactions()) {
        const Undisturbed undisturbed = RunUndisturbed(operation);
        StartAnew(operation);
        Stopper counter;
        sqlite3_progress_handler(EngineHandle::Last(), 1, &Stopper::Step, &counter);
        Call();
        sqlite3_progress_handler(EngineHandle::Last(), 0, nullptr, nullptr);
        const std::int64_t stride = std::max<std::int64_t>(counter.steps / Effort(4, 100), 1);
        for (std::int64_t at = stride / 2; at < counter.steps; at += stride, ++interrupts) {
            SCOPED_TRACE(operation.Name() + ", step " + std::to_string(at) + " of " + std::to_string(counter.steps));
            StartAnew(operation);
            Stopper stopper{0, at};
            sqlite3_progress_handler(EngineHandle::Last(), 1, &Stopper::Step, &stopper);
            const std::int32_t number = Call();
            sqlite3_progress_handler(EngineHandle::Last(), 0, nullptr, nullptr);
            EXPECT_EQ(number, Refusal(9));
            ExpectWholeAfterAbort(undisturbed);
        }
    }
    Say("engine: " + std::to_string(interrupts) + " interrupts, whole transactions each time");
}

/// Asks for a key in a transaction of its own; the number of its error, 0 for none.
std::int32_t EndOfKey(Stopper& stopper) {
    const auto facade = Zontara::Create<Zontara::CGlobalPreventivo>();
    facade->IniciarTransaccion();
    sqlite3_progress_handler(EngineHandle::Last(), 1, &Stopper::Step, &stopper);
    std::int32_t number = 0;
    try {
        Zontara::Libreria::ProximaClave("Boletin");
    } catch (const Zontara::RaisedError& error) {
        number = error.Number();
    }
    sqlite3_progress_handler(EngineHandle::Last(), 0, nullptr, nullptr);
    facade->AbortarTransaccion();
    return number;
}

/// A key whose table is known by now: that it can't be read must not be taken for a change of the table.
TEST_F(EngineTest, AnInterruptAtAnyStepOfAKeyIsReported) {
    world_ = MakeSmallPlant();
    Stopper first;
    EXPECT_EQ(EndOfKey(first), 0);
    Stopper counter;
    EXPECT_EQ(EndOfKey(counter), 0);
    EXPECT_GT(counter.steps, 5);
    for (std::int64_t at = 0; at < counter.steps; ++at) {
        Stopper stopper{0, at};
        EXPECT_EQ(EndOfKey(stopper), Refusal(9)) << "step " << at;
    }
}

/// Counts the commits and turns one of them into a rollback.
struct CommitRefuser {
    int commits = 0;
    int refuseAt = -1;

    static int Commit(void* self) {
        auto& refuser = *static_cast<CommitRefuser*>(self);
        return refuser.commits++ == refuser.refuseAt ? 1 : 0;
    }
};

TEST_F(EngineTest, ACommitThatTheEngineTurnsIntoARollbackIsReported) {
    int commits = 0;
    for (const Operation& operation : OperationsBesideTransactions()) {
        const Undisturbed undisturbed = RunUndisturbed(operation);
        StartAnew(operation);
        CommitRefuser counter;
        sqlite3_commit_hook(EngineHandle::Last(), &CommitRefuser::Commit, &counter);
        Call();
        sqlite3_commit_hook(EngineHandle::Last(), nullptr, nullptr);
        for (int at = 0; at < counter.commits; ++at, ++commits) {
            SCOPED_TRACE(operation.Name() + ", commit " + std::to_string(at));
            StartAnew(operation);
            CommitRefuser refuser{0, at};
            sqlite3_commit_hook(EngineHandle::Last(), &CommitRefuser::Commit, &refuser);
            EXPECT_EQ(Call(), Refusal(19));
            sqlite3_commit_hook(EngineHandle::Last(), nullptr, nullptr);
            ExpectWholeAfterAbort(undisturbed);
        }
    }
    Say("engine: " + std::to_string(commits) + " commits refused");
}

/// A plant on a file, whose connection waits for nobody, and another connection that may hold it.
class EngineBeginTest : public EngineTest {
protected:
    EngineBeginTest() {
        const auto connection = Open(before_, dhRichClient3::Options::Mode::Create);
        schema::Create(*connection);
        connection->RunScript(kSmallPlant);
    }
    ~EngineBeginTest() override { LeavePlant(); }

    static Zontara::Ref<Connection> Open(const std::string& path, dhRichClient3::Options::Mode mode) {
        dhRichClient3::Options options;
        options.mode = mode;
        options.busyMilliseconds = 0;
        return Connection::Open(path, options);
    }

    /// A fresh copy of the plant, which `holder_` holds.
    void EnterPlant(const Operation& operation) {
        LeavePlant();
        const std::string path = folder_ / "plant.db";
        std::filesystem::copy_file(before_, path, std::filesystem::copy_options::overwrite_existing);
        world_ = std::make_unique<World>(Open(path, dhRichClient3::Options::Mode::Existing));
        operation_ = operation;
        object_ = operation.Object();
        arguments_ = operation.Arguments();
        holder_ = Connection::Open(path);
        holder_->IniciarTrans("");
    }
    void LeavePlant() {
        holder_.reset();
        arguments_.clear();
        world_.reset();
    }

    host_test::Folder folder_;
    const std::string before_ = folder_ / "before.db";
    Zontara::Ref<Connection> holder_;
};

TEST_F(EngineBeginTest, ThatTheEngineRefusesStoresNothing) {
    int begins = 0;
    for (const Operation& operation : OperationsBesideTransactions()) {
        SCOPED_TRACE(operation.Name());
        EnterPlant(operation);
        const auto before = Stored();
        const std::int32_t number = Call();
        EXPECT_THAT(number, testing::AnyOf(0, Refusal(5)));
        if (world_->Depth() > 0) {
            EXPECT_EQ(Call(), Refusal(4)) << "without the abort nothing runs";
        }
        holder_->RevertirTrans("", 0);
        if (number == 0) continue;
        ++begins;
        ExpectWholeAfterAbort({{before}});
    }
    EXPECT_GE(begins, 40);
    Say("engine: the writes of " + std::to_string(begins) + " operations refused for a lock");
}

}  // namespace
}  // namespace faults

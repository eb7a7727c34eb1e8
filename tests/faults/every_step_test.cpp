#include "tests/faults/effort.h"
#include "tests/faults/operations.h"
#include "tests/faults/plant.h"

#include "frame/CGlobalPreventivo.h"
#include "frame/creation.h"
#include "frame/raised_error.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <set>

namespace faults {
namespace {

using support::World;
using Zontara::ErrorRecord;

constexpr std::int32_t kForced = Zontara::vbObjectError + 19;

/// Operations that end a failure in their own handler by rolling everything back.
bool AbortsByItself(const Operation& operation) {
    return operation.Location() == "CImputacionPreventiva.LanzarPreventivo" ||
           operation.Location() == "CImputacionPreventiva.LanzarPreventivoConvensional";
}

/// Operations without a trap of their own: their error comes as it was raised, or with the report of what they called.
bool HasTrap(const Operation& operation) {
    static const std::set<std::string> kWithout{
        "CImputacionPreventiva.Nuevo",
        "CImputacionPreventiva.ActivoTieneMantenimientoVencido",
        "CImputacionPreventiva.ActivoTieneMantenimientoConvencionalVencido",
        "CImputacionPreventiva.ReiniciarTareaNoSincronizada",
        "CBoletin.ExistenBoletinesParaEditar",
        "CBoletin.SeleccionarBoletines",
        "CBoletin.MarcarBoletinEnEjecucion",
        "CBoletin.MarcarBoletinEjecutado",
        "CBoletin.AsignarOTAlBoletin",
        "CGama.ProximoNumeroGama",
        "CGlobalPreventivo.ElActivoTieneMantenimientoVencido",
    };
    return kWithout.count(operation.Location()) == 0;
}

/// How the report's line of the operation begins.
std::string LineOf(const Operation& operation) {
    static const std::map<std::string, std::string> kOthers{
        {"CImputacionPreventiva.LanzarPreventivoConvensional", "CImputacionPreventiva.LanzarPreventivo"},
        {"CEquipo.Sistematicos", "CEquipo.SeleccionarSistematicos"},
    };
    const std::string location = operation.Location();
    const auto other = kOthers.find(location);
    return "  Call Stack: " + (other == kOthers.end() ? location : other->second) + "(";
}

/// What an operation asks when nothing fails, and what stands ahead of each request.
struct Undisturbed {
    std::vector<std::string> requests;
    std::vector<int> depths;
    /// Index of the state of the database that a rollback leads back to.
    std::vector<std::size_t> rollsBackTo;
    std::vector<std::vector<std::string>> states;
};

class EveryStepTest : public testing::Test {
protected:
    void StartAnew(const Operation& operation) {
        operation_ = operation;
        world_.reset();
        world_ = MakeSmallPlant();
        object_ = operation_.Object();
        arguments_ = operation_.Arguments();
        world_->Forget();
    }
    void Call() { operation_.Call(*object_, arguments_); }

    Undisturbed RunUndisturbed() {
        Undisturbed run;
        world_->OnRequest([&](const std::string& line) {
            run.requests.push_back(line);
            run.depths.push_back(world_->Depth());
            if (!world_->InTransaction()) run.states.push_back(Contents(world_->Database()));
            run.rollsBackTo.push_back(run.states.size() - 1);
        });
        Call();
        world_->OnRequest({});
        return run;
    }

    /// Calls the operation, whose request after so many others is refused.
    ErrorRecord FailAt(std::size_t request) {
        std::size_t passed = 0;
        world_->OnRequest([&, request](const std::string&) {
            if (passed++ == request) Zontara::RaiseError(kForced, "dhRichClient3", "forced failure");
        });
        const ErrorRecord error = support::ErrorOf([&] { Call(); });
        world_->OnRequest({});
        return error;
    }

    void ExpectReported(const ErrorRecord& error) {
        EXPECT_EQ(error.number, kForced);
        EXPECT_THAT(error.description, testing::HasSubstr("forced failure"));
        const auto calls = support::CallStackOf(error.description);
        EXPECT_EQ(error.source, calls.empty() ? "dhRichClient3" : "HuntERR.ErrorIn");
        const auto own = testing::StartsWith(LineOf(operation_));
        if (HasTrap(operation_)) {
            ASSERT_FALSE(calls.empty()) << error.description;
            EXPECT_THAT(calls.back(), own);
        } else {
            EXPECT_THAT(calls, testing::Not(testing::Contains(own)));
        }
    }

    /// What the operation asked for ahead of the failure, and nothing after it but its own rollback.
    void ExpectAskedNothingMore(const Undisturbed& undisturbed, std::size_t request) {
        std::vector<std::string> wanted(undisturbed.requests.begin(),
                                        undisturbed.requests.begin() + static_cast<std::ptrdiff_t>(request));
        if (AbortsByItself(operation_) && undisturbed.depths[request] > 0) wanted.emplace_back("rollback");
        EXPECT_EQ(world_->Story(), wanted);
    }

    void ExpectTheNextCallWorks() {
        object_ = operation_.Object();
        arguments_ = operation_.Arguments();
        EXPECT_NO_THROW(Call());
    }

    Operation operation_;
    std::unique_ptr<World> world_;
    Zontara::Ref<Zontara::Object> object_;
    std::vector<Zontara::Value> arguments_;
};

TEST_F(EveryStepTest, ARefusedRequestIsReportedAndWhatWasNotCommittedIsGoneAfterTheAbort) {
    std::size_t requests = 0;
    for (const Operation& operation : OperationsBesideTransactions()) {
        StartAnew(operation);
        const Undisturbed undisturbed = RunUndisturbed();
        requests += undisturbed.requests.size();
        for (std::size_t request = 0; request < undisturbed.requests.size(); ++request) {
            SCOPED_TRACE(operation.Name() + " fails at " + undisturbed.requests[request]);
            StartAnew(operation);
            ExpectReported(FailAt(request));
            EXPECT_EQ(world_->Depth(), AbortsByItself(operation) ? 0 : undisturbed.depths[request]);
            ExpectAskedNothingMore(undisturbed, request);
            Zontara::Create<Zontara::CGlobalPreventivo>()->AbortarTransaccion();
            EXPECT_EQ(world_->Depth(), 0);
            EXPECT_FALSE(world_->InTransaction());
            EXPECT_EQ(Contents(world_->Database()), undisturbed.states[undisturbed.rollsBackTo[request]]);
            ExpectTheNextCallWorks();
        }
    }
    Say("every step: " + std::to_string(OperationsBesideTransactions().size()) + " operations, each of their " +
        std::to_string(requests) + " requests refused once");
}

}  // namespace
}  // namespace faults

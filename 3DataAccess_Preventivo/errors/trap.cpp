#include "errors/trap.h"

#include "errors/HuntERR31.h"
#include "errors/HuntERR31_parts.h"
#include "errors/current_error.h"
#include "frame/provider.h"

namespace Zontara::trap_detail {

namespace {

void TakeUp() { HuntERR31::CurrentError() = HuntERR31::ErrorInFlight(); }

/// The handler's own failure is the one to report, even if something that ran since has used the module.
void HoldOn() {
    if (HuntERR31::Fields().inErrorIn || HuntERR31::Fields().mErrPreserved) return;
    TakeUp();
    HuntERR31::ErrPreserve();
}

/// The shared connection. A failure to get it leaves the handler as it is, and ends the failure that it came upon.
Ref<Object> SharedConnection() {
    try {
        return Session().LaConexion();
    } catch (...) {
        if (!HuntERR31::Fields().inErrorIn) HuntERR31::Fields().mErrPreserved = false;
        throw;
    }
}

}  // namespace

bool StepAgain() {
    // What is still saved here belongs to a handler that was left before it came to `ErrorIn`.
    if (!HuntERR31::Fields().inErrorIn) HuntERR31::Fields().mErrPreserved = false;
    TakeUp();
    if (!HuntERR31::ErrStepMode()) return false;
    HuntERR31::ClearError();
    return true;
}

void Report(std::string_view location, const Value& arguments) {
    const Ref<Object> connection = SharedConnection();
    HoldOn();
    HuntERR31::ErrorIn(location, arguments, HuntERR31::kStandardFlags, connection);
    throw;
}

void ReportWithoutConnection(std::string_view location, const Value& arguments) {
    HoldOn();
    HuntERR31::ErrorIn(location, arguments, HuntERR31::kFlagsWithoutConnection);
    throw;
}

}  // namespace Zontara::trap_detail

#include "com/failure.h"

#include "com/counted.h"
#include "com/text.h"
#include "errors/current_error.h"

namespace com {

namespace {

constexpr std::int32_t kRunTimeErrors = static_cast<std::int32_t>(0x800A0000U);
constexpr std::int32_t kTopBit = static_cast<std::int32_t>(0x80000000U);
constexpr std::int32_t kLargestRunTimeError = 0xFFFF;

void SetErrorObject(const Zontara::ErrorRecord& error, REFIID calledInterface) {
    Counted<ICreateErrorInfo> made;
    Counted<IErrorInfo> info;
    if (SUCCEEDED(CreateErrorInfo(made.Receive()))) {
        // The object copies the texts.
        made->SetGUID(calledInterface);
        made->SetSource(Widen(error.source).data());
        made->SetDescription(Widen(error.description).data());
        made->SetHelpFile(Widen(error.helpFile).data());
        made->SetHelpContext(static_cast<DWORD>(error.helpContext));
        if (SUCCEEDED(made->QueryInterface(IID_IErrorInfo, info.ReceiveAny()))) SetErrorInfo(0, info.get());
    }
}

}  // namespace

HRESULT ResultOf(std::int32_t number) {
    if (number < 0) return number;
    if (number == 0) return E_FAIL;
    return number <= kLargestRunTimeError ? kRunTimeErrors + number : number | kTopBit;
}

std::int32_t NumberOf(HRESULT result) {
    const std::int32_t number = result & kLargestRunTimeError;
    return number != 0 && result - number == kRunTimeErrors ? number : static_cast<std::int32_t>(result);
}

HRESULT FillException(const Zontara::ErrorRecord& error, EXCEPINFO* exception) {
    if (exception != nullptr) {
        *exception = {};
        exception->bstrSource = ToBstr(error.source);
        exception->bstrDescription = ToBstr(error.description);
        exception->bstrHelpFile = ToBstr(error.helpFile);
        exception->dwHelpContext = static_cast<DWORD>(error.helpContext);
        exception->scode = ResultOf(error.number);
    }
    return DISP_E_EXCEPTION;
}

std::recursive_mutex& TheDoor() {
    static std::recursive_mutex door;
    return door;
}

HRESULT FailWithErrorObject(REFIID calledInterface) noexcept {
    try {
        const Zontara::ErrorRecord error = FailureInFlight();
        SetErrorObject(error, calledInterface);
        return ResultOf(error.number);
    } catch (...) {
        // No memory is left even for the report.
        return E_OUTOFMEMORY;
    }
}

Zontara::ErrorRecord FailureInFlight() { return Zontara::HuntERR31::ErrorInFlight(); }

}  // namespace com

#pragma once

#include "com/windows_api.h"
#include "frame/raised_error.h"

#include <cstdint>
#include <mutex>

/// How a failure leaves the component and how one of the client's comes in.
namespace com {

/// The HRESULT of an error number. A negative number is one as it stands. The numbers of run-time errors, 1 to 65535,
/// would be success as they stand and leave as 0x800A0000 + number. Any other positive number leaves with its top bit
/// set, and 0, which tells nothing, as E_FAIL.
HRESULT ResultOf(std::int32_t number);
/// The error number of an HRESULT: a run-time error's without 0x800A0000, any other as it stands.
std::int32_t NumberOf(HRESULT result);

/// Fills what a late-bound call gives its caller. Always gives DISP_E_EXCEPTION.
HRESULT FillException(const Zontara::ErrorRecord& error, EXCEPINFO* exception);

/// One thread at a time is inside the component. Apartments see to that for one object's calls; what the objects of
/// several apartments share is behind this lock. A call that comes back in from an event passes.
std::recursive_mutex& TheDoor();

/// In a catch block: the exception in flight as an error.
Zontara::ErrorRecord FailureInFlight();

/// In a catch block: makes the exception in flight the thread's error object, with source, description, help file and
/// context as raised, for the interface that the client called. Gives its number as HRESULT.
HRESULT FailWithErrorObject(REFIID calledInterface) noexcept;

/// Runs `work`, which gives an HRESULT, behind the door. Nothing that it throws leaves: it becomes the thread's error
/// object and its HRESULT.
template <class Work> HRESULT Guarded(REFIID calledInterface, const Work& work) noexcept {
    const std::lock_guard lock(TheDoor());
    try {
        return work();
    } catch (...) {
        return FailWithErrorObject(calledInterface);
    }
}

}  // namespace com

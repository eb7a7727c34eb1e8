#include "errors/current_error.h"

#include <exception>
#include <new>
#include <string>
#include <utility>

namespace Zontara::HuntERR31 {

namespace {

ErrorRecord RunTimeRecord(RunTimeError error, std::string description) {
    ErrorRecord record;
    record.number = static_cast<std::int32_t>(error);
    record.source = "Zontara";
    record.description = std::move(description);
    return record;
}

/// Copies texts, so that `std::bad_alloc` may leave it, as it does when that is in flight.
ErrorRecord RecordInFlight() {
    try {
        throw;
    } catch (const RaisedError& error) {
        return error.Record();
    } catch (const std::bad_alloc&) {
        throw;
    } catch (const std::exception& error) {
        return RunTimeRecord(RunTimeError::Automation, error.what());
    } catch (...) {
        return RunTimeRecord(RunTimeError::Automation, "Unknown exception");
    }
}

}  // namespace

ErrorRecord& CurrentError() {
    thread_local ErrorRecord current;
    return current;
}

void ClearError() { CurrentError() = ErrorRecord(); }

void RaiseCurrentError() {
    // Moved, not copied: a huge report must not need the memory twice just when it is let go.
    throw RaisedError(std::exchange(CurrentError(), ErrorRecord()));
}

ErrorRecord ErrorInFlight() {
    try {
        return RecordInFlight();
    } catch (const std::bad_alloc&) {
        return OutOfMemory();
    }
}

ErrorRecord OutOfMemory() { return RunTimeRecord(RunTimeError::OutOfMemory, TextOf(RunTimeError::OutOfMemory)); }

}  // namespace Zontara::HuntERR31

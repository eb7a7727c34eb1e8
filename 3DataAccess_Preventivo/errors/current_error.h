#pragma once

#include "frame/raised_error.h"

/// The one current error of a thread, set by whatever failed and read by the handler.
namespace Zontara::HuntERR31 {

/// The thread's current error, to be read and written field by field. Number 0 says that there is none.
ErrorRecord& CurrentError();

/// From now on there is no current error.
void ClearError();

/// Raises the current error with its number, source, description, help file and help context. It travels on in the
/// exception alone: the thread has no current error until a handler takes it up again.
[[noreturn]] void RaiseCurrentError();

/// Inside a catch block: the exception in flight as an error. One of the component as it is; out of memory is 7; any
/// other standard exception is 440 with its own text, and anything else 440 with "Unknown exception". When there is no
/// memory for its texts, that is the error.
ErrorRecord ErrorInFlight();

/// Error 7. Its texts are short enough to take no memory of their own.
ErrorRecord OutOfMemory();

}  // namespace Zontara::HuntERR31

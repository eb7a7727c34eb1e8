#pragma once

#include "com/windows_api.h"

namespace com {

/// Whose registration: of all users of the machine, which takes an administrator's rights, or of the present user.
enum class Scope { Machine, User };

/// Registers all classes, interfaces and type libraries under this file's path. What is registered already is replaced.
/// On failure nothing is left behind.
HRESULT Register(Scope scope);
/// Takes all of it away. What isn't there is no error.
HRESULT Unregister(Scope scope);

}  // namespace com

#pragma once

#include "com/windows_api.h"

namespace com {

/// The class factory of a class that clients can create. CLASS_E_CLASSNOTAVAILABLE for any other.
HRESULT MakeFactory(REFCLSID classId, REFIID id, void** made);

}  // namespace com

#pragma once

/// The system's headers in the one order in which they compile.
#include <windows.h>

#include <ole2.h>

#include <oleauto.h>

#include <ocidl.h>
#include <olectl.h>

// Macros of these names would rename the platform's members.
#undef MessageBox
#undef Yield

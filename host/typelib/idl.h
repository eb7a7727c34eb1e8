#pragma once

#include "host/typelib/libraries.h"

#include <string>

namespace host::typelib {

/// The IDL text of a type library, as an IDL compiler takes it: identity, one dual hidden interface a class with its
/// members in order (a property's readings and writings share one number), the outgoing interface where there is one,
/// and the classes. It imports the IDL texts of other libraries under their names with ".idl", and refers to their
/// compiled libraries with ".tlb"; so the imported ones are compiled first, into the same folder.
///
/// Two things have no word in every compiler, and are left out for that one alone (widl): the default of a text passed
/// by reference, and the predeclared identity of the application object, which stands as custom data named "predeclid".
std::string Idl(const TypeLibrary& library);

}  // namespace host::typelib

#pragma once

#include "host/typelib/libraries.h"

#include <string>

namespace host::typelib {

/// A type library as a text to read and to compare: its identity, then class by class the interfaces with their members
/// in order. A line tells of a member its number, its kind, its arguments and its result:
///
///     3  method Seleccionar(SC_Grupo_Gama: int32, [byref sColumnas: text = ""]): Recordset
///
/// Square brackets mark what may be left out, `byref` what the member may change.
std::string Listing(const TypeLibrary& library);

/// All three libraries, one behind the other.
std::string ListingOfAll();

}  // namespace host::typelib

#pragma once

#include "com/windows_api.h"
#include "frame/member_table.h"
#include "frame/object.h"

#include <array>
#include <cstdint>

/// The vtables of the dual interfaces, built from the member tables.
///
/// On 64-bit Windows every argument is one 8-byte word: the first four are in registers, of the floating-point kind for
/// a float or a date, the rest on the stack. A member's entry in the vtable is an instance of one function template,
/// which knows its slot and which of its registers are floating; everything else it finds in the member's table.
namespace com {

/// Entries of `IUnknown` and `IDispatch`, the same for every class.
inline constexpr std::size_t kDispatchEntries = 7;
/// Members that a class may have.
inline constexpr std::size_t kMostMembers = 48;

/// What a dual interface points to: its vtable, and the object behind it.
struct Dual {
    const void* const* vtable = nullptr;
    Zontara::Object* object = nullptr;
    IID interfaceId{};
    /// The COM object that this is the face of; the entries of `IUnknown` and `IDispatch` go there.
    IDispatch* owner = nullptr;
};

/// The vtable of a class, made at first use. Error 5 for a class of more members than `kMostMembers`.
const void* const* VtableOf(const Zontara::ClassTable& table);

}  // namespace com

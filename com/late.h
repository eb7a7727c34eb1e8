#pragma once

#include "com/windows_api.h"
#include "frame/member_table.h"
#include "frame/object.h"

/// Calls by name and number, for `IDispatch`. A member's number is its name's place in the class's table, from 1; an
/// argument's number is its place in the member, from 0.
namespace com {

/// The numbers of a member and of its arguments. What isn't known gets DISPID_UNKNOWN and makes the result
/// DISP_E_UNKNOWNNAME.
HRESULT NumbersOf(const Zontara::ClassTable& table, LPOLESTR* names, UINT count, DISPID* numbers);

/// Calls a member. By-reference arguments get their new values, converted to the type that the client points to; the
/// result may be left out by the client. Raises what the member raises, and for a call that doesn't fit it the errors
/// of `Zontara::Invoke`.
HRESULT CallLate(Zontara::Object& object, DISPID number, WORD flags, const DISPPARAMS& given, VARIANT* result);

}  // namespace com

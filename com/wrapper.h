#pragma once

#include "com/windows_api.h"
#include "frame/object.h"
#include "frame/value.h"

/// The component's objects as COM objects.
namespace com {

/// The COM object of an object, with a reference for the caller to release; none for none. While anybody holds it, an
/// object has one COM object, so that clients can compare. Error 438 for an object without a member table.
IDispatch* Wrapped(const Zontara::Ref<Zontara::Object>& object);
/// The same under its class's own interface, as a vtable caller wants it.
IUnknown* WrappedAsItsOwn(const Zontara::Ref<Zontara::Object>& object);

/// The component's object behind an interface; none for a foreign one.
Zontara::Ref<Zontara::Object> ObjectBehind(IUnknown* given);

}  // namespace com

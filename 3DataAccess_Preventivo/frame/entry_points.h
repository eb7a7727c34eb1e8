#pragma once

#include "frame/class_registry.h"
#include "frame/export.h"

#include <cstdint>

namespace Zontara {

/// Results of the entry points, with the numbers that a component host expects.
enum class EntryResult : std::int32_t {
    Ok = 0,
    False = 1,
    ClassNotAvailable = -2147221231,
    InvalidPointer = -2147467261,
};

/// The component runtime behind the four entry points: registers the classes and the type library, hands out class
/// factories, answers whether the component can be unloaded. A platform with a component host puts its own here.
class ZONTARA_EXPORT ComponentRuntime {
public:
    virtual ~ComponentRuntime();
    /// There is no registration database here: a client links the library and creates classes by name.
    virtual EntryResult RegisterServer(const ComponentDescriptor& component);
    virtual EntryResult UnregisterServer(const ComponentDescriptor& component);
    /// The factory of a class: a `const RegisteredClass*`, whose table creates objects.
    virtual EntryResult GetClassObject(const ComponentDescriptor& component, const Guid& classId,
                                       const Guid& interfaceId, void** factory);
    /// Ok when no object is alive, else False.
    virtual EntryResult CanUnloadNow(const ComponentDescriptor& component);
};

/// Puts another runtime behind the entry points and gives back the one before; none puts the plain one back.
/// The caller keeps it alive.
ZONTARA_EXPORT ComponentRuntime* ReplaceRuntime(ComponentRuntime* runtime);

}  // namespace Zontara

extern "C" {
ZONTARA_EXPORT std::int32_t DllRegisterServer();
ZONTARA_EXPORT std::int32_t DllUnregisterServer();
ZONTARA_EXPORT std::int32_t DllGetClassObject(const Zontara::Guid* classId, const Zontara::Guid* interfaceId,
                                              void** factory);
ZONTARA_EXPORT std::int32_t DllCanUnloadNow();
}

#include "frame/entry_points.h"

#include "frame/object.h"

#include <utility>

namespace Zontara {

namespace {

ComponentRuntime plainRuntime;
ComponentRuntime* runtimeInForce = &plainRuntime;

}  // namespace

ComponentRuntime::~ComponentRuntime() = default;

EntryResult ComponentRuntime::RegisterServer(const ComponentDescriptor&) { return EntryResult::Ok; }

EntryResult ComponentRuntime::UnregisterServer(const ComponentDescriptor&) { return EntryResult::Ok; }

EntryResult ComponentRuntime::GetClassObject(const ComponentDescriptor& component, const Guid& classId, const Guid&,
                                             void** factory) {
    if (factory == nullptr) return EntryResult::InvalidPointer;
    *factory = nullptr;
    for (const RegisteredClass& each : component.classes) {
        if (!(each.classId == classId)) continue;
        *factory = const_cast<RegisteredClass*>(&each);
        return EntryResult::Ok;
    }
    return EntryResult::ClassNotAvailable;
}

EntryResult ComponentRuntime::CanUnloadNow(const ComponentDescriptor&) {
    return Object::Living() == 0 ? EntryResult::Ok : EntryResult::False;
}

ComponentRuntime* ReplaceRuntime(ComponentRuntime* runtime) {
    ComponentRuntime* before = std::exchange(runtimeInForce, runtime != nullptr ? runtime : &plainRuntime);
    return before == &plainRuntime ? nullptr : before;
}

}  // namespace Zontara

std::int32_t DllRegisterServer() {
    return static_cast<std::int32_t>(Zontara::runtimeInForce->RegisterServer(Zontara::Descriptor()));
}

std::int32_t DllUnregisterServer() {
    return static_cast<std::int32_t>(Zontara::runtimeInForce->UnregisterServer(Zontara::Descriptor()));
}

std::int32_t DllGetClassObject(const Zontara::Guid* classId, const Zontara::Guid* interfaceId, void** factory) {
    if (classId == nullptr || interfaceId == nullptr) {
        return static_cast<std::int32_t>(Zontara::EntryResult::InvalidPointer);
    }
    return static_cast<std::int32_t>(
        Zontara::runtimeInForce->GetClassObject(Zontara::Descriptor(), *classId, *interfaceId, factory));
}

std::int32_t DllCanUnloadNow() {
    return static_cast<std::int32_t>(Zontara::runtimeInForce->CanUnloadNow(Zontara::Descriptor()));
}

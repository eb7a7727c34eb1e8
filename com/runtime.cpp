#include "com/runtime.h"

#include "com/server.h"
#include "frame/entry_points.h"

namespace com {

namespace {

using Zontara::ComponentDescriptor;
using Zontara::EntryResult;

class Runtime final : public Zontara::ComponentRuntime {
public:
    EntryResult RegisterServer(const ComponentDescriptor& /*component*/) override {
        return static_cast<EntryResult>(RegisterForMachine());
    }
    EntryResult UnregisterServer(const ComponentDescriptor& /*component*/) override {
        return static_cast<EntryResult>(UnregisterForMachine());
    }
    EntryResult GetClassObject(const ComponentDescriptor& /*component*/, const Zontara::Guid& classId,
                               const Zontara::Guid& interfaceId, void** factory) override {
        return static_cast<EntryResult>(ClassObject(classId, interfaceId, factory));
    }
    EntryResult CanUnloadNow(const ComponentDescriptor& /*component*/) override {
        return NobodyHoldsIt() ? EntryResult::Ok : EntryResult::False;
    }
};

Runtime runtime;

}  // namespace

void InstallRuntime() { Zontara::ReplaceRuntime(&runtime); }

}  // namespace com

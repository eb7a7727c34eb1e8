#include "com/server.h"

#include "com/classes.h"
#include "com/factory.h"
#include "com/module.h"
#include "com/platform.h"
#include "com/registration.h"

#include <cwchar>

namespace com {

std::int32_t RegisterForMachine() { return Register(Scope::Machine); }

std::int32_t UnregisterForMachine() { return Unregister(Scope::Machine); }

std::int32_t ClassObject(const Zontara::Guid& classId, const Zontara::Guid& interfaceId, void** factory) {
    InstallPlatform();
    return MakeFactory(ToGuid(classId), ToGuid(interfaceId), factory);
}

bool NobodyHoldsIt() { return CanUnload(); }

}  // namespace com

/// `regsvr32 /n /i:user` registers for the present user alone, and with /u takes that away.
extern "C" HRESULT WINAPI DllInstall(BOOL install, LPCWSTR commandLine) {
    const bool user = commandLine != nullptr && std::wcscmp(commandLine, L"user") == 0;
    const com::Scope scope = user ? com::Scope::User : com::Scope::Machine;
    return install ? com::Register(scope) : com::Unregister(scope);
}

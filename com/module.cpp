#include "com/module.h"

#include "com/runtime.h"
#include "com/windows_api.h"
#include "frame/object.h"

#include <atomic>

namespace com {

namespace {

HMODULE thisModule = nullptr;
std::atomic<long> held{0};

}  // namespace

std::wstring ModulePath() {
    std::wstring path(MAX_PATH, L'\0');
    for (;;) {
        const DWORD length = GetModuleFileNameW(thisModule, path.data(), static_cast<DWORD>(path.size()));
        if (length < path.size()) return path.substr(0, length);
        path.resize(path.size() * 2);
    }
}

KeepsLoaded::KeepsLoaded() { ++held; }

KeepsLoaded::~KeepsLoaded() { --held; }

void LockServer(bool lock) { held += lock ? 1 : -1; }

bool CanUnload() { return held == 0 && Zontara::Object::Living() == 0; }

}  // namespace com

/// The component does no work at load time: it only learns which file it is, and which runtime stands behind its entry
/// points.
extern "C" BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID /*reserved*/) {
    if (reason == DLL_PROCESS_ATTACH) {
        com::thisModule = instance;
        com::InstallRuntime();
    }
    return TRUE;
}

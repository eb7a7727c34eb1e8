#pragma once

#include <string>

/// The server as a module in its host's process.
namespace com {

/// Path of the server's file.
std::wstring ModulePath();

/// Keeps the server loaded while it lives: every object that a client holds has one.
class KeepsLoaded {
public:
    KeepsLoaded();
    KeepsLoaded(const KeepsLoaded&) = delete;
    KeepsLoaded& operator=(const KeepsLoaded&) = delete;
    ~KeepsLoaded();
};

/// A client's wish to keep the server loaded while it holds no object, taken back with false.
void LockServer(bool lock);

/// Whether nobody holds anything of the server, and no session is open in it.
bool CanUnload();

}  // namespace com

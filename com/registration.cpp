#include "com/registration.h"

#include "com/classes.h"
#include "com/module.h"
#include "com/text.h"
#include "com/windows_api.h"

#include <string>
#include <vector>

namespace com {

namespace {

/// One value of the registry: the default one of its key where it has no name.
struct Entry {
    std::wstring key;
    std::wstring name;
    std::wstring value;
};

/// Everything that is registered, and the keys that hold it all and go with it.
struct Registration {
    std::vector<Entry> entries;
    std::vector<std::wstring> trees;
};

/// Marshals calls of a dual interface, and of a dispinterface, from its description: the system's own.
constexpr const wchar_t* kDualProxy = L"{00020424-0000-0000-C000-000000000046}";
constexpr const wchar_t* kDispatchProxy = L"{00020420-0000-0000-C000-000000000046}";

std::wstring Braced(const Zontara::Guid& guid) { return Widen("{" + Zontara::ToText(guid) + "}"); }

std::wstring Hexadecimal(std::int32_t number) {
    wchar_t text[16] = {};
    swprintf(text, std::size(text), L"%x", static_cast<unsigned>(number));
    return text;
}

/// The version as the registry has it: both parts in hexadecimal.
std::wstring VersionKey(const TypeLibrary& library) {
    return Hexadecimal(library.versionMajor) + L"." + Hexadecimal(library.versionMinor);
}

void AddClass(Registration& all, const TypeLibrary& library, const LibraryClass& each) {
    const std::wstring progId = Widen(std::string(library.name) + "." + std::string(each.table->name));
    const std::wstring classId = Braced(each.classId);
    const std::wstring key = L"CLSID\\" + classId;
    all.trees.insert(all.trees.end(), {key, progId});
    all.entries.insert(all.entries.end(),
                       {{progId, L"", progId},
                        {progId + L"\\CLSID", L"", classId},
                        {key, L"", progId},
                        {key + L"\\InprocServer32", L"", ModulePath()},
                        {key + L"\\InprocServer32", L"ThreadingModel", L"Apartment"},
                        {key + L"\\ProgID", L"", progId},
                        {key + L"\\Programmable", L"", L""},
                        {key + L"\\TypeLib", L"", Braced(library.id)},
                        {key + L"\\Version", L"",
                         std::to_wstring(library.versionMajor) + L"." + std::to_wstring(library.versionMinor)}});
}

void AddInterface(Registration& all, const TypeLibrary& library, const Zontara::Guid& id, const std::string& name,
                  const wchar_t* proxy) {
    const std::wstring key = L"Interface\\" + Braced(id);
    all.trees.push_back(key);
    all.entries.insert(all.entries.end(), {{key, L"", Widen(name)},
                                           {key + L"\\ProxyStubClsid32", L"", proxy},
                                           {key + L"\\TypeLib", L"", Braced(library.id)},
                                           {key + L"\\TypeLib", L"Version", VersionKey(library)}});
}

void AddLibrary(Registration& all, const TypeLibrary& library) {
    const std::wstring key = L"TypeLib\\" + Braced(library.id);
    const std::wstring version = key + L"\\" + VersionKey(library);
    const std::wstring path = ModulePath();
    all.trees.push_back(key);
    all.entries.insert(all.entries.end(),
                       {{version, L"", Widen(library.helpText)},
                        {version + L"\\FLAGS", L"", L"0"},
                        {version + L"\\HELPDIR", L"", path.substr(0, path.find_last_of(L'\\'))},
                        {version + L"\\" + Hexadecimal(library.locale) + L"\\win64", L"", PathOf(library)}});
}

Registration All() {
    Registration all;
    for (const TypeLibrary& library : host::typelib::TypeLibraries()) {
        AddLibrary(all, library);
        for (const LibraryClass& each : library.classes) {
            const std::string name(each.table->interfaceName);
            if (each.create) AddClass(all, library, each);
            AddInterface(all, library, each.interfaceId, name, kDualProxy);
            if (!each.table->events.empty()) AddInterface(all, library, each.eventsId, "_" + name, kDispatchProxy);
        }
    }
    return all;
}

/// The part of the registry that holds classes, for everybody or for one user.
std::wstring InClasses(const std::wstring& key) { return L"Software\\Classes\\" + key; }

HKEY RootOf(Scope scope) { return scope == Scope::User ? HKEY_CURRENT_USER : HKEY_LOCAL_MACHINE; }

LSTATUS Write(HKEY root, const Entry& entry) {
    const auto bytes = static_cast<DWORD>((entry.value.size() + 1) * sizeof(wchar_t));
    return RegSetKeyValueW(root, InClasses(entry.key).c_str(), entry.name.c_str(), REG_SZ, entry.value.c_str(), bytes);
}

/// Deletes one of the keys that hold everybody's registrations if nothing is left in it: a user's may have been made by
/// this server.
void DeleteIfEmpty(HKEY root, const std::wstring& key) {
    DWORD keys = 1;
    DWORD values = 1;
    HKEY opened = nullptr;
    if (RegOpenKeyExW(root, InClasses(key).c_str(), 0, KEY_READ, &opened) != ERROR_SUCCESS) return;
    const LSTATUS status = RegQueryInfoKeyW(opened, nullptr, nullptr, nullptr, &keys, nullptr, nullptr, &values,
                                            nullptr, nullptr, nullptr, nullptr);
    RegCloseKey(opened);
    if (status == ERROR_SUCCESS && keys == 0 && values == 0) RegDeleteKeyW(root, InClasses(key).c_str());
}

}  // namespace

HRESULT Register(Scope scope) {
    for (const Entry& entry : All().entries) {
        const LSTATUS status = Write(RootOf(scope), entry);
        if (status == ERROR_SUCCESS) continue;
        Unregister(scope);
        return HRESULT_FROM_WIN32(static_cast<DWORD>(status));
    }
    return S_OK;
}

HRESULT Unregister(Scope scope) {
    HRESULT result = S_OK;
    for (const std::wstring& tree : All().trees) {
        const LSTATUS status = RegDeleteTreeW(RootOf(scope), InClasses(tree).c_str());
        if (status != ERROR_SUCCESS && status != ERROR_FILE_NOT_FOUND) {
            result = HRESULT_FROM_WIN32(static_cast<DWORD>(status));
        }
    }
    for (const wchar_t* holder : {L"CLSID", L"Interface", L"TypeLib"})
        DeleteIfEmpty(RootOf(scope), holder);
    return result;
}

}  // namespace com

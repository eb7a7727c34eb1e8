#include "com/classes.h"

#include "com/module.h"
#include "com/windows_api.h"

#include <cstring>

namespace com {

namespace {

/// Gives each class of each library to `wanted` until it takes one.
template <class Wanted> const LibraryClass* FindClass(const Wanted& wanted) {
    for (const TypeLibrary& library : host::typelib::TypeLibraries()) {
        for (const LibraryClass& each : library.classes) {
            if (wanted(each)) return &each;
        }
    }
    return nullptr;
}

HRESULT Describe(const LibraryClass& of, const Zontara::Guid& type, ITypeInfo** description) {
    for (const TypeLibrary& library : host::typelib::TypeLibraries()) {
        if (library.library != of.table->library) continue;
        Counted<ITypeLib> loaded;
        const HRESULT result = LoadTypeLibEx(PathOf(library).c_str(), REGKIND_NONE, loaded.Receive());
        return FAILED(result) ? result : loaded->GetTypeInfoOfGuid(ToGuid(type), description);
    }
    return TYPE_E_ELEMENTNOTFOUND;
}

}  // namespace

GUID ToGuid(const Zontara::Guid& guid) {
    GUID made{guid.data1, guid.data2, guid.data3, {}};
    std::memcpy(made.Data4, guid.data4.data(), sizeof made.Data4);
    return made;
}

Zontara::Guid FromGuid(const GUID& guid) {
    Zontara::Guid made{static_cast<std::uint32_t>(guid.Data1), guid.Data2, guid.Data3, {}};
    std::memcpy(made.data4.data(), guid.Data4, sizeof guid.Data4);
    return made;
}

const LibraryClass* ClassOf(const Zontara::ClassTable* table) {
    return FindClass([table](const LibraryClass& each) { return each.table == table; });
}

const LibraryClass* CreatableClass(const Zontara::Guid& classId) {
    return FindClass([&](const LibraryClass& each) { return each.classId == classId && each.create; });
}

HRESULT DescribeClass(const LibraryClass& of, ITypeInfo** description) { return Describe(of, of.classId, description); }

HRESULT DescribeInterface(const LibraryClass& of, ITypeInfo** description) {
    return Describe(of, of.interfaceId, description);
}

std::wstring PathOf(const TypeLibrary& library) {
    switch (library.library) {
        case Zontara::Library::Zontara:
            break;
        case Zontara::Library::dhRichClient3:
            return ModulePath() + L"\\2";
        case Zontara::Library::Perluma:
            return ModulePath() + L"\\3";
    }
    return ModulePath();
}

}  // namespace com

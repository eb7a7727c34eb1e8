#pragma once

#include "com/counted.h"
#include "com/windows_api.h"
#include "frame/class_registry.h"
#include "host/typelib/libraries.h"

/// The classes of all three type libraries under the identifiers by which COM knows them.
namespace com {

using host::typelib::LibraryClass;
using host::typelib::TypeLibrary;

GUID ToGuid(const Zontara::Guid& guid);
Zontara::Guid FromGuid(const GUID& guid);

/// The class that a table belongs to; none for a table of no type library.
const LibraryClass* ClassOf(const Zontara::ClassTable* table);
/// The class of an identifier that clients can create; none for any other.
const LibraryClass* CreatableClass(const Zontara::Guid& classId);

/// The description of a class, or of its default interface, from the type library inside the server's file.
HRESULT DescribeClass(const LibraryClass& of, ITypeInfo** description);
HRESULT DescribeInterface(const LibraryClass& of, ITypeInfo** description);

/// Where a library's compiled form lies: the server's file, and in it the number of the resource.
std::wstring PathOf(const TypeLibrary& library);

}  // namespace com

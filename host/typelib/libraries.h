#pragma once

#include "frame/class_registry.h"
#include "frame/member_table.h"

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

/// What late binding knows of the classes, as type libraries: in a form to read, and as IDL. Everything comes from the
/// member tables and the component's descriptor, nothing is told twice.
namespace host::typelib {

/// A class of a type library, with its identifiers. `eventsId` is all zero for a class without an outgoing interface.
struct LibraryClass {
    const Zontara::ClassTable* table = nullptr;
    Zontara::Guid classId;
    Zontara::Guid interfaceId;
    Zontara::Guid eventsId;
    /// Makes a new object; empty for a class that clients can't create.
    std::function<Zontara::Ref<Zontara::Object>()> create;
};

/// A type library and its classes in order.
struct TypeLibrary {
    std::string_view name;
    std::string_view helpText;
    std::int32_t versionMajor = 0;
    std::int32_t versionMinor = 0;
    std::int32_t locale = 0;
    Zontara::Guid id;
    Zontara::Library library = Zontara::Library::Zontara;
    /// Libraries whose types this one names.
    std::vector<std::string_view> imports;
    std::vector<LibraryClass> classes;
};

/// The three libraries, those that are imported first: dhRichClient3 with the recordset, Perluma with the list of
/// notices and the door to the session, and the component's own with its sixteen classes in registration order. They
/// live as long as the program.
const std::vector<TypeLibrary>& TypeLibraries();

/// The library of that name, case ignored; none for an unknown one.
const TypeLibrary* FindLibrary(std::string_view name);

/// The table of a class of any of the libraries, by its name ("CBoletin" or "Zontara.CBoletin", "Recordset"), case
/// ignored; none for an unknown one.
const Zontara::ClassTable* FindTable(std::string_view className);

/// The names of a class's members in order, each once. A member's number in the type library is its name's place, from
/// 1: a property's readings and writings share one.
std::vector<std::string_view> MemberNames(const Zontara::ClassTable& table);

/// The word for a type: "text", "int32", ..., "variant" for a tagged value, the class's name for an object. Empty for
/// no type, the result of an operation that gives nothing.
std::string TypeName(const Zontara::TypeOf& type);

}  // namespace host::typelib

#include "host/typelib/libraries.h"

#include "Perluma/change_list.h"
#include "Perluma/session_door.h"
#include "dhRichClient3/recordset.h"
#include "frame/neighbours.h"

#include <algorithm>
#include <memory>

namespace host::typelib {

namespace {

using Zontara::ClassTable;
using Zontara::Guid;
using Zontara::Library;

/// An object's table is asked of the object. These stand for the fields, which come into being with rows alone.
class AnyCampo : public Zontara::Campo {
public:
    Zontara::Value Valor() const override { return {}; }
};
class AnyCampos : public Zontara::Campos {
public:
    Zontara::Ref<Zontara::Campo> Item(const Zontara::Value& /*name*/) override { return nullptr; }
    Zontara::Value Valor(std::string_view /*name*/) const override { return {}; }
};

/// A class of a neighbour, and how a client makes one if it can.
struct NeighbourClass {
    const ClassTable* table;
    std::function<Zontara::Ref<Zontara::Object>()> create;
};

std::vector<NeighbourClass> NeighbourClasses() {
    return {{dhRichClient3::NewRecordset()->Table(), {}},
            {AnyCampos().Table(), {}},
            {AnyCampo().Table(), {}},
            {Perluma::ListaCambios().Table(), [] { return std::make_shared<Perluma::ListaCambios>(); }},
            {&Perluma::SessionDoor::ClassMembers(), Perluma::SessionDoor::ClassMembers().create}};
}

/// The neighbours' identifiers differ in the stem by library, and within it as the component's do: 0 for the library,
/// 1 for classes, 2 for interfaces, and the place in the library.
constexpr Guid Identifier(std::uint32_t stem, std::uint8_t kind, std::uint8_t position) {
    return {stem, 0x21E4, 0x4B8F, {0xA7, 0xC2, 0x84, 0xA0, 0xC1, 0xD2, kind, position}};
}

constexpr std::uint32_t kRecordsetStem = 0x3D5A7C60;
constexpr std::uint32_t kListStem = 0x3D5A7C61;

TypeLibrary Neighbour(Library library, std::string_view name, std::string_view helpText, std::uint32_t stem,
                      std::vector<std::string_view> imports) {
    const Zontara::ComponentDescriptor& component = Zontara::Descriptor();
    TypeLibrary made{name,
                     helpText,
                     component.versionMajor,
                     component.versionMinor,
                     component.locale,
                     Identifier(stem, 0, 0),
                     library,
                     std::move(imports),
                     {}};
    for (const auto& [table, create] : NeighbourClasses()) {
        if (table->library != library) continue;
        const auto position = static_cast<std::uint8_t>(made.classes.size() + 1);
        made.classes.push_back({table, Identifier(stem, 1, position), Identifier(stem, 2, position), {}, create});
    }
    return made;
}

TypeLibrary Component(std::vector<std::string_view> imports) {
    const Zontara::ComponentDescriptor& component = Zontara::Descriptor();
    TypeLibrary made{component.libraryName,  component.helpText, component.versionMajor,
                     component.versionMinor, component.locale,   component.libraryId,
                     Library::Zontara,       std::move(imports), {}};
    for (const Zontara::RegisteredClass& each : component.classes) {
        made.classes.push_back({&each.table(), each.classId, each.interfaceId, each.eventsId, each.table().create});
    }
    return made;
}

}  // namespace

const std::vector<TypeLibrary>& TypeLibraries() {
    static const std::vector<TypeLibrary> libraries{
        Neighbour(Library::dhRichClient3, "dhRichClient3", "Connection and recordset", kRecordsetStem, {}),
        Neighbour(Library::Perluma, "Perluma", "Session, work orders and lists of change notices", kListStem,
                  {"dhRichClient3"}),
        Component({"dhRichClient3", "Perluma"}),
    };
    return libraries;
}

const TypeLibrary* FindLibrary(std::string_view name) {
    const auto& libraries = TypeLibraries();
    const auto found = std::find_if(libraries.begin(), libraries.end(), [name](const TypeLibrary& library) {
        return Zontara::SameName(library.name, name);
    });
    return found == libraries.end() ? nullptr : &*found;
}

const ClassTable* FindTable(std::string_view className) {
    if (const Zontara::RegisteredClass* known = Zontara::FindClass(className)) return &known->table();
    for (const TypeLibrary& library : TypeLibraries()) {
        for (const LibraryClass& each : library.classes) {
            if (Zontara::SameName(each.table->name, className)) return each.table;
        }
    }
    return nullptr;
}

std::vector<std::string_view> MemberNames(const ClassTable& table) {
    std::vector<std::string_view> names;
    for (const Zontara::Member& member : table.members) {
        if (std::find(names.begin(), names.end(), member.name) == names.end()) names.push_back(member.name);
    }
    return names;
}

std::string TypeName(const Zontara::TypeOf& type) {
    return type.word == Zontara::TypeWord::None ? std::string() : Zontara::WordOf(type);
}
}  // namespace host::typelib

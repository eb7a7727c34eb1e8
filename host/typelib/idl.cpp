#include "host/typelib/idl.h"

#include "frame/convert.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <vector>

namespace host::typelib {

namespace {

using Zontara::Argument;
using Zontara::ClassTable;
using Zontara::Member;
using Zontara::MemberKind;
using Zontara::TypeOf;
using Zontara::TypeWord;

constexpr std::string_view kHead =
    R"(// Type library {0} {1}.{2}. Made by `zontara idl` from the member tables of the classes.

// widl has no default of a text by reference and no custom data of a class.
#ifdef __WIDL__
#define TEXT_BY_REFERENCE(initial) in, out, optional
#define PREDECLARED
#else
#define TEXT_BY_REFERENCE(initial) in, out, optional, defaultvalue(initial)
#define PREDECLARED , custom(5B0E4D10-7C1A-4F2B-9E35-84A0C1D20400, "predeclid")
#endif

import "oaidl.idl";
)";

std::string IdlType(const TypeOf& type) {
    switch (type.word) {
        case TypeWord::None:
            return "void";
        case TypeWord::Text:
            return "BSTR";
        case TypeWord::Int16:
            return "short";
        case TypeWord::Int32:
            return "long";
        case TypeWord::Byte:
            return "unsigned char";
        case TypeWord::Float32:
            return "float";
        case TypeWord::Bool:
            return "VARIANT_BOOL";
        case TypeWord::Money:
            return "CURRENCY";
        case TypeWord::Date:
            return "DATE";
        case TypeWord::Variant:
            return "VARIANT";
        case TypeWord::Object: {
            const ClassTable* table = FindTable(type.className);
            return fmt::format("{}*", table != nullptr ? table->interfaceName : "IDispatch");
        }
    }
    return "void";
}

/// The default as the attribute has it: a text in quotes, everything else as a number.
std::string IdlDefault(const Argument& argument) {
    switch (argument.type.word) {
        case TypeWord::Text:
            return fmt::format("\"{}\"", Zontara::ToText(argument.defaultValue));
        case TypeWord::Object:
            return "0";
        default:
            return Zontara::ToText(Zontara::ConvertTo<double>(argument.defaultValue));
    }
}

std::string Attributes(const Argument& argument) {
    if (!argument.optional) return argument.byRef ? "in, out" : "in";
    const std::string initial = IdlDefault(argument);
    if (!argument.byRef) return fmt::format("in, optional, defaultvalue({})", initial);
    if (argument.type.word == TypeWord::Text) return fmt::format("TEXT_BY_REFERENCE({})", initial);
    return fmt::format("in, out, optional, defaultvalue({})", initial);
}

std::vector<std::string> Parameters(const std::vector<Argument>& arguments) {
    std::vector<std::string> texts;
    texts.reserve(arguments.size() + 1);
    for (const Argument& argument : arguments) {
        texts.push_back(fmt::format("[{}] {}{} {}", Attributes(argument), IdlType(argument.type),
                                    argument.byRef ? "*" : "", argument.name));
    }
    return texts;
}

std::string_view KindAttribute(MemberKind kind) {
    switch (kind) {
        case MemberKind::Method:
            return "";
        case MemberKind::Get:
            return ", propget";
        case MemberKind::Put:
            return ", propput";
        case MemberKind::PutRef:
            return ", propputref";
    }
    return "";
}

std::string Function(const Member& member, std::size_t number) {
    std::vector<std::string> parameters = Parameters(member.arguments);
    if (member.result.word != TypeWord::None) {
        parameters.push_back(fmt::format("[out, retval] {}* result", IdlType(member.result)));
    }
    const std::string_view indent = parameters.size() > 1 ? "\n            " : "";
    return fmt::format("        [id({}){}]\n        HRESULT {}({}{});\n", number, KindAttribute(member.kind),
                       member.name, indent, fmt::join(parameters, ",\n            "));
}

std::string InterfaceText(const LibraryClass& each) {
    const ClassTable& table = *each.table;
    std::string text = fmt::format(
        "\n    [\n        odl,\n        uuid({}),\n        hidden,\n        dual,\n        nonextensible,\n"
        "        oleautomation\n    ]\n    interface {} : IDispatch\n    {{\n",
        Zontara::ToText(each.interfaceId), table.interfaceName);
    const std::vector<std::string_view> names = MemberNames(table);
    for (const Member& member : table.members) {
        const auto place = std::find(names.begin(), names.end(), member.name);
        text += Function(member, static_cast<std::size_t>(place - names.begin()) + 1);
    }
    return text + "    };\n";
}

std::string EventsText(const LibraryClass& each) {
    const ClassTable& table = *each.table;
    if (table.events.empty()) return "";
    std::string text = fmt::format(
        "\n    [\n        uuid({}),\n        hidden\n    ]\n    dispinterface _{}\n    {{\n    properties:\n"
        "    methods:\n",
        Zontara::ToText(each.eventsId), table.interfaceName);
    std::size_t number = 0;
    for (const Zontara::Event& event : table.events) {
        text += fmt::format("        [id({})]\n        void {}({});\n", ++number, event.name,
                            fmt::join(Parameters(event.arguments), ", "));
    }
    return text + "    };\n";
}

std::string CoclassText(const LibraryClass& each) {
    const ClassTable& table = *each.table;
    std::string text = fmt::format("\n    [\n        uuid({}){}{}\n    ]\n    coclass {}\n    {{\n",
                                   Zontara::ToText(each.classId), each.create ? "" : ",\n        noncreatable",
                                   table.appObject ? ",\n        appobject\n        PREDECLARED" : "", table.name);
    text += fmt::format("        [default] interface {};\n", table.interfaceName);
    if (!table.events.empty()) {
        text += fmt::format("        [default, source] dispinterface _{};\n", table.interfaceName);
    }
    return text + "    };\n";
}

}  // namespace

std::string Idl(const TypeLibrary& library) {
    std::string text = fmt::format(kHead, library.name, library.versionMajor, library.versionMinor);
    for (const std::string_view import : library.imports)
        text += fmt::format("import \"{}.idl\";\n", import);
    text += fmt::format(
        "\n[\n    uuid({}),\n    version({}.{}),\n    lcid({}),\n    helpstring(\"{}\")\n]\nlibrary {}\n{{\n"
        "    importlib(\"stdole2.tlb\");\n",
        Zontara::ToText(library.id), library.versionMajor, library.versionMinor, library.locale, library.helpText,
        library.name);
    for (const std::string_view import : library.imports)
        text += fmt::format("    importlib(\"{}.tlb\");\n", import);
    text += "\n";
    for (const LibraryClass& each : library.classes) {
        text += fmt::format("    interface {};\n", each.table->interfaceName);
    }
    for (const LibraryClass& each : library.classes)
        text += InterfaceText(each) + EventsText(each);
    for (const LibraryClass& each : library.classes)
        text += CoclassText(each);
    return text + "};\n";
}

}  // namespace host::typelib

#include "host/typelib/listing.h"

#include "frame/convert.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

namespace host::typelib {

namespace {

using Zontara::Argument;
using Zontara::Member;
using Zontara::MemberKind;
using Zontara::TypeWord;

std::string_view KindWord(MemberKind kind) {
    switch (kind) {
        case MemberKind::Method:
            return "method";
        case MemberKind::Get:
            return "get";
        case MemberKind::Put:
            return "set";
        case MemberKind::PutRef:
            return "set by reference";
    }
    return "";
}

std::string DefaultText(const Argument& argument) {
    if (argument.type.word == TypeWord::Object) return "none";
    const std::string text = Zontara::ToText(argument.defaultValue);
    return argument.type.word == TypeWord::Text ? fmt::format("\"{}\"", text) : text;
}

std::string ArgumentText(const Argument& argument) {
    const std::string text =
        fmt::format("{}{}: {}", argument.byRef ? "byref " : "", argument.name, TypeName(argument.type));
    return argument.optional ? fmt::format("[{} = {}]", text, DefaultText(argument)) : text;
}

std::string ArgumentsText(const std::vector<Argument>& arguments) {
    std::vector<std::string> texts;
    texts.reserve(arguments.size());
    for (const Argument& argument : arguments)
        texts.push_back(ArgumentText(argument));
    return fmt::format("{}", fmt::join(texts, ", "));
}

std::string MemberText(const Member& member) {
    const std::string result = TypeName(member.result);
    return fmt::format("{} {}({}){}{}", KindWord(member.kind), member.name, ArgumentsText(member.arguments),
                       result.empty() ? "" : ": ", result);
}

std::string ClassText(const LibraryClass& each) {
    const Zontara::ClassTable& table = *each.table;
    std::string text =
        fmt::format("\nclass {} {{{}}}{}{}\n", table.name, Zontara::ToText(each.classId),
                    each.create ? ", creatable" : "", table.appObject ? ", application object, predeclared" : "");
    text += fmt::format("  interface {} {{{}}}, default, dual, hidden\n", table.interfaceName,
                        Zontara::ToText(each.interfaceId));
    std::size_t number = 0;
    for (const Member& member : table.members)
        text += fmt::format("{:6}  {}\n", ++number, MemberText(member));
    if (table.events.empty()) return text;

    text +=
        fmt::format("  interface _{} {{{}}}, source, hidden\n", table.interfaceName, Zontara::ToText(each.eventsId));
    number = 0;
    for (const Zontara::Event& event : table.events) {
        text += fmt::format("{:6}  event {}({})\n", ++number, event.name, ArgumentsText(event.arguments));
    }
    return text;
}

}  // namespace

std::string Listing(const TypeLibrary& library) {
    std::string text = fmt::format("library {} {{{}}}\n  help text: {}\n  version: {}.{}\n  locale: {}\n", library.name,
                                   Zontara::ToText(library.id), library.helpText, library.versionMajor,
                                   library.versionMinor, library.locale);
    if (!library.imports.empty()) text += fmt::format("  imports: {}\n", fmt::join(library.imports, ", "));
    for (const LibraryClass& each : library.classes)
        text += ClassText(each);
    return text;
}

std::string ListingOfAll() {
    std::string text;
    for (const TypeLibrary& library : TypeLibraries()) {
        if (!text.empty()) text += "\n\n";
        text += Listing(library);
    }
    return text;
}

}  // namespace host::typelib

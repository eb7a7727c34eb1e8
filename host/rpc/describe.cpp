#include "host/rpc/describe.h"

#include "frame/class_registry.h"
#include "host/rpc/values.h"
#include "host/typelib/libraries.h"

namespace host::rpc {

namespace {

using Zontara::Argument;
using Zontara::Member;
using Zontara::MemberKind;

std::string_view KindWord(MemberKind kind) {
    switch (kind) {
        case MemberKind::Method:
            return "method";
        case MemberKind::Get:
            return "get";
        case MemberKind::Put:
        case MemberKind::PutRef:
            return "set";
    }
    return "";
}

Json ArgumentsJson(const std::vector<Argument>& arguments) {
    Json json = Json::array();
    for (const Argument& argument : arguments) {
        Json each{{"name", argument.name},
                  {"type", typelib::TypeName(argument.type)},
                  {"byref", argument.byRef},
                  {"optional", argument.optional}};
        if (argument.optional) each["default"] = ToJson(argument.defaultValue, nullptr);
        json.push_back(std::move(each));
    }
    return json;
}

Json MemberJson(const Member& member) {
    const std::string result = typelib::TypeName(member.result);
    return {{"name", member.name},
            {"kind", KindWord(member.kind)},
            {"args", ArgumentsJson(member.arguments)},
            {"result", result.empty() ? Json() : Json(result)}};
}

}  // namespace

Json Described(const Zontara::ClassTable& table) {
    Json events = Json::array();
    for (const Zontara::Event& event : table.events) {
        events.push_back({{"name", event.name}, {"args", ArgumentsJson(event.arguments)}});
    }
    Json members = Json::array();
    for (const Member& member : table.members)
        members.push_back(MemberJson(member));
    return {{"name", table.name},
            {"interface", table.interfaceName},
            {"appObject", table.appObject},
            {"events", std::move(events)},
            {"members", std::move(members)}};
}

Json DescribedAll() {
    Json classes = Json::array();
    for (const Zontara::RegisteredClass& each : Zontara::Descriptor().classes)
        classes.push_back(Described(each.table()));
    return classes;
}

}  // namespace host::rpc

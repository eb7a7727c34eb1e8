#include "host/rpc/arguments.h"

#include "host/rpc/values.h"

#include <fmt/format.h>

#include <algorithm>

namespace host::rpc {

namespace {

using Zontara::Argument;
using Zontara::CallArguments;
using Zontara::Member;

[[noreturn]] void Refuse(const std::string& why) { throw Refusal(Code::WrongParameters, why); }

CallArguments ByPosition(const Member& member, const Input& args, const Handles& handles) {
    if (args.size() > member.arguments.size()) {
        Refuse(fmt::format("{} takes {} arguments, not {}", member.name, member.arguments.size(), args.size()));
    }
    CallArguments read;
    for (std::size_t i = 0; i < args.size(); ++i) {
        read.positional.push_back(FromJson(args[i], member.arguments[i].type, handles, member.arguments[i].name));
    }
    return read;
}

CallArguments ByName(const Member& member, const Input& args, const Handles& handles) {
    CallArguments read;
    for (const auto& given : args.items()) {
        const std::string& name = given.key();
        const auto argument = std::find_if(member.arguments.begin(), member.arguments.end(),
                                           [&](const Argument& each) { return Zontara::SameName(each.name, name); });
        if (argument == member.arguments.end()) Refuse(fmt::format("{} has no argument {}", member.name, name));
        const bool doubled = std::any_of(read.named.begin(), read.named.end(),
                                         [&](const auto& each) { return each.first == argument->name; });
        if (doubled) Refuse(fmt::format("{} is given twice", argument->name));
        read.named.emplace_back(std::string(argument->name),
                                FromJson(given.value(), argument->type, handles, argument->name));
    }
    return read;
}

void RequireAll(const Member& member, const CallArguments& read) {
    for (std::size_t i = read.positional.size(); i < member.arguments.size(); ++i) {
        const Argument& argument = member.arguments[i];
        const bool given = std::any_of(read.named.begin(), read.named.end(),
                                       [&](const auto& each) { return each.first == argument.name; });
        if (!given && !argument.optional) Refuse(fmt::format("{} lacks the argument {}", member.name, argument.name));
    }
}

}  // namespace

Params::Params(const Input* params, std::initializer_list<std::string_view> known) : params_(params) {
    if (params_ == nullptr) return;
    if (!params_->is_object()) Refuse("params must be an object");
    for (const auto& [name, value] : params_->items()) {
        if (std::find(known.begin(), known.end(), std::string_view(name)) == known.end()) {
            Refuse(fmt::format("params has no member {}", name));
        }
    }
}

const Input* Params::Find(const char* name) const {
    if (params_ == nullptr) return nullptr;
    const auto found = params_->find(name);
    return found == params_->end() ? nullptr : &*found;
}

const Input& Params::Required(const char* name) const {
    const Input* member = Find(name);
    if (member == nullptr) Refuse(fmt::format("params lacks the member {}", name));
    return *member;
}

const std::string& Params::Text(const char* name) const {
    const Input& member = Required(name);
    if (!member.is_string()) Refuse(fmt::format("{} must be a text", name));
    return member.get_ref<const std::string&>();
}

CallArguments ReadArguments(const Member& member, const Input* args, const Handles& handles) {
    CallArguments read;
    if (args != nullptr) {
        if (!args->is_structured()) Refuse("args must be an array or an object");
        read = args->is_array() ? ByPosition(member, *args, handles) : ByName(member, *args, handles);
    }
    RequireAll(member, read);
    return read;
}

}  // namespace host::rpc

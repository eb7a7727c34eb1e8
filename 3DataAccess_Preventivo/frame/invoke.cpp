#include "frame/invoke.h"

#include "frame/raised_error.h"

#include <algorithm>
#include <string>

namespace Zontara {

namespace {

/// A property is assigned by value or by reference; a caller that has only an object in hand may use either word.
const Member* FindMember(const ClassTable& table, std::string_view name, MemberKind kind) {
    if (const Member* member = table.Find(name, kind)) return member;
    if (kind == MemberKind::Put) return table.Find(name, MemberKind::PutRef);
    if (kind == MemberKind::PutRef) return table.Find(name, MemberKind::Put);
    return nullptr;
}

[[noreturn]] void RaiseNoSuchMember(const Object& object, std::string_view name) {
    Raise(RunTimeError::NoSuchMember,
          TextOf(RunTimeError::NoSuchMember) + ": " + object.TypeName() + "." + std::string(name));
}

std::size_t PositionOf(const Member& member, std::string_view argument) {
    const auto found = std::find_if(member.arguments.begin(), member.arguments.end(),
                                    [&](const Argument& each) { return SameName(each.name, argument); });
    if (found == member.arguments.end()) {
        Raise(RunTimeError::ArgumentNotFound, TextOf(RunTimeError::ArgumentNotFound) + ": " + std::string(argument));
    }
    return static_cast<std::size_t>(found - member.arguments.begin());
}

}  // namespace

std::vector<Value> Arrange(const Member& member, CallArguments arguments) {
    const std::size_t count = member.arguments.size();
    if (arguments.positional.size() > count) Raise(RunTimeError::TooManyArguments);
    std::vector<Value> arranged = std::move(arguments.positional);
    std::vector<bool> given(count, false);
    std::fill_n(given.begin(), arranged.size(), true);
    arranged.resize(count, Absent{});
    for (auto& [name, value] : arguments.named) {
        const std::size_t position = PositionOf(member, name);
        if (given[position]) Raise(RunTimeError::TooManyArguments);
        given[position] = true;
        arranged[position] = std::move(value);
    }
    for (std::size_t i = 0; i < count; ++i) {
        if (!arranged[i].IsAbsent()) continue;
        const Argument& argument = member.arguments[i];
        if (!argument.optional) {
            Raise(RunTimeError::ArgumentNotOptional,
                  TextOf(RunTimeError::ArgumentNotOptional) + ": " + std::string(argument.name));
        }
        arranged[i] = argument.defaultValue;
    }
    return arranged;
}

CallResult Invoke(Object& object, std::string_view name, MemberKind kind, CallArguments arguments) {
    const ClassTable* table = object.Table();
    const Member* member = table != nullptr ? FindMember(*table, name, kind) : nullptr;
    if (member == nullptr) RaiseNoSuchMember(object, name);

    std::vector<Value> values = Arrange(*member, std::move(arguments));
    const std::vector<Value> before = values;
    CallResult result;
    result.value = member->invoke(object, values);
    for (std::size_t i = 0; i < values.size(); ++i) {
        if (member->arguments[i].byRef && !(values[i] == before[i])) {
            result.changed.emplace_back(member->arguments[i].name, std::move(values[i]));
        }
    }
    return result;
}

}  // namespace Zontara

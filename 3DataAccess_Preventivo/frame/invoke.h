#pragma once

#include "frame/export.h"
#include "frame/member_table.h"

#include <span>
#include <string_view>
#include <utility>
#include <vector>

namespace Zontara {

/// The arguments of a late-bound call: some by position, then some by name. An absent value counts as left out.
struct CallArguments {
    std::vector<Value> positional;
    std::vector<std::pair<std::string, Value>> named;
};

/// What a late-bound call gave.
struct CallResult {
    /// Empty for an operation without result.
    Value value;
    /// By-reference arguments whose value changed, by name, in interface order.
    std::vector<std::pair<std::string_view, Value>> changed;
};

/// Calls a member by name (case ignored) on any object that has a member table. Every argument is converted to its
/// type before the operation runs, so that a value that doesn't fit never reaches it.
/// Errors: 438 no such member, 448 no such argument, 449 a required argument is missing, 450 too many arguments,
/// those of `ConvertTo`, and whatever the operation raises.
ZONTARA_EXPORT CallResult Invoke(Object& object, std::string_view member, MemberKind kind, CallArguments arguments);

/// All the arguments of a member in order, those left out taking their defaults. Errors 448, 449, 450.
ZONTARA_EXPORT std::vector<Value> Arrange(const Member& member, CallArguments arguments);

}  // namespace Zontara

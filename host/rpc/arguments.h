#pragma once

#include "frame/invoke.h"
#include "frame/member_table.h"
#include "host/rpc/handles.h"
#include "host/rpc/json.h"

#include <initializer_list>
#include <string>
#include <string_view>

namespace host::rpc {

/// The params of a request: an object with members of known names. Whatever is wrong with them is a `Refusal`.
class Params {
public:
    /// `params` may be absent (none). Refuses what is no object and members that aren't `known`.
    Params(const Input* params, std::initializer_list<std::string_view> known);

    /// A member, none if it isn't there.
    const Input* Find(const char* name) const;
    /// A member that must be there.
    const Input& Required(const char* name) const;
    /// A member that must be there and hold a text.
    const std::string& Text(const char* name) const;

private:
    const Input* params_;
};

/// The arguments of a call, each of its type: by position from an array, by name (case ignored) from an object, no
/// arguments for none. Refuses unknown, surplus and doubled ones, those that don't fit, and the lack of a required one.
Zontara::CallArguments ReadArguments(const Zontara::Member& member, const Input* args, const Handles& handles);

}  // namespace host::rpc

#pragma once

#include "frame/member_table.h"
#include "host/rpc/json.h"

namespace host::rpc {

/// A class as `describe` tells of it: name, interface, whether it is the application object, its events, and its
/// members in interface order, each with its kind ("method", "get", "set"), its arguments and its result.
Json Described(const Zontara::ClassTable& table);

/// The sixteen classes in registration order.
Json DescribedAll();

}  // namespace host::rpc

#pragma once

#include "frame/class_registry.h"

#include <cstdint>

/// What the entry points lead to, in the component's own terms: COM's headers declare the entry points with types of
/// their own, so that one source can't see both.
namespace com {

std::int32_t RegisterForMachine();
std::int32_t UnregisterForMachine();
std::int32_t ClassObject(const Zontara::Guid& classId, const Zontara::Guid& interfaceId, void** factory);
bool NobodyHoldsIt();

}  // namespace com

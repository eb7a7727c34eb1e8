#pragma once

#include "frame/object.h"

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <unordered_map>

namespace host::rpc {

/// The objects that the other side holds, each under one name such as "CBoletin#1", numbered class by class in the
/// order in which they were first reached. A number is never used again.
class Handles {
public:
    /// The handle of an object: the one that it has, else a new one. From then on the object is kept alive.
    const std::string& Of(const Zontara::Ref<Zontara::Object>& object);
    /// The object behind a handle; none for an unknown or released one.
    Zontara::Ref<Zontara::Object> Find(const std::string& handle) const;
    /// Lets go of an object. False for an unknown or released handle.
    bool Release(const std::string& handle);
    /// Lets go of all objects.
    void Clear();

private:
    std::unordered_map<const Zontara::Object*, std::string> handles_;
    std::unordered_map<std::string, Zontara::Ref<Zontara::Object>> objects_;
    /// Last number of each class.
    std::map<std::string, std::int64_t> numbers_;
};

}  // namespace host::rpc

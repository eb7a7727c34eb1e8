#include "host/rpc/handles.h"

#include <utility>

namespace host::rpc {

using Zontara::Object;
using Zontara::Ref;

const std::string& Handles::Of(const Ref<Object>& object) {
    const auto [known, added] = handles_.try_emplace(object.get());
    if (added) {
        std::string type = object->TypeName();
        const std::int64_t number = ++numbers_[type];
        known->second = std::move(type) + "#" + std::to_string(number);
        objects_.emplace(known->second, object);
    }
    return known->second;
}

Ref<Object> Handles::Find(const std::string& handle) const {
    const auto found = objects_.find(handle);
    return found == objects_.end() ? nullptr : found->second;
}

bool Handles::Release(const std::string& handle) {
    const auto found = objects_.find(handle);
    if (found == objects_.end()) return false;
    // What goes with the object may be many others: the tables are in order before it does.
    const Ref<Object> object = std::move(found->second);
    handles_.erase(object.get());
    objects_.erase(found);
    return true;
}

void Handles::Clear() {
    handles_.clear();
    const auto going = std::exchange(objects_, {});
}

}  // namespace host::rpc

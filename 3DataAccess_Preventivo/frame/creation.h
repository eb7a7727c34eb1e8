#pragma once

#include "frame/value.h"

#include <memory>
#include <string_view>

namespace Zontara {

/// Stands by when the component makes or lets go of an object of its own, so that a test can make either fail.
class LifeWatcher {
public:
    virtual ~LifeWatcher();
    virtual void Creating(std::string_view typeName);
    virtual void Releasing(std::string_view typeName);
};

/// The watcher in force, which does nothing unless a test has put its own in place.
LifeWatcher& CurrentLifeWatcher();
/// Puts a watcher in force; none puts the idle one back. The caller keeps it alive.
void ReplaceLifeWatcher(LifeWatcher* watcher);

/// A new object of a public class.
template <class T> Ref<T> Create() {
    CurrentLifeWatcher().Creating(T::kTypeName);
    return std::make_shared<T>();
}

/// Lets go of an object, if there is one.
template <class T> void Release(Ref<T>& object) {
    if (object) CurrentLifeWatcher().Releasing(T::kTypeName);
    object.reset();
}

}  // namespace Zontara

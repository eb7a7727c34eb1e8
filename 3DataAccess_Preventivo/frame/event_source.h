#pragma once

#include "frame/export.h"
#include "frame/value.h"

#include <cstdint>
#include <functional>
#include <string_view>
#include <utility>
#include <vector>

namespace Zontara {

/// The outgoing interface of a class: subscribers hear of each event, in the order in which they came, on the caller's
/// thread. An error that a subscriber raises travels on to the operation that raised the event.
class ZONTARA_EXPORT EventSource {
public:
    /// Called with the event's name and its one argument, which is by reference.
    using Subscriber = std::function<void(std::string_view event, Value& argument)>;

    /// Adds a subscriber and gives the number to end the subscription with.
    std::int32_t Subscribe(Subscriber subscriber);
    /// Ends a subscription. An unknown number is no error.
    void Unsubscribe(std::int32_t subscription);

protected:
    EventSource() = default;
    ~EventSource() = default;
    /// Tells all subscribers, and the provider. A subscriber may subscribe and unsubscribe meanwhile.
    void RaiseEvent(std::string_view event, Value argument);

private:
    std::vector<std::pair<std::int32_t, Subscriber>> subscribers_;
    std::int32_t last_ = 0;
};

}  // namespace Zontara

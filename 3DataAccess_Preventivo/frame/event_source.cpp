#include "frame/event_source.h"

#include "frame/provider.h"

#include <algorithm>

namespace Zontara {

std::int32_t EventSource::Subscribe(Subscriber subscriber) {
    subscribers_.emplace_back(++last_, std::move(subscriber));
    return last_;
}

void EventSource::Unsubscribe(std::int32_t subscription) {
    std::erase_if(subscribers_, [subscription](const auto& each) { return each.first == subscription; });
}

void EventSource::RaiseEvent(std::string_view event, Value argument) {
    if (!subscribers_.empty()) {
        const auto listening = subscribers_;
        for (const auto& [number, subscriber] : listening)
            subscriber(event, argument);
    }
    Neighbours().EventRaised(event, argument);
}

}  // namespace Zontara

#include "Perluma/change_list.h"

#include "frame/raised_error.h"

#include <cstddef>

namespace Perluma {

void ListaCambios::Agregar(const std::string& texto) {
    notices_.push_back(texto);
    // A copy: a subscriber may end subscriptions, or add further notices, while it is told.
    const auto subscribers = subscribers_;
    for (const auto& [subscription, subscriber] : subscribers)
        subscriber(texto);
}

std::string ListaCambios::Elemento(std::int32_t posicion) const {
    if (posicion < 1 || posicion > Total()) Zontara::Raise(Zontara::RunTimeError::SubscriptOutOfRange);
    return notices_[static_cast<std::size_t>(posicion - 1)];
}

std::int32_t ListaCambios::Subscribe(Subscriber subscriber) {
    subscribers_.emplace_back(++lastSubscription_, std::move(subscriber));
    return lastSubscription_;
}

void ListaCambios::Unsubscribe(std::int32_t subscription) {
    std::erase_if(subscribers_, [&](const auto& entry) { return entry.first == subscription; });
}

}  // namespace Perluma

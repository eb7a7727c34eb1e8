#pragma once

#include "frame/neighbours.h"

#include <cstdint>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace Perluma {

/// Change notices in the order in which they came, kept until the list goes. An application either reads the list or
/// subscribes and hears of each notice as it comes.
class ListaCambios : public Zontara::ListaCambios {
public:
    using Subscriber = std::function<void(const std::string& notice)>;

    /// Adds a notice, the empty text too, and then tells the subscribers in the order in which they came. An error that
    /// one of them raises travels on to the caller; the notice stays in the list.
    void Agregar(const std::string& texto) override;
    std::int32_t Total() const override { return static_cast<std::int32_t>(notices_.size()); }
    std::string Elemento(std::int32_t posicion) const override;

    /// Adds a subscriber for the notices to come, and gives the number to end the subscription with. A subscriber may
    /// subscribe and unsubscribe while it is told.
    std::int32_t Subscribe(Subscriber subscriber);
    /// Ends a subscription. An unknown number is no error.
    void Unsubscribe(std::int32_t subscription);

private:
    std::vector<std::string> notices_;
    std::vector<std::pair<std::int32_t, Subscriber>> subscribers_;
    std::int32_t lastSubscription_ = 0;
};

}  // namespace Perluma

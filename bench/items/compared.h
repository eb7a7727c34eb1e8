#pragma once

#include "bench/plant.h"

#include <vector>

namespace bench {

/// Processor seconds of the component and of the same statements bound by hand, round by round.
struct Times {
    std::vector<double> ours;
    std::vector<double> bound;
    /// Of the same by hand with each question asked once, where that was measured too.
    std::vector<double> once{};
};

Times CompareBulletins(Component::Where where, int rows, int rounds);
Times CompareOrders(Component::Where where, int rows, int rounds, bool alsoOnce = false);
Times CompareRows(int rows, int rounds);
Times CompareReadings(Component::Where where, int readings, int rounds);

}  // namespace bench

#pragma once

#include "frame/date.h"

#include <cstdint>
#include <optional>

namespace planning {

/// The first day of a range, both ends included, that something holds for. Each day is asked about in turn.
template <class Holds> std::optional<Zontara::Date> FirstDay(Zontara::Date from, Zontara::Date until, Holds holds) {
    const std::int32_t days = Zontara::DaysBetween(from, until);
    for (std::int32_t i = 0; i <= days; ++i) {
        const Zontara::Date day = Zontara::AddDays(from, i);
        if (holds(day)) return day;
    }
    return std::nullopt;
}

/// The same for what holds for all days behind the first it holds for: a few days are asked about.
template <class Holds>
std::optional<Zontara::Date> FirstDayOfRest(Zontara::Date from, Zontara::Date until, Holds holds) {
    std::int32_t low = 0;
    std::int32_t high = Zontara::DaysBetween(from, until);
    if (high < 0 || !holds(until)) return std::nullopt;
    while (low < high) {
        const std::int32_t middle = low + (high - low) / 2;
        if (holds(Zontara::AddDays(from, middle))) {
            high = middle;
        } else {
            low = middle + 1;
        }
    }
    return Zontara::AddDays(from, high);
}

}  // namespace planning

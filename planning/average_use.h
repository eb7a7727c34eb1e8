#pragma once

#include "frame/CGlobalPreventivo.h"
#include "frame/date.h"

#include <cstdint>
#include <map>
#include <string>

namespace planning {

/// How much an asset's meter grows in a day, as its readings tell: what they added after the first of them, over the
/// days from the first to the last. What counts are the readings of the year (365 days) up to a day.
struct AverageUse {
    /// In the unit of the meter. 0 for a meter that on the whole went backwards.
    double perDay = 0;
    std::int32_t readings = 0;
    Zontara::Date first;
    Zontara::Date last;
    /// What the meter showed at the last reading.
    double shown = 0;

    /// Whether there are readings of two days or more. Without them the meter is taken to stand still.
    bool Known() const { return first != last; }

    /// What the meter has grown by at the end of a day, counted from its last reading; 0 for a day before that.
    double GrowthUntil(Zontara::Date day) const;
};

/// The average use of each asset that has a reading in the year up to `on`, by the asset's identifier; of one asset
/// alone when it is named. Readings of assets that are gone don't count. Errors are those of
/// `CLecturaEquipo::ObtenerLecturas`.
std::map<std::string, AverageUse> AverageUses(Zontara::CGlobalPreventivo& component, Zontara::Date on,
                                              const std::string& asset = "");

}  // namespace planning

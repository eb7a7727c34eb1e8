#pragma once

#include "frame/money.h"
#include "host/plant.h"

#include <optional>
#include <string>

namespace host {

/// A meter reading as people enter it. What is left out is taken from the asset.
struct Reading {
    /// yyyy-mm-dd.
    std::string date;
    std::string asset;
    /// What the meter shows.
    float shown = 0;
    /// What it showed before: the asset's last reading.
    std::optional<float> previous;
    /// What the reading adds to the asset's accumulated reading: the growth since the previous one. Must be given when
    /// the meter shows less than before, as after its exchange.
    std::optional<float> added;
    /// The unit: the asset's own.
    std::optional<std::int32_t> unit;
    float fuel = 0;
    std::string note;
    std::string department;
    Zontara::Money voucherValue;
    std::string voucher;
};

/// Records a reading and gives its key. A `Failure` for an unknown asset and for a meter that runs backwards. Call it
/// inside a `Transaction`, so that the asset's last reading is still the last when the reading goes in.
std::int32_t RecordReading(Plant& plant, const Reading& reading);

/// The text for a meter that shows less than before.
std::string BackwardsText(float shown, float previous);

}  // namespace host

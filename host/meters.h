#pragma once

#include "host/plant.h"
#include "host/text/grid.h"

#include <cstdint>
#include <string>
#include <vector>

namespace host {

/// A live meter assignment beside its asset's meter.
struct MeterState {
    std::int32_t key = 0;
    std::int32_t task = 0;
    std::string taskName;
    std::int32_t limit = 0;
    std::int32_t reference = 0;
    /// Of the asset's accumulated reading since the reference level.
    double growth = 0;

    bool Due() const { return growth >= limit; }
};

/// An asset's accumulated reading.
double AccumulatedOf(Plant& plant, const std::string& asset);

/// An asset's live meter assignments, the largest interval first.
std::vector<MeterState> MeterStates(Plant& plant, const std::string& asset);

/// A table of them.
text::Grid GridOf(const std::vector<MeterState>& states);

}  // namespace host

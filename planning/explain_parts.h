#pragma once

#include "planning/explanation.h"

#include <cstdint>
#include <string>
#include <vector>

namespace planning {

/// What is asked about one asset.
struct Question {
    Zontara::CGlobalPreventivo& component;
    std::string asset;
    /// One assignment alone; 0 for all.
    std::int32_t key = 0;
    Zontara::Date on;
    /// The last day that a due day is looked for on.
    Zontara::Date until;
    bool inService = true;
};

std::vector<Explanation> ExplainCalendar(const Question& question, Kind kind);
std::vector<Explanation> ExplainMeter(const Question& question);

}  // namespace planning

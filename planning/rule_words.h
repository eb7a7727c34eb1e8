#pragma once

#include "frame/neighbours.h"
#include "planning/explanation.h"

#include <string>
#include <vector>

namespace planning {

/// The due rule of a frequency word, as a sentence that begins with "due".
std::string CalendarRule(Kind kind, const std::string& frequency);

/// The values of the current row and of the day that the rule of its frequency compares. What can't be read is shown as
/// it is stored.
std::vector<Fact> CalendarFacts(Kind kind, const Zontara::Recordset& row, Zontara::Date day);

/// The rule of all meter assignments.
std::string MeterRule();

}  // namespace planning

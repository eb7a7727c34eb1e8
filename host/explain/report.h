#pragma once

#include "planning/explanation.h"

#include <nlohmann/json_fwd.hpp>
#include <ostream>
#include <vector>

namespace host::explain {

/// For people: a paragraph an assignment.
void Print(std::ostream& out, Zontara::Date on, const std::vector<planning::Explanation>& told);

/// {"on", "assignments": [{"kind", "key", "asset", "state", "rule", "values", "next", ...}]}.
nlohmann::ordered_json ToJson(Zontara::Date on, const std::vector<planning::Explanation>& told);

}  // namespace host::explain

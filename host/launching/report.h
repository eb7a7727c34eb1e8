#pragma once

#include "host/launching/launch.h"

#include <nlohmann/json_fwd.hpp>
#include <ostream>
#include <string>
#include <vector>

namespace host::launching {

/// For people: one line a launch with what it looked at and launched, then a table of the papers of all of them.
void Print(std::ostream& out, Zontara::Date date, const std::vector<Outcome>& outcomes);

/// Only the table of papers. Orders and bulletins stand in tables of their own.
void PrintPapers(std::ostream& out, const std::vector<Paper>& papers, std::size_t indent = 0);

/// The work texts of the orders, a line each, under a title of their own; nothing when there are no orders.
void PrintTexts(std::ostream& out, const std::vector<Outcome>& outcomes);

/// For machines: {"date", "launched", "runs": [{"kind", "looked_at", "launched", "by_frequency", "papers"}]}.
nlohmann::json ToJson(Zontara::Date date, const std::vector<Outcome>& outcomes);

/// Number of papers of each frequency, the shortest frequency first; frequencies without any are left out.
std::vector<std::pair<std::string, std::int64_t>> ByFrequency(const std::vector<Paper>& papers);

}  // namespace host::launching

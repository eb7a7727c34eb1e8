#pragma once

#include "frame/date.h"
#include "host/plant.h"

#include <nlohmann/json_fwd.hpp>
#include <ostream>
#include <string>
#include <vector>

namespace host {

/// What is overdue on one asset, and why.
struct Overdue {
    std::string asset;
    std::string name;
    bool inService = true;
    bool meter = false;
    bool synchronised = false;
    bool conventional = false;
    /// Why the question failed; empty when it didn't.
    std::string failure;

    bool Any() const { return meter || synchronised || conventional; }
    /// "meter, synchronised".
    std::string Reasons() const;
};

/// Asks all three questions about each asset that has an assignment: by meter, which goes by the readings so far, and
/// by the two calendars as of a day. A question that fails, as for an anchor that is no number, fails for its asset
/// alone. Assets with nothing overdue are part of the answer.
std::vector<Overdue> AskAll(Plant& plant, Zontara::Date day);

/// Asks about one asset. Errors are those of the questions.
Overdue AskOne(Plant& plant, const std::string& asset, Zontara::Date day);

/// A table of those that are overdue, at most so many (0 for all).
void Print(std::ostream& out, const std::vector<Overdue>& answers, std::size_t most = 0);

nlohmann::json ToJson(Zontara::Date day, const std::vector<Overdue>& answers);

}  // namespace host

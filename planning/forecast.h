#pragma once

#include "frame/CGlobalPreventivo.h"
#include "frame/date.h"
#include "frame/money.h"
#include "planning/average_use.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace planning {

/// What one week's launches make, and what it takes to work it off.
struct Week {
    /// The day of the launches.
    Zontara::Date day;
    /// Bulletins, by the kind of their assignments.
    std::int64_t synchronised = 0;
    std::int64_t conventional = 0;
    /// Work orders of the meter launch.
    std::int64_t orders = 0;
    /// Hours of labour: crew by time, task by task.
    double hours = 0;
    /// Those of them that the orders take.
    double hoursOfOrders = 0;
    /// All of them by trade, in the order of `Forecast::trades`.
    std::vector<double> hoursByTrade;
    std::int64_t materialLines = 0;
    Zontara::Money materialCost;
    /// The tasks' own present cost.
    Zontara::Money cost;

    std::int64_t Bulletins() const { return synchronised + conventional; }
};

/// A material that the weeks need together.
struct Material {
    std::string name;
    Zontara::Money unitCost;
    double quantity = 0;
};

/// The meter of an asset with live meter assignments, and the use that it was moved on by.
struct Meter {
    std::string asset;
    std::string name;
    std::string unit;
    AverageUse use;
};

struct Forecast {
    std::vector<Week> weeks;
    /// Executors that have hours in any of the weeks, in the plant's own order; tasks without one stand under the empty
    /// text.
    std::vector<std::string> trades;
    /// By name and unit cost.
    std::vector<Material> materials;
    /// By asset.
    std::vector<Meter> meters;

    Week Total() const;
};

/// Runs the launches of all kinds on `from` and on that day of each following week, into bulletins, and the meters'
/// into orders. Before each, the meters of all assets with live meter assignments move on by their average use, counted
/// from their last reading. The launches are the component's own, with all that they book, so the session has to stand
/// on a private copy (`dhRichClient3::Connection::Copy`) with no transaction open; all is undone at the end. `onWeek`
/// hears the number of each week, from 0, before it is launched. Errors are those of the launches: what would stop a
/// real one stops the forecast.
Forecast ForecastWeeks(Zontara::CGlobalPreventivo& component, Zontara::Date from, std::int32_t weeks,
                       const std::function<void(std::int32_t)>& onWeek);

}  // namespace planning

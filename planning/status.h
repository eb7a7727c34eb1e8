#pragma once

#include "dhRichClient3/connection.h"
#include "frame/CGlobalPreventivo.h"
#include "frame/date.h"

#include <cstdint>
#include <string>
#include <vector>

namespace planning {

/// A plant at a glance: counts of what stands in it.
struct Status {
    std::int64_t assets = 0;
    /// Those that launches take.
    std::int64_t assetsInService = 0;
    std::int64_t tasks = 0;

    /// Assignments in force of one frequency, by the calendar.
    struct Frequency {
        std::string word;
        std::int64_t synchronised = 0;
        std::int64_t conventional = 0;
    };
    /// The words of the component first, from the shortest on, then any other that is found; each that has rows.
    std::vector<Frequency> frequencies;
    std::int64_t meterAssignments = 0;
    /// Of both kinds.
    std::int64_t cancelled = 0;

    /// The latest day that papers of one kind bear: the last launch, as far as papers tell. A launch may book a paper
    /// under the first of its month, or a conventional one under a day ahead.
    struct Latest {
        /// "bulletin" or "order", and the kind of assignment that they come from.
        std::string paper;
        std::string kind;
        /// yyyy-mm-dd.
        std::string day;
        /// How many bear it.
        std::int64_t count = 0;
    };
    /// Each kind that has papers.
    std::vector<Latest> latest;

    struct Bulletins {
        std::int16_t status = 0;
        /// In the component's words; empty for a number that has none.
        std::string name;
        std::int64_t count = 0;
        /// Of them: those marked as under way and as carried out, which is told apart from the status.
        std::int64_t underWay = 0;
        std::int64_t carriedOut = 0;
    };
    std::vector<Bulletins> bulletins;

    /// Work orders that launches made for one week, by the day in the log of orders.
    struct Week {
        std::int32_t year = 0;
        std::int32_t week = 0;
        std::int64_t calendar = 0;
        std::int64_t meter = 0;
    };
    /// The latest weeks with orders, the oldest of them first.
    std::vector<Week> orders;
};

/// Weeks of orders that a status tells of.
inline constexpr std::size_t kWeeksOfOrders = 8;

/// Reads the counts. The session stands on `database`.
Status StatusOf(Zontara::CGlobalPreventivo& component, dhRichClient3::Connection& database);

}  // namespace planning

#pragma once

#include "planning/average_use.h"
#include "planning/kind.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace planning {

/// A value that a rule goes by: a column under its own name, or what was worked out, in words.
struct Fact {
    std::string name;
    std::string value;

    friend bool operator==(const Fact&, const Fact&) = default;
};

/// Why one assignment is due on a day, or isn't.
struct Explanation {
    enum class State {
        Due,
        NotDue,
        NotBegun,    ///< its first day lies ahead
        Cancelled,   ///< no launch looks at it any more
        Unreadable,  ///< a value can't be read, and stops the launch that meets it
    };

    Kind kind = Kind::Synchronised;
    std::int32_t key = 0;
    std::string asset;
    std::int32_t task = 0;
    std::string taskName;
    /// The frequency word, or the interval of a meter assignment with its unit: "500 h".
    std::string frequency;

    State state = State::NotDue;
    /// Launches pass over an asset out of service, due or not.
    bool inService = true;
    /// The rule in words, beginning with "due".
    std::string rule;
    /// What the rule read.
    std::vector<Fact> facts;
    /// What came of it, and how much of it is asked for.
    Fact reached;
    Fact threshold;
    /// The day that a launch would book; a meter assignment books none.
    std::optional<Zontara::Date> books;
    /// The first day from the one asked about on which it is due if nothing else happens; none within ten years.
    std::optional<Zontara::Date> next;
    /// Of a meter assignment: what `next` goes by.
    std::optional<AverageUse> use;
    std::string unit;
    /// Why it is unreadable.
    std::string failure;
};

/// How far ahead a due day is looked for.
inline constexpr std::int32_t kYearsAhead = 10;

/// Each assignment of an asset, the synchronised first, then the conventional, then those by meter, each by key. The
/// component's own due rules are asked: the two calendar rules on the row for each day ahead, the meter's question with
/// the meter moved on by the average use. For that it writes and undoes, so the session has to stand on a private copy
/// (`dhRichClient3::Connection::Copy`) with no transaction open. Empty for an unknown asset and for one without
/// assignments. Assignments whose task is missing aren't found, nor cancelled ones and those by meter whose task has no
/// group, since no list of the component holds them.
std::vector<Explanation> ExplainAsset(Zontara::CGlobalPreventivo& component, const std::string& asset,
                                      Zontara::Date on);

/// The calendar assignment and the meter assignment of that key, under the same terms: keys of the two are counted
/// apart, so there may be both.
std::vector<Explanation> ExplainAssignment(Zontara::CGlobalPreventivo& component, std::int32_t key, Zontara::Date on);

}  // namespace planning

#pragma once

#include "dhRichClient3/connection.h"
#include "frame/CGlobalPreventivo.h"
#include "frame/date.h"

#include <optional>
#include <string>
#include <vector>

namespace planning {

enum class Severity {
    Error,    ///< a launch stops, or a row is never launched, or launched for ever
    Warning,  ///< something comes too late or too early, or is left out
    Note,     ///< probably meant otherwise
};

/// What won't act in one row of the plant as a planner would think it does.
struct Finding {
    Severity severity = Severity::Error;
    /// A word for findings of one kind, such as "never-due".
    std::string rule;
    /// The row: its table, and its key as text.
    std::string table;
    std::string key;
    /// Whom it is about, as far as the row tells: an asset's identifier, a task's number with its name.
    std::string asset;
    std::string task;
    /// What will happen, and what to do about it: sentences.
    std::string what;
    std::string advice;
};

struct LintRequest {
    /// Days ahead are looked at from here.
    Zontara::Date on;
    /// The weekday of the plant's launches, 1 for Monday to 7 for Sunday: then rows that such launches never meet are
    /// found too.
    std::optional<int> weekday;
};

/// Looks through the whole plant for rows that do harm without a word. What a rule or a list of the component would say
/// is found by asking it: the due rules for each day ahead up to ten years, the selections of the launches, the lists
/// of the catalogues. Cancelled assignments are passed over. Writes nothing. The session stands on `database`.
std::vector<Finding> Lint(Zontara::CGlobalPreventivo& component, dhRichClient3::Connection& database,
                          const LintRequest& request);

}  // namespace planning

#pragma once

#include "planning/lint.h"

#include "frame/neighbours.h"
#include "frame/raised_error.h"

#include <functional>
#include <string>
#include <string_view>

/// The parts of the look through a plant. Each adds what it finds.
namespace planning::lint {

/// What the parts work with.
struct Look {
    Zontara::CGlobalPreventivo& component;
    dhRichClient3::Connection& database;
    const LintRequest& request;
    std::vector<Finding>& findings;
};

/// Calendar assignments by the due rules: those that stop a launch, never come due, always do, or do late or early.
void CalendarRules(const Look& look);
/// Calendar assignments that no launch selects, that begin by chance, never end, or stand there twice.
void CalendarRows(const Look& look);
/// Meter assignments, their parallels, and readings.
void Meters(const Look& look);
/// Tasks, their materials, and what the lists of tasks, assignments and bulletins leave out.
void Catalogues(const Look& look);

/// A column of the current row as text; empty for null.
std::string TextIn(const Zontara::Recordset& row, std::string_view column);
/// A task as findings name it: "7 Engrase".
std::string TaskName(const std::string& number, const std::string& description);
/// Visits the rows from the first on.
void ForEach(Zontara::Recordset& rows, const std::function<void()>& visit);
/// yyyy-mm-dd.
std::string Iso(Zontara::Date day);
/// An error in one line.
std::string CauseOf(const Zontara::RaisedError& error);

}  // namespace planning::lint

#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>

/// The due rules once more, slow and obvious, on the standard library's calendar: what the component decides is
/// compared with what these say.
namespace reference {

using Day = std::chrono::year_month_day;

/// A row as the rules see it. Nulls and texts that are no dates don't occur here.
struct Row {
    std::string frequency;
    std::string anchor;
    Day last;
    int week = 0;
    int interval = 1;
    bool synchronised = true;
};

struct Decision {
    /// Error number; 0 when the rule gives an answer.
    int error = 0;
    int step = 0;
    std::optional<Day> booked;
};

Decision Decide(const Row& row, Day day);

/// Week of the year, Monday first, week 1 holding January 1.
int WeekOf(Day day);
std::string Iso(Day day);
/// The day so many days later.
Day Later(Day day, int days);

}  // namespace reference

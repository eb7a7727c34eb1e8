#pragma once

#include "calendar/frequency.h"
#include "frame/date.h"
#include "frame/neighbours.h"

#include <cstdint>
#include <optional>

/// The due tests of both kinds of assignment. They read the current row and write nothing; launches, rule functions and
/// overdue questions all ask them.
namespace Zontara::calendar {

/// The day that a launch books for a row, as the due test found it. Worked out only by a launch: an overdue question
/// must not fail on a day that nobody books.
struct Booking {
    enum class Kind { LaunchDay, DayOfMonth, Weekday };
    Kind kind = Kind::LaunchDay;
    /// Day of the month of the launch, which may roll over, or weekday of its week, Monday being 1.
    double number = 0;

    Date On(Date Fecha_Lanzamiento) const;
};

/// What a due test says of one row.
struct Due {
    /// 0 when the condition of the frequency doesn't hold.
    std::int16_t step = 0;
    /// None: the row books no day, and a launch keeps the one of the rows before. A row may book a day and yet not be
    /// due.
    std::optional<Booking> booking;
};

using DueTest = Due (*)(const Recordset& row, Date day);

/// By week numbers and the grid of months. Columns: `frecuencia`, and as the frequency asks `Semana`, `Programacion`,
/// `Fecha_Ultimo_Lanzamiento`.
Due DueSynchronised(const Recordset& row, Date day);

/// By the time since the last launch. The same columns but `Semana`.
Due DueConventional(const Recordset& row, Date day);

/// Whether the step comes up to the row's `Intervalo_Frecuencia`, which any step does when it is 0 or below.
bool ReachesInterval(const Recordset& row, std::int16_t step);

/// What tells the two kinds apart wherever rows are selected and tested.
struct LaunchKind {
    bool synchronised;
    DueTest due;
};
inline constexpr LaunchKind kSynchronised{true, DueSynchronised};
inline constexpr LaunchKind kConventional{false, DueConventional};

/// A number as comparisons see it: none for null, with which no comparison holds. Error 13 for a text that is none.
std::optional<double> ComparableNumber(const Recordset& row, std::string_view column);

}  // namespace Zontara::calendar

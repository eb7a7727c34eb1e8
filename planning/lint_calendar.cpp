#include "calendar/CImputacionPreventiva.h"
#include "calendar/due.h"
#include "frame/convert.h"
#include "planning/explanation.h"
#include "planning/lint_parts.h"

#include <fmt/format.h>
#include <algorithm>
#include <array>

namespace planning::lint {

namespace {

using Zontara::Date;
using Zontara::Recordset;
using Zontara::calendar::Frequency;
using Zontara::calendar::LaunchKind;

constexpr std::array<std::string_view, 7> kWeekdays = {"Mondays", "Tuesdays",  "Wednesdays", "Thursdays",
                                                       "Fridays", "Saturdays", "Sundays"};

/// The columns that due rules and findings read. The last launch and its week can be made up.
std::string Columns(std::string_view lastLaunch, std::string_view week) {
    return fmt::format(
        "SC_Imputacion_Preventiva,Activo.ID_Activo,Gama.Numero_Gama,Gama.Descripcion,Frecuencia,Intervalo_Frecuencia,"
        "Fecha_Inicio,Programacion,{} as Fecha_Ultimo_Lanzamiento,{} as Semana",
        lastLaunch, week);
}

Date LastDay(const Look& look) {
    const Zontara::CivilDate on = Zontara::CivilOf(look.request.on);
    return Zontara::DateOf(on.year + kYearsAhead, on.month, on.day);
}

/// All rows of a kind that launches will select in years to come.
Zontara::Ref<Recordset> Rows(const Look& look, const LaunchKind& kind, const std::string& columns) {
    return look.component.ImputacionPreventiva()->SeleccionarActivas(LastDay(look), columns, kind.synchronised);
}

/// The rows as a launch of a day would leave them.
Zontara::Ref<Recordset> RowsLaunchedOn(const Look& look, const LaunchKind& kind, Date day) {
    return Rows(look, kind, Columns("'" + Iso(day) + "'", std::to_string(Zontara::WeekOfYear(day))));
}

bool IsDue(const LaunchKind& kind, const Recordset& row, Date day) {
    return Zontara::calendar::ReachesInterval(row, kind.due(row, day).step);
}

/// Whether it is due; a row that can't be read is none here, since it has a finding of its own.
bool IsDueIfReadable(const LaunchKind& kind, const Recordset& row, Date day) {
    try {
        return IsDue(kind, row, day);
    } catch (const Zontara::RaisedError&) {
        return false;
    }
}

bool IsBefore(Date a, Date b) { return Zontara::DaysBetween(a, b) > 0; }

Frequency FrequencyIn(const Recordset& row) { return Zontara::calendar::FrequencyOf(TextIn(row, "Frecuencia")); }

std::optional<Date> DateIn(const Recordset& row, std::string_view column) {
    try {
        return Zontara::ConvertTo<Date>(row.Valor(column));
    } catch (const Zontara::RaisedError&) {
        return std::nullopt;
    }
}

void Add(const Look& look, const Recordset& row, Severity severity, std::string rule, std::string what,
         std::string advice) {
    look.findings.push_back({severity, std::move(rule), "Imputacion_Preventiva",
                             TextIn(row, "SC_Imputacion_Preventiva"), TextIn(row, "ID_Activo"),
                             TaskName(TextIn(row, "Numero_Gama"), TextIn(row, "Descripcion")), std::move(what),
                             std::move(advice)});
}

/// What the rule of a row says of the days ahead.
struct Ahead {
    std::optional<Date> due;
    /// The first due day that is also a launch day of the plant.
    std::optional<Date> met;
    /// The largest step on any day.
    std::int16_t step = 0;
    /// The first day on which the row can't be read, and why.
    std::optional<Date> stops;
    std::string cause;
};

Ahead LookAhead(const Look& look, const LaunchKind& kind, const Recordset& row) {
    Ahead ahead;
    const Date last = LastDay(look);
    const Date begin = DateIn(row, "Fecha_Inicio").value_or(look.request.on);
    Date day = IsBefore(look.request.on, begin) ? begin : look.request.on;
    for (; !IsBefore(last, day) && !ahead.met; day = Zontara::AddDays(day, 1)) {
        try {
            const std::int16_t step = kind.due(row, day).step;
            ahead.step = std::max(ahead.step, step);
            if (!Zontara::calendar::ReachesInterval(row, step)) continue;
        } catch (const Zontara::RaisedError& error) {
            ahead.stops = day;
            ahead.cause = CauseOf(error);
            return ahead;
        }
        if (!ahead.due) ahead.due = day;
        if (!look.request.weekday || Zontara::WeekdayOf(day) == *look.request.weekday) ahead.met = day;
    }
    return ahead;
}

/// The values that a rule reads, for the one who has to mend them.
std::string Values(const Recordset& row) {
    return fmt::format("Frecuencia '{}', Intervalo_Frecuencia {}, Programacion '{}', Fecha_Ultimo_Lanzamiento '{}'",
                       TextIn(row, "Frecuencia"), TextIn(row, "Intervalo_Frecuencia"), TextIn(row, "Programacion"),
                       TextIn(row, "Fecha_Ultimo_Lanzamiento"));
}

/// A fixed date whose day has been launched is done: that it never comes due any more is what it is for.
bool IsDone(const LaunchKind& kind, const Recordset& row) {
    if (kind.synchronised || FrequencyIn(row) != Frequency::Fecha) return false;
    const std::optional<Date> anchor = DateIn(row, "Programacion");
    const std::optional<Date> launched = DateIn(row, "Fecha_Ultimo_Lanzamiento");
    return anchor && launched && !IsBefore(*launched, *anchor);
}

void NeverDue(const Look& look, const LaunchKind& kind, const Recordset& row, const Ahead& ahead) {
    if (IsDone(kind, row)) return;
    if (ahead.step > 0) {
        Add(look, row, Severity::Error, "never-due",
            fmt::format("Never comes due: its frequency {} counts {} at most, and its interval asks for {}.",
                        TextIn(row, "Frecuencia"), ahead.step, TextIn(row, "Intervalo_Frecuencia")),
            fmt::format("Set Intervalo_Frecuencia to {} or less, or choose a longer frequency.", ahead.step));
    } else if (FrequencyIn(row) == Frequency::Unknown) {
        Add(look, row, Severity::Error, "never-due",
            fmt::format("Never comes due: '{}' is no frequency.", TextIn(row, "Frecuencia")),
            "Write one of Fecha, Diaria, Semanal, Quincenal, Mensual, Bimestral, Trimestral, Semestral, Anual; case "
            "counts.");
    } else {
        Add(look, row, Severity::Error, "never-due",
            fmt::format("Never comes due up to {}: the rule of its frequency holds on no day ({}).", Iso(LastDay(look)),
                        Values(row)),
            kind.synchronised
                ? "Check Programacion and the date of the last launch; Fecha isn't for synchronised assignments."
                : "Check Programacion and the date of the last launch; fixed dates are compared as texts dd/mm/yyyy.");
    }
}

void CheckAhead(const Look& look, const LaunchKind& kind, const Recordset& row) {
    const Ahead ahead = LookAhead(look, kind, row);
    if (ahead.stops) {
        Add(look, row, Severity::Error, "stops-launch",
            fmt::format("Stops the whole {} launch of {}, so that nothing is launched for any asset: {} ({}).",
                        kind.synchronised ? "synchronised" : "conventional", Iso(*ahead.stops), ahead.cause,
                        Values(row)),
            "Correct the value that can't be read, or cancel the assignment.");
        return;
    }
    if (!ahead.due) return NeverDue(look, kind, row, ahead);
    if (!ahead.met) {
        const std::string_view days = kWeekdays[static_cast<std::size_t>(*look.request.weekday - 1)];
        Add(look, row, Severity::Error, "never-on-launch-day",
            fmt::format("Never launched by launches on {}: it comes due on other weekdays only, next on {}.", days,
                        Iso(*ahead.due)),
            "Set Programacion to the weekday of the launches or an earlier one.");
    }
    const std::optional<Date> anchor = DateIn(row, "Programacion");
    if (!kind.synchronised && FrequencyIn(row) == Frequency::Fecha && anchor && IsBefore(*ahead.due, *anchor)) {
        Add(look, row, Severity::Warning, "compares-texts",
            fmt::format("Comes due on {}, before its date {}: fixed dates are compared as texts dd/mm/yyyy, the day of "
                        "the month first.",
                        Iso(*ahead.due), Iso(*anchor)),
            "Enter the assignment in the month of its date, or keep Fecha_Inicio at its date until then.");
    }
}

/// A launch is to put an end to being due. What is due again on the same day is launched again by every launch.
void CheckAfterLaunch(const Look& look, const LaunchKind& kind) {
    const auto rows = RowsLaunchedOn(look, kind, look.request.on);
    ForEach(*rows, [&] {
        if (!IsDueIfReadable(kind, *rows, look.request.on)) return;
        Add(look, *rows, Severity::Error, "always-due",
            fmt::format("Launched again by every launch, also twice a day: its interval {} is reached whatever the "
                        "date. A bulletin may then bear the day of another row, or none.",
                        TextIn(*rows, "Intervalo_Frecuencia")),
            "Set Intervalo_Frecuencia to 1 or more.");
    });
}

/// A daily row is due on the day after its launch; at the turn of a month the texts of the two days sort otherwise.
void CheckDaily(const Look& look) {
    const LaunchKind& kind = Zontara::calendar::kConventional;
    const Date launched = Zontara::DateOf(Zontara::CivilOf(look.request.on).year + 1, 1, 31);
    const auto rows = RowsLaunchedOn(look, kind, launched);
    ForEach(*rows, [&] {
        if (FrequencyIn(*rows) != Frequency::Diaria || IsDueIfReadable(kind, *rows, launched)) return;
        Date next = Zontara::AddDays(launched, 1);
        if (IsDueIfReadable(kind, *rows, next)) return;
        while (IsBefore(next, LastDay(look)) && !IsDueIfReadable(kind, *rows, next))
            next = Zontara::AddDays(next, 1);
        if (!IsDueIfReadable(kind, *rows, next)) return;
        Add(look, *rows, Severity::Warning, "compares-texts",
            fmt::format("Stays away across the end of a month: launched on {}, it is due next on {}, since its days "
                        "are compared as texts dd/mm/yyyy.",
                        Iso(launched), Iso(next)),
            "Make it a synchronised assignment (Diaria once a week, with a box for each day), or restart the asset's "
            "conventional assignments on the first of each month.");
    });
}

/// February has none of the days from the 29th on: a row that waits for one loses the month.
void CheckShortMonth(const Look& look, std::int16_t step) {
    const LaunchKind& kind = Zontara::calendar::kConventional;
    std::int32_t year = Zontara::CivilOf(look.request.on).year + 1;
    while (Zontara::CivilOf(Zontara::DateOf(year, 2, 29)).month == 2)
        ++year;
    const Date lastOfMonth = Zontara::DateOf(year, 2, 28);
    const Date launched = Zontara::DateOf(year, 2 - step, 1);
    const auto rows = RowsLaunchedOn(look, kind, launched);
    ForEach(*rows, [&] {
        const Frequency frequency = FrequencyIn(*rows);
        if (frequency < Frequency::Mensual || Zontara::calendar::StepOf(frequency) != step) return;
        const Date next = Zontara::AddDays(lastOfMonth, 1);
        if (IsDueIfReadable(kind, *rows, lastOfMonth) || !IsDueIfReadable(kind, *rows, next)) return;
        Add(look, *rows, Severity::Warning, "loses-short-months",
            fmt::format("Waits for a day that short months haven't (Programacion '{}'): not due on {} but on {}, "
                        "booked under {}, so that February's turn is lost.",
                        TextIn(*rows, "Programacion"), Iso(lastOfMonth), Iso(next),
                        Iso(kind.due(*rows, next).booking.value().On(next))),
            "Set the day in Programacion to 28 or less.");
    });
}

}  // namespace

void CalendarRules(const Look& look) {
    for (const LaunchKind& kind : {Zontara::calendar::kSynchronised, Zontara::calendar::kConventional}) {
        const auto rows = Rows(look, kind, Columns("Imputacion_Preventiva.Fecha_Ultimo_Lanzamiento", "Semana"));
        ForEach(*rows, [&] { CheckAhead(look, kind, *rows); });
        CheckAfterLaunch(look, kind);
    }
    CheckDaily(look);
    for (const Frequency frequency :
         {Frequency::Mensual, Frequency::Bimestral, Frequency::Trimestral, Frequency::Semestral, Frequency::Anual})
        CheckShortMonth(look, Zontara::calendar::StepOf(frequency));
}

}  // namespace planning::lint

#include "calendar/due.h"
#include "calendar/months.h"
#include "frame/convert.h"

#include <cmath>
#include <string>

namespace Zontara::calendar {

namespace {

/// Whether the week of the month agrees with the anchor. A fortnight has a second week two weeks off its anchor.
bool WeekOfMonthAgrees(const Recordset& row, Frequency frequency, Date day) {
    const std::optional<double> anchor = ComparableNumber(row, "Programacion");
    if (!anchor) return false;
    const double week = CalcularSemanaMes(day);
    return *anchor == week || (frequency == Frequency::Quincenal && std::abs(*anchor - week) == 2);
}

/// Only the number of the week is compared, whatever the year. The day is booked as soon as the weeks differ.
Due ShortFrequency(const Recordset& row, Frequency frequency, Date day) {
    if (!Differ(Value(WeekOfYear(day)), row.Valor("Semana"))) return {};
    const bool anchored = frequency == Frequency::Quincenal || frequency == Frequency::Mensual;
    const bool due = !anchored || WeekOfMonthAgrees(row, frequency, day);
    return {due ? StepOf(frequency) : std::int16_t{0}, Booking{}};
}

Due LongFrequency(const Recordset& row, Frequency frequency, Date day) {
    // Both are read before the months are counted, so that a bad row shows whether or not it is due.
    const std::int16_t month = ConvertTo<std::int16_t>(row.Valor("Programacion"));
    const Date last = ConvertTo<Date>(row.Valor("Fecha_Ultimo_Lanzamiento"));
    if (!CumpleFrecuenciaLarga(month, frequency, last, day)) return {};
    return {StepOf(frequency), Booking{Booking::Kind::DayOfMonth, 1}};
}

}  // namespace

Due DueSynchronised(const Recordset& row, Date day) {
    const Frequency frequency = FrequencyOf(ConvertTo<std::string>(row.Valor("frecuencia")));
    if (IsLong(frequency)) return LongFrequency(row, frequency, day);
    // A fixed date has no place on the grid of weeks.
    if (IsShort(frequency) && frequency != Frequency::Fecha) return ShortFrequency(row, frequency, day);
    return {};
}

}  // namespace Zontara::calendar

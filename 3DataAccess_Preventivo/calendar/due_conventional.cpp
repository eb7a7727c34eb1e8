#include "calendar/due.h"
#include "frame/convert.h"
#include "frame/raised_error.h"
#include "frame/regional.h"

#include <string>
#include <string_view>

namespace Zontara::calendar {

namespace {

/// A column's date as the text that "Fecha" and "Diaria" compare character by character, the day of the month first.
/// What is no date stays as it is, and null is the empty text.
std::string ComparedText(const Recordset& row, std::string_view column) {
    return Format(ToText(row.Valor(column)), "dd/mm/yyyy");
}
std::string ComparedText(Date day) { return Format(day, "dd/mm/yyyy"); }

Date LastLaunch(const Recordset& row) { return ConvertTo<Date>(row.Valor("Fecha_Ultimo_Lanzamiento")); }

/// An item of the anchor's list, from 0, as a whole number. An empty list has no item at all.
std::int16_t ItemOf(std::string_view list, int position) {
    if (list.empty()) Raise(RunTimeError::SubscriptOutOfRange);
    for (; position > 0; --position) {
        const std::size_t comma = list.find(',');
        if (comma == std::string_view::npos) Raise(RunTimeError::SubscriptOutOfRange);
        list.remove_prefix(comma + 1);
    }
    return ConvertTo<std::int16_t>(Value(list.substr(0, list.find(','))));
}

Due FixedDate(const Recordset& row, Date day) {
    const std::string anchor = ComparedText(row, "Programacion");
    if (ComparedText(day) < anchor || ComparedText(row, "Fecha_Ultimo_Lanzamiento") >= anchor) return {};
    return {StepOf(Frequency::Fecha), Booking{}};
}

Due Daily(const Recordset& row, Date day) {
    if (ComparedText(day) <= ComparedText(row, "Fecha_Ultimo_Lanzamiento")) return {};
    return {StepOf(Frequency::Diaria), Booking{}};
}

Due Weekly(const Recordset& row, Date day) {
    // Read both before either decides: a bad row fails even when it would not be due.
    const std::int32_t days = DaysBetween(LastLaunch(row), day);
    const std::optional<double> weekday = ComparableNumber(row, "Programacion");
    if (days < 7 || !weekday || WeekdayOf(day) < *weekday) return {};
    return {StepOf(Frequency::Semanal), Booking{Booking::Kind::Weekday, *weekday}};
}

Due Fortnightly(const Recordset& row, Date day) {
    // Nothing is launched on the last days of a long month.
    const std::int32_t dayOfMonth = CivilOf(day).day;
    if (DaysBetween(LastLaunch(row), day) < 15 || dayOfMonth >= 30) return {};
    return {StepOf(Frequency::Quincenal), Booking{Booking::Kind::DayOfMonth, dayOfMonth <= 15 ? 1.0 : 15.0}};
}

/// A month and longer: the months of the frequency have passed and the day has come, or more months have. The anchor
/// is read first, and of a long frequency its month too, though nothing depends on it: the last launch sets the month.
Due Monthly(const Recordset& row, Frequency frequency, Date day) {
    const std::string anchor = ConvertTo<std::string>(row.Valor("Programacion"));
    const std::int16_t anchorDay = ItemOf(anchor, 0);
    if (IsLong(frequency)) ItemOf(anchor, 1);
    const std::int32_t months = MonthsBetween(LastLaunch(row), day);
    const std::int16_t step = StepOf(frequency);
    if (months < step || (months == step && CivilOf(day).day < anchorDay)) return {};
    return {step, Booking{Booking::Kind::DayOfMonth, static_cast<double>(anchorDay)}};
}

}  // namespace

Due DueConventional(const Recordset& row, Date day) {
    const Frequency frequency = FrequencyOf(ConvertTo<std::string>(row.Valor("frecuencia")));
    switch (frequency) {
        case Frequency::Unknown:
            return {};
        case Frequency::Fecha:
            return FixedDate(row, day);
        case Frequency::Diaria:
            return Daily(row, day);
        case Frequency::Semanal:
            return Weekly(row, day);
        case Frequency::Quincenal:
            return Fortnightly(row, day);
        default:
            return Monthly(row, frequency, day);
    }
}

}  // namespace Zontara::calendar

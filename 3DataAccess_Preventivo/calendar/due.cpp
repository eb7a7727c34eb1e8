#include "calendar/due.h"

#include "frame/convert.h"

namespace Zontara::calendar {

Date Booking::On(Date Fecha_Lanzamiento) const {
    switch (kind) {
        case Kind::DayOfMonth: {
            const CivilDate day = CivilOf(Fecha_Lanzamiento);
            return DateOf(day.year, day.month, RoundToInt32(number));
        }
        case Kind::Weekday:
            return AddDays(Fecha_Lanzamiento, RoundToInt32(number - WeekdayOf(Fecha_Lanzamiento)));
        case Kind::LaunchDay:
            break;
    }
    return Fecha_Lanzamiento;
}

bool ReachesInterval(const Recordset& row, std::int16_t step) {
    return step >= ConvertTo<std::int16_t>(row.Valor("Intervalo_Frecuencia"));
}

std::optional<double> ComparableNumber(const Recordset& row, std::string_view column) {
    const Value value = row.Valor(column);
    if (value.IsNull()) return std::nullopt;
    return ConvertTo<double>(value);
}

}  // namespace Zontara::calendar

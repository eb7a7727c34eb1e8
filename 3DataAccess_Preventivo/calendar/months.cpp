#include "calendar/months.h"

#include "errors/trap.h"
#include "frame/convert.h"
#include "frame/raised_error.h"

#include <bitset>
#include <cstddef>

namespace Zontara::calendar {

namespace {

constexpr std::int16_t kMonthsOfYear = 12;

/// Tells when a walk over months has come full circle. Only months 1 to 12 can come back: beyond them a walk goes one
/// way, until it enters the year or leaves 16 bits.
class Walk {
public:
    bool ComesBackTo(std::int16_t month) {
        if (month < 1 || month > kMonthsOfYear) return false;
        const std::size_t position = static_cast<std::size_t>(month);
        if (visited_.test(position)) return true;
        visited_.set(position);
        return false;
    }

private:
    std::bitset<kMonthsOfYear + 1> visited_;
};

}  // namespace

std::uint8_t CalcularSemanaMes(Date FechaActual) {
    return TrapWithoutConnection(
        "CImputacionPreventiva.CalcularSemanaMes(FechaActual)",
        [&]() -> std::uint8_t {
            const std::int32_t day = CivilOf(FechaActual).day;
            if (day <= 7) return 1;
            if (day <= 14) return 2;
            return day <= 21 ? 3 : 4;
        },
        [&] { return Arguments(FechaActual); });
}

bool CumpleFrecuenciaLarga(std::int16_t mesProgramacion, Frequency frecuencia, Date Fecha_Ultimo_Lanzamiento,
                           Date Fecha_Lanzamiento) {
    if (!IsLong(frecuencia)) return false;
    const std::int16_t months = StepOf(frecuencia);
    if (MonthsBetween(Fecha_Ultimo_Lanzamiento, Fecha_Lanzamiento) < months) return false;
    const std::int16_t month = NarrowToInt16(CivilOf(Fecha_Lanzamiento).month);
    if (frecuencia == Frequency::Anual) return month == mesProgramacion;
    return MesCoordinaConProgramacion(month, mesProgramacion, months);
}

bool MesCoordinaConProgramacion(std::int16_t mesAEvaluar, std::int16_t mesProgramacion, std::int16_t frecuencia) {
    if (mesAEvaluar == mesProgramacion) return true;
    Walk walk;
    std::int16_t month = mesProgramacion;
    for (;;) {
        month = NarrowToInt16(std::int64_t{month} + frecuencia);
        if (month > kMonthsOfYear) month = NarrowToInt16(std::int64_t{month} - kMonthsOfYear);
        if (month == mesAEvaluar) return true;
        if (month == mesProgramacion || walk.ComesBackTo(month)) return false;
    }
}

std::int16_t ObtenerProgramacionAnteriorA(std::int16_t mesProgramacion, std::int16_t frecuencia) {
    const std::int16_t month = NarrowToInt16(std::int64_t{mesProgramacion} - frecuencia);
    if (month >= 1) return month;
    const std::int16_t distance = NarrowToInt16(-std::int64_t{month});
    return NarrowToInt16(std::int64_t{kMonthsOfYear} - distance);
}

std::int16_t ObtenerProgramacionMenorAMesActual(std::int16_t mesActual, std::int16_t mesProgramacion,
                                                std::int16_t frecuencia) {
    Walk walk;
    std::int16_t month = mesProgramacion;
    // The first step is always taken, and from then on a month that comes back would come back for ever.
    do {
        month = ObtenerProgramacionAnteriorA(month, frecuencia);
        if (walk.ComesBackTo(month)) Raise(RunTimeError::InvalidCall);
    } while (month > mesActual && month > mesProgramacion);
    return month;
}

}  // namespace Zontara::calendar

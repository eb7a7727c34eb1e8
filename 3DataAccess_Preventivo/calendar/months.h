#pragma once

#include "calendar/frequency.h"
#include "frame/date.h"

#include <cstdint>

/// Rules on weeks and months of the calendar assignments, as plain functions of their arguments.
namespace Zontara::calendar {

/// The week of the month by the day alone, whatever the weekday: 1 to 4, the days from the 22nd on being week 4.
std::uint8_t CalcularSemanaMes(Date FechaActual);

/// Whether enough months have passed since the last launch for that long frequency, and the month of the launch falls
/// on its cycle; for a year, whether it is the month itself. False for any other frequency.
bool CumpleFrecuenciaLarga(std::int16_t mesProgramacion, Frequency frecuencia, Date Fecha_Ultimo_Lanzamiento,
                           Date Fecha_Lanzamiento);

/// As the members of `CImputacionPreventiva` of the same names.
bool MesCoordinaConProgramacion(std::int16_t mesAEvaluar, std::int16_t mesProgramacion, std::int16_t frecuencia);
std::int16_t ObtenerProgramacionAnteriorA(std::int16_t mesProgramacion, std::int16_t frecuencia);
std::int16_t ObtenerProgramacionMenorAMesActual(std::int16_t mesActual, std::int16_t mesProgramacion,
                                                std::int16_t frecuencia);

}  // namespace Zontara::calendar

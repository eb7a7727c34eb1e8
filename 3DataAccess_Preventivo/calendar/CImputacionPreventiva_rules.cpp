#include "calendar/CImputacionPreventiva.h"
#include "calendar/due.h"
#include "calendar/frequency.h"
#include "calendar/months.h"
#include "errors/trap.h"
#include "frame/raised_error.h"

namespace Zontara {

bool CImputacionPreventiva::FrecuenciaValida(const std::string& frecuencia, const std::string& TipoFrecuencia) {
    return Trap(
        "CImputacionPreventiva.FrecuenciaValida(Frecuencia,TipoFrecuencia)",
        [&] {
            const calendar::Frequency frequency = calendar::FrequencyOf(frecuencia);
            if (TipoFrecuencia == "Breve") return calendar::IsShort(frequency);
            return TipoFrecuencia == "Larga" && calendar::IsLong(frequency);
        },
        [&] { return Arguments(frecuencia, TipoFrecuencia); });
}

bool CImputacionPreventiva::ImputacionEstaVencida(const Ref<Recordset>& rs, Date Fecha_Lanzamiento) {
    // The kind of the row isn't asked: a conventional one is answered for by the same rule.
    if (!rs) Raise(RunTimeError::ObjectNotSet);
    return calendar::ReachesInterval(*rs, calendar::DueSynchronised(*rs, Fecha_Lanzamiento).step);
}

bool CImputacionPreventiva::MesCoordinaConProgramacion(std::int16_t mesAEvaluar, std::int16_t mesProgramacion,
                                                       std::int16_t frecuencia) {
    return calendar::MesCoordinaConProgramacion(mesAEvaluar, mesProgramacion, frecuencia);
}

std::int16_t CImputacionPreventiva::ObtenerProgramacionAnteriorA(std::int16_t mesProgramacion,
                                                                 std::int16_t frecuencia) {
    return calendar::ObtenerProgramacionAnteriorA(mesProgramacion, frecuencia);
}

std::int16_t CImputacionPreventiva::ObtenerProgramacionMenorAMesActual(std::int16_t mesActual,
                                                                       std::int16_t mesProgramacion,
                                                                       std::int16_t frecuencia) {
    return calendar::ObtenerProgramacionMenorAMesActual(mesActual, mesProgramacion, frecuencia);
}

}  // namespace Zontara

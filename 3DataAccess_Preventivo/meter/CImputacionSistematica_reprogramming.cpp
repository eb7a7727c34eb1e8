#include "meter/CImputacionSistematica.h"

#include "errors/trap.h"
#include "frame/Libreria.h"
#include "frame/convert.h"
#include "frame/platform.h"
#include "frame/provider.h"

namespace Zontara {

namespace {

/// Whether an interval lies at or below another. One that isn't known doesn't.
bool AtOrBelow(const Value& interval, std::int32_t other) {
    return !interval.IsNull() && ConvertTo<double>(interval) <= other;
}

}  // namespace

void CImputacionSistematica::ReprogramarImputacionesDeunActivo(const std::string& IDActivo,
                                                               std::int32_t IdImputacionALanzar) {
    Trap(
        "CImputacionSistematica.ReprogramarImputacionesDeunActivo(IDActivo,IdImputacionALanzar)",
        [&] {
            const Ref<ServicioActivos> activos = Neighbours().NewServicioActivos();
            const Ref<Recordset> rs = ListarImputacionesDeUnActivo(IDActivo, "");
            if (Libreria::ExistenRegistros(rs)) {
                rs->MoverPrimero();
                Libreria::IniciarTransaccion();
                activos->FijarAcumulado(IDActivo, 0);
                for (; !rs->FinDeDatos(); rs->MoverSiguiente()) {
                    const auto imputacion = ConvertTo<std::int32_t>(rs->Valor("SC_Imputacion_Sistematica"));
                    ActualizarAcumuladoDeReferencia(imputacion, CurrentPlatform().Now(), 0);
                    if (imputacion == IdImputacionALanzar) {
                        activos->FijarAcumulado(IDActivo, ConvertTo<std::int32_t>(rs->Valor("Lectura_Limite")));
                    }
                }
                Libreria::TerminarTransaccion();
            }
            activoReprogramado_.Send(IDActivo);
        },
        [&] { return Arguments(IDActivo, IdImputacionALanzar); });
}

void CImputacionSistematica::AdelantarMantenimiento(std::int32_t IdImputacion, const std::string& IDActivo) {
    Trap(
        "CImputacionSistematica.AdelantarMantenimiento(IDImputacion,IDActivo)",
        [&] {
            const Ref<ServicioActivos> activos = Neighbours().NewServicioActivos();
            // Neither row is tested for: the field of a row that isn't there raises, and nothing has changed so far.
            const Ref<Recordset> activo = activos->BuscarActivo(IDActivo, "Acumulado_Lectura");
            const auto acumulado = ConvertTo<std::int32_t>(activo->Valor("Acumulado_Lectura"));
            const auto elegida =
                ConvertTo<std::int32_t>(Buscar(IdImputacion, " Lectura_Limite ")->Valor("Lectura_Limite"));
            const Ref<Recordset> rs =
                ListarImputacionesDeUnActivo(IDActivo, "SC_Imputacion_Sistematica,Lectura_Limite,Acumulado_Lectura");
            bool alcanzada = false;
            if (Libreria::ExistenRegistros(rs)) {
                Libreria::IniciarTransaccion();
                for (; !rs->FinDeDatos(); rs->MoverSiguiente()) {
                    const Value limite = rs->Valor("Lectura_Limite");
                    alcanzada = alcanzada || AtOrBelow(limite, elegida);
                    if (!alcanzada) continue;
                    const std::int64_t referencia = std::int64_t{acumulado} - ConvertTo<std::int32_t>(limite);
                    ActualizarAcumuladoDeReferencia(ConvertTo<std::int32_t>(rs->Valor("SC_Imputacion_Sistematica")),
                                                    CurrentPlatform().Now(), NarrowToInt32(referencia));
                }
                Libreria::TerminarTransaccion();
            }
            activoReprogramado_.Send(IDActivo);
        },
        [&] { return Arguments(IdImputacion, IDActivo); });
}

}  // namespace Zontara

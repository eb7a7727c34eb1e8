#include "calendar/CImputacionPreventiva.h"
#include "calendar/due.h"
#include "calendar/paperwork.h"
#include "errors/trap.h"
#include "frame/Libreria.h"
#include "frame/convert.h"
#include "frame/creation.h"
#include "frame/platform.h"
#include "frame/sql.h"

#include <optional>

namespace Zontara {

namespace {

/// The pieces that move the cycle of a row, or end the row with its cycle. Nothing for a row without a cycle.
void AppendCycle(std::string& update, const Recordset& row, std::int16_t step) {
    const std::optional<double> length = calendar::ComparableNumber(row, "Numero_Repeticion_Ciclo");
    const std::optional<double> ends = calendar::ComparableNumber(row, "Finaliza");
    if (!length || *length <= 0 || !ends || *ends == 0) return;
    // With an unknown count nothing is reached, and the database keeps it unknown.
    const std::optional<double> done = calendar::ComparableNumber(row, "Acumulado_Ciclo");
    if (done && *done + step >= *length) {
        Append(update, {" Anulada = 1, Acumulado_Ciclo =0, "});
    } else {
        Append(update, {" acumulado_Ciclo = acumulado_Ciclo + ", step, ", "});
    }
}

/// Books the launch of a row: its day, the week of that day and the cycle.
void BookLaunch(const Recordset& row, Date booked, std::int16_t step) {
    std::string update = "UPDATE Imputacion_Preventiva SET ";
    AppendCycle(update, row, step);
    Append(update,
           {" Fecha_Ultimo_Lanzamiento ='", booked, "' , ", " Semana = ", WeekOfYear(booked),
            " Where SC_Imputacion_Preventiva =", ConvertTo<std::int32_t>(row.Valor("SC_Imputacion_Preventiva"))});
    Libreria::Ejecutar(update);
}

/// Runs the work, and if it fails undoes everything that is open before the failure goes on.
template <class Work> std::int32_t OrAbort(Work work) {
    try {
        return work();
    } catch (...) {
        try {
            Libreria::AbortarTransaccion();
        } catch (...) {
            // Nothing can be done about it here, and it must not hide the failure in flight.
        }
        throw;
    }
}

}  // namespace

std::int32_t CImputacionPreventiva::LanzarPreventivo(Date Fecha_Lanzamiento, std::int32_t SC_Usuario,
                                                     const std::string& TipoFrecuencia,
                                                     const Ref<CConfiguracionOTBoletin>& ConfiguracionOT,
                                                     [[maybe_unused]] std::int32_t CodigoProyecto) {
    // Project 0: this launch has always taken all of them.
    return Launch(calendar::kSynchronised, Fecha_Lanzamiento, SC_Usuario, TipoFrecuencia, ConfiguracionOT, 0);
}

std::int32_t CImputacionPreventiva::LanzarPreventivoConvensional(Date Fecha_Lanzamiento, std::int32_t SC_Usuario,
                                                                 const std::string& TipoFrecuencia,
                                                                 const Ref<CConfiguracionOTBoletin>& ConfiguracionOT,
                                                                 std::int32_t CodigoProyecto) {
    return Launch(calendar::kConventional, Fecha_Lanzamiento, SC_Usuario, TipoFrecuencia, ConfiguracionOT,
                  CodigoProyecto);
}

std::int32_t CImputacionPreventiva::Launch(const calendar::LaunchKind& kind, Date Fecha_Lanzamiento,
                                           std::int32_t SC_Usuario, const std::string& TipoFrecuencia,
                                           const Ref<CConfiguracionOTBoletin>& ConfiguracionOT,
                                           std::int32_t CodigoProyecto) {
    return Trap(
        "CImputacionPreventiva.LanzarPreventivo(Fecha_Lanzamiento,SC_Usuario,TipoFrecuencia)",
        [&] {
            return OrAbort(
                [&] { return LaunchRows(kind, Fecha_Lanzamiento, SC_Usuario, ConfiguracionOT, CodigoProyecto); });
        },
        [&] { return Arguments(Fecha_Lanzamiento, SC_Usuario, TipoFrecuencia); });
}

std::int32_t CImputacionPreventiva::LaunchRows(const calendar::LaunchKind& kind, Date Fecha_Lanzamiento,
                                               std::int32_t SC_Usuario,
                                               const Ref<CConfiguracionOTBoletin>& ConfiguracionOT,
                                               std::int32_t CodigoProyecto) {
    Ref<Recordset> rows = SeleccionarActivas(Fecha_Lanzamiento, "", kind.synchronised, "", true, CodigoProyecto, 0);
    if (!Libreria::ExistenRegistros(rows)) {
        Release(rows);
        return 0;
    }
    Announce("ImputacionesRecuperadas", rows->TotalRegistros());
    rows->MoverPrimero();
    Libreria::IniciarTransaccion();

    const bool intoOrders = ConfiguracionOT != nullptr;
    calendar::OrderWriter orders(ConfiguracionOT);
    // The day stays from row to row: a row that books none is launched under the day that was booked before it.
    Date booked;
    std::int32_t visited = 0;
    std::int32_t launched = 0;
    for (; !rows->FinDeDatos(); rows->MoverSiguiente()) {
        Announce("ProcesandoImputacion", ++visited);
        // Not due, a row is passed over and stays as it is; bad, it ends the whole launch.
        const calendar::Due due = kind.due(*rows, Fecha_Lanzamiento);
        if (due.booking) booked = due.booking->On(Fecha_Lanzamiento);
        if (!calendar::ReachesInterval(*rows, due.step)) continue;

        const std::string frecuencia = ConvertTo<std::string>(rows->Valor("frecuencia"));
        if (intoOrders) {
            orders.Write(*rows, booked, frecuencia);
        } else {
            calendar::GeneroBoletin(rows, booked, SC_Usuario, frecuencia);
        }
        ++launched;
        BookLaunch(*rows, booked, due.step);
    }

    Libreria::TerminarTransaccion();
    Release(rows);
    otPreventivaGenerada_.Send();
    orders.Release();
    return launched;
}

void CImputacionPreventiva::Announce(std::string_view event, std::int32_t number) {
    RaiseEvent(event, Value(number));
    CurrentPlatform().Yield();
}

}  // namespace Zontara

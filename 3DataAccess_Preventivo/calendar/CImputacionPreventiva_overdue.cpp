#include "calendar/CImputacionPreventiva.h"
#include "calendar/due.h"
#include "frame/Libreria.h"
#include "frame/creation.h"
#include "frame/platform.h"
#include "frame/regional.h"
#include "frame/sql.h"

namespace Zontara {

bool CImputacionPreventiva::ActivoTieneMantenimientoVencido(const std::string& IDActivo,
                                                            [[maybe_unused]] std::int32_t IdImputacion,
                                                            const std::string& fechaSimulada) {
    // One synchronised assignment can't be asked for: the answer is always that of the asset.
    return AnyDue(calendar::kSynchronised, IDActivo, 0, fechaSimulada);
}

bool CImputacionPreventiva::ActivoTieneMantenimientoConvencionalVencido(const std::string& IDActivo,
                                                                        std::int32_t IdImputacion,
                                                                        const std::string& fechaSimulada) {
    return AnyDue(calendar::kConventional, IDActivo, IdImputacion, fechaSimulada);
}

bool CImputacionPreventiva::AnyDue(const calendar::LaunchKind& kind, const std::string& IDActivo,
                                   std::int32_t IdImputacion, const std::string& fechaSimulada) {
    const Date day = fechaSimulada.empty() ? CurrentPlatform().Now() : ToDate(fechaSimulada);
    // Unlike a launch, the question takes assets out of service too.
    Ref<Recordset> rows = SeleccionarActivas(day, "", kind.synchronised, IDActivo, false, 0, IdImputacion);
    bool due = false;
    if (Libreria::ExistenRegistros(rows)) {
        for (rows->MoverPrimero(); !due && !rows->FinDeDatos(); rows->MoverSiguiente()) {
            due = calendar::ReachesInterval(*rows, kind.due(*rows, day).step);
        }
    }
    Release(rows);
    return due;
}

void CImputacionPreventiva::ReiniciarTareaNoSincronizada(const std::string& IDActivo, Date Fecha_Reinicio) {
    Libreria::Ejecutar(Sql({"  UPDATE Imputacion_Preventiva SET ", " Fecha_Ultimo_Lanzamiento ='", Fecha_Reinicio, "' ",
                            " WHERE  ID_Activo ='", IDActivo, "' and es_sincronizada=0"}));
}

}  // namespace Zontara

#include "meter/CImputacionSistematica.h"

#include "errors/trap.h"
#include "frame/Libreria.h"
#include "frame/convert.h"
#include "frame/sql.h"

namespace Zontara {

namespace {

/// What is left when the larger of an assignment's interval and a candidate is divided by the smaller; 1 when the
/// divisor is 0.
std::int32_t Remainder(std::int32_t interval, std::int32_t candidate) {
    if (interval > candidate) return candidate == 0 ? 1 : interval % candidate;
    return interval == 0 ? 1 : candidate % interval;
}

}  // namespace

void CImputacionSistematica::Resetear(std::int32_t SC_Imputacion_Sistematica, Date Fecha_Lanzamiento) {
    Trap(
        "CImputacionSistematica.Resetear(SC_Imputacion_Sistematica,Fecha_Lanzamiento)",
        [&] {
            Libreria::Ejecutar(
                Sql({"  UPDATE Imputacion_Sistematica SET ", "Acumulado_Lectura = 0 , ", "Fecha_Ultimo_Lanzamiento ='",
                     Fecha_Lanzamiento, "' ", " WHERE SC_Imputacion_Sistematica =", SC_Imputacion_Sistematica}));
            catalogoModificado_.Send();
        },
        [&] { return Arguments(SC_Imputacion_Sistematica, Fecha_Lanzamiento); });
}

void CImputacionSistematica::ActualizarAcumulado(const std::string& ID_Activo, std::int32_t Unidad_Lectura,
                                                 Date Fecha_Lectura, float Valor_Real_Lectura, float Valor_Lectura) {
    Trap(
        "CImputacionSistematica.ActualizarAcumulado(ID_Activo,Unidad_Lectura,Fecha_Lectura,"
        "Valor_Real_Lectura,Valor_Lectura)",
        [&] {
            Libreria::Ejecutar(
                Sql({"Update activo SET ", " Acumulado_Lectura = Acumulado_Lectura +", Valor_Real_Lectura,
                     ", Ultima_Lectura = ", Valor_Lectura, " Where id_activo ='", ID_Activo, "'"}));
        },
        [&] { return Arguments(ID_Activo, Unidad_Lectura, Fecha_Lectura, Valor_Real_Lectura, Valor_Lectura); });
}

void CImputacionSistematica::ActualizarAcumuladoDeReferencia(std::int32_t SC_Imputacion_Sistematica,
                                                             Date Fecha_Lanzamiento, std::int32_t NuevoAcumulado) {
    Trap(
        "CImputacionSistematica.ActualizarAcumuladoDeReferencia(SC_Imputacion_Sistematica,"
        "Fecha_Lanzamiento,NuevoAcumulado)",
        [&] {
            Libreria::Ejecutar(Sql({"  UPDATE Imputacion_Sistematica SET ", "Ultimo_Acumulado = ", NuevoAcumulado,
                                    " WHERE SC_Imputacion_Sistematica =", SC_Imputacion_Sistematica}));
        },
        [&] { return Arguments(SC_Imputacion_Sistematica, Fecha_Lanzamiento, NuevoAcumulado); });
}

bool CImputacionSistematica::EsProgramacionPrima(std::int32_t Programacion, const std::string& IDActivo) {
    return Trap(
        "CImputacionSistematica.EsProgramacionPrima(Programacion,IDActivo)",
        [&] {
            const Ref<Recordset> rs = ListarImputacionesDeUnActivo(IDActivo, " Lectura_Limite ");
            if (!Libreria::ExistenRegistros(rs)) return true;
            for (rs->MoverPrimero(); !rs->FinDeDatos(); rs->MoverSiguiente()) {
                if (Remainder(ConvertTo<std::int32_t>(rs->Valor("Lectura_Limite")), Programacion) != 0) return false;
            }
            return true;
        },
        [&] { return Arguments(Programacion, IDActivo); });
}

bool CImputacionSistematica::ActivoNecesitaMantenimiento(const std::string& ID_Activo, std::int32_t IdImputacion) {
    return Trap(
        "CImputacionSistematica.ActivoNecesitaMantenimiento(ID_Activo)",
        [&] {
            std::string statement = Sql({"select Activo.id_Activo from Imputacion_Sistematica, Activo ",
                                         " where  Imputacion_Sistematica.ID_Activo = Activo.ID_Activo  and ",
                                         " (acumulado_lectura-ultimo_acumulado)>=lectura_limite and ",
                                         " Activo.id_Activo ='", ID_Activo, "'"});
            if (IdImputacion != 0) {
                Append(statement, {" and Imputacion_Sistematica.sc_Imputacion_Sistematica=", IdImputacion});
            }
            return Libreria::ExistenRegistros(Libreria::Abierto(statement));
        },
        [&] { return Arguments(ID_Activo); });
}

bool CImputacionSistematica::ElActivoTieneAproximacionesVencidas(const std::string& IDActivo) {
    return Trap(
        "CImputacionSistematica.ElActivoTieneAproximacionesVencidas(IDActivo)",
        [&] {
            const Ref<Recordset> rs = Libreria::Abierto(
                Sql({"SELECT  1 from Activo,Imputacion_Sistematica ", " WHERE Activo.ID_Activo='", IDActivo, "' and ",
                     " Imputacion_Sistematica.ID_Activo = Activo.ID_Activo  and",
                     " Activo.Acumulado_Lectura >=", " Imputacion_Sistematica.Aproximacion_Lectura and ",
                     " Imputacion_Sistematica.Aproximacion_Lectura>0 "}));
            return !rs->FinDeDatos();
        },
        [&] { return Arguments(IDActivo); });
}

}  // namespace Zontara

#include "calendar/CImputacionPreventiva.h"
#include "errors/trap.h"
#include "frame/Libreria.h"
#include "frame/creation.h"
#include "frame/sql.h"

#include <string_view>

namespace Zontara {

namespace {

// The default columns of the selections that have any. `SeleccionarPorGama` and `SeleccionarTodos` have none: without
// the caller's columns their statement is refused. `SeleccionarActivas` reads what a launch needs; its executor is a
// mark in place of a name, which goes into the text of work orders.

constexpr std::string_view kHeadPorEquipo =
    "SELECT Activo.ID_Activo,Activo.Equipo_Parado,"
    "SC_Imputacion_Preventiva ,"
    "Gama.SC_Gama ,"
    "Fecha_Imputacion ,"
    "Anulada ,"
    "SC_Usuario ,"
    "Fecha_Inicio ,"
    "Intervalo_Frecuencia ,"
    "Numero_Repeticion_Ciclo ,"
    "Acumulado_Ciclo ,"
    "Imputacion_Preventiva.Fecha_Ultimo_Lanzamiento ,"
    "Fecha_Ultima_Modificacion ,"
    "Causa_Modificacion,Frecuencia, "
    "Programacion,Semana,Es_Sincronizada,finaliza,Descripcion_Breve ";

constexpr std::string_view kHeadActivas =
    "SELECT Activo.ID_Activo,"
    "SC_Imputacion_Preventiva ,Imputacion_Preventiva.SC_Imputacion_Preventiva as ID,"
    "Gama.SC_Gama ,Gama.Descripcion,"
    "Fecha_Imputacion ,"
    "Anulada ,"
    "SC_Usuario ,"
    "Frecuencia ,"
    "Intervalo_Frecuencia ,"
    "Numero_Repeticion_Ciclo ,"
    "Acumulado_Ciclo ,"
    "Fecha_Inicio ,Numero_Gama,'---' EjecutorGama,"
    "Fecha_Ultima_Modificacion , Imputacion_Preventiva.Fecha_Ultimo_Lanzamiento,"
    "Causa_Modificacion ,"
    "Semana,Finaliza, "
    "Programacion ";

constexpr std::string_view kHeadBuscar =
    "SELECT Activo.ID_Activo,Activo.Equipo_Parado,"
    "SC_Imputacion_Preventiva ,"
    "Gama.SC_Gama ,Gama.Numero_Gama,"
    "Fecha_Imputacion ,"
    "Ejecutor_Gama.Descripcion as Descripcion_Ejecutor,"
    "Grupo_Gama.Descripcion as Descripcion_Grupo,"
    " Activo.Descripcion as Descripcion_Equipo, "
    "Anulada ,"
    "SC_Usuario ,"
    "Fecha_Inicio ,"
    "Frecuencia ,"
    "Intervalo_Frecuencia ,Numero_Repeticion_Ciclo,"
    "Acumulado_Ciclo ,"
    "Imputacion_Preventiva.Fecha_Ultimo_Lanzamiento ,"
    "Fecha_Ultima_Modificacion ,"
    "Causa_Modificacion,Texto_Mantenimiento,Finaliza, "
    " Programacion ,semana ";

}  // namespace

Ref<Recordset> CImputacionPreventiva::SeleccionarPorGama(std::int32_t SC_Gama, const std::string& sColumnas) {
    return Trap(
        "CImputacionPreventiva.SeleccionarPorGama(SC_Gama,sColumnas)",
        [&] {
            return Libreria::Abierto(
                Sql({"Select ", sColumnas, "FROM Imputacion_Preventiva ,", "Activo,Gama,Grupo_Gama,Ejecutor_Gama ",
                     " WHERE ", " Imputacion_Preventiva.ID_Activo = Activo.ID_Activo  and",
                     " Imputacion_Preventiva.SC_Gama = Gama.SC_Gama and ",
                     " Grupo_Gama.SC_Grupo_Gama = Gama.SC_Grupo_Gama and ",
                     " Ejecutor_Gama.SC_Ejecutor_Gama = Gama.SC_Ejecutor_Gama and ", " Gama.SC_Gama =", SC_Gama}));
        },
        [&] { return Arguments(SC_Gama, sColumnas); });
}

Ref<Recordset> CImputacionPreventiva::SeleccionarPorEquipo(const std::string& ID_Activo, const std::string& sColumnas,
                                                           const std::string& frecuencia) {
    return Trap(
        "CImputacionPreventiva.SeleccionarPorEquipo(ID_Activo,sColumnas)",
        [&] {
            std::string statement = SelectHead(kHeadPorEquipo, sColumnas);
            Append(statement, {" FROM Imputacion_Preventiva ,", "Activo,Gama,Grupo_Gama ", " WHERE ",
                               " Imputacion_Preventiva.ID_Activo = Activo.ID_Activo  and",
                               " Imputacion_Preventiva.SC_Gama = Gama.SC_Gama and ",
                               " Grupo_Gama.SC_Grupo_Gama = Gama.SC_Grupo_Gama ", "  "});
            // By prefix: the key of a parent finds everything under it.
            if (!ID_Activo.empty()) {
                Append(statement, {" and Imputacion_Preventiva.ID_Activo like '", ID_Activo, "%'"});
            }
            if (!frecuencia.empty()) {
                Append(statement, {" and Imputacion_Preventiva.frecuencia = '", frecuencia, "'"});
            }
            return Libreria::Abierto(statement);
        },
        [&] { return Arguments(ID_Activo, sColumnas); });
}

Ref<Recordset> CImputacionPreventiva::SeleccionarActivas(Date Fecha_Lanzamiento, const std::string& sColumnas,
                                                         bool LasSincronizadas, const std::string& IDActivo,
                                                         bool SoloActivoEnServicio, std::int32_t CodigoProyecto,
                                                         std::int32_t IdImputacion) {
    return Trap(
        "CImputacionPreventiva.SeleccionarActivas(Fecha_Lanzamiento,sColumnas)",
        [&] {
            std::string statement = SelectHead(kHeadActivas, sColumnas);
            Append(statement, {" FROM Imputacion_Preventiva, Activo,Gama ", " WHERE Anulada =0 and Fecha_Inicio <= '",
                               Fecha_Lanzamiento, "' and ", "Gama.sc_gama =Imputacion_Preventiva.sc_gama and ",
                               " Imputacion_Preventiva.id_activo =Activo.id_activo ",
                               SoloActivoEnServicio ? " and activo.estatus_actual not in (3,4,5,7) " : "",
                               LasSincronizadas ? " and Es_Sincronizada=1 " : " and Es_Sincronizada=0  "});
            if (CodigoProyecto > 0) Append(statement, {" and activo.sc_proyecto=", CodigoProyecto});
            // A blank stands where a filter is left out.
            if (IDActivo.empty()) {
                Append(statement, {" "});
            } else {
                Append(statement, {" and Activo.ID_Activo='", IDActivo, "'"});
            }
            if (IdImputacion == 0) {
                Append(statement, {" "});
            } else {
                Append(statement, {" and Imputacion_Preventiva.SC_Imputacion_Preventiva=", IdImputacion});
            }
            return Libreria::Abierto(statement);
        },
        [&] { return Arguments(Fecha_Lanzamiento, sColumnas); });
}

Ref<Recordset> CImputacionPreventiva::Buscar(std::int32_t SC_Imputacion_Preventiva, const std::string& sColumnas) {
    return Trap(
        "CImputacionPreventiva.Buscar(SC_Imputacion_Preventiva,sColumnas)",
        [&] {
            std::string statement = SelectHead(kHeadBuscar, sColumnas);
            Append(statement, {"FROM Imputacion_Preventiva,", "Activo,Gama,Grupo_Gama,Ejecutor_Gama ", " WHERE ",
                               " Imputacion_Preventiva.ID_Activo = Activo.ID_Activo  and",
                               " Gama.SC_Gama = Imputacion_Preventiva.SC_Gama and ",
                               " Grupo_Gama.SC_Grupo_Gama = Gama.SC_Grupo_Gama and ",
                               " Ejecutor_Gama.SC_Ejecutor_Gama = Gama.SC_Ejecutor_Gama and ",
                               " Imputacion_Preventiva.SC_Imputacion_Preventiva =", SC_Imputacion_Preventiva});
            return Libreria::Abierto(statement);
        },
        [&] { return Arguments(SC_Imputacion_Preventiva, sColumnas); });
}

bool CImputacionPreventiva::Existe(std::uint8_t NumeroGama, std::int32_t CodigoGrupo, const std::string& IDEquipo) {
    return Trap(
        "CImputacionPreventiva.Existe(NumeroGama,CodigoGrupo,IDEquipo)",
        [&] {
            Ref<Recordset> rs = Libreria::Abierto(Sql(
                {"SELECT SC_Imputacion_Preventiva ", " FROM Imputacion_Preventiva,Gama ", " WHERE ",
                 " Gama.SC_Gama = Imputacion_Preventiva.SC_Gama and ", " Gama.Numero_Gama =", NumeroGama,
                 " and Gama.SC_Grupo_Gama =", CodigoGrupo, " and Imputacion_Preventiva.ID_Activo ='", IDEquipo, "'"}));
            const bool exists = Libreria::ExistenRegistros(rs);
            Release(rs);
            return exists;
        },
        [&] { return Arguments(NumeroGama, CodigoGrupo, IDEquipo); });
}

Ref<Recordset> CImputacionPreventiva::SeleccionarTodos(const std::string& sCondicion, const std::string& sColumnas) {
    return Trap(
        "CImputacionPreventiva.SeleccionarTodos(sCondicion,sColumnas)",
        [&] {
            std::string statement =
                Sql({"Select ", sColumnas, "FROM Imputacion_Preventiva ,", "Activo,Gama,Grupo_Gama,Ejecutor_Gama ",
                     " WHERE ", " Imputacion_Preventiva.ID_Activo = Activo.ID_Activo  and",
                     " Imputacion_Preventiva.SC_Gama = Gama.SC_Gama and ",
                     " Grupo_Gama.SC_Grupo_Gama = Gama.SC_Grupo_Gama and ",
                     " Ejecutor_Gama.SC_Ejecutor_Gama = Gama.SC_Ejecutor_Gama "});
            if (!sCondicion.empty()) Append(statement, {" and ", sCondicion});
            return Libreria::Abierto(statement);
        },
        [&] { return Arguments(sCondicion, sColumnas); });
}

}  // namespace Zontara

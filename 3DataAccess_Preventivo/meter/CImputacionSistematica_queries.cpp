#include "meter/CImputacionSistematica.h"

#include "errors/trap.h"
#include "frame/Libreria.h"
#include "frame/convert.h"
#include "frame/sql.h"

namespace Zontara {

namespace {

/// Default columns of the selections that join the reading unit. They differ in the task's column and the last ones.
std::string HeadWithUnit(std::string_view task, std::string_view last, std::string_view sColumnas) {
    if (!sColumnas.empty()) return SelectHead({}, sColumnas);
    return Sql(
        {"SELECT Activo.ID_Activo,Activo.Equipo_Parado,"
         "SC_Imputacion_Sistematica ,",
         task,
         "Fecha_Imputacion ,"
         "Anulada ,"
         "SC_Usuario ,"
         "Fecha_Inicio ,"
         "Fecha_Fin ,"
         "Acumulado_Lectura ,"
         "Unidad_Lectura.SC_Unidad_Lectura ,"
         "Ultima_Lectura ,Lectura_Limite,"
         "Aproximacion_Lectura ,"
         "Fecha_Ultimo_Lanzamiento ,"
         "Fecha_Ultima_Modificacion ,",
         last});
}

constexpr std::string_view kTask = "SC_Gama ,";
constexpr std::string_view kTaskOfTask = "Gama.SC_Gama ,";
constexpr std::string_view kCause = "Causa_Modificacion ";
constexpr std::string_view kCauseAndReference = "Causa_Modificacion,Ultimo_Acumulado ";

constexpr std::string_view kHeadOfActivas =
    "SELECT  Activo.ID_Activo,Activo.Equipo_Parado,"
    "SC_Imputacion_Sistematica ,"
    "SC_Gama ,"
    "Fecha_Imputacion ,"
    "Anulada ,"
    "SC_Usuario ,"
    "Fecha_Inicio ,"
    "Fecha_Fin ,"
    "Acumulado_Lectura ,Lectura_Limite,"
    "SC_Unidad_Lectura ,"
    "Ultima_Lectura ,"
    "Aproximacion_Lectura ,"
    "Fecha_Ultimo_Lanzamiento ,"
    "Fecha_Ultima_Modificacion ,"
    "Causa_Modificacion ";

constexpr std::string_view kHeadOfUnActivo =
    "SELECT  Activo.ID_Activo,Activo.Equipo_Parado,"
    "SC_Imputacion_Sistematica ,"
    "Gama.SC_Gama ,Gama.Descripcion,"
    "Fecha_Imputacion ,"
    "Anulada ,"
    "SC_Usuario ,"
    "Fecha_Inicio ,"
    "Fecha_Fin ,"
    "Acumulado_Lectura ,Lectura_Limite,"
    "Activo.SC_Unidad_Lectura ,"
    "Ultima_Lectura ,"
    "Aproximacion_Lectura ,"
    "Fecha_Ultimo_Lanzamiento ,"
    "Fecha_Ultima_Modificacion ,"
    "Causa_Modificacion,Ultimo_Acumulado ";

// The executor's description comes from a table that `Buscar` doesn't join, so that the engine refuses these columns.
constexpr std::string_view kHeadOfBuscar =
    "SELECT  Activo.ID_Activo,Activo.Equipo_Parado,"
    "SC_Imputacion_Sistematica ,"
    "Gama.SC_Gama ,Gama.Numero_Gama,"
    "Fecha_Imputacion ,"
    "Ejecutor_Gama.Descripcion as Descripcion_Ejecutor,"
    "Grupo_Gama.Descripcion as Descripcion_Grupo,"
    " Activo.Descripcion as Descripcion_Equipo, "
    "Anulada ,"
    "SC_Usuario ,"
    "Fecha_Inicio ,"
    "Fecha_Fin ,"
    "Acumulado_Lectura ,Lectura_Limite,"
    "Activo.SC_Unidad_Lectura ,Ultimo_Acumulado,"
    "Ultima_Lectura ,"
    "Aproximacion_Lectura ,"
    "Fecha_Ultimo_Lanzamiento ,"
    "Fecha_Ultima_Modificacion ,"
    "Causa_Modificacion,Texto_Mantenimiento,Finaliza ";

/// Start of the tails that join asset, task, group, executor and unit.
constexpr std::string_view kJoin =
    "FROM Imputacion_Sistematica ,"
    "Activo,Gama,Grupo_Gama,Ejecutor_Gama,Unidad_Lectura "
    " WHERE "
    " Imputacion_Sistematica.ID_Activo = Activo.ID_Activo  and"
    " Imputacion_Sistematica.SC_Gama = Gama.SC_Gama and "
    " Activo.SC_Unidad_Lectura = "
    " Unidad_Lectura.SC_Unidad_Lectura and "
    " Grupo_Gama.SC_Grupo_Gama = Gama.SC_Grupo_Gama and ";

std::string AssetFilter(const std::string& ID_Activo) {
    if (ID_Activo.empty()) return {};
    return Sql({" and Imputacion_Sistematica.ID_Activo like '", ID_Activo, "%' "});
}

}  // namespace

Ref<Recordset> CImputacionSistematica::SeleccionarPorGama(std::int32_t SC_Gama, const std::string& sColumnas) {
    return Trap(
        "CImputacionSistematica.SeleccionarPorGama(SC_Gama,sColumnas)",
        [&] {
            return Libreria::Abierto(
                Sql({HeadWithUnit(kTask, kCause, sColumnas), kJoin,
                     " Ejecutor_Gama.SC_Ejecutor_Gama = Gama.SC_Ejecutor_Gama and ", " Gama.SC_Gama =", SC_Gama}));
        },
        [&] { return Arguments(SC_Gama, sColumnas); });
}

Ref<Recordset> CImputacionSistematica::SeleccionarPorEquipo(const std::string& ID_Activo,
                                                            const std::string& sColumnas) {
    return Trap(
        "CImputacionSistematica.SeleccionarPorEquipo(ID_Activo,sColumnas)",
        [&] {
            return Libreria::Abierto(
                Sql({HeadWithUnit(kTaskOfTask, kCauseAndReference, sColumnas),
                     "FROM Imputacion_Sistematica ,"
                     "Activo,Gama,Grupo_Gama,Unidad_Lectura "
                     " WHERE "
                     " Imputacion_Sistematica.ID_Activo = Activo.ID_Activo  and"
                     " Imputacion_Sistematica.SC_Gama = Gama.SC_Gama and "
                     " Activo.SC_Unidad_Lectura = "
                     " Unidad_Lectura.SC_Unidad_Lectura and "
                     " Grupo_Gama.SC_Grupo_Gama = Gama.SC_Grupo_Gama  "
                     "  ",
                     AssetFilter(ID_Activo), " order by Activo.ID_Activo,Imputacion_Sistematica.Lectura_Limite DESC"}));
        },
        [&] { return Arguments(ID_Activo, sColumnas); });
}

Ref<Recordset> CImputacionSistematica::ListarImputacionesVencidas(const std::string& ID_Activo,
                                                                  const std::string& sColumnas) {
    return Trap(
        "CImputacionSistematica.ListarImputacionesVencidas(ID_Activo,sColumnas)",
        [&] {
            return Libreria::Abierto(
                Sql({HeadWithUnit(kTask, kCauseAndReference, sColumnas), kJoin,
                     " Ejecutor_Gama.SC_Ejecutor_Gama = Gama.SC_Ejecutor_Gama ", AssetFilter(ID_Activo),
                     " and (Acumulado_Lectura - Ultimo_Acumulado) >= Lectura_Limite ",
                     " order by Activo.ID_Activo,Imputacion_Sistematica.Lectura_Limite DESC"}));
        },
        [&] { return Arguments(ID_Activo, sColumnas); });
}

Ref<Recordset> CImputacionSistematica::SeleccionarActivas(Date Fecha_Lanzamiento, const std::string& sColumnas,
                                                          const std::string& ID_Capitulo) {
    return Trap(
        "CImputacionSistematica.SeleccionarActivas(Fecha_Lanzamiento,sColumnas,ID_Capitulo)",
        [&] {
            std::string statement = Sql({SelectHead(kHeadOfActivas, sColumnas),
                                         " FROM Imputacion_Sistematica,"
                                         "Activo, Gama,Grupo_Gama "
                                         " WHERE "
                                         " Imputacion_Sistematica.ID_Activo = Activo.ID_Activo  and"
                                         " Gama.SC_Gama = Imputacion_Sistematica.SC_Gama and "
                                         " Grupo_Gama.SC_Grupo_Gama = Gama.SC_Grupo_Gama and "
                                         " Anulada = 0 and Fecha_Inicio <='",
                                         Fecha_Lanzamiento, "'  "});
            if (!ID_Capitulo.empty()) {
                Append(statement, {" and substring(Imputacion_Sistematica.ID_Activo,1,1) ='", ID_Capitulo, "' "});
            }
            return Libreria::Abierto(statement);
        },
        [&] { return Arguments(Fecha_Lanzamiento, sColumnas, ID_Capitulo); });
}

Ref<Recordset> CImputacionSistematica::Buscar(std::int32_t SC_Imputacion_Sistematica, const std::string& sColumnas) {
    return Trap(
        "CImputacionSistematica.Buscar(SC_Imputacion_Sistematica,sColumnas)",
        [&] {
            return Libreria::Abierto(Sql({SelectHead(kHeadOfBuscar, sColumnas),
                                          "FROM Imputacion_Sistematica,"
                                          "Activo,Gama,Grupo_Gama "
                                          " WHERE "
                                          " Imputacion_Sistematica.ID_Activo = Activo.ID_Activo  and"
                                          " Gama.SC_Gama = Imputacion_Sistematica.SC_Gama and "
                                          " Grupo_Gama.SC_Grupo_Gama = Gama.SC_Grupo_Gama and "
                                          "  "
                                          " Imputacion_Sistematica.SC_Imputacion_Sistematica=",
                                          SC_Imputacion_Sistematica}));
        },
        [&] { return Arguments(SC_Imputacion_Sistematica, sColumnas); });
}

bool CImputacionSistematica::Existe(std::uint8_t NumeroGama, std::int32_t CodigoGrupo, const std::string& IDEquipo) {
    return Trap(
        "CImputacionSistematica.Existe(NumeroGama,CodigoGrupo,IDEquipo)",
        [&] {
            return Libreria::ExistenRegistros(
                Libreria::Abierto(Sql({"SELECT SC_Imputacion_Sistematica ", " FROM Imputacion_Sistematica,Gama ",
                                       " WHERE ", " Gama.SC_Gama = Imputacion_Sistematica.SC_Gama and ",
                                       " Gama.Numero_Gama =", NumeroGama, " and Gama.SC_Grupo_Gama =", CodigoGrupo,
                                       " and Imputacion_Sistematica.ID_Activo ='", IDEquipo, "'"})));
        },
        [&] { return Arguments(NumeroGama, CodigoGrupo, IDEquipo); });
}

Ref<Recordset> CImputacionSistematica::SeleccionarAproximaciones(const std::string& sColumnas) {
    return Trap(
        "CImputacionSistematica.SeleccionarAproximaciones(sColumnas)",
        [&] {
            return Libreria::Abierto(
                Sql({HeadWithUnit(kTask, kCause, sColumnas), kJoin,
                     " Ejecutor_Gama.SC_Ejecutor_Gama = Gama.SC_Ejecutor_Gama and ",
                     " Activo.Acumulado_Lectura >=", " Imputacion_Sistematica.Aproximacion_Lectura and ",
                     " Imputacion_Sistematica.Aproximacion_Lectura>0 "}));
        },
        [&] { return Arguments(sColumnas); });
}

Ref<Recordset> CImputacionSistematica::SeleccionarTodos(const std::string& sCondicion, const std::string& sColumnas,
                                                        bool AgrupadaPorActivo) {
    return Trap(
        "CImputacionSistematica.SeleccionarTodos(sCondicion,sColumnas,AgrupadaPorActivo)",
        [&] {
            std::string statement = Sql({HeadWithUnit(kTask, kCause, sColumnas), kJoin,
                                         " Ejecutor_Gama.SC_Ejecutor_Gama = Gama.SC_Ejecutor_Gama "});
            if (!sCondicion.empty()) Append(statement, {" and ", sCondicion});
            Append(statement, {AgrupadaPorActivo ? " group by Activo.ID_Activo" : " "});
            return Libreria::Abierto(statement);
        },
        [&] { return Arguments(sCondicion, sColumnas, AgrupadaPorActivo); });
}

Ref<Recordset> CImputacionSistematica::ListarImputacionesDeUnActivo(const std::string& ID_Activo,
                                                                    const std::string& sColumnas) {
    return Trap(
        "CImputacionSistematica.ListarImputacionesDeUnActivo(ID_Activo,sColumnas)",
        [&] {
            return Libreria::Abierto(Sql({SelectHead(kHeadOfUnActivo, sColumnas),
                                          " FROM Imputacion_Sistematica,"
                                          "Activo, Gama,Grupo_Gama,Unidad_Lectura "
                                          " WHERE "
                                          " Imputacion_Sistematica.ID_Activo = Activo.ID_Activo  and"
                                          " Activo.sc_unidad_lectura = Unidad_Lectura.sc_unidad_lectura  and "
                                          " Gama.SC_Gama = Imputacion_Sistematica.SC_Gama and "
                                          "  "
                                          " Grupo_Gama.SC_Grupo_Gama = Gama.SC_Grupo_Gama and "
                                          " Imputacion_Sistematica.ID_Activo ='",
                                          ID_Activo, "' and ", " Anulada = 0 order by Lectura_Limite desc"}));
        },
        [&] { return Arguments(ID_Activo, sColumnas); });
}

float CImputacionSistematica::UltimaLectura(const std::string& ID_Activo, std::int32_t Unidad_Lectura) {
    return Trap(
        "CImputacionSistematica.UltimaLectura(ID_Activo,Unidad_Lectura)",
        [&] {
            const Ref<Recordset> rs = Libreria::Abierto(
                Sql({"SELECT  ", " Ultima_Lectura ", " FROM activo ", " WHERE ID_Activo ='", ID_Activo, "' "}));
            return Libreria::ExistenRegistros(rs) ? ConvertTo<float>(rs->Valor("Ultima_Lectura")) : -1.0F;
        },
        [&] { return Arguments(ID_Activo, Unidad_Lectura); });
}

std::int32_t CImputacionSistematica::IdGamaImputacion(std::int32_t SC_Imputacion_Sistematica) {
    return Trap(
        "CImputacionSistematica.IdGamaImputacion(SC_Imputacion_Sistematica)",
        [&] {
            const Ref<Recordset> rs = Libreria::Abierto(
                Sql({"SELECT SC_Gama ", " from Imputacion_Sistematica WHERE ",
                     " Imputacion_Sistematica.SC_Imputacion_Sistematica=", SC_Imputacion_Sistematica}));
            return Libreria::ExistenRegistros(rs) ? ConvertTo<std::int32_t>(rs->Valor("SC_Gama")) : 0;
        },
        [&] { return Arguments(SC_Imputacion_Sistematica); });
}

}  // namespace Zontara

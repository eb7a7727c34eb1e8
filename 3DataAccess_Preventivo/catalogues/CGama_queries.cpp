#include "catalogues/CGama.h"
#include "errors/trap.h"
#include "frame/Libreria.h"
#include "frame/convert.h"
#include "frame/sql.h"

namespace Zontara {

Ref<Recordset> CGama::Seleccionar(std::int32_t SC_Grupo_Gama, const std::string& sColumnas,
                                  const std::string& Tipo_Gama, const std::string& sOrdenResultado) {
    return Trap(
        "CGama.Seleccionar(SC_Grupo_Gama,sColumnas,Tipo_Gama,sOrdenResultado)",
        [&] {
            std::string sql = SelectHead(
                "SELECT SC_Gama ,Gama.Descripcion ,Texto_Mantenimiento ,Equipo_Parado "
                ",Gama.SC_Grupo_Gama,Numero_Gama,Tipo_Gama,Costo_Actual, Tiempo_Necesario,Esquema,"
                "Grupo_Gama.Descripcion as Grupo,Coordinaciones,Seguridades,Materiales_Herramientas,SC_Contratista,"
                "Hombres_Necesarios,Especialista,SC_Archivo_Digital,Frecuencia_Gama ",
                sColumnas);
            Append(sql, {" FROM Gama,Grupo_Gama ", " WHERE ", " Gama.SC_Grupo_Gama = Grupo_Gama.SC_Grupo_Gama "});
            if (SC_Grupo_Gama > 0) Append(sql, {" and Gama.SC_Grupo_Gama =", SC_Grupo_Gama});
            if (!Tipo_Gama.empty()) Append(sql, {" and Tipo_Gama ='", Tipo_Gama, "'"});
            if (!sOrdenResultado.empty()) Append(sql, {" Order by ", sOrdenResultado});
            return Libreria::Abierto(sql);
        },
        [&] { return Arguments(SC_Grupo_Gama, sColumnas, Tipo_Gama, sOrdenResultado); });
}

Ref<Recordset> CGama::Buscar(std::int32_t SC_Gama, const std::string& sColumnas) {
    return Trap(
        "CGama.Buscar(SC_Gama,sColumnas)",
        [&] {
            std::string sql = SelectHead(
                "SELECT Gama.SC_Ejecutor_Gama, SC_Gama ,Gama.Descripcion ,Texto_Mantenimiento ,Equipo_Parado "
                ",SC_Grupo_Gama,Numero_Gama,Costo_Actual,Tipo_Gama, Tiempo_Necesario,Esquema,Coordinaciones,"
                "Seguridades,Materiales_Herramientas,SC_Contratista,Hombres_Necesarios,Especialista,"
                "SC_Archivo_Digital,Frecuencia_Gama ",
                sColumnas);
            Append(sql, {" FROM Gama  WHERE      SC_Gama =", SC_Gama});
            return Libreria::Abierto(sql);
        },
        [&] { return Arguments(SC_Gama, sColumnas); });
}

Ref<Recordset> CGama::SeleccionarPorEjecutor(std::int32_t SC_Ejecutor_Gama, const std::string& sColumnas) {
    return Trap(
        "CGama.SeleccionarPorEjecutor(SC_Ejecutor_Gama,sColumnas)",
        [&] {
            std::string sql = SelectHead(
                "SELECT SC_Ejecutor_Gama,SC_Gama ,Descripcion ,Texto_Mantenimiento ,Equipo_Parado "
                ",SC_Grupo_Gama,Numero_Gama,Costo_Actual,Tipo_Gama, Tiempo_Necesario,Esquema,Coordinaciones,"
                "Seguridades,Materiales_Herramientas,SC_Contratista,Hombres_Necesarios,Especialista,"
                "SC_Archivo_Digital,Frecuencia_Gama ",
                sColumnas);
            Append(sql, {" FROM Gama WHERE SC_Ejecutor_Gama =", SC_Ejecutor_Gama});
            return Libreria::Abierto(sql);
        },
        [&] { return Arguments(SC_Ejecutor_Gama, sColumnas); });
}

bool CGama::ExisteNumero(std::uint8_t NumeroGama, std::int32_t CodigoGrupoGama) {
    return Trap(
        "CGama.ExisteNumero(NumeroGama,CodigoGrupoGama)",
        [&] {
            return Libreria::ExistenRegistros(
                Libreria::Abierto(Sql({"SELECT SC_Gama FROM Gama WHERE Numero_Gama =", NumeroGama,
                                       " and SC_Grupo_Gama =", CodigoGrupoGama})));
        },
        [&] { return Arguments(NumeroGama, CodigoGrupoGama); });
}

std::int32_t CGama::ProximoNumeroGama() {
    const Ref<Recordset> gamas = Libreria::Abierto(Sql({"SELECT MAX(Gama.numero_Gama) as proximo ", " FROM Gama "}));
    if (!Libreria::ExistenRegistros(gamas)) return 1;
    const Value proximo = gamas->Valor("proximo");
    if (proximo.IsNull()) return 1;
    return RoundToInt32(ConvertTo<double>(proximo) + 1);
}

}  // namespace Zontara

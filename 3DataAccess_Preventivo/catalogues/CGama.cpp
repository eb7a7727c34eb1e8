#include "catalogues/CGama.h"

#include "catalogues/keyed_insert.h"
#include "errors/trap.h"
#include "frame/Libreria.h"
#include "frame/sql.h"

namespace Zontara {

using Libreria::TextoParaSQL;

std::int32_t CGama::Nuevo(const std::string& Descripcion, const std::string& Texto_Mantenimiento,
                          std::uint8_t Equipo_Parado, std::int32_t SC_Grupo_Gama, std::int32_t SC_Ejecutor_Gama,
                          std::int32_t NumeroGama, const std::string& Tipo_Gama, Money Costo_Actual,
                          const std::string& Tiempo_Necesario, const std::string& Esquema,
                          const std::string& Coordinaciones, const std::string& Seguridades,
                          const std::string& Materiales_Herramientas, std::int32_t SC_Contratista,
                          std::uint8_t Hombres_Necesarios, const std::string& Especialista,
                          const std::string& Frecuencia_Gama) {
    return Trap(
        "CGama.Nuevo(Descripcion,Texto_Mantenimiento,Equipo_Parado,SC_Grupo_Gama,SC_Ejecutor_Gama,NumeroGama,"
        "Tipo_Gama,Costo_Actual,Tiempo_Necesario,Esquema,Coordinaciones,Seguridades,Materiales_Herramientas,"
        "SC_Contratista,Hombres_Necesarios,Especialista,Frecuencia_Gama)",
        [&] {
            const auto insert = [&](std::int32_t clave) {
                std::string sql =
                    Sql({"  INSERT Into Gama (SC_Gama ,Descripcion ,Texto_Mantenimiento ,Equipo_Parado , SC_Grupo_Gama "
                         ",SC_Ejecutor_Gama,Numero_Gama,Tipo_Gama,Costo_Actual,Tiempo_Necesario,Esquema, "
                         "Coordinaciones,Seguridades,Materiales_Herramientas,SC_Contratista,Hombres_Necesarios,"
                         "Especialista,Frecuencia_Gama )",
                         " VALUES (", clave, ",'", TextoParaSQL(Descripcion), "','", TextoParaSQL(Texto_Mantenimiento),
                         "',"});
                Append(sql, {Equipo_Parado, ",", SC_Grupo_Gama, ",", SC_Ejecutor_Gama, ",", NumeroGama, ",'", Tipo_Gama,
                             "',", Costo_Actual, ",'", Tiempo_Necesario, "','"});
                Append(sql, {TextoParaSQL(Esquema), "','", TextoParaSQL(Coordinaciones), "','",
                             TextoParaSQL(Seguridades), "','", TextoParaSQL(Materiales_Herramientas), "',"});
                Append(sql, {SC_Contratista, ",", Hombres_Necesarios, ",'", Especialista, "','",
                             TextoParaSQL(Frecuencia_Gama), "')"});
                return sql;
            };
            const std::int32_t clave = catalogues::InsertWithKey("Gama", insert);
            listaDeTareasCambio_.Send();
            return clave;
        },
        [&] {
            return Arguments(Descripcion, Texto_Mantenimiento, Equipo_Parado, SC_Grupo_Gama, SC_Ejecutor_Gama,
                             NumeroGama, Tipo_Gama, Costo_Actual, Tiempo_Necesario, Esquema, Coordinaciones,
                             Seguridades, Materiales_Herramientas, SC_Contratista, Hombres_Necesarios, Especialista,
                             Frecuencia_Gama);
        });
}

void CGama::Borrar(std::int32_t SC_Gama) {
    Trap(
        "CGama.Borrar(SC_Gama)",
        [&] {
            Libreria::Ejecutar(Sql({"  DELETE From Gama", " WHERE SC_Gama =", SC_Gama}));
            listaDeTareasCambio_.Send();
        },
        [&] { return Arguments(SC_Gama); });
}

void CGama::Salvar(std::int32_t SC_Gama, const std::string& Descripcion, const std::string& Texto_Mantenimiento,
                   std::uint8_t Equipo_Parado, std::int32_t SC_Grupo_Gama, std::int32_t SC_Ejecutor_Gama,
                   std::int32_t Numero_Gama, const std::string& Tipo_Gama, Money Costo_Actual,
                   const std::string& Tiempo_Necesario, const std::string& Esquema, const std::string& Coordinaciones,
                   const std::string& Seguridades, const std::string& Materiales_Herramientas,
                   std::int32_t SC_Contratista, std::uint8_t Hombres_Necesarios, const std::string& Especialista,
                   std::int32_t SC_Archivo_Digital, const std::string& Frecuencia_Gama) {
    Trap(
        "CGama.Salvar(SC_Gama,Descripcion,Texto_Mantenimiento,Equipo_Parado,SC_Grupo_Gama,SC_Ejecutor_Gama,"
        "Numero_Gama,Tipo_Gama,Costo_Actual,Tiempo_Necesario,Esquema,Coordinaciones,Seguridades,"
        "Materiales_Herramientas,SC_Contratista,Hombres_Necesarios,Especialista,SC_Archivo_Digital,Frecuencia_Gama)",
        [&] {
            std::string sql = Sql({"  UPDATE Gama SET ", "SC_Ejecutor_Gama =", SC_Ejecutor_Gama});
            Append(sql, {",Descripcion ='", TextoParaSQL(Descripcion), "' ,Texto_Mantenimiento ='",
                         TextoParaSQL(Texto_Mantenimiento), "' ,Equipo_Parado =", Equipo_Parado});
            Append(sql, {",Frecuencia_Gama ='", TextoParaSQL(Frecuencia_Gama), "',Numero_Gama =", Numero_Gama,
                         ",Tipo_Gama ='", Tipo_Gama, "',Tiempo_Necesario ='", Tiempo_Necesario});
            Append(sql, {"',Esquema ='", TextoParaSQL(Esquema), "',Coordinaciones ='", TextoParaSQL(Coordinaciones),
                         "',Especialista ='", TextoParaSQL(Especialista), "',Seguridades ='", TextoParaSQL(Seguridades),
                         "',Materiales_Herramientas ='", TextoParaSQL(Materiales_Herramientas)});
            Append(sql, {"',SC_Contratista =", SC_Contratista, ",Hombres_Necesarios =", Hombres_Necesarios,
                         ",Costo_Actual =", Costo_Actual, ",SC_Archivo_Digital =", SC_Archivo_Digital,
                         ",SC_Grupo_Gama =", SC_Grupo_Gama, " WHERE SC_Gama =", SC_Gama});
            Libreria::Ejecutar(sql);
            listaDeTareasCambio_.Send();
        },
        [&] {
            return Arguments(SC_Gama, Descripcion, Texto_Mantenimiento, Equipo_Parado, SC_Grupo_Gama, SC_Ejecutor_Gama,
                             Numero_Gama, Tipo_Gama, Costo_Actual, Tiempo_Necesario, Esquema, Coordinaciones,
                             Seguridades, Materiales_Herramientas, SC_Contratista, Hombres_Necesarios, Especialista,
                             SC_Archivo_Digital, Frecuencia_Gama);
        });
}

Ref<ListaCambios> CGama::ListaDeTareasCambio() { return listaDeTareasCambio_.Get(); }

}  // namespace Zontara

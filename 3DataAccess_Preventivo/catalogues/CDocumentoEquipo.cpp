#include "catalogues/CDocumentoEquipo.h"

#include "catalogues/keyed_insert.h"
#include "errors/trap.h"
#include "frame/Libreria.h"
#include "frame/sql.h"

namespace Zontara {

using Libreria::TextoParaSQL;

namespace {

constexpr std::string_view kColumnas =
    "SELECT SC_Documento_Equipo ,Descripcion ,Nombre_Documento ,Documento_Digital "
    ",Localizacion,ID_Equipo,SC_Archivo_Digital ";

}  // namespace

std::int32_t CDocumentoEquipo::Nuevo(const std::string& Descripcion, const std::string& Nombre_Documento,
                                     std::uint8_t Documento_Digital, const std::string& Localizacion,
                                     const std::string& ID_Equipo, std::int32_t SC_Archivo_Digital) {
    return Trap(
        "CDocumentoEquipo.Nuevo(Descripcion,Nombre_Documento,Documento_Digital,Localizacion,ID_Equipo,"
        "SC_Archivo_Digital)",
        [&] {
            const auto insert = [&](std::int32_t clave) {
                return Sql(
                    {"  INSERT Into Documento_Equipo (SC_Documento_Equipo ,Descripcion ,Nombre_Documento "
                     ",Documento_Digital ,Localizacion ,ID_Equipo,SC_Archivo_Digital )",
                     " VALUES (", clave, ",'", TextoParaSQL(Descripcion), "','", TextoParaSQL(Nombre_Documento), "',",
                     Documento_Digital, ",'", Localizacion, "','", ID_Equipo, "',", SC_Archivo_Digital, ")"});
            };
            return catalogues::InsertWithKey("Documento_Equipo", insert);
        },
        [&] {
            return Arguments(Descripcion, Nombre_Documento, Documento_Digital, Localizacion, ID_Equipo,
                             SC_Archivo_Digital);
        });
}

void CDocumentoEquipo::Borrar(std::int32_t SC_Documento_Equipo) {
    Trap(
        "CDocumentoEquipo.Borrar(SC_Documento_Equipo)",
        [&] {
            Libreria::Ejecutar(
                Sql({"  DELETE From Documento_Equipo", " WHERE SC_Documento_Equipo =", SC_Documento_Equipo}));
        },
        [&] { return Arguments(SC_Documento_Equipo); });
}

Ref<Recordset> CDocumentoEquipo::Seleccionar(const std::string& ID_Equipo, const std::string& sColumnas) {
    return Trap(
        "CDocumentoEquipo.Seleccionar(ID_Equipo,sColumnas)",
        [&] {
            std::string sql = SelectHead(kColumnas, sColumnas);
            Append(sql, {" FROM Documento_Equipo WHERE ID_Equipo ='", ID_Equipo, "'"});
            return Libreria::Abierto(sql);
        },
        [&] { return Arguments(ID_Equipo, sColumnas); });
}

void CDocumentoEquipo::Salvar(std::int32_t SC_Documento_Equipo, const std::string& Descripcion,
                              const std::string& Nombre_Documento, std::uint8_t Documento_Digital,
                              const std::string& Localizacion, const std::string& ID_Equipo,
                              std::int32_t SC_Archivo_Digital) {
    Trap(
        "CDocumentoEquipo.Salvar(SC_Documento_Equipo,Descripcion,Nombre_Documento,Documento_Digital,Localizacion,"
        "ID_Equipo,SC_Archivo_Digital)",
        // All documents of the item are meant, so the item finds them and their key is a value like the others.
        [&] {
            Libreria::Ejecutar(Sql({"  UPDATE Documento_Equipo SET ", "SC_Documento_Equipo =", SC_Documento_Equipo,
                                    ",SC_Archivo_Digital =", SC_Archivo_Digital, ",Descripcion ='",
                                    TextoParaSQL(Descripcion), "' ,Nombre_Documento ='", TextoParaSQL(Nombre_Documento),
                                    "' ,Documento_Digital =", Documento_Digital, ",Localizacion ='",
                                    TextoParaSQL(Localizacion), "'  WHERE ID_Equipo ='", ID_Equipo, "'"}));
        },
        [&] {
            return Arguments(SC_Documento_Equipo, Descripcion, Nombre_Documento, Documento_Digital, Localizacion,
                             ID_Equipo, SC_Archivo_Digital);
        });
}

Ref<Recordset> CDocumentoEquipo::Buscar(std::int32_t SC_Documento_Equipo, const std::string& sColumnas) {
    return Trap(
        "CDocumentoEquipo.Buscar(SC_Documento_Equipo,sColumnas)",
        [&] {
            std::string sql = SelectHead(kColumnas, sColumnas);
            Append(sql, {" FROM Documento_Equipo WHERE SC_Documento_Equipo =", SC_Documento_Equipo});
            return Libreria::Abierto(sql);
        },
        [&] { return Arguments(SC_Documento_Equipo, sColumnas); });
}

}  // namespace Zontara

#include "catalogues/CEjecutorGama.h"

#include "catalogues/keyed_insert.h"
#include "errors/trap.h"
#include "frame/Libreria.h"
#include "frame/sql.h"

namespace Zontara {

using Libreria::TextoParaSQL;

std::int32_t CEjecutorGama::Nuevo(const std::string& Descripcion, std::uint8_t Orden_En_Lista) {
    return Trap(
        "CEjecutorGama.Nuevo(Descripcion,Orden_En_Lista)",
        [&] {
            const auto insert = [&](std::int32_t clave) {
                return Sql({"  INSERT Into Ejecutor_Gama (SC_Ejecutor_Gama ,Descripcion ,Orden_En_Lista )", " VALUES (",
                            clave, ",'", TextoParaSQL(Descripcion), "',", Orden_En_Lista, ")"});
            };
            return catalogues::InsertWithKey("Ejecutor_Gama", insert);
        },
        [&] { return Arguments(Descripcion, Orden_En_Lista); });
}

void CEjecutorGama::Borrar(std::int32_t SC_Ejecutor_Gama) {
    Trap(
        "CEjecutorGama.Borrar(SC_Ejecutor_Gama)",
        [&] {
            Libreria::Ejecutar(Sql({"  DELETE From Ejecutor_Gama", " WHERE SC_Ejecutor_Gama =", SC_Ejecutor_Gama}));
        },
        [&] { return Arguments(SC_Ejecutor_Gama); });
}

Ref<Recordset> CEjecutorGama::Seleccionar(const std::string& sColumnas) {
    return Trap(
        "CEjecutorGama.Seleccionar(sColumnas)",
        [&] {
            std::string sql = SelectHead("SELECT SC_Ejecutor_Gama, Descripcion ,Orden_En_Lista ", sColumnas);
            Append(sql, {" FROM Ejecutor_Gama "});
            return Libreria::Abierto(sql);
        },
        [&] { return Arguments(sColumnas); });
}

void CEjecutorGama::Salvar(std::int32_t SC_Ejecutor_Gama, const std::string& Descripcion, std::uint8_t Orden_En_Lista) {
    Trap(
        "CEjecutorGama.Salvar(SC_Ejecutor_Gama,Descripcion,Orden_En_Lista)",
        [&] {
            Libreria::Ejecutar(
                Sql({"  UPDATE Ejecutor_Gama SET ", "Descripcion ='", TextoParaSQL(Descripcion),
                     "' ,Orden_En_Lista =", Orden_En_Lista, " WHERE SC_Ejecutor_Gama =", SC_Ejecutor_Gama}));
        },
        [&] { return Arguments(SC_Ejecutor_Gama, Descripcion, Orden_En_Lista); });
}

Ref<Recordset> CEjecutorGama::Buscar(std::int32_t SC_Ejecutor_Gama, const std::string& sColumnas) {
    return Trap(
        "CEjecutorGama.Buscar(SC_Ejecutor_Gama,sColumnas)",
        [&] {
            std::string sql = SelectHead("SELECT SC_Ejecutor_Gama,Descripcion ,Orden_En_Lista ", sColumnas);
            Append(sql, {" FROM Ejecutor_Gama WHERE SC_Ejecutor_Gama =", SC_Ejecutor_Gama});
            return Libreria::Abierto(sql);
        },
        [&] { return Arguments(SC_Ejecutor_Gama, sColumnas); });
}

}  // namespace Zontara

#include "catalogues/CGrupoGama.h"

#include "catalogues/keyed_insert.h"
#include "errors/trap.h"
#include "frame/Libreria.h"
#include "frame/sql.h"

namespace Zontara {

using Libreria::TextoParaSQL;

std::int32_t CGrupoGama::Nuevo(const std::string& Descripcion, std::int32_t Orden_Lista, bool ConIDCero) {
    return Trap(
        "CGrupoGama.Nuevo(Descripcion,Orden_Lista)",
        [&] {
            const auto insert = [&](std::int32_t clave) {
                return Sql({"  INSERT Into Grupo_Gama (SC_Grupo_Gama ,Descripcion ,Orden_Lista )", " VALUES (", clave,
                            ",'", TextoParaSQL(Descripcion), "',", Orden_Lista, ")"});
            };
            return catalogues::InsertWithKey("Grupo_Gama", insert, ConIDCero);
        },
        [&] { return Arguments(Descripcion, Orden_Lista); });
}

void CGrupoGama::Borrar(std::int32_t SC_Grupo_Gama) {
    Trap(
        "CGrupoGama.Borrar(SC_Grupo_Gama)",
        [&] {
            Libreria::Ejecutar(Sql({"  DELETE From Grupo_Gama", " WHERE SC_Grupo_Gama =", SC_Grupo_Gama}));
        },
        [&] { return Arguments(SC_Grupo_Gama); });
}

Ref<Recordset> CGrupoGama::Seleccionar() {
    return Trap("CGrupoGama.Seleccionar", [&] {
        return Libreria::Abierto(
            Sql({"SELECT SC_Grupo_Gama,Descripcion ,Orden_Lista ", "FROM Grupo_Gama ", "order by Orden_Lista "}));
    });
}

void CGrupoGama::Salvar(std::int32_t SC_Grupo_Gama, const std::string& Descripcion, std::int32_t Orden_Lista) {
    Trap(
        "CGrupoGama.Salvar(SC_Grupo_Gama,Descripcion,Orden_Lista)",
        [&] {
            Libreria::Ejecutar(Sql({"  UPDATE Grupo_Gama SET ", "Descripcion ='", TextoParaSQL(Descripcion),
                                    "' ,Orden_Lista =", Orden_Lista, " WHERE SC_Grupo_Gama =", SC_Grupo_Gama}));
        },
        [&] { return Arguments(SC_Grupo_Gama, Descripcion, Orden_Lista); });
}

Ref<Recordset> CGrupoGama::Buscar(std::int32_t SC_Grupo_Gama) {
    return Trap(
        "CGrupoGama.Buscar(SC_Grupo_Gama)",
        [&] {
            return Libreria::Abierto(Sql({"SELECT SC_Grupo_Gama,Descripcion ,Orden_Lista ", "FROM Grupo_Gama ",
                                          "WHERE SC_Grupo_Gama =", SC_Grupo_Gama}));
        },
        [&] { return Arguments(SC_Grupo_Gama); });
}

}  // namespace Zontara

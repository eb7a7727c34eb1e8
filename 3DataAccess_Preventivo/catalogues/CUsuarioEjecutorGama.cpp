#include "catalogues/CUsuarioEjecutorGama.h"

#include "catalogues/keyed_insert.h"
#include "errors/trap.h"
#include "frame/Libreria.h"
#include "frame/sql.h"

namespace Zontara {

std::int32_t CUsuarioEjecutorGama::Nuevo(std::int32_t SC_Usuario, std::int32_t SC_Ejecutor_Gama) {
    return Trap(
        "CUsuarioEjecutorGama.Nuevo(SC_Usuario,SC_Ejecutor_Gama)",
        [&] {
            const auto insert = [&](std::int32_t clave) {
                return Sql(
                    {"  INSERT Into Usuario_Ejecutor_Gama (SC_Usuario_Ejecutor_Gama ,SC_Usuario ,SC_Ejecutor_Gama )",
                     " VALUES (", clave, ",", SC_Usuario, ",", SC_Ejecutor_Gama, ")"});
            };
            return catalogues::InsertWithKey("Usuario_Ejecutor_Gama", insert);
        },
        [&] { return Arguments(SC_Usuario, SC_Ejecutor_Gama); });
}

void CUsuarioEjecutorGama::Borrar(std::int32_t SC_Usuario_Ejecutor_Gama) {
    Trap(
        "CUsuarioEjecutorGama.Borrar(SC_Usuario_Ejecutor_Gama)",
        [&] {
            Libreria::Ejecutar(Sql({"  DELETE From Usuario_Ejecutor_Gama",
                                    " WHERE SC_Usuario_Ejecutor_Gama =", SC_Usuario_Ejecutor_Gama}));
        },
        [&] { return Arguments(SC_Usuario_Ejecutor_Gama); });
}

Ref<Recordset> CUsuarioEjecutorGama::Seleccionar(std::int32_t SC_Ejecutor_Gama) {
    return Trap(
        "CUsuarioEjecutorGama.Seleccionar(SC_Ejecutor_Gama)",
        [&] {
            return Libreria::Abierto(Sql({"SELECT SC_Usuario_Ejecutor_Gama ,SC_Usuario ", "FROM Usuario_Ejecutor_Gama ",
                                          "WHERE SC_Ejecutor_Gama =", SC_Ejecutor_Gama}));
        },
        [&] { return Arguments(SC_Ejecutor_Gama); });
}

void CUsuarioEjecutorGama::Salvar(std::int32_t SC_Usuario_Ejecutor_Gama, std::int32_t SC_Usuario,
                                  std::int32_t SC_Ejecutor_Gama) {
    Trap(
        "CUsuarioEjecutorGama.Salvar(SC_Usuario_Ejecutor_Gama,SC_Usuario,SC_Ejecutor_Gama)",
        // All links of the executor are meant, so the executor finds them and their key is a value like the user.
        [&] {
            Libreria::Ejecutar(
                Sql({"  UPDATE Usuario_Ejecutor_Gama SET SC_Usuario_Ejecutor_Gama =", SC_Usuario_Ejecutor_Gama,
                     ",SC_Usuario =", SC_Usuario, " WHERE SC_Ejecutor_Gama =", SC_Ejecutor_Gama}));
        },
        [&] { return Arguments(SC_Usuario_Ejecutor_Gama, SC_Usuario, SC_Ejecutor_Gama); });
}

}  // namespace Zontara

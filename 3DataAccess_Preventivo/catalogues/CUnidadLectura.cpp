#include "catalogues/CUnidadLectura.h"

#include "catalogues/keyed_insert.h"
#include "errors/trap.h"
#include "frame/Libreria.h"
#include "frame/sql.h"

namespace Zontara {

using Libreria::TextoParaSQL;

std::int32_t CUnidadLectura::Nuevo(const std::string& Descripcion, bool ConIDCero) {
    return Trap(
        "CUnidadLectura.Nuevo(Descripcion,ConIDCero)",
        [&] {
            const auto insert = [&](std::int32_t clave) {
                return Sql({"  INSERT Into Unidad_Lectura (SC_Unidad_Lectura ,Descripcion )", " VALUES (", clave, ",",
                            "'", TextoParaSQL(Descripcion), "'", ")"});
            };
            return catalogues::InsertWithKey("Unidad_Lectura", insert, ConIDCero);
        },
        [&] { return Arguments(Descripcion, ConIDCero); });
}

void CUnidadLectura::Borrar(std::int32_t SC_Unidad_Lectura) {
    Trap(
        "CUnidadLectura.Borrar(SC_Unidad_Lectura)",
        [&] {
            Libreria::Ejecutar(Sql({"  DELETE From Unidad_Lectura", " WHERE SC_Unidad_Lectura =", SC_Unidad_Lectura}));
        },
        [&] { return Arguments(SC_Unidad_Lectura); });
}

Ref<Recordset> CUnidadLectura::Seleccionar() {
    return Trap("CUnidadLectura.Seleccionar", [&] { return Libreria::Abierto("SELECT * FROM Unidad_Lectura "); });
}

void CUnidadLectura::Salvar(std::int32_t SC_Unidad_Lectura, const std::string& Descripcion) {
    Trap(
        "CUnidadLectura.Salvar(SC_Unidad_Lectura,Descripcion)",
        [&] {
            Libreria::Ejecutar(Sql({"  UPDATE Unidad_Lectura SET ", "Descripcion ='", TextoParaSQL(Descripcion), "' ",
                                    " WHERE SC_Unidad_Lectura =", SC_Unidad_Lectura}));
        },
        [&] { return Arguments(SC_Unidad_Lectura, Descripcion); });
}

Ref<Recordset> CUnidadLectura::Buscar(std::int32_t SC_Unidad_Lectura) {
    return Trap(
        "CUnidadLectura.Buscar(SC_Unidad_Lectura)",
        [&] {
            return Libreria::Abierto(
                Sql({"SELECT * ", "FROM Unidad_Lectura ", " Where SC_Unidad_Lectura =", SC_Unidad_Lectura}));
        },
        [&] { return Arguments(SC_Unidad_Lectura); });
}

}  // namespace Zontara

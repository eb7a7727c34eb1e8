#include "Perluma/assets.h"

#include "Perluma/reading.h"
#include "frame/convert.h"

#include <string_view>
#include <type_traits>
#include <utility>

namespace Perluma {

using Zontara::Ref;
using Zontara::Value;

namespace {

/// Sets a column of an asset by a statement of its key and the value.
template <class T> Value Set(Sesion& session, const std::string& ID_Activo, std::string_view update, const T& value) {
    auto set = session.Connection()->Prepare(update);
    set.BindKept(1, ID_Activo);
    if constexpr (std::is_same_v<T, std::string>) {
        set.BindKept(2, value);
    } else {
        set.Bind(2, value);
    }
    set.Run();
    return Value();
}

}  // namespace

ServicioActivos::ServicioActivos(Ref<Sesion> session) : session_(std::move(session)) {}

Ref<Zontara::Recordset> ServicioActivos::BuscarActivo(const std::string& ID_Activo, const std::string& columnas) {
    return Opened(*session_, "SELECT " + (columnas.empty() ? "*" : columnas) +
                                 " FROM Activo WHERE ID_Activo = " + Quoted(*session_, ID_Activo));
}

Ref<Zontara::Recordset> ServicioActivos::SeleccionarActivos(const std::string& ID_Capitulo, std::int32_t /*cero1*/,
                                                            std::int32_t /*cero2*/, bool enServicio,
                                                            std::int32_t CodigoProyecto) {
    std::string sql = "SELECT ID_Activo, Descripcion, Acumulado_Lectura FROM Activo WHERE 1";
    if (!ID_Capitulo.empty()) sql += " AND substr(ID_Activo, 1, 1) = " + Quoted(*session_, ID_Capitulo);
    if (enServicio) sql += " AND estatus_actual NOT IN (3, 4, 5, 7)";
    if (CodigoProyecto > 0) sql += " AND sc_proyecto = " + std::to_string(CodigoProyecto);
    return Opened(*session_, sql + " ORDER BY ID_Activo");
}

Value ServicioActivos::FijarAcumulado(const std::string& ID_Activo, std::int32_t valor) {
    return Set(*session_, ID_Activo, "UPDATE Activo SET Acumulado_Lectura = ?2 WHERE ID_Activo = ?1", valor);
}

Value ServicioActivos::FijarLectura(const std::string& ID_Activo, std::int32_t valor) {
    return Set(*session_, ID_Activo, "UPDATE Activo SET Activo_Lectura_Entera = ?2 WHERE ID_Activo = ?1", valor);
}

std::int32_t ServicioActivos::AcumuladoActual(const std::string& ID_Activo) {
    auto find = session_->Connection()->Prepare("SELECT Acumulado_Lectura FROM Activo WHERE ID_Activo = ?1");
    return find.Bind(1, std::string_view(ID_Activo)).Step() ? Zontara::RoundToInt32(find.Real(0)) : 0;
}

Value ServicioActivos::AnotarLectura(const std::string& ID_Activo, const std::string& nota) {
    return Set(*session_, ID_Activo, "UPDATE Activo SET Activo_Nota_Lectura = ?2 WHERE ID_Activo = ?1", nota);
}

}  // namespace Perluma

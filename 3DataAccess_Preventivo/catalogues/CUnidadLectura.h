#pragma once

#include "frame/export.h"
#include "frame/neighbours.h"
#include "frame/object.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace Zontara {

/// The units in which meters are read, table `Unidad_Lectura`: a key and a name. Readings, assets and meter assignments
/// point at a unit through `SC_Unidad_Lectura`.
///
/// An instance keeps nothing between calls; a session must be open. Names may hold quotes. Every operation reports
/// its failures with a call-stack line of its own.
class ZONTARA_EXPORT CUnidadLectura : public Object {
public:
    static constexpr std::string_view kTypeName = "CUnidadLectura";
    static const ClassTable& ClassMembers();
    const ClassTable* Table() const override;

    /// Writes a new unit and gives its key. One transaction, nested in the caller's if there is one; after a failure it
    /// stays open and the key is lost.
    /// `ConIDCero`: true writes the unit of key 0; a generated key is spent all the same.
    std::int32_t Nuevo(const std::string& Descripcion, bool ConIDCero = false);

    /// Deletes a unit. What points at it stays as it is. An unknown key is no error. No transaction of its own.
    void Borrar(std::int32_t SC_Unidad_Lectura);

    /// All columns of all units, in no promised order.
    Ref<Recordset> Seleccionar();

    /// Renames a unit. An unknown key changes nothing. No transaction of its own.
    void Salvar(std::int32_t SC_Unidad_Lectura, const std::string& Descripcion);

    /// All columns of one unit; empty for an unknown key.
    Ref<Recordset> Buscar(std::int32_t SC_Unidad_Lectura);
};

}  // namespace Zontara

#pragma once

#include "frame/export.h"
#include "frame/neighbours.h"
#include "frame/object.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace Zontara {

/// The groups of tasks, table `Grupo_Gama`: a key, a name and a place in lists.
///
/// An instance keeps nothing between calls; a session must be open. Names may hold quotes. Every operation reports
/// its failures with a call-stack line of its own.
class ZONTARA_EXPORT CGrupoGama : public Object {
public:
    static constexpr std::string_view kTypeName = "CGrupoGama";
    static const ClassTable& ClassMembers();
    const ClassTable* Table() const override;

    /// Writes a new group and gives its key. One transaction, nested in the caller's if there is one; after a failure
    /// it stays open and the key is lost. `ConIDCero`: true writes the group of key 0; a generated key is spent all the
    /// same. Reports don't show it.
    std::int32_t Nuevo(const std::string& Descripcion, std::int32_t Orden_Lista, bool ConIDCero = false);

    /// Deletes a group. Its tasks stay, though lists of tasks that show the group no longer hold them. An unknown key
    /// is no error. No transaction of its own.
    void Borrar(std::int32_t SC_Grupo_Gama);

    /// Key, name and place of all groups, by their place.
    Ref<Recordset> Seleccionar();

    /// Writes name and place of a group. An unknown key changes nothing. No transaction of its own.
    void Salvar(std::int32_t SC_Grupo_Gama, const std::string& Descripcion, std::int32_t Orden_Lista);

    /// Key, name and place of one group; empty for an unknown key.
    Ref<Recordset> Buscar(std::int32_t SC_Grupo_Gama);
};

}  // namespace Zontara

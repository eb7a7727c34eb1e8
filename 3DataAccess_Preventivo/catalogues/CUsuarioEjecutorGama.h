#pragma once

#include "frame/export.h"
#include "frame/neighbours.h"
#include "frame/object.h"

#include <cstdint>
#include <string_view>

namespace Zontara {

/// Which users belong to which executor of tasks, table `Usuario_Ejecutor_Gama`: links of a user to an executor, with a
/// key of their own. Nothing keeps the same pair from being linked twice.
///
/// An instance keeps nothing between calls; a session must be open. Every operation reports its failures with a
/// call-stack line of its own.
class ZONTARA_EXPORT CUsuarioEjecutorGama : public Object {
public:
    static constexpr std::string_view kTypeName = "CUsuarioEjecutorGama";
    static const ClassTable& ClassMembers();
    const ClassTable* Table() const override;

    /// Writes a new link and gives its key. One transaction, nested in the caller's if there is one; after a failure it
    /// stays open and the key is lost.
    std::int32_t Nuevo(std::int32_t SC_Usuario, std::int32_t SC_Ejecutor_Gama);

    /// Deletes all links of that key. An unknown key is no error. No transaction of its own.
    void Borrar(std::int32_t SC_Usuario_Ejecutor_Gama);

    /// Key and user of each link of one executor; empty when there is none.
    Ref<Recordset> Seleccionar(std::int32_t SC_Ejecutor_Gama);

    /// Gives every link of an executor the same key and the same user. The links are found by the executor, not by
    /// their own key. An executor without links changes nothing. No transaction of its own.
    void Salvar(std::int32_t SC_Usuario_Ejecutor_Gama, std::int32_t SC_Usuario, std::int32_t SC_Ejecutor_Gama);
};

}  // namespace Zontara

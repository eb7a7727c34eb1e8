#pragma once

#include "frame/export.h"
#include "frame/money.h"
#include "frame/neighbours.h"
#include "frame/object.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace Zontara {

/// The materials that a task needs, table `materiales_gama`: what they are, how much of them and at what cost; and the
/// way in which a task's needs get into a work order. What is called `NumeroGama` here is always the task's key,
/// `SC_Gama`, not the number that people know it by.
///
/// An instance keeps nothing between calls; a session must be open. No operation changes an argument that it takes by
/// reference. Each reports its failures with a call-stack line of its own.
class ZONTARA_EXPORT CMaterialGama : public Object {
public:
    static constexpr std::string_view kTypeName = "CMaterialGama";
    static const ClassTable& ClassMembers();
    const ClassTable* Table() const override;

    /// Deletes one line by its own key, `sc_materiales_gama`. An unknown key is no error. No transaction of its own.
    void BorrarItem(std::int32_t IDItem);

    /// Writes a new line of a task. One transaction, nested in the caller's if there is one. The new key isn't told:
    /// the line is found through `ListarMaterialesDeUnaGama`. A single quote in `Descripcion` breaks the statement.
    /// After a failure the transaction stays open. `numeroItem`: the line's number, as the caller counts them.
    void AgregarItem(std::int16_t numeroItem, const std::string& Descripcion, Money Costo_Unitario,
                     float CantidadNecesaria, std::int32_t NumeroGama);

    /// All columns of a task's lines, in no promised order; empty for a task without materials or an unknown one.
    Ref<Recordset> ListarMaterialesDeUnaGama(std::int32_t NumeroGama);

    /// What the task's materials cost together: unit cost by quantity, summed. 0 for a task without materials.
    Money CostoTotalMaterialesGama(std::int32_t NumeroGama);

    /// Copies the task's materials into a work order, line by line; nothing happens for a task without materials. Every
    /// copied line carries the number of lines as its line number. No transaction of its own: after a failure
    /// halfway the lines copied so far stay, unless the caller aborts its transaction. A null in a line is error 94.
    void AgregarMaterialesAOT(std::int32_t numeroOT, std::int32_t NumeroGama);

    /// Records the task's crew and time on a work order; nothing happens for an unknown task. A time that doesn't read
    /// as a number, such as one with a unit behind it, counts as 0. Error 94 for a task whose crew is null.
    void AsignarManoObraAOT(std::int32_t numeroOT, std::int32_t NumeroGama);
};

}  // namespace Zontara

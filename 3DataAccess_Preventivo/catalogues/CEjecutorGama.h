#pragma once

#include "frame/export.h"
#include "frame/neighbours.h"
#include "frame/object.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace Zontara {

/// The executors of tasks, table `Ejecutor_Gama`: the trade or crew that carries a task out, with a name and a place in
/// lists from 0 to 255.
///
/// An instance keeps nothing between calls; a session must be open. Names may hold quotes. Every operation reports
/// its failures with a call-stack line of its own.
class ZONTARA_EXPORT CEjecutorGama : public Object {
public:
    static constexpr std::string_view kTypeName = "CEjecutorGama";
    static const ClassTable& ClassMembers();
    const ClassTable* Table() const override;

    /// Writes a new executor and gives its key. One transaction, nested in the caller's if there is one; after a
    /// failure it stays open and the key is lost.
    std::int32_t Nuevo(const std::string& Descripcion, std::uint8_t Orden_En_Lista);

    /// Deletes an executor. Its tasks and users stay. An unknown key is no error. No transaction of its own.
    void Borrar(std::int32_t SC_Ejecutor_Gama);

    /// All executors, with the caller's columns or the default ones, in no promised order.
    Ref<Recordset> Seleccionar(const std::string& sColumnas = "");

    /// Writes name and place of an executor. An unknown key changes nothing. No transaction of its own.
    void Salvar(std::int32_t SC_Ejecutor_Gama, const std::string& Descripcion, std::uint8_t Orden_En_Lista);

    /// One executor, with the caller's columns or the default ones; empty for an unknown key.
    Ref<Recordset> Buscar(std::int32_t SC_Ejecutor_Gama, const std::string& sColumnas = "");
};

}  // namespace Zontara

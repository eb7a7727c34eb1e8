#pragma once

#include "frame/export.h"
#include "frame/neighbours.h"
#include "frame/object.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace Zontara {

/// The tree of equipment, table `Equipo`: the items of plant that hang under an asset. `Nivel` 1 is the top of the tree
/// and `Equipo_Padre` names the item above. The tree isn't watched over: no operation checks that the parent exists,
/// that the levels fit, or that an item has no children. Assets are only read here.
///
/// An instance keeps nothing between calls; a session must be open. Only `Descripcion` may hold quotes; a single quote
/// in any other text breaks the statement. Every operation reports its failures with a call-stack line of its own.
class ZONTARA_EXPORT CEquipo : public Object {
public:
    static constexpr std::string_view kTypeName = "CEquipo";
    static const ClassTable& ClassMembers();
    const ClassTable* Table() const override;

    /// Writes a new item under the caller's key. Always gives 0. One transaction, nested in the caller's if there is
    /// one. A key that exists already is refused by the database; after a failure the transaction stays open. A date
    /// that reads as one is stored as YYYY-MM-DD, any other text as it is. No digital file: 0.
    std::int32_t Nuevo(const std::string& ID_Equipo, const std::string& Descripcion, std::int16_t Nivel,
                       const std::string& Equipo_Padre, const std::string& ID_Activo,
                       const std::string& Fecha_Ultimo_Mantenimiento, const std::string& Foto);

    /// Deletes an item. Its children, documents, readings and assignments stay. An unknown key is no error. No
    /// transaction of its own.
    void Borrar(const std::string& ID_Equipo);

    /// The items of the top level with the name of their asset, by asset; an item whose asset is missing isn't found.
    /// `sColumnas`: columns instead of the default ones. The list must end with a blank, or it runs into the next word
    /// and the statement is refused.
    /// `sGrupoActivo`: only items of assets of this group; empty means all.
    Ref<Recordset> Seleccionar(const std::string& sColumnas = "", const std::string& sGrupoActivo = "");

    /// Writes an item but for its key and the day of its last maintenance; a text left empty is written empty. An
    /// unknown key changes nothing. No transaction of its own.
    void Salvar(const std::string& ID_Equipo, const std::string& Descripcion, std::int16_t Nivel,
                const std::string& Equipo_Padre, const std::string& ID_Activo, const std::string& Foto,
                std::int32_t SC_Archivo_Digital);

    /// One item with the name of its asset; empty for an unknown key and for an item whose asset is missing.
    Ref<Recordset> Buscar(const std::string& ID_Equipo, const std::string& sColumnas = "");

    /// The children of an item that stand at one level, in no promised order; children at another level aren't found.
    /// To walk down the tree a client calls once a level. `Nivel`: the children's own level, counted by the caller.
    Ref<Recordset> BuscarHijos(const std::string& Equipo_Padre, std::int16_t Nivel, const std::string& sColumnas = "");

    /// Writes the day of an item's last maintenance and nothing else. A text that reads as a date is stored as
    /// YYYY-MM-DD, any other as it is. An unknown key changes nothing. No transaction of its own.
    void ActualizarFecha(const std::string& ID_Equipo, const std::string& Fecha_Ultimo_Mantenimiento);

    /// Whether any item hangs under an asset.
    bool Existe(const std::string& ID_Activo);

    /// Whether an item exists.
    bool ExisteEquipo(const std::string& ID_Equipo);

    /// The items that have a meter assignment, each once, by key. Reports call it `SeleccionarSistematicos`.
    /// `sColumnas`: as in `Seleccionar`, with the blank at its end.
    Ref<Recordset> Sistematicos(const std::string& sColumnas = "");
};

}  // namespace Zontara

#pragma once

#include "frame/export.h"
#include "frame/neighbours.h"
#include "frame/object.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace Zontara {

/// The documents of an item of equipment, table `Documento_Equipo`: manuals, drawings and the like, told by their place
/// or held as a digital file.
///
/// An instance keeps nothing between calls; a session must be open. `ID_Equipo` goes into statements as it comes, so
/// that a single quote in it breaks the statement; so does `Localizacion` in `Nuevo`. Every operation reports its
/// failures with a call-stack line of its own.
class ZONTARA_EXPORT CDocumentoEquipo : public Object {
public:
    static constexpr std::string_view kTypeName = "CDocumentoEquipo";
    static const ClassTable& ClassMembers();
    const ClassTable* Table() const override;

    /// Writes a new document and gives its key. One transaction, nested in the caller's if there is one; after a
    /// failure it stays open and the key is lost. `Documento_Digital`: 1 for a digital file, which `SC_Archivo_Digital`
    /// then names.
    std::int32_t Nuevo(const std::string& Descripcion, const std::string& Nombre_Documento,
                       std::uint8_t Documento_Digital, const std::string& Localizacion, const std::string& ID_Equipo,
                       std::int32_t SC_Archivo_Digital);

    /// Deletes all documents of that key; the digital file stays. An unknown key is no error. No transaction of its
    /// own.
    void Borrar(std::int32_t SC_Documento_Equipo);

    /// The documents of one item, with the caller's columns or the default ones, in no promised order; empty for an
    /// item without any.
    Ref<Recordset> Seleccionar(const std::string& ID_Equipo, const std::string& sColumnas = "");

    /// Gives every document of an item the same key and the same contents. The documents are found by the item, not by
    /// their own key. An item without any changes nothing. No transaction of its own.
    void Salvar(std::int32_t SC_Documento_Equipo, const std::string& Descripcion, const std::string& Nombre_Documento,
                std::uint8_t Documento_Digital, const std::string& Localizacion, const std::string& ID_Equipo,
                std::int32_t SC_Archivo_Digital);

    /// The documents of a key, with the caller's columns or the default ones; empty for an unknown key.
    Ref<Recordset> Buscar(std::int32_t SC_Documento_Equipo, const std::string& sColumnas = "");
};

}  // namespace Zontara

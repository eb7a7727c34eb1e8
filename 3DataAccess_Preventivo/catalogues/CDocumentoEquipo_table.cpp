#include "catalogues/CDocumentoEquipo.h"
#include "frame/table_builder.h"

namespace Zontara {

const ClassTable& CDocumentoEquipo::ClassMembers() {
    static const ClassTable table =
        TableBuilder<CDocumentoEquipo>("_CDocumentoEquipo")
            .Creatable()
            .Method("Nuevo", &CDocumentoEquipo::Nuevo,
                    {{"Descripcion"},
                     {"Nombre_Documento"},
                     {"Documento_Digital"},
                     {"Localizacion"},
                     {"ID_Equipo"},
                     {"SC_Archivo_Digital"}})
            .Method("Borrar", &CDocumentoEquipo::Borrar, {{"SC_Documento_Equipo"}})
            .Method("Seleccionar", &CDocumentoEquipo::Seleccionar, {{"ID_Equipo"}, OptionalByRef("sColumnas", "")})
            .Method("Salvar", &CDocumentoEquipo::Salvar,
                    {{"SC_Documento_Equipo"},
                     {"Descripcion"},
                     {"Nombre_Documento"},
                     {"Documento_Digital"},
                     {"Localizacion"},
                     {"ID_Equipo"},
                     {"SC_Archivo_Digital"}})
            .Method("Buscar", &CDocumentoEquipo::Buscar, {{"SC_Documento_Equipo"}, OptionalByRef("sColumnas", "")})
            .Build();
    return table;
}

const ClassTable* CDocumentoEquipo::Table() const { return &ClassMembers(); }

}  // namespace Zontara

#include "catalogues/CEquipo.h"
#include "frame/table_builder.h"

namespace Zontara {

const ClassTable& CEquipo::ClassMembers() {
    static const ClassTable table =
        TableBuilder<CEquipo>("_CEquipo")
            .Creatable()
            .Method("Nuevo", &CEquipo::Nuevo,
                    {{"ID_Equipo"},
                     {"Descripcion"},
                     {"Nivel"},
                     {"Equipo_Padre"},
                     {"ID_Activo"},
                     {"Fecha_Ultimo_Mantenimiento"},
                     {"Foto"}})
            .Method("Borrar", &CEquipo::Borrar, {{"ID_Equipo"}})
            .Method("Seleccionar", &CEquipo::Seleccionar,
                    {OptionalByRef("sColumnas", ""), OptionalByRef("sGrupoActivo", "")})
            .Method("Salvar", &CEquipo::Salvar,
                    {{"ID_Equipo"},
                     {"Descripcion"},
                     {"Nivel"},
                     {"Equipo_Padre"},
                     {"ID_Activo"},
                     {"Foto"},
                     {"SC_Archivo_Digital"}})
            .Method("Buscar", &CEquipo::Buscar, {{"ID_Equipo"}, OptionalByRef("sColumnas", "")})
            .Method("BuscarHijos", &CEquipo::BuscarHijos, {{"Equipo_Padre"}, {"Nivel"}, OptionalByRef("sColumnas", "")})
            .Method("ActualizarFecha", &CEquipo::ActualizarFecha, {{"ID_Equipo"}, {"Fecha_Ultimo_Mantenimiento"}})
            .Method("Existe", &CEquipo::Existe, {{"ID_Activo"}})
            .Method("ExisteEquipo", &CEquipo::ExisteEquipo, {{"ID_Equipo"}})
            .Method("Sistematicos", &CEquipo::Sistematicos, {OptionalByRef("sColumnas", "")})
            .Build();
    return table;
}

const ClassTable* CEquipo::Table() const { return &ClassMembers(); }

}  // namespace Zontara

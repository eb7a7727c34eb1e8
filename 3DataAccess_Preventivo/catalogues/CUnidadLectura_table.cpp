#include "catalogues/CUnidadLectura.h"
#include "frame/table_builder.h"

namespace Zontara {

const ClassTable& CUnidadLectura::ClassMembers() {
    static const ClassTable table =
        TableBuilder<CUnidadLectura>("_CUnidadLectura")
            .Creatable()
            .Method("Nuevo", &CUnidadLectura::Nuevo, {{"Descripcion"}, OptionalByRef("ConIDCero", false)})
            .Method("Borrar", &CUnidadLectura::Borrar, {{"SC_Unidad_Lectura"}})
            .Method("Seleccionar", &CUnidadLectura::Seleccionar)
            .Method("Salvar", &CUnidadLectura::Salvar, {{"SC_Unidad_Lectura"}, {"Descripcion"}})
            .Method("Buscar", &CUnidadLectura::Buscar, {{"SC_Unidad_Lectura"}})
            .Build();
    return table;
}

const ClassTable* CUnidadLectura::Table() const { return &ClassMembers(); }

}  // namespace Zontara

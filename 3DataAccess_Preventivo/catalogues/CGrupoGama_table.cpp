#include "catalogues/CGrupoGama.h"
#include "frame/table_builder.h"

namespace Zontara {

const ClassTable& CGrupoGama::ClassMembers() {
    static const ClassTable table =
        TableBuilder<CGrupoGama>("_CGrupoGama")
            .Creatable()
            .Method("Nuevo", &CGrupoGama::Nuevo, {{"Descripcion"}, {"Orden_Lista"}, OptionalByRef("ConIDCero", false)})
            .Method("Borrar", &CGrupoGama::Borrar, {{"SC_Grupo_Gama"}})
            .Method("Seleccionar", &CGrupoGama::Seleccionar)
            .Method("Salvar", &CGrupoGama::Salvar, {{"SC_Grupo_Gama"}, {"Descripcion"}, {"Orden_Lista"}})
            .Method("Buscar", &CGrupoGama::Buscar, {{"SC_Grupo_Gama"}})
            .Build();
    return table;
}

const ClassTable* CGrupoGama::Table() const { return &ClassMembers(); }

}  // namespace Zontara

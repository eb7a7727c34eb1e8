#include "catalogues/CUsuarioEjecutorGama.h"
#include "frame/table_builder.h"

namespace Zontara {

const ClassTable& CUsuarioEjecutorGama::ClassMembers() {
    static const ClassTable table =
        TableBuilder<CUsuarioEjecutorGama>("_CUsuarioEjecutorGama")
            .Creatable()
            .Method("Nuevo", &CUsuarioEjecutorGama::Nuevo, {{"SC_Usuario"}, {"SC_Ejecutor_Gama"}})
            .Method("Borrar", &CUsuarioEjecutorGama::Borrar, {{"SC_Usuario_Ejecutor_Gama"}})
            .Method("Seleccionar", &CUsuarioEjecutorGama::Seleccionar, {{"SC_Ejecutor_Gama"}})
            .Method("Salvar", &CUsuarioEjecutorGama::Salvar,
                    {{"SC_Usuario_Ejecutor_Gama"}, {"SC_Usuario"}, {"SC_Ejecutor_Gama"}})
            .Build();
    return table;
}

const ClassTable* CUsuarioEjecutorGama::Table() const { return &ClassMembers(); }

}  // namespace Zontara

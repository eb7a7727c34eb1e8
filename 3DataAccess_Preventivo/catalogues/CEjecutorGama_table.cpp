#include "catalogues/CEjecutorGama.h"
#include "frame/table_builder.h"

namespace Zontara {

const ClassTable& CEjecutorGama::ClassMembers() {
    static const ClassTable table =
        TableBuilder<CEjecutorGama>("_CEjecutorGama")
            .Creatable()
            .Method("Nuevo", &CEjecutorGama::Nuevo, {{"Descripcion"}, {"Orden_En_Lista"}})
            .Method("Borrar", &CEjecutorGama::Borrar, {{"SC_Ejecutor_Gama"}})
            .Method("Seleccionar", &CEjecutorGama::Seleccionar, {OptionalByRef("sColumnas", "")})
            .Method("Salvar", &CEjecutorGama::Salvar, {{"SC_Ejecutor_Gama"}, {"Descripcion"}, {"Orden_En_Lista"}})
            .Method("Buscar", &CEjecutorGama::Buscar, {{"SC_Ejecutor_Gama"}, OptionalByRef("sColumnas", "")})
            .Build();
    return table;
}

const ClassTable* CEjecutorGama::Table() const { return &ClassMembers(); }

}  // namespace Zontara

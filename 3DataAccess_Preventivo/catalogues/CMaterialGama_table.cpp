#include "catalogues/CMaterialGama.h"
#include "frame/table_builder.h"

namespace Zontara {

const ClassTable& CMaterialGama::ClassMembers() {
    static const ClassTable table =
        TableBuilder<CMaterialGama>("_CMaterialGama")
            .Creatable()
            .Method("BorrarItem", &CMaterialGama::BorrarItem, {ByRef("IDItem")})
            .Method("AgregarItem", &CMaterialGama::AgregarItem,
                    {{"numeroItem"},
                     ByRef("Descripcion"),
                     ByRef("Costo_Unitario"),
                     ByRef("CantidadNecesaria"),
                     ByRef("NumeroGama")})
            .Method("ListarMaterialesDeUnaGama", &CMaterialGama::ListarMaterialesDeUnaGama, {{"NumeroGama"}})
            .Method("CostoTotalMaterialesGama", &CMaterialGama::CostoTotalMaterialesGama, {{"NumeroGama"}})
            .Method("AgregarMaterialesAOT", &CMaterialGama::AgregarMaterialesAOT,
                    {ByRef("numeroOT"), ByRef("NumeroGama")})
            .Method("AsignarManoObraAOT", &CMaterialGama::AsignarManoObraAOT, {ByRef("numeroOT"), ByRef("NumeroGama")})
            .Build();
    return table;
}

const ClassTable* CMaterialGama::Table() const { return &ClassMembers(); }

}  // namespace Zontara

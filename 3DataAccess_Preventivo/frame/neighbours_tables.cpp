#include "frame/neighbours.h"
#include "frame/table_builder.h"

namespace Zontara {

const ClassTable* Campo::Table() const {
    static const ClassTable table =
        TableBuilder<Campo>("_Campo").In(Library::dhRichClient3).Get("Valor", &Campo::Valor).Build();
    return &table;
}

const ClassTable* Campos::Table() const {
    static const ClassTable table = TableBuilder<Campos>("_Campos")
                                        .In(Library::dhRichClient3)
                                        .Method("Item", &Campos::Item, {ByRef("nombre")})
                                        .Build();
    return &table;
}

const ClassTable* Recordset::Table() const {
    static const ClassTable table = TableBuilder<Recordset>("_Recordset")
                                        .In(Library::dhRichClient3)
                                        .Get("TotalRegistros", &Recordset::TotalRegistros)
                                        .Method("MoverPrimero", &Recordset::MoverPrimero)
                                        .Method("MoverSiguiente", &Recordset::MoverSiguiente)
                                        .Get("FinDeDatos", &Recordset::FinDeDatos)
                                        .Get("Campos", &Recordset::LosCampos)
                                        .Build();
    return &table;
}

const ClassTable* ListaCambios::Table() const {
    static const ClassTable table = TableBuilder<ListaCambios>("_ListaCambios")
                                        .In(Library::Perluma)
                                        .Method("Agregar", &ListaCambios::Agregar, {{"texto"}})
                                        .Get("Total", &ListaCambios::Total)
                                        .Method("Elemento", &ListaCambios::Elemento, {{"posicion"}})
                                        .Build();
    return &table;
}

std::string Conexion::TypeName() const { return std::string(kTypeName); }

std::string SesionGlobal::TypeName() const { return std::string(kTypeName); }

}  // namespace Zontara

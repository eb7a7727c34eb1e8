#include "meter/CImputacionParalela.h"

#include "frame/table_builder.h"

namespace Zontara {

const ClassTable& CImputacionParalela::ClassMembers() {
    using C = CImputacionParalela;
    static const ClassTable table =
        TableBuilder<C>("_CImputacionParalela")
            .Creatable()
            .Method("Nuevo", &C::Nuevo, {{"SC_Imputacion_Sistematica"}, {"SC_Paralela"}})
            .Method("Borrar", &C::Borrar, {{"SC_Imputacion_Paralela"}})
            .Method("Seleccionar", &C::Seleccionar, {{"SC_Imputacion_Sistematica"}, OptionalByRef("sColumnas", "")})
            .Method("Salvar", &C::Salvar, {{"SC_Imputacion_Paralela"}, {"SC_Imputacion_Sistematica"}, {"SC_Paralela"}})
            .Method("ResetearParalelas", &C::ResetearParalelas, {{"SC_Imputacion_Sistematica"}, {"Fecha_Lanzamiento"}})
            .Build();
    return table;
}

}  // namespace Zontara

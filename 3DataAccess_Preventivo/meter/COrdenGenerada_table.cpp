#include "meter/COrdenGenerada.h"

#include "frame/table_builder.h"

namespace Zontara {

const ClassTable& COrdenGenerada::ClassMembers() {
    using C = COrdenGenerada;
    static const ClassTable table =
        TableBuilder<C>("_COrdenGenerada")
            .Creatable()
            .Method("Nuevo", &C::Nuevo, {{"SC_Orden_Trabajo"}, {"SC_Imputacion"}, ByRef("Fecha_Generacion")})
            .Method("Borrar", &C::Borrar, {{"SC_Orden_Generada"}})
            .Method("Seleccionar", &C::Seleccionar, {{"SC_Imputacion_Sistematica"}})
            .Method("Salvar", &C::Salvar,
                    {{"SC_Orden_Generada"}, {"SC_Orden_Trabajo"}, {"SC_Imputacion"}, {"Fecha_Generacion"}})
            .Method("SeleccionarPorFecha", &C::SeleccionarPorFecha,
                    {{"SC_Imputacion_Sistematica"}, {"Fecha_Generacion"}, OptionalByRef("UnOperador", "=")})
            .Method("SeleccionarPorSemana", &C::SeleccionarPorSemana, {{"SemanaDelAno"}, {"Ano"}})
            .Build();
    return table;
}

}  // namespace Zontara

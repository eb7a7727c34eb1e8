#include "bulletins/CBoletin.h"
#include "frame/table_builder.h"

namespace Zontara {

const ClassTable& CBoletin::ClassMembers() {
    static const ClassTable table =
        TableBuilder<CBoletin>("_CBoletin")
            .Creatable()
            .Method("Nuevo", &CBoletin::Nuevo,
                    {{"SC_Imputacion_Preventiva"},
                     {"ID_Equipo"},
                     {"Fecha_Lanzamiento"},
                     {"Fecha_Entrega"},
                     {"Fecha_Real_Entrega"},
                     {"Lunes"},
                     {"Martes"},
                     {"Miercoles"},
                     {"Jueves"},
                     {"Viernes"},
                     {"Sabado"},
                     {"Domingo"},
                     {"Semana_Del_Ano"},
                     {"SC_Usuario"}})
            .Method("Borrar", &CBoletin::Borrar, {{"SC_Boletin"}})
            .Method(
                "Seleccionar", &CBoletin::Seleccionar,
                {OptionalByRef("sCondicion", ""), OptionalByRef("sColumnas", ""), OptionalByRef("TipoFrecuencia", "")})
            .Method("Salvar", &CBoletin::Salvar,
                    {{"SC_Boletin"},
                     {"Lunes"},
                     {"Martes"},
                     {"Miercoles"},
                     {"Jueves"},
                     {"Viernes"},
                     {"Sabado"},
                     {"Domingo"},
                     ByRef("Fecha_Real_Entrega"),
                     {"Nota"},
                     ByRef("Estatus"),
                     ByRef("OrdenTrabajo")})
            .Method("Buscar", &CBoletin::Buscar, {{"SC_Boletin"}, OptionalByRef("sColumnas", "")})
            .Method("SeleccionarPorSemana", &CBoletin::SeleccionarPorSemana, {{"SemanaDelAno"}, {"Ano"}})
            .Method("UltimaSemanaLanzada", &CBoletin::UltimaSemanaLanzada, {{"AnoActual"}})
            .Method("ExistenBoletinesParaEditar", &CBoletin::ExistenBoletinesParaEditar,
                    {{"SemanaDelAno"}, {"Ano"}, {"ID_Activo"}})
            .Method("SeleccionarBoletines", &CBoletin::SeleccionarBoletines, {{"Estatus"}})
            .Method("MarcarBoletinEnEjecucion", &CBoletin::MarcarBoletinEnEjecucion, {{"SC_Boletin"}})
            .Method("MarcarBoletinEjecutado", &CBoletin::MarcarBoletinEjecutado, {{"SC_Boletin"}})
            .Method("Estatus", &CBoletin::Estatus, {ByRef("idEstatus")})
            .Method("AsignarOTAlBoletin", &CBoletin::AsignarOTAlBoletin,
                    {{"SC_Boletin"}, {"Nota"}, ByRef("Estatus"), ByRef("OrdenTrabajo")})
            .Build();
    return table;
}

const ClassTable* CBoletin::Table() const { return &ClassMembers(); }

}  // namespace Zontara

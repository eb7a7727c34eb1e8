#include "frame/table_builder.h"
#include "readings/CLecturaEquipo.h"

namespace Zontara {

const ClassTable& CLecturaEquipo::ClassMembers() {
    using Report = Ref<Recordset> (CLecturaEquipo::*)(Date, Date, std::string&, std::int32_t, std::int32_t,
                                                      const std::string&, const std::string&);
    const std::vector<In> report{ByRef("DesdeFecha"),
                                 ByRef("HastaFecha"),
                                 OptionalByRef("ID_Capitulo", ""),
                                 OptionalByRef("ID_Localizacion", std::int32_t{0}),
                                 OptionalByRef("id_Lectura", std::int32_t{0}),
                                 OptionalByRef("sColumnas", ""),
                                 OptionalByRef("ListaActivos", "")};
    static const ClassTable table =
        TableBuilder<CLecturaEquipo>("_CLecturaEquipo")
            .Creatable()
            .Get("ListaLecturasModificada", &CLecturaEquipo::ListaLecturasModificada)
            .PutRef("ListaLecturasModificada", &CLecturaEquipo::ListaLecturasModificada)
            .Method("Nuevo", &CLecturaEquipo::Nuevo,
                    {{"Fecha"},
                     {"ID_Equipo"},
                     {"SC_Unidad_Lectura"},
                     {"Valor_Real"},
                     {"Lectura"},
                     {"Lectura_Anterior"},
                     {"CombustibleConsumido"},
                     {"Nota"},
                     {"CodigoDepartamento"},
                     {"ValorValeSalida"},
                     {"NumeroVale"}})
            .Method("Borrar", &CLecturaEquipo::Borrar, {{"SC_Lectura"}})
            .Method("Seleccionar", &CLecturaEquipo::Seleccionar, {{"ID_Equipo"}, OptionalByRef("sColumnas", "")})
            .Method("Salvar", &CLecturaEquipo::Salvar,
                    {{"SC_Lectura"},
                     {"Fecha"},
                     {"ID_Equipo"},
                     {"SC_Unidad_Lectura"},
                     {"Valor_Real"},
                     {"Lectura"},
                     {"Lectura_Anterior"},
                     {"CombustibleConsumido"},
                     {"Nota"},
                     {"CodigoDepartamento"},
                     {"ValorValeSalida"},
                     {"NumeroVale"},
                     {"LecturaRealADisminuir"}})
            .Method("Buscar", &CLecturaEquipo::Buscar, {{"SC_Lectura"}, OptionalByRef("sColumnas", "")})
            .Method("SeleccionarTodos", &CLecturaEquipo::SeleccionarTodos,
                    {{"sCondicion"}, OptionalByRef("sColumnas", "")})
            .Method("Ultimas10Lecturas", &CLecturaEquipo::Ultimas10Lecturas,
                    {{"ID_Equipo"}, OptionalByRef("sColumnas", "")})
            .Method("ObtenerLecturas", static_cast<Report>(&CLecturaEquipo::ObtenerLecturas), report)
            .Method("ObtenerLecturasPorMes", static_cast<Report>(&CLecturaEquipo::ObtenerLecturasPorMes), report)
            .Build();
    return table;
}

const ClassTable* CLecturaEquipo::Table() const { return &ClassMembers(); }

}  // namespace Zontara

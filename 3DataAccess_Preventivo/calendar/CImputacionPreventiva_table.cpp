#include "bulletins/CConfiguracionOTBoletin.h"
#include "calendar/CImputacionPreventiva.h"
#include "frame/table_builder.h"

namespace Zontara {

const ClassTable* CImputacionPreventiva::Table() const { return &ClassMembers(); }

const ClassTable& CImputacionPreventiva::ClassMembers() {
    using C = CImputacionPreventiva;
    static const std::vector<In> launch{{"Fecha_Lanzamiento"},
                                        {"SC_Usuario"},
                                        {"TipoFrecuencia"},
                                        Optional("ConfiguracionOT", nullptr),
                                        Optional("CodigoProyecto", 0)};
    static const std::vector<In> overdue{{"IDActivo"}, Optional("IdImputacion", 0), Optional("fechaSimulada", "")};
    static const ClassTable table =
        TableBuilder<C>("_CImputacionPreventiva")
            .Creatable()
            .Get("CatalogoModificado", &C::CatalogoModificado)
            .Get("OTPreventivaGenerada", &C::OTPreventivaGenerada)
            .PutRef("OTPreventivaGenerada", &C::OTPreventivaGenerada)
            .Method("Nuevo", &C::Nuevo,
                    {{"ID_Activo"},
                     {"SC_Gama"},
                     {"Fecha_Imputacion"},
                     {"Anulada"},
                     {"SC_Usuario"},
                     {"frecuencia"},
                     {"Intervalo_Frecuencia"},
                     {"Numero_Repeticion_Ciclo"},
                     {"Acumulado_Ciclo"},
                     {"Fecha_Inicio"},
                     {"Fecha_Ultimo_Lanzamiento"},
                     {"Fecha_Ultima_Modificacion"},
                     {"Causa_Modificacion"},
                     {"Semana"},
                     {"Finaliza"},
                     {"Programacion"},
                     {"EsProgramacionSincronizada"},
                     {"Breve_Descripcion"}})
            .Method("Borrar", &C::Borrar, {{"SC_Imputacion_Preventiva"}})
            .Method("SeleccionarPorGama", &C::SeleccionarPorGama, {{"SC_Gama"}, Optional("sColumnas", "")})
            .Method("Salvar", &C::Salvar,
                    {{"SC_Imputacion_Preventiva"},
                     {"ID_Activo"},
                     {"SC_Gama"},
                     {"Fecha_Imputacion"},
                     {"Anulada"},
                     {"SC_Usuario"},
                     {"frecuencia"},
                     {"Intervalo_Frecuencia"},
                     {"Numero_Repeticion_Ciclo"},
                     {"Fecha_Inicio"},
                     {"Finaliza"},
                     {"Programacion"},
                     {"Fecha_Ultimo_Lanzamiento"}})
            .Method("SeleccionarPorEquipo", &C::SeleccionarPorEquipo,
                    {{"ID_Activo"}, Optional("sColumnas", ""), Optional("frecuencia", "")})
            .Method("Anular", &C::Anular, {{"SC_Imputacion_Preventiva"}})
            .Method("AnularPorEquipo", &C::AnularPorEquipo, {{"ID_Activo"}})
            .Method("LanzarPreventivo", &C::LanzarPreventivo, launch)
            .Method("SeleccionarActivas", &C::SeleccionarActivas,
                    {{"Fecha_Lanzamiento"},
                     Optional("sColumnas", ""),
                     Optional("LasSincronizadas", true),
                     Optional("IDActivo", ""),
                     Optional("SoloActivoEnServicio", false),
                     Optional("CodigoProyecto", 0),
                     Optional("IdImputacion", 0)})
            .Method("Buscar", &C::Buscar, {{"SC_Imputacion_Preventiva"}, Optional("sColumnas", "")})
            .Method("Existe", &C::Existe, {{"NumeroGama"}, {"CodigoGrupo"}, {"IDEquipo"}})
            .Method("SeleccionarTodos", &C::SeleccionarTodos, {{"sCondicion"}, Optional("sColumnas", "")})
            .Method("FrecuenciaValida", &C::FrecuenciaValida, {{"frecuencia"}, {"TipoFrecuencia"}})
            .Method("ImputacionEstaVencida", &C::ImputacionEstaVencida, {{"rs"}, {"Fecha_Lanzamiento"}})
            .Method("MesCoordinaConProgramacion", &C::MesCoordinaConProgramacion,
                    {{"mesAEvaluar"}, {"mesProgramacion"}, {"frecuencia"}})
            .Method("ObtenerProgramacionAnteriorA", &C::ObtenerProgramacionAnteriorA,
                    {{"mesProgramacion"}, {"frecuencia"}})
            .Method("ObtenerProgramacionMenorAMesActual", &C::ObtenerProgramacionMenorAMesActual,
                    {{"mesActual"}, {"mesProgramacion"}, {"frecuencia"}})
            .Method("LanzarPreventivoConvensional", &C::LanzarPreventivoConvensional, launch)
            .Method("ActivoTieneMantenimientoVencido", &C::ActivoTieneMantenimientoVencido, overdue)
            .Method("ActivoTieneMantenimientoConvencionalVencido", &C::ActivoTieneMantenimientoConvencionalVencido,
                    overdue)
            .Method("ReiniciarTareaNoSincronizada", &C::ReiniciarTareaNoSincronizada,
                    {{"IDActivo"}, {"Fecha_Reinicio"}})
            .Raises("ProcesandoImputacion", "numeroRegistro")
            .Raises("ImputacionesRecuperadas", "totalRegistros")
            .Build();
    return table;
}

}  // namespace Zontara

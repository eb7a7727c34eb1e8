#include "meter/CImputacionSistematica.h"

#include "bulletins/CConfiguracionOTBoletin.h"
#include "frame/table_builder.h"

namespace Zontara {

const ClassTable& CImputacionSistematica::ClassMembers() {
    using C = CImputacionSistematica;
    static const ClassTable table = [] {
        const In columnas = OptionalByRef("sColumnas", "");
        const In capitulo = OptionalByRef("ID_Capitulo", "");
        return TableBuilder<C>("_CImputacionSistematica")
            .Creatable()
            .Method("Nuevo", &C::Nuevo,
                    {{"ID_Activo"},
                     {"SC_Gama"},
                     {"Fecha_Imputacion"},
                     {"Anulada"},
                     {"SC_Usuario"},
                     {"Fecha_Inicio"},
                     {"Fecha_Fin"},
                     {"Acumulado_Lectura"},
                     {"Ultima_Lectura"},
                     {"Aproximacion_Lectura"},
                     {"Fecha_Ultimo_Lanzamiento"},
                     {"Fecha_Ultima_Modificacion"},
                     {"Causa_Modificacion"},
                     {"Lectura_Limite"}})
            .Method("Borrar", &C::Borrar, {{"SC_Imputacion_Sistematica"}})
            .Method("SeleccionarPorGama", &C::SeleccionarPorGama, {{"SC_Gama"}, columnas})
            .Method("Salvar", &C::Salvar,
                    {{"SC_Imputacion_Sistematica"},
                     {"ID_Activo"},
                     {"SC_Gama"},
                     {"Fecha_Imputacion"},
                     {"Anulada"},
                     {"SC_Usuario"},
                     {"Fecha_Inicio"},
                     {"Fecha_Fin"},
                     {"Aproximacion_Lectura"},
                     {"Lectura_Limite"}})
            .Method("SeleccionarPorEquipo", &C::SeleccionarPorEquipo, {{"ID_Activo"}, columnas})
            .Method("ListarImputacionesVencidas", &C::ListarImputacionesVencidas, {{"ID_Activo"}, columnas})
            .Method("AnularPorEquipo", &C::AnularPorEquipo, {{"ID_Activo"}})
            .Method("Anular", &C::Anular, {{"SC_Imputacion_Sistematica"}})
            .Method("LanzarSistematico", &C::LanzarSistematico, {{"Fecha_Lanzamiento"}, {"CodigoUsuario"}, capitulo})
            .Method("UltimaLectura", &C::UltimaLectura, {{"ID_Activo"}, {"Unidad_Lectura"}})
            .Method("Resetear", &C::Resetear, {{"SC_Imputacion_Sistematica"}, {"Fecha_Lanzamiento"}})
            .Method(
                "ActualizarAcumulado", &C::ActualizarAcumulado,
                {{"ID_Activo"}, ByRef("Unidad_Lectura"), {"Fecha_Lectura"}, {"Valor_Real_Lectura"}, {"Valor_Lectura"}})
            .Method("ActualizarAcumuladoDeReferencia", &C::ActualizarAcumuladoDeReferencia,
                    {{"SC_Imputacion_Sistematica"}, {"Fecha_Lanzamiento"}, {"NuevoAcumulado"}})
            .Method("SeleccionarActivas", &C::SeleccionarActivas, {{"Fecha_Lanzamiento"}, columnas, capitulo})
            .Method("Buscar", &C::Buscar, {{"SC_Imputacion_Sistematica"}, columnas})
            .Method("Existe", &C::Existe, {{"NumeroGama"}, {"CodigoGrupo"}, {"IDEquipo"}})
            .Method("SeleccionarAproximaciones", &C::SeleccionarAproximaciones, {columnas})
            .Method("SeleccionarTodos", &C::SeleccionarTodos,
                    {{"sCondicion"}, columnas, OptionalByRef("AgrupadaPorActivo", false)})
            .Method("GenerarOTSSistematicas", &C::GenerarOTSSistematicas,
                    {{"Fecha_Lanzamiento"},
                     {"ConfigOT"},
                     capitulo,
                     OptionalByRef("ID_Localizacion", 0),
                     OptionalByRef("CodigoProyecto", 0)})
            .Method("ListarImputacionesDeUnActivo", &C::ListarImputacionesDeUnActivo, {ByRef("ID_Activo"), columnas})
            .Method("ReprogramarImputacionesDeunActivo", &C::ReprogramarImputacionesDeunActivo,
                    {{"IDActivo"}, ByRef("IdImputacionALanzar")})
            .Method("AdelantarMantenimiento", &C::AdelantarMantenimiento, {{"IdImputacion"}, {"IDActivo"}})
            .Method("EsProgramacionPrima", &C::EsProgramacionPrima, {ByRef("Programacion"), ByRef("IDActivo")})
            .Method("ActivoNecesitaMantenimiento", &C::ActivoNecesitaMantenimiento,
                    {ByRef("ID_Activo"), OptionalByRef("IdImputacion", 0)})
            .Method("IdGamaImputacion", &C::IdGamaImputacion, {{"SC_Imputacion_Sistematica"}})
            .Get("ActivoReprogramado", &C::ActivoReprogramado)
            .PutRef("ActivoReprogramado", &C::ActivoReprogramado)
            .Get("OrdenesSistematicasGeneradas", &C::OrdenesSistematicasGeneradas)
            .PutRef("OrdenesSistematicasGeneradas", &C::OrdenesSistematicasGeneradas)
            .Get("CatalogoModificado", &C::CatalogoModificado)
            .PutRef("CatalogoModificado", &C::CatalogoModificado)
            .Method("ElActivoTieneAproximacionesVencidas", &C::ElActivoTieneAproximacionesVencidas, {ByRef("IDActivo")})
            .Build();
    }();
    return table;
}

}  // namespace Zontara

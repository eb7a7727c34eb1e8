#include "meter/CImputacionSistematica.h"

#include "bulletins/CConfiguracionOTBoletin.h"
#include "catalogues/CMaterialGama.h"
#include "errors/trap.h"
#include "frame/Libreria.h"
#include "frame/convert.h"
#include "frame/creation.h"
#include "frame/provider.h"
#include "frame/raised_error.h"
#include "frame/regional.h"
#include "meter/COrdenGenerada.h"

namespace Zontara {

namespace {

/// What an order is made from. `Descripcion` is the group's, `unidad` the reading unit's.
constexpr std::string_view kColumnas =
    "SC_Imputacion_Sistematica,"
    "Fecha_Ultimo_Lanzamiento,Unidad_Lectura.descripcion as unidad,"
    "Anulada,Activo.SC_Unidad_Lectura , Acumulado_Lectura,"
    "Finaliza,Fecha_Inicio,Fecha_Fin,Lectura_Limite,"
    "Gama.SC_Gama,Activo.ID_Activo,Gama.Numero_Gama ,"
    "Activo.Equipo_Parado,Grupo_Gama.Descripcion,Gama.SC_Ejecutor_Gama,Ultimo_Acumulado ";

std::int32_t Int32In(const Ref<Recordset>& rs, std::string_view field) {
    return ConvertTo<std::int32_t>(rs->Valor(field));
}

/// Whether the current row has used up its interval. The asset's reading is the one that the run took at its start.
bool IsDue(const Ref<Recordset>& rs, std::int32_t acumulado) {
    const std::int64_t growth = std::int64_t{acumulado} - Int32In(rs, "ultimo_acumulado");
    return NarrowToInt32(growth) >= Int32In(rs, "Lectura_Limite");
}

std::string TextOfOrder(const Ref<Recordset>& rs) {
    const std::string unidad = ToText(rs->Valor("unidad"));
    return "Execute Task "
           " Nº " +
           ToText(rs->Valor("Numero_Gama")) + " of " + ToText(rs->Valor("Lectura_Limite")) + " " + unidad +
           " after been reached the accumulated " + ToText(rs->Valor("Acumulado_Lectura")) + " " + unidad;
}

/// The process for new orders; 0 when none is defined.
std::int32_t ProcessOfOrders() {
    const Ref<Recordset> procesos = Neighbours().Perluma().Procesos()->SeleccionarProcesos(1);
    if (!Libreria::ExistenRegistros(procesos)) return 0;
    const std::int32_t SC_Proceso = Int32In(procesos, "SC_Proceso");
    // Read because a process without a valid status is a failure; its value decides nothing.
    static_cast<void>(Int32In(procesos, "Estatus_Valido"));
    return SC_Proceso;
}

}  // namespace

struct CImputacionSistematica::Run {
    Date Fecha_Lanzamiento;
    Ref<CConfiguracionOTBoletin> ConfigOT;
    Ref<COrdenGenerada> log;
    /// Made at the first order.
    Ref<CMaterialGama> materiales;
};

void CImputacionSistematica::LanzarSistematico(Date Fecha_Lanzamiento, std::int32_t CodigoUsuario,
                                               const std::string& ID_Capitulo) {
    Trap(
        "CImputacionSistematica.LanzarSistematico(Fecha_Lanzamiento,CodigoUsuario,ID_Capitulo)", [] {},
        [&] { return Arguments(Fecha_Lanzamiento, CodigoUsuario, ID_Capitulo); });
}

void CImputacionSistematica::GenerarOTSSistematicas(Date Fecha_Lanzamiento,
                                                    const Ref<CConfiguracionOTBoletin>& ConfigOT,
                                                    const std::string& ID_Capitulo, std::int32_t ID_Localizacion,
                                                    std::int32_t CodigoProyecto) {
    Trap(
        "CImputacionSistematica.GenerarOTSSistematicas(Fecha_Lanzamiento,ConfigOT,ID_Capitulo,"
        "ID_Localizacion)",
        [&] {
            Run run{Fecha_Lanzamiento, ConfigOT, Create<COrdenGenerada>(), {}};
            const Ref<ServicioActivos> servicio = Neighbours().NewServicioActivos();
            Ref<Recordset> activos = servicio->SeleccionarActivos(ID_Capitulo, 0, 0, true, CodigoProyecto);
            if (!Libreria::ExistenRegistros(activos)) return;
            for (activos->MoverPrimero(); !activos->FinDeDatos(); activos->MoverSiguiente()) {
                const std::int32_t acumulado = Int32In(activos, "Acumulado_Lectura");
                GenerarDeUnActivo(run, ConvertTo<std::string>(activos->Valor("ID_Activo")), acumulado);
            }
            Release(run.log);
            activos.reset();
            ordenesSistematicasGeneradas_.Send();
        },
        [&] { return Arguments(Fecha_Lanzamiento, ConfigOT, ID_Capitulo, ID_Localizacion); });
}

void CImputacionSistematica::GenerarDeUnActivo(Run& run, const std::string& ID_Activo, std::int32_t acumulado) {
    const Ref<Recordset> rs = ListarImputacionesDeUnActivo(ID_Activo, std::string(kColumnas));
    if (!Libreria::ExistenRegistros(rs)) return;
    rs->MoverPrimero();
    while (!rs->FinDeDatos() && !IsDue(rs, acumulado))
        rs->MoverSiguiente();
    if (rs->FinDeDatos()) return;

    // The rows are a snapshot and the reading stays: what one order changes can't make another row due, or not.
    Libreria::IniciarTransaccion();
    for (; !rs->FinDeDatos(); rs->MoverSiguiente()) {
        if (IsDue(rs, acumulado)) GenerarUnaOT(run, rs, acumulado);
    }
    Libreria::TerminarTransaccion();
}

void CImputacionSistematica::GenerarUnaOT(Run& run, const Ref<Recordset>& rs, std::int32_t acumulado) {
    const std::int32_t SC_Orden_Trabajo = NuevaOT(rs, run.Fecha_Lanzamiento, run.ConfigOT);
    run.log->Nuevo(SC_Orden_Trabajo, Int32In(rs, "SC_Imputacion_Sistematica"), run.Fecha_Lanzamiento);
    if (!run.materiales) run.materiales = Create<CMaterialGama>();
    run.materiales->AgregarMaterialesAOT(SC_Orden_Trabajo, Int32In(rs, "SC_Gama"));
    run.materiales->AsignarManoObraAOT(SC_Orden_Trabajo, Int32In(rs, "SC_Gama"));
    ActualizarAcumuladoDeReferencia(Int32In(rs, "SC_Imputacion_Sistematica"), run.Fecha_Lanzamiento, acumulado);
}

std::int32_t CImputacionSistematica::NuevaOT(const Ref<Recordset>& rs, Date Fecha_Lanzamiento,
                                             const Ref<CConfiguracionOTBoletin>& ConfiguracionOT) {
    return TrapWithoutConnection(
        "CImputacionSistematica.NuevaOT(rs,Fecha_Lanzamiento,ConfiguracionOT)",
        [&] {
            if (!ConfiguracionOT) Raise(RunTimeError::ObjectNotSet);
            DatosOrden datos;
            (ConfiguracionOT->EsEjecutorExterno() ? datos.EjecutorExterno : datos.EjecutorInterno) =
                ConfiguracionOT->CodigoEjecutorOT();
            datos.TextoTrabajo = TextOfOrder(rs);
            datos.SC_Proceso = ProcessOfOrders();
            datos.Descripcion = ConvertTo<std::string>(rs->Valor("Descripcion"));
            datos.FechaSolicitud = CurrentRegional().ToText(Fecha_Lanzamiento);
            datos.FechaDeseada = datos.FechaSolicitud;
            datos.Origen = 1;
            datos.UsuarioDestino = ConfiguracionOT->UsuarioDestino();
            datos.Prioridad = NarrowToInt16(ConfiguracionOT->PrioridadSolicitada());
            datos.ID_Activo = ConvertTo<std::string>(rs->Valor("ID_Activo"));
            datos.TipoIntervencion = ConfiguracionOT->TipoIntervencion();
            datos.SC_Imputacion_Sistematica = Int32In(rs, "SC_Imputacion_Sistematica");
            return Neighbours().Perluma().OrdenesTrabajo()->CrearOrden(datos);
        },
        [&] { return Arguments(rs, Fecha_Lanzamiento, ConfiguracionOT); });
}

}  // namespace Zontara

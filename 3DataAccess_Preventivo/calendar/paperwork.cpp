#include "calendar/paperwork.h"

#include "bulletins/CBoletin.h"
#include "calendar/frequency.h"
#include "errors/trap.h"
#include "frame/Libreria.h"
#include "frame/convert.h"
#include "frame/creation.h"
#include "frame/platform.h"
#include "frame/provider.h"
#include "frame/raised_error.h"
#include "frame/regional.h"

namespace Zontara::calendar {

namespace {

/// Stands in the log for every order of a calendar launch, in place of an assignment's key.
constexpr std::int32_t kCalendarOrder = 99;
constexpr std::int32_t kActiveProcesses = 1;

}  // namespace

void GeneroBoletin(const Ref<Recordset>& rs, Date Fecha_Lanzamiento, std::int32_t SC_Usuario,
                   const std::string& Frecuencia) {
    TrapWithoutConnection(
        "CImputacionPreventiva.GeneroBoletin(rs,Fecha_Lanzamiento,SC_Usuario,Frecuencia)",
        [&] {
            const Regional& regional = CurrentRegional();
            const std::string launched = regional.ToShortDate(Fecha_Lanzamiento);
            const Date delivery = AddDays(Fecha_Lanzamiento, DaysToDelivery(FrequencyOf(Frecuencia)));
            Ref<CBoletin> bulletin = Create<CBoletin>();
            bulletin->Nuevo(ConvertTo<std::int32_t>(rs->Valor("SC_Imputacion_Preventiva")),
                            ConvertTo<std::string>(rs->Valor("ID_Activo")), launched, regional.ToShortDate(delivery),
                            launched, "", "", "", "", "", "", "", NarrowToInt16(WeekOfYear(Fecha_Lanzamiento)),
                            SC_Usuario);
            Zontara::Release(bulletin);
        },
        [&] { return Arguments(rs, Fecha_Lanzamiento, SC_Usuario, Frecuencia); });
}

void OrderWriter::Write(const Recordset& row, Date booked, const std::string& frecuencia) {
    // Only the one that applies is set: should a host change its mind during the launch, the other keeps its value.
    if (configuration_->EsEjecutorExterno()) {
        externalExecutor_ = configuration_->CodigoEjecutorOT();
    } else {
        internalExecutor_ = configuration_->CodigoEjecutorOT();
    }
    const std::string ID_Activo = ConvertTo<std::string>(row.Valor("ID_Activo"));
    const std::string work = "Execute Task " + ToText(row.Valor("EjecutorGama")) + " Nº " +
                             ToText(row.Valor("Numero_Gama")) + " ,Frequency " + frecuencia;
    const std::int32_t SC_Gama = ConvertTo<std::int32_t>(row.Valor("SC_Gama"));
    FindProcess();
    const std::int32_t order = CreateOrder(row, SC_Gama, ID_Activo, work);

    if (!log_) log_ = Create<COrdenGenerada>();
    log_->Nuevo(order, kCalendarOrder, booked);
    if (!materials_) materials_ = Create<CMaterialGama>();
    // Both want the task's key, whatever their argument is called.
    materials_->AgregarMaterialesAOT(order, SC_Gama);
    materials_->AsignarManoObraAOT(order, SC_Gama);
}

void OrderWriter::FindProcess() {
    Ref<Recordset> processes = Neighbours().Perluma().Procesos()->SeleccionarProcesos(kActiveProcesses);
    if (Libreria::ExistenRegistros(processes)) process_ = ConvertTo<std::int32_t>(processes->Valor("SC_Proceso"));
    Zontara::Release(processes);
}

std::int32_t OrderWriter::CreateOrder(const Recordset& row, std::int32_t SC_Gama, const std::string& ID_Activo,
                                      const std::string& work) {
    // An order is asked for today, whatever day was booked, and wanted as many days later as its priority says.
    const Date now = CurrentPlatform().Now();
    const std::int32_t priority = configuration_->PrioridadSolicitada();
    DatosOrden order;
    order.Descripcion = ConvertTo<std::string>(row.Valor("Descripcion"));
    TellDays(now, priority);
    order.FechaSolicitud = askedText_;
    order.FechaDeseada = wantedText_;
    order.EjecutorInterno = internalExecutor_;
    order.TextoTrabajo = work;
    order.UsuarioDestino = configuration_->UsuarioDestino();
    order.Prioridad = NarrowToInt16(priority);
    order.ID_Activo = ID_Activo;
    order.TipoIntervencion = configuration_->TipoIntervencion();
    order.SC_Proceso = process_;
    order.EjecutorExterno = externalExecutor_;
    order.SC_Gama = SC_Gama;
    return Neighbours().Perluma().OrdenesTrabajo()->CrearOrden(order);
}

/// The clock goes on by whole seconds, in each of which there are thousands of orders.
void OrderWriter::TellDays(Date asked, std::int32_t daysToWait) {
    const Regional& regional = CurrentRegional();
    if (asked == asked_ && daysToWait == daysToWait_ && form_ == regional.ShortDateForm()) return;
    form_.clear();
    askedText_ = regional.ToText(asked);
    wantedText_ = regional.ToText(AddDays(asked, daysToWait));
    asked_ = asked;
    daysToWait_ = daysToWait;
    form_ = regional.ShortDateForm();
}

void OrderWriter::Release() {
    Zontara::Release(log_);
    Zontara::Release(materials_);
}

}  // namespace Zontara::calendar

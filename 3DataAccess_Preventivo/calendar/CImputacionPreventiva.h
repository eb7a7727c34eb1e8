#pragma once

#include "frame/date.h"
#include "frame/event_source.h"
#include "frame/export.h"
#include "frame/neighbours.h"
#include "frame/notices.h"
#include "frame/object.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace Zontara {

class CConfiguracionOTBoletin;

namespace calendar {
struct LaunchKind;
}

/// Calendar assignments, table `Imputacion_Preventiva`: a row ties a task to an asset with a frequency, and a launch
/// turns what is due into bulletins or work orders. `Es_Sincronizada` tells the two kinds apart. A synchronised
/// assignment follows the grid of week numbers and months, a conventional one the time since its last launch.
///
/// An instance holds two lists of change notices and its subscribers, nothing else; a session must be open. It is used
/// by one thread at a time. A record operation costs one statement, a launch one selection and, for each due row, what
/// is written for it.
///
/// Texts and column lists go into the statements as they come: a single quote in a value breaks the statement. Dates
/// given as text are stored as YYYY-MM-DD when they read as a date, and as they are when they don't.
///
/// Failures are raised errors. Unless told otherwise an operation reports its own with a call-stack line, writes with a
/// single statement in the caller's transaction, if there is one, and changes nothing when it fails.
///
/// Events: `ImputacionesRecuperadas(totalRegistros)` once a launch, before its first row, and
/// `ProcesandoImputacion(numeroRegistro)` for each row, from 1.
class ZONTARA_EXPORT CImputacionPreventiva : public Object, public EventSource {
public:
    static constexpr std::string_view kTypeName = "CImputacionPreventiva";
    static const ClassTable& ClassMembers();
    const ClassTable* Table() const override;

    // Change notices

    /// Gets an empty notice from each `Nuevo`, `Borrar` and `Salvar`. Made at first use, then always the same list.
    Ref<ListaCambios> CatalogoModificado();
    /// Gets an empty notice from each launch that looked at any row. Made at first use.
    Ref<ListaCambios> OTPreventivaGenerada();
    /// Puts the client's list in place, so that several instances can share one. None: the next use makes a new list.
    void OTPreventivaGenerada(const Ref<ListaCambios>& lista);

    // Records

    /// Writes a new assignment and gives its key. One transaction, nested in the caller's if there is one; then a
    /// notice to `CatalogoModificado`.
    /// `frecuencia`: a frequency word. `Intervalo_Frecuencia`: the assignment is due when the step of its frequency
    /// (1 up to a month, 2, 3, 6 or 12 months) reaches it. `Numero_Repeticion_Ciclo`: steps after which the assignment
    /// ends, if above 0 and `Finaliza` isn't 0. `Semana`: week number of the last launch. `Programacion`: the anchor:
    ///   - synchronised: week of the month, 1 to 4 ("Quincenal", "Mensual"), month, 1 to 12 (longer frequencies);
    ///   - conventional: a date ("Fecha"), a weekday, Monday is 1 ("Semanal"), a day of the month ("Mensual"), a day
    ///     and a month with a comma between them (longer frequencies).
    /// A failure comes as it is, without a call-stack line of this operation: the transaction stays open, and the
    /// caller has to abort it. No notice then.
    std::int32_t Nuevo(const std::string& ID_Activo, std::int32_t SC_Gama, const std::string& Fecha_Imputacion,
                       std::uint8_t Anulada, std::int32_t SC_Usuario, const std::string& frecuencia,
                       std::int32_t Intervalo_Frecuencia, std::int32_t Numero_Repeticion_Ciclo,
                       std::int32_t Acumulado_Ciclo, const std::string& Fecha_Inicio,
                       const std::string& Fecha_Ultimo_Lanzamiento, const std::string& Fecha_Ultima_Modificacion,
                       const std::string& Causa_Modificacion, std::int32_t Semana, std::uint8_t Finaliza,
                       const std::string& Programacion, bool EsProgramacionSincronizada,
                       const std::string& Breve_Descripcion);

    /// Removes the assignment, whatever was launched from it, and sends a notice to `CatalogoModificado`. Unknown key:
    /// nothing is removed, no error.
    void Borrar(std::int32_t SC_Imputacion_Preventiva);

    /// Rewrites an assignment and sends a notice to `CatalogoModificado`. Kind, week, accumulated cycle, descriptions
    /// and the data of the last modification stay. `Programacion` is a number here: the two-item anchors of
    /// conventional assignments can't be saved. Unknown key: nothing changes, no error.
    void Salvar(std::int32_t SC_Imputacion_Preventiva, const std::string& ID_Activo, std::int32_t SC_Gama,
                const std::string& Fecha_Imputacion, std::uint8_t Anulada, std::int32_t SC_Usuario,
                const std::string& frecuencia, std::int32_t Intervalo_Frecuencia, std::int32_t Numero_Repeticion_Ciclo,
                const std::string& Fecha_Inicio, std::uint8_t Finaliza, std::uint8_t Programacion,
                const std::string& Fecha_Ultimo_Lanzamiento);

    /// Cancels the assignment: it is never launched or evaluated again. Unknown key: nothing happens, no error. No
    /// notice.
    void Anular(std::int32_t SC_Imputacion_Preventiva);
    /// Cancels all assignments of an asset, of both kinds. No notice.
    void AnularPorEquipo(const std::string& ID_Activo);

    // Selections. `sColumnas` replaces the default columns; it names columns of the same joined tables.

    /// Assignments of a task whose asset, group and executor exist. `sColumnas` ends with a blank, and it is needed:
    /// without columns the database refuses the statement.
    Ref<Recordset> SeleccionarPorGama(std::int32_t SC_Gama, const std::string& sColumnas = "");
    /// Assignments of all assets whose key begins with `ID_Activo`, all there are when it is empty; of one frequency
    /// when `frecuencia` isn't empty. Tasks without executor are found too.
    Ref<Recordset> SeleccionarPorEquipo(const std::string& ID_Activo, const std::string& sColumnas = "",
                                        const std::string& frecuencia = "");
    /// What a launch on that day looks at: assignments in force that have begun, of one kind, in no promised order.
    /// `IDActivo` empty, `CodigoProyecto` 0 or below and `IdImputacion` 0 filter nothing. `SoloActivoEnServicio` leaves
    /// out assets whose status is 3, 4, 5 or 7.
    Ref<Recordset> SeleccionarActivas(Date Fecha_Lanzamiento, const std::string& sColumnas = "",
                                      bool LasSincronizadas = true, const std::string& IDActivo = "",
                                      bool SoloActivoEnServicio = false, std::int32_t CodigoProyecto = 0,
                                      std::int32_t IdImputacion = 0);
    /// One assignment with its asset, task, group and executor; empty when the key or any of these is missing. A list
    /// of the caller's columns ends with a blank.
    Ref<Recordset> Buscar(std::int32_t SC_Imputacion_Preventiva, const std::string& sColumnas = "");
    /// Whether the task of that number and group was ever assigned to the asset; a cancelled assignment counts.
    bool Existe(std::uint8_t NumeroGama, std::int32_t CodigoGrupo, const std::string& IDEquipo);
    /// Assignments whose asset, task, group and executor exist, with a condition of the caller's added by "and" unless
    /// it is empty. `sColumnas` is needed, as in `SeleccionarPorGama`.
    Ref<Recordset> SeleccionarTodos(const std::string& sCondicion, const std::string& sColumnas = "");

    // Launches

    /// Launches all due synchronised assignments of assets in service and gives their number: writes a bulletin for
    /// each, or with `ConfiguracionOT` a work order with materials, labour and log instead, books the day of the launch
    /// and its week, and moves or ends the cycle.
    ///
    /// One transaction around all rows: a launch lands whole or not at all. Any failure, that of an event's subscriber
    /// included, aborts everything that is open on the connection, the caller's outer transaction too, and is then
    /// raised. At the end a notice goes to `OTPreventivaGenerada`. Without any row to look at: 0, no event, no notice.
    ///
    /// The rows are selected before the transaction begins. A host that may run in several processes must therefore
    /// open the outer transaction itself (`IniciarTransaccion` of the facade) before it calls a launch, or two
    /// processes may launch one assignment twice.
    ///
    /// After each event the launch yields to the host's message loop. What the host does there goes into the open
    /// transaction; nothing guards against a second launch.
    ///
    /// `TipoFrecuencia` only goes into the error report. `CodigoProyecto` has no effect here: all projects are
    /// launched. Errors: 13 for an anchor that is no number, 6 for an interval beyond 16 bits, and whatever is refused
    /// on the way.
    std::int32_t LanzarPreventivo(Date Fecha_Lanzamiento, std::int32_t SC_Usuario, const std::string& TipoFrecuencia,
                                  const Ref<CConfiguracionOTBoletin>& ConfiguracionOT = nullptr,
                                  std::int32_t CodigoProyecto = 0);
    /// The same for conventional assignments, limited to the assets of one project when `CodigoProyecto` is above 0.
    /// The day that is booked is the one that the anchor names, not always the day of the launch. A bad anchor stops
    /// the launch even in a row that isn't due: 9 for an item that is missing, 13 for one that is no number. Reports
    /// itself under the name of `LanzarPreventivo`. The advice on the outer transaction holds here too.
    std::int32_t LanzarPreventivoConvensional(Date Fecha_Lanzamiento, std::int32_t SC_Usuario,
                                              const std::string& TipoFrecuencia,
                                              const Ref<CConfiguracionOTBoletin>& ConfiguracionOT = nullptr,
                                              std::int32_t CodigoProyecto = 0);

    // Date rules: nothing is written. Only `FrecuenciaValida` has a call-stack line of its own.

    /// Whether the word is a frequency of the class "Breve" (a fixed date, up to a month) or "Larga" (two months and
    /// more). Exact as to case; any other class is false.
    bool FrecuenciaValida(const std::string& frecuencia, const std::string& TipoFrecuencia);
    /// Whether the current row is due on that day by the synchronised rule, whatever its kind. It reads the columns
    /// `frecuencia`, `Semana`, `Programacion`, `Fecha_Ultimo_Lanzamiento` and `Intervalo_Frecuencia`.
    /// Errors: 91 for no recordset, 3021 for no current row, 3265 for a missing column, 13, 94 and 6 for its values.
    bool ImputacionEstaVencida(const Ref<Recordset>& rs, Date Fecha_Lanzamiento);
    /// Whether a month falls on the cycle that starts at `mesProgramacion` and steps by `frecuencia` months. False as
    /// soon as the walk comes back to a month; error 6 when it leaves 16 bits.
    bool MesCoordinaConProgramacion(std::int16_t mesAEvaluar, std::int16_t mesProgramacion, std::int16_t frecuencia);
    /// The month `frecuencia` months before. Error 6 when the difference leaves 16 bits.
    std::int16_t ObtenerProgramacionAnteriorA(std::int16_t mesProgramacion, std::int16_t frecuencia);
    /// Walks back from `mesProgramacion` by `frecuencia` months, at least once, to a month that isn't above `mesActual`
    /// or isn't above `mesProgramacion`. Error 5 when there is none on the way, 6 when the walk leaves 16 bits.
    std::int16_t ObtenerProgramacionMenorAMesActual(std::int16_t mesActual, std::int16_t mesProgramacion,
                                                    std::int16_t frecuencia);

    // Overdue. `fechaSimulada`, if it isn't empty, is the day to ask for instead of today, in the system's short date
    // form; error 13 when it is no date. These have no call-stack line of their own.

    /// Whether any synchronised assignment of the asset is due, in service or not. Stops at the first that is.
    /// `IdImputacion` has no effect.
    bool ActivoTieneMantenimientoVencido(const std::string& IDActivo, std::int32_t IdImputacion = 0,
                                         const std::string& fechaSimulada = "");
    /// The same for conventional assignments, of one only when `IdImputacion` isn't 0. A bad anchor in a row before the
    /// first due one raises an error.
    bool ActivoTieneMantenimientoConvencionalVencido(const std::string& IDActivo, std::int32_t IdImputacion = 0,
                                                     const std::string& fechaSimulada = "");
    /// Sets the last launch of all conventional assignments of the asset, cancelled ones too, to that day. Week and
    /// cycle stay. No notice.
    void ReiniciarTareaNoSincronizada(const std::string& IDActivo, Date Fecha_Reinicio);

private:
    /// What both launches are: the run, under its trap.
    std::int32_t Launch(const calendar::LaunchKind& kind, Date Fecha_Lanzamiento, std::int32_t SC_Usuario,
                        const std::string& TipoFrecuencia, const Ref<CConfiguracionOTBoletin>& ConfiguracionOT,
                        std::int32_t CodigoProyecto);
    std::int32_t LaunchRows(const calendar::LaunchKind& kind, Date Fecha_Lanzamiento, std::int32_t SC_Usuario,
                            const Ref<CConfiguracionOTBoletin>& ConfiguracionOT, std::int32_t CodigoProyecto);
    void Announce(std::string_view event, std::int32_t number);
    bool AnyDue(const calendar::LaunchKind& kind, const std::string& IDActivo, std::int32_t IdImputacion,
                const std::string& fechaSimulada);

    NoticeList catalogoModificado_;
    NoticeList otPreventivaGenerada_;
};

}  // namespace Zontara

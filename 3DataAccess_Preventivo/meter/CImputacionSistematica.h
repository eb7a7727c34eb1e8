#pragma once

#include "frame/date.h"
#include "frame/export.h"
#include "frame/member_table.h"
#include "frame/neighbours.h"
#include "frame/notices.h"
#include "frame/object.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace Zontara {

class CConfiguracionOTBoletin;

/// Meter assignments: a row of `Imputacion_Sistematica` binds a task to an asset with a reading interval. Each time
/// the asset's accumulated reading has grown by `Lectura_Limite` since the reference level `Ultimo_Acumulado` of the
/// assignment, the task is due. All readings stand in the unit of the asset's meter.
///
/// An object holds nothing but its three lists of notices, and may be made and dropped at will: a notice goes to the
/// list of the object that did the work. It needs an installed provider, and works on the session's one connection, one
/// thread at a time. Unless told otherwise an operation costs one statement, and joins the caller's transaction if
/// there is one.
///
/// Arguments aren't checked, and a key that doesn't exist is no error. No text is escaped: a single quote in one makes
/// the engine refuse the statement. A date given as text is rewritten as the statement wants it when it reads as a
/// date, and stored as it came otherwise.
///
/// A failure of any operation is raised again with the call-stack line
/// "CImputacionSistematica.<operation>(<arguments>)" in its report. No notice is sent then, and no transaction closed:
/// after a failure of an operation that opens one, the depth stays raised until `AbortarTransaccion`. What the engine
/// refuses has the number `vbObjectError` plus the engine's code.
///
/// Selections give rows that the caller owns, and an empty recordset when there are none. `sColumnas` replaces the
/// whole default list of columns. Where it says "ends with a blank", the list runs into the next word without one and
/// is refused.
class ZONTARA_EXPORT CImputacionSistematica : public Object {
public:
    static constexpr std::string_view kTypeName = "CImputacionSistematica";
    static const ClassTable& ClassMembers();
    const ClassTable* Table() const override;

    // Records

    /// Makes an assignment and gives its key. Its reference level is the asset's accumulated reading of this moment (0
    /// for an unknown asset), so that the first interval counts from now. `Acumulado_Lectura`, `Ultima_Lectura` and
    /// `Fecha_Ultimo_Lanzamiento` are taken and not stored. `Aproximacion_Lectura` is an early-warning level of the
    /// whole accumulated reading, 0 for none.
    /// Runs in a transaction of its own; then sends "" to `CatalogoModificado`.
    std::int32_t Nuevo(const std::string& ID_Activo, std::int32_t SC_Gama, const std::string& Fecha_Imputacion,
                       std::uint8_t Anulada, std::int32_t SC_Usuario, const std::string& Fecha_Inicio,
                       const std::string& Fecha_Fin, std::int32_t Acumulado_Lectura, std::int32_t Ultima_Lectura,
                       std::int32_t Aproximacion_Lectura, const std::string& Fecha_Ultimo_Lanzamiento,
                       const std::string& Fecha_Ultima_Modificacion, const std::string& Causa_Modificacion,
                       std::int32_t Lectura_Limite);

    /// Deletes an assignment. Its parallels and the log of its orders stay. Sends "" to `CatalogoModificado`.
    void Borrar(std::int32_t SC_Imputacion_Sistematica);

    /// Rewrites an assignment. The reference level stays, so a smaller interval can make it due at once; `Anulada` 0
    /// brings an annulled one back. Sends "" to `CatalogoModificado`.
    void Salvar(std::int32_t SC_Imputacion_Sistematica, const std::string& ID_Activo, std::int32_t SC_Gama,
                const std::string& Fecha_Imputacion, std::uint8_t Anulada, std::int32_t SC_Usuario,
                const std::string& Fecha_Inicio, const std::string& Fecha_Fin, std::int32_t Aproximacion_Lectura,
                std::int32_t Lectura_Limite);

    /// Annuls all assignments of an asset: none of them is generated again. Sends "" to `CatalogoModificado`.
    void AnularPorEquipo(const std::string& ID_Activo);

    /// Annuls one assignment. Sends "" to `CatalogoModificado`.
    void Anular(std::int32_t SC_Imputacion_Sistematica);

    // Selections

    /// The assignments of a task, annulled ones included, in the database's order. `sColumnas` ends with a blank.
    Ref<Recordset> SeleccionarPorGama(std::int32_t SC_Gama, const std::string& sColumnas = "");

    /// The assignments of all assets whose key begins with `ID_Activo` (the empty text is every asset), annulled ones
    /// included, by asset and within it by largest interval first. `sColumnas` ends with a blank.
    Ref<Recordset> SeleccionarPorEquipo(const std::string& ID_Activo, const std::string& sColumnas = "");

    /// Of the assignments that `SeleccionarPorEquipo` gives, those that are due. `sColumnas` ends with a blank.
    Ref<Recordset> ListarImputacionesVencidas(const std::string& ID_Activo, const std::string& sColumnas = "");

    /// The live assignments that have begun on or before a day; their last day isn't tested. `ID_Capitulo` names the
    /// chapter, the first character of the asset's key; empty for all.
    Ref<Recordset> SeleccionarActivas(Date Fecha_Lanzamiento, const std::string& sColumnas = "",
                                      const std::string& ID_Capitulo = "");

    /// One assignment. The default columns name a table that the statement doesn't join: the engine refuses it, so
    /// give `sColumnas`, which ends with a blank.
    Ref<Recordset> Buscar(std::int32_t SC_Imputacion_Sistematica, const std::string& sColumnas = "");

    /// Whether an asset has an assignment, live or annulled, of the task with this number in this group.
    bool Existe(std::uint8_t NumeroGama, std::int32_t CodigoGrupo, const std::string& IDEquipo);

    /// All assignments that have an early-warning level, annulled ones included, and whose asset's accumulated
    /// reading has reached it. `sColumnas` ends with a blank.
    Ref<Recordset> SeleccionarAproximaciones(const std::string& sColumnas = "");

    /// The assignments that meet a condition of SQL; all of them when it is empty, annulled ones included. One row an
    /// asset when `AgrupadaPorActivo`. `sColumnas` ends with a blank.
    Ref<Recordset> SeleccionarTodos(const std::string& sCondicion, const std::string& sColumnas = "",
                                    bool AgrupadaPorActivo = false);

    /// The live assignments of one asset, largest interval first.
    Ref<Recordset> ListarImputacionesDeUnActivo(const std::string& ID_Activo, const std::string& sColumnas = "");

    /// The asset's last reading as the meter showed it; -1 for an unknown asset. `Unidad_Lectura` takes no part.
    /// Error 94 when the asset has none.
    float UltimaLectura(const std::string& ID_Activo, std::int32_t Unidad_Lectura);

    /// The task of an assignment; 0 for an unknown one. Error 94 when it has none.
    std::int32_t IdGamaImputacion(std::int32_t SC_Imputacion_Sistematica);

    // Counters and due tests

    /// Sets the assignment's own accumulated reading to 0 and its last launch to the day. Neither the reference level
    /// nor the asset changes, so whether it is due stays as it was. Sends "" to `CatalogoModificado`.
    void Resetear(std::int32_t SC_Imputacion_Sistematica, Date Fecha_Lanzamiento);

    /// Adds `Valor_Real_Lectura` to the asset's accumulated reading (a negative one takes away) and keeps
    /// `Valor_Lectura`, the reading as shown, as its last one. The unit and the date take no part. An unknown asset is
    /// no error. Sends no notice. Error 6 when a value is no finite number.
    void ActualizarAcumulado(const std::string& ID_Activo, std::int32_t Unidad_Lectura, Date Fecha_Lectura,
                             float Valor_Real_Lectura, float Valor_Lectura);

    /// Sets the level from which the assignment's interval counts. The date isn't stored. Sends no notice.
    void ActualizarAcumuladoDeReferencia(std::int32_t SC_Imputacion_Sistematica, Date Fecha_Lanzamiento,
                                         std::int32_t NuevoAcumulado);

    /// Whether an interval meshes with those of the asset's live assignments: of each pair the larger is an exact
    /// multiple of the smaller. True for an asset without any; false when either of a pair is 0. Stops at the first
    /// that doesn't mesh. Error 94 when an assignment has no interval.
    bool EsProgramacionPrima(std::int32_t Programacion, const std::string& IDActivo);

    /// Whether any assignment of the asset is due, annulled ones included; with `IdImputacion` other than 0 only that
    /// one is asked. False for an unknown asset. Its report shows `ID_Activo` alone.
    bool ActivoNecesitaMantenimiento(const std::string& ID_Activo, std::int32_t IdImputacion = 0);

    /// Whether any assignment of the asset, annulled ones included, has an early-warning level that the asset's whole
    /// accumulated reading has reached. The reference level takes no part, so a launch doesn't clear it.
    bool ElActivoTieneAproximacionesVencidas(const std::string& IDActivo);

    // Generation of work orders

    /// Does nothing, and sends no notice.
    void LanzarSistematico(Date Fecha_Lanzamiento, std::int32_t CodigoUsuario, const std::string& ID_Capitulo = "");

    /// Makes a work order for every assignment that is due, of the assets in service of a chapter and a project (empty
    /// and 0 are all). Orders come by asset and within it by largest interval; each due assignment gets one of its own.
    /// An order brings a row of the log, the task's materials and labour, and lifts the assignment's reference level to
    /// the asset's accumulated reading: what overshot the interval is given away. An interval of 0 or less is always
    /// due. `Fecha_Lanzamiento` is written on the orders and in the log, and compared with nothing. `ID_Localizacion`
    /// has no effect.
    ///
    /// One transaction an asset that has something due. A failure ends the run there: the assets before it stay
    /// committed, that asset's work is undone by `AbortarTransaccion`, which falls to the caller. Errors: 91 at the
    /// first due assignment without a configuration, 94 where a reading, an interval, a reference level or the group's
    /// description is null, 6 where a growth doesn't fit 32 bits or the priority 16.
    /// Sends "" to `OrdenesSistematicasGeneradas` at the end, due or not; nothing when there are no assets at all.
    /// Costs a selection of the assets, one of each asset's assignments, and some ten statements an order.
    void GenerarOTSSistematicas(Date Fecha_Lanzamiento, const Ref<CConfiguracionOTBoletin>& ConfigOT,
                                const std::string& ID_Capitulo = "", std::int32_t ID_Localizacion = 0,
                                std::int32_t CodigoProyecto = 0);

    // Reprogramming

    /// Starts an asset anew: its accumulated reading becomes the interval of the chosen assignment (0 when that isn't
    /// among the live ones), and the reference levels of all its live assignments become 0. So the chosen one is due,
    /// and all with an interval no larger.
    /// One transaction; none and no change when the asset has no live assignments. Sends the asset's key to
    /// `ActivoReprogramado` in any case. Error 94 when the chosen assignment has no interval.
    void ReprogramarImputacionesDeunActivo(const std::string& IDActivo, std::int32_t IdImputacionALanzar);

    /// Makes an assignment due at once, and with it all live ones of the asset with an interval no larger: each one's
    /// reference level becomes the asset's accumulated reading less its interval, which may be negative. Those with
    /// larger intervals and the asset's meter keep what they have. Only the interval of `IdImputacion` counts, which
    /// may be annulled or belong to another asset. One transaction over the changes; none when the asset has no live
    /// assignments. Sends the asset's key to `ActivoReprogramado`. Errors: 3021 for an unknown asset or assignment and
    /// 94 where the reading or the chosen interval is null, both before any change; 94 where an interval to go by is
    /// null; 6 when the level doesn't fit 32 bits.
    void AdelantarMantenimiento(std::int32_t IdImputacion, const std::string& IDActivo);

    // Lists of notices, each made at first use. Writing one puts the client's own list in its place; none takes it
    // away, and the next use makes a new one.

    /// The key of each asset that was reprogrammed.
    Ref<ListaCambios> ActivoReprogramado();
    void ActivoReprogramado(const Ref<ListaCambios>& value);
    /// An empty text for each run of `GenerarOTSSistematicas` that found assets.
    Ref<ListaCambios> OrdenesSistematicasGeneradas();
    void OrdenesSistematicasGeneradas(const Ref<ListaCambios>& value);
    /// An empty text for each change of the assignments themselves.
    Ref<ListaCambios> CatalogoModificado();
    void CatalogoModificado(const Ref<ListaCambios>& value);

private:
    /// What one call of `GenerarOTSSistematicas` carries along.
    struct Run;

    /// Makes the orders of one asset, from the first due assignment on in one transaction.
    void GenerarDeUnActivo(Run& run, const std::string& ID_Activo, std::int32_t acumulado);
    /// Makes, logs and fills the order of the current row, and lifts its reference level.
    void GenerarUnaOT(Run& run, const Ref<Recordset>& rs, std::int32_t acumulado);
    /// Makes the work order of the current row of `rs`, which it doesn't move, and gives the order's key.
    std::int32_t NuevaOT(const Ref<Recordset>& rs, Date Fecha_Lanzamiento,
                         const Ref<CConfiguracionOTBoletin>& ConfiguracionOT);

    NoticeList activoReprogramado_;
    NoticeList ordenesSistematicasGeneradas_;
    NoticeList catalogoModificado_;
};

}  // namespace Zontara

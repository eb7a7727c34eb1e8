#pragma once

#include "frame/date.h"
#include "frame/export.h"
#include "frame/neighbours.h"
#include "frame/object.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace Zontara {

/// The weekly work sheets of calendar maintenance, table `Boletin`: one sheet for one asset and one calendar
/// assignment, with the dates of its launch and delivery, a text for each weekday, and once worked a note, a status and
/// a work order.
///
/// An instance keeps nothing between calls, so any number of them may exist; a session must be open. Each call costs
/// one statement, `Nuevo` a key more. Texts go into the statements as they come: a single quote in one breaks the
/// statement, and the engine's refusal reaches the caller.
///
/// Failures are raised errors. The first seven operations report theirs with a call-stack line of their own, the others
/// let them pass as they came. A failed write leaves the open transaction to the caller, who aborts it.
class ZONTARA_EXPORT CBoletin : public Object {
public:
    static constexpr std::string_view kTypeName = "CBoletin";
    static const ClassTable& ClassMembers();
    const ClassTable* Table() const override;

    /// Writes a new sheet and gives its key. One transaction, nested in the caller's if there is one. A date text that
    /// reads as a date is stored as YYYY-MM-DD, any other as it is. Note, work order, status and both flags take their
    /// defaults. After a failure the transaction stays open and the key is lost.
    std::int32_t Nuevo(std::int32_t SC_Imputacion_Preventiva, const std::string& ID_Equipo,
                       const std::string& Fecha_Lanzamiento, const std::string& Fecha_Entrega,
                       const std::string& Fecha_Real_Entrega, const std::string& Lunes, const std::string& Martes,
                       const std::string& Miercoles, const std::string& Jueves, const std::string& Viernes,
                       const std::string& Sabado, const std::string& Domingo, std::int16_t Semana_Del_Ano,
                       std::int32_t SC_Usuario);

    /// Deletes a sheet. An unknown key is no error. No transaction of its own.
    void Borrar(std::int32_t SC_Boletin);

    /// The sheets together with their assignment, task, executor, group and equipment; a sheet that lacks one of them
    /// isn't found. Empty when none fits.
    /// `sCondicion`: the caller's SQL, joined by "and"; none when empty.
    /// `sColumnas`: columns instead of the default ones, which do not hold the sheet's key.
    /// `TipoFrecuencia`: "Breve" for daily to monthly tasks, "Larga" for longer ones; anything else, another case of
    /// the same word included, filters nothing.
    Ref<Recordset> Seleccionar(const std::string& sCondicion = "", const std::string& sColumnas = "",
                               const std::string& TipoFrecuencia = "");

    /// Writes weekday texts, day of real delivery, note, status and work order of a sheet. Any status is taken. An
    /// unknown key changes nothing. No transaction of its own.
    void Salvar(std::int32_t SC_Boletin, const std::string& Lunes, const std::string& Martes,
                const std::string& Miercoles, const std::string& Jueves, const std::string& Viernes,
                const std::string& Sabado, const std::string& Domingo, Date Fecha_Real_Entrega, const std::string& Nota,
                std::int16_t Estatus, std::int32_t OrdenTrabajo);

    /// One sheet, with the caller's columns or the default ones; empty for an unknown key.
    Ref<Recordset> Buscar(std::int32_t SC_Boletin, const std::string& sColumnas = "");

    /// Keys of the sheets of a week that were launched in a year, joined by commas: "17,18,21"; empty when there is
    /// none.
    std::string SeleccionarPorSemana(std::uint8_t SemanaDelAno, std::int32_t Ano);

    /// Always 0, whatever was launched in the year: the largest week is asked for and then compared with null, which
    /// never holds. Clients rely on the 0.
    std::int16_t UltimaSemanaLanzada(std::int32_t AnoActual);

    /// Whether an asset has a pending sheet (status 0) of that week, launched in that year.
    bool ExistenBoletinesParaEditar(std::uint8_t SemanaDelAno, std::int32_t Ano, const std::string& ID_Activo);

    /// Keys of the sheets of a status, joined by commas; empty when there is none.
    std::string SeleccionarBoletines(std::int16_t Estatus);

    /// Sets the flag "in execution" of a sheet. The status stays as it is. An unknown key changes nothing.
    void MarcarBoletinEnEjecucion(std::int32_t SC_Boletin);

    /// Sets the flag "done" of a sheet. The status stays as it is. An unknown key changes nothing.
    void MarcarBoletinEjecutado(std::int32_t SC_Boletin);

    /// The word for a status: 0 "Pendiente", 1 "En Ejecucion", 2 "Ejecutado", else the empty text.
    std::string Estatus(std::int16_t idEstatus) const;

    /// Writes note, status and work order of a sheet. Any status is taken. An unknown key changes nothing.
    void AsignarOTAlBoletin(std::int32_t SC_Boletin, const std::string& Nota, std::int16_t Estatus,
                            std::int32_t OrdenTrabajo);
};

}  // namespace Zontara

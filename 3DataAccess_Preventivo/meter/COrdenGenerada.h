#pragma once

#include "frame/date.h"
#include "frame/export.h"
#include "frame/member_table.h"
#include "frame/neighbours.h"
#include "frame/object.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace Zontara {

/// The log of the work orders that the launches created: a row of `Orden_Generada` says which order came out of which
/// assignment on which day. The launches only add to it, nothing in the component reads it back: the selections are
/// there for the application.
///
/// An object has no state of its own and may be made and dropped at will. It needs an installed provider, and works on
/// the session's one connection, one thread at a time. Each operation costs one statement.
///
/// A failure of any operation is raised again with the call-stack line "COrdenGenerada.<operation>(<arguments>)" in its
/// report. Numbers: what the engine refuses is `vbObjectError` plus the engine's code, 6 is a date outside the years
/// 100 to 9999.
class ZONTARA_EXPORT COrdenGenerada : public Object {
public:
    static constexpr std::string_view kTypeName = "COrdenGenerada";
    static const ClassTable& ClassMembers();
    const ClassTable* Table() const override;

    /// Adds a row to the log and gives its key. Neither key is checked. The calendar launches give 99 in place of an
    /// assignment. Of the date the day is kept.
    /// Runs in a transaction of its own, which nests in the caller's: at depth 0 it commits, deeper it commits nothing.
    /// After a failure the depth stays raised by one, until `AbortarTransaccion`.
    std::int32_t Nuevo(std::int32_t SC_Orden_Trabajo, std::int32_t SC_Imputacion, Date Fecha_Generacion);

    /// Takes a row out of the log. An unknown key is no error. Joins the caller's transaction, if there is one.
    void Borrar(std::int32_t SC_Orden_Generada);

    /// All orders of an assignment, every column, in the database's order; empty when there are none.
    Ref<Recordset> Seleccionar(std::int32_t SC_Imputacion_Sistematica);

    /// Rewrites a row. An unknown key is no error. The assignment goes into the column `SC_Imputacion`, while `Nuevo`
    /// and the selections know it as `SC_Imputacion_Sistematica`: a row that was saved under another assignment is
    /// still selected under the one it was made with. Joins the caller's transaction, if there is one.
    void Salvar(std::int32_t SC_Orden_Generada, std::int32_t SC_Orden_Trabajo, std::int32_t SC_Imputacion,
                Date Fecha_Generacion);

    /// The orders of an assignment whose date compares with a day as the operator says: "=", "<", ">=", ... The
    /// operator goes into the statement as it stands, and one that the engine doesn't know is refused by it.
    Ref<Recordset> SeleccionarPorFecha(std::int32_t SC_Imputacion_Sistematica, Date Fecha_Generacion,
                                       const std::string& UnOperador = "=");

    /// Keys of the orders of a week, separated by commas, in the database's order; empty when there are none.
    /// The week of an order is that of the next Monday on or after its date, counted from the year's first Monday. Its
    /// year is that of the date itself, so the last days of a year may miss the week that they run into. Only weeks of
    /// two digits are ever found: 0 to 9 give the empty text, whatever the log holds. A row without an order leaves
    /// its place between the commas empty.
    std::string SeleccionarPorSemana(std::int16_t SemanaDelAno, std::int32_t Ano);
};

}  // namespace Zontara

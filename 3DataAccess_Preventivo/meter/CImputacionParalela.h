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

/// Links between meter assignments: a row of `Imputacion_Paralela` says that one assignment is to be treated together
/// with another, its parallel. A link has a direction, and none is made for the way back. The generation of orders
/// doesn't look at links: whoever wants the parallels reset asks for it here.
///
/// An object has no state of its own and may be made and dropped at will. It needs an installed provider, and works on
/// the session's one connection, one thread at a time. Each operation costs one statement, `ResetearParalelas` one
/// more for each parallel.
///
/// A failure of any operation is raised again with the call-stack line "CImputacionParalela.<operation>(<arguments>)"
/// in its report. No operation sends a notice.
class ZONTARA_EXPORT CImputacionParalela : public Object {
public:
    static constexpr std::string_view kTypeName = "CImputacionParalela";
    static const ClassTable& ClassMembers();
    const ClassTable* Table() const override;

    /// Links an assignment to a parallel and gives the link's key. Nothing is checked: an assignment may be its own
    /// parallel, a link may be made twice, and either side may be missing.
    /// Runs in a transaction of its own, which nests in the caller's. After a failure the depth stays raised by one,
    /// until `AbortarTransaccion`.
    std::int32_t Nuevo(std::int32_t SC_Imputacion_Sistematica, std::int32_t SC_Paralela);

    /// Takes a link away. An unknown key is no error. Joins the caller's transaction, if there is one.
    void Borrar(std::int32_t SC_Imputacion_Paralela);

    /// The links of an assignment to its parallels; empty when there are none. A parallel whose assignment, task,
    /// executor or reading unit is missing is left out; one that is annulled isn't.
    /// `sColumnas` replaces the default columns, which are the three of the table.
    Ref<Recordset> Seleccionar(std::int32_t SC_Imputacion_Sistematica, const std::string& sColumnas = "");

    /// Rewrites a link. An unknown key is no error. Joins the caller's transaction, if there is one.
    void Salvar(std::int32_t SC_Imputacion_Paralela, std::int32_t SC_Imputacion_Sistematica, std::int32_t SC_Paralela);

    /// Resets every parallel that `Seleccionar` gives, as `CImputacionSistematica::Resetear` does: the assignment named
    /// isn't reset itself, nor are the parallels of its parallels. One that is linked twice is reset twice.
    /// There is no transaction of its own: after a failure the parallels already reset stay so, unless the caller's
    /// transaction covers them. Notices go to a list that ends with the call, so that nobody hears them.
    void ResetearParalelas(std::int32_t SC_Imputacion_Sistematica, Date Fecha_Lanzamiento);
};

}  // namespace Zontara

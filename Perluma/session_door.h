#pragma once

#include "frame/member_table.h"
#include "frame/neighbours.h"
#include "frame/object.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace Perluma {

/// The door to the process's one session, for clients that can't call this library themselves. The session belongs to
/// the process and not to this object: any door shows the same one, and it stays open when the last door goes.
class SessionDoor : public Zontara::Object {
public:
    static constexpr std::string_view kTypeName = "SesionGlobal";
    static const Zontara::ClassTable& ClassMembers();
    const Zontara::ClassTable* Table() const override { return &ClassMembers(); }

    /// Opens the session on a database: a path, or ":memory:". With `crear` a missing file is made, and the schema in
    /// an empty database. With `trazar` the session tells in `Traza` what the component asks of it. Error 5 when a
    /// session is open; the connection's errors for a database that can't be opened.
    void Abrir(const std::string& ruta, bool crear, bool trazar);
    /// Ends the session and rolls back what is open. No error when there is none.
    void Cerrar();
    bool EstaAbierta() const;

    /// Open levels of the nesting transaction. Error 91 with no session, as from here on.
    std::uint8_t ProfundidadTransaccion() const;
    /// The rows of a SELECT.
    Zontara::Ref<Zontara::Recordset> Consultar(const std::string& sql);
    /// Runs one statement or several, DDL too, in the open transaction.
    void Ejecutar(const std::string& sql);
    /// The text made fit to stand between single quotes in a statement.
    std::string TextoParaSQL(const std::string& texto) const;
    /// What the component asked for so far, a line each; none unless the session is traced.
    Zontara::Ref<Zontara::ListaCambios> Traza() const;
};

}  // namespace Perluma

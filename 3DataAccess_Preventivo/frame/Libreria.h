#pragma once

#include "frame/neighbours.h"

#include <string>
#include <string_view>

/// The five helpers that all classes share: three that nest transactions over the one connection, two that work with
/// recordsets. Each has its own trap. None of them repairs the depth after a failure: after any failed write a client
/// calls `AbortarTransaccion` of the facade.
namespace Zontara::Libreria {

/// Adds a level. Only the passage from 0 to 1 begins a database transaction. Error 6 at depth 255.
/// When the begin is refused the depth stays at 1 with no transaction behind it.
void IniciarTransaccion();

/// Takes a level away. Only the passage from 1 to 0 commits, and the commit comes before the decrement. Error 6 at 0.
void TerminarTransaccion();

/// Rolls back once, whatever the depth, and sets the depth to 0. Nothing at depth 0.
void AbortarTransaccion();

/// Whether the recordset has rows. The cursor isn't moved. Error 91 for none.
bool ExistenRegistros(const Ref<Recordset>& rsTabla);

/// Runs a SELECT on the session's connection and gives back the same recordset, filled and disconnected.
Ref<Recordset> AbrirRecordset(const Ref<Recordset>& rs, const std::string& strSQL);

/// A new recordset opened on a statement: what every read of a class does.
Ref<Recordset> Abierto(const std::string& strSQL);

/// Runs a statement that returns no rows on the session's connection.
void Ejecutar(const std::string& strSQL);

/// The next key of a table.
std::int32_t ProximaClave(std::string_view tabla);

/// The text made fit to stand between single quotes.
std::string TextoParaSQL(const std::string& texto);

}  // namespace Zontara::Libreria

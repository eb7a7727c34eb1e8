#pragma once

#include "Perluma/session.h"
#include "frame/neighbours.h"

#include <string>

namespace Perluma {

/// The rows of a SELECT on the session's connection, in a recordset that needs no connection any more. Errors as
/// `Recordset::Abrir`.
Zontara::Ref<Zontara::Recordset> Opened(Sesion& session, const std::string& sql);

/// A text in single quotes, as it stands in a statement.
std::string Quoted(const Sesion& session, const std::string& text);

}  // namespace Perluma

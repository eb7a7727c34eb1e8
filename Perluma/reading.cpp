#include "Perluma/reading.h"

#include "dhRichClient3/recordset.h"

namespace Perluma {

Zontara::Ref<Zontara::Recordset> Opened(Sesion& session, const std::string& sql) {
    Zontara::Ref<Zontara::Recordset> rows = dhRichClient3::NewRecordset();
    rows->ConexionActiva(session.LaConexion());
    rows->TextoSQL(sql);
    rows->Abrir("", Zontara::Absent{}, 0);
    rows->ConexionActiva(nullptr);
    return rows;
}

std::string Quoted(const Sesion& session, const std::string& text) { return "'" + session.TextoParaSQL(text) + "'"; }

}  // namespace Perluma

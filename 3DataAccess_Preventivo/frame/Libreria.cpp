#include "frame/Libreria.h"

#include "errors/trap.h"
#include "frame/convert.h"
#include "frame/provider.h"
#include "frame/raised_error.h"

#include <limits>

namespace Zontara::Libreria {

namespace {

/// The texts given to the connection are always empty; what they would mean is the connection's own affair.
const std::string kNoText;

std::uint8_t Deeper(std::uint8_t depth) {
    if (depth == std::numeric_limits<std::uint8_t>::max()) Raise(RunTimeError::Overflow);
    return static_cast<std::uint8_t>(depth + 1);
}

std::uint8_t Shallower(std::uint8_t depth) {
    if (depth == 0) Raise(RunTimeError::Overflow);
    return static_cast<std::uint8_t>(depth - 1);
}

}  // namespace

void IniciarTransaccion() {
    TrapWithoutConnection("Libreria.IniciarTransaccion", [] {
        SesionGlobal& session = Session();
        session.ProfundidadTransaccion(Deeper(session.ProfundidadTransaccion()));
        if (session.ProfundidadTransaccion() == 1) session.LaConexion()->IniciarTrans(kNoText);
    });
}

void TerminarTransaccion() {
    TrapWithoutConnection("Libreria.TerminarTransaccion", [] {
        SesionGlobal& session = Session();
        if (session.ProfundidadTransaccion() == 1) session.LaConexion()->ConfirmarTrans(kNoText);
        session.ProfundidadTransaccion(Shallower(session.ProfundidadTransaccion()));
    });
}

void AbortarTransaccion() {
    TrapWithoutConnection("Libreria.AbortarTransaccion", [] {
        SesionGlobal& session = Session();
        if (session.ProfundidadTransaccion() == 0) return;
        session.LaConexion()->RevertirTrans(kNoText, 0);
        session.ProfundidadTransaccion(std::uint8_t{0});
    });
}

bool ExistenRegistros(const Ref<Recordset>& rsTabla) {
    return TrapWithoutConnection(
        "Libreria.ExistenRegistros(rsTabla)",
        [&] {
            if (!rsTabla) Raise(RunTimeError::ObjectNotSet);
            return rsTabla->TotalRegistros() != 0;
        },
        [&] { return Arguments(rsTabla); });
}

Ref<Recordset> AbrirRecordset(const Ref<Recordset>& rs, const std::string& strSQL) {
    return Trap(
        "Libreria.AbrirRecordset(rs,strSQL)",
        [&] {
            if (!rs) Raise(RunTimeError::ObjectNotSet);
            rs->ConexionActiva(Session().LaConexion());
            rs->TextoSQL(strSQL);
            rs->Abrir(kNoText, Absent{}, 0);
            rs->ConexionActiva(nullptr);
            return rs;
        },
        [&] { return Arguments(rs, strSQL); });
}

Ref<Recordset> Abierto(const std::string& strSQL) { return AbrirRecordset(Neighbours().NewRecordset(), strSQL); }

void Ejecutar(const std::string& strSQL) { Session().LaConexion()->Ejecutar(strSQL); }

std::int32_t ProximaClave(std::string_view tabla) {
    return Session().ElGeneradorClaves()->ProximaClave(std::string(tabla));
}

std::string TextoParaSQL(const std::string& texto) { return Session().TextoParaSQL(texto); }

}  // namespace Zontara::Libreria

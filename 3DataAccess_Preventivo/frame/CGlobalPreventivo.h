#pragma once

#include "frame/export.h"
#include "frame/object.h"

#include <string>
#include <string_view>

namespace Zontara {

class CBoletin;
class CDocumentoEquipo;
class CEjecutorGama;
class CEquipo;
class CGama;
class CGrupoGama;
class CImputacionParalela;
class CImputacionPreventiva;
class CImputacionSistematica;
class CLecturaEquipo;
class CMaterialGama;
class COrdenGenerada;
class CUnidadLectura;
class CUsuarioEjecutorGama;

/// The front door: hands out one long-lived object of each entity class, nests transactions, and answers in one call
/// whether an asset has maintenance overdue. It holds no data and does no SQL of its own.
///
/// The session must be open before the first data call. One client thread at a time may be inside any object of the
/// component. After any write that failed, call `AbortarTransaccion`: failed operations leave the transaction open.
class ZONTARA_EXPORT CGlobalPreventivo : public Object {
public:
    static constexpr std::string_view kTypeName = "CGlobalPreventivo";

    CGlobalPreventivo();
    /// Lets go of the entity objects in a fixed order. A failure on the way is swallowed: a client can't hear of it.
    ~CGlobalPreventivo() override;

    static const ClassTable& ClassMembers();
    const ClassTable* Table() const override;

    /// Each property makes its object at the first reading and gives the same one from then on, with its state (lists
    /// of notices). A failure to make one arrives as a report, but for `MaterialGama` and `UnidadLectura`, which have
    /// no trap: there it arrives as it arose.
    Ref<CMaterialGama> MaterialGama();
    Ref<CEjecutorGama> EjecutorGama();
    Ref<COrdenGenerada> OrdenGenerada();
    Ref<CUsuarioEjecutorGama> UsuarioEjecutorGama();
    Ref<CUnidadLectura> UnidadLectura();
    Ref<CLecturaEquipo> LecturaEquipo();
    Ref<CBoletin> Boletin();
    Ref<CEquipo> Equipo();
    Ref<CDocumentoEquipo> DocumentoEquipo();
    Ref<CGama> Gama();
    Ref<CGrupoGama> GrupoGama();
    Ref<CImputacionParalela> ImputacionParalela();
    Ref<CImputacionPreventiva> ImputacionPreventiva();
    Ref<CImputacionSistematica> ImputacionSistematica();

    /// Opens a level of the nesting transaction; the outermost begins a database transaction. Error 6 at 255 levels.
    void IniciarTransaccion();
    /// Rolls back everything since the outermost `IniciarTransaccion`, whatever the depth. Nothing when none is open.
    void AbortarTransaccion();
    /// Closes a level; the outermost commits. Error 6 when none is open.
    void TerminarTransaccion();

    /// Whether the asset has any maintenance overdue: by meter first, then synchronised, then conventional assignments;
    /// the first that is due ends the question. `fechaSimulada`, a date in the system's short form, asks as of another
    /// day in the two calendar tests; the meter test knows no simulated date. Unknown assets answer false. Works on
    /// fresh objects, writes nothing, and has no trap of its own: a failure arrives as it came from the test.
    bool ElActivoTieneMantenimientoVencido(const std::string& ID_Activo, const std::string& fechaSimulada = "");

    /// Lets go of all objects but the materials, in a fixed order. Runs when the last reference goes.
    void Class_Terminate();

private:
    Ref<CBoletin> boletin_;
    Ref<CDocumentoEquipo> documentoEquipo_;
    Ref<CEquipo> equipo_;
    Ref<CGama> gama_;
    Ref<CGrupoGama> grupoGama_;
    Ref<CImputacionParalela> imputacionParalela_;
    Ref<CImputacionPreventiva> imputacionPreventiva_;
    Ref<CImputacionSistematica> imputacionSistematica_;
    Ref<CLecturaEquipo> lecturaEquipo_;
    Ref<COrdenGenerada> ordenGenerada_;
    Ref<CUnidadLectura> unidadLectura_;
    Ref<CUsuarioEjecutorGama> usuarioEjecutorGama_;
    Ref<CEjecutorGama> ejecutorGama_;
    Ref<CMaterialGama> materialGama_;
};

}  // namespace Zontara

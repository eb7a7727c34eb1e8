#include "frame/CGlobalPreventivo.h"

#include "bulletins/CBoletin.h"
#include "calendar/CImputacionPreventiva.h"
#include "catalogues/CDocumentoEquipo.h"
#include "catalogues/CEjecutorGama.h"
#include "catalogues/CEquipo.h"
#include "catalogues/CGama.h"
#include "catalogues/CGrupoGama.h"
#include "catalogues/CMaterialGama.h"
#include "catalogues/CUnidadLectura.h"
#include "catalogues/CUsuarioEjecutorGama.h"
#include "errors/trap.h"
#include "frame/Libreria.h"
#include "frame/creation.h"
#include "meter/CImputacionParalela.h"
#include "meter/CImputacionSistematica.h"
#include "meter/COrdenGenerada.h"
#include "readings/CLecturaEquipo.h"

namespace Zontara {

namespace {

/// The object of a field, made now if the field is empty.
template <class T> Ref<T> Held(Ref<T>& field) {
    if (!field) field = Create<T>();
    return field;
}

/// The same under the trap that twelve of the properties have.
template <class T> Ref<T> HeldUnderTrap(Ref<T>& field, std::string_view location) {
    return Trap(location, [&] { return Held(field); });
}

}  // namespace

CGlobalPreventivo::CGlobalPreventivo() = default;

CGlobalPreventivo::~CGlobalPreventivo() {
    try {
        Class_Terminate();
    } catch (...) {
        // The routine has reported the failure; an object that ends has no caller left to raise it to.
    }
}

Ref<CMaterialGama> CGlobalPreventivo::MaterialGama() { return Held(materialGama_); }

Ref<CEjecutorGama> CGlobalPreventivo::EjecutorGama() {
    return HeldUnderTrap(ejecutorGama_, "CGlobalPreventivo.EjecutorGama");
}

Ref<COrdenGenerada> CGlobalPreventivo::OrdenGenerada() {
    return HeldUnderTrap(ordenGenerada_, "CGlobalPreventivo.OrdenGenerada");
}

Ref<CUsuarioEjecutorGama> CGlobalPreventivo::UsuarioEjecutorGama() {
    return HeldUnderTrap(usuarioEjecutorGama_, "CGlobalPreventivo.UsuarioEjecutorGama");
}

Ref<CUnidadLectura> CGlobalPreventivo::UnidadLectura() { return Held(unidadLectura_); }

Ref<CLecturaEquipo> CGlobalPreventivo::LecturaEquipo() {
    return HeldUnderTrap(lecturaEquipo_, "CGlobalPreventivo.LecturaEquipo");
}

Ref<CBoletin> CGlobalPreventivo::Boletin() { return HeldUnderTrap(boletin_, "CGlobalPreventivo.Boletin"); }

Ref<CEquipo> CGlobalPreventivo::Equipo() { return HeldUnderTrap(equipo_, "CGlobalPreventivo.Equipo"); }

Ref<CDocumentoEquipo> CGlobalPreventivo::DocumentoEquipo() {
    return HeldUnderTrap(documentoEquipo_, "CGlobalPreventivo.DocumentoEquipo");
}

Ref<CGama> CGlobalPreventivo::Gama() { return HeldUnderTrap(gama_, "CGlobalPreventivo.Gama"); }

Ref<CGrupoGama> CGlobalPreventivo::GrupoGama() { return HeldUnderTrap(grupoGama_, "CGlobalPreventivo.GrupoGama"); }

Ref<CImputacionParalela> CGlobalPreventivo::ImputacionParalela() {
    return HeldUnderTrap(imputacionParalela_, "CGlobalPreventivo.ImputacionParalela");
}

Ref<CImputacionPreventiva> CGlobalPreventivo::ImputacionPreventiva() {
    return HeldUnderTrap(imputacionPreventiva_, "CGlobalPreventivo.ImputacionPreventiva");
}

Ref<CImputacionSistematica> CGlobalPreventivo::ImputacionSistematica() {
    return HeldUnderTrap(imputacionSistematica_, "CGlobalPreventivo.ImputacionSistematica");
}

void CGlobalPreventivo::IniciarTransaccion() { Libreria::IniciarTransaccion(); }

void CGlobalPreventivo::AbortarTransaccion() { Libreria::AbortarTransaccion(); }

void CGlobalPreventivo::TerminarTransaccion() { Libreria::TerminarTransaccion(); }

bool CGlobalPreventivo::ElActivoTieneMantenimientoVencido(const std::string& ID_Activo,
                                                          const std::string& fechaSimulada) {
    const Ref<CImputacionSistematica> sistematica = Create<CImputacionSistematica>();
    const Ref<CImputacionPreventiva> preventiva = Create<CImputacionPreventiva>();
    return sistematica->ActivoNecesitaMantenimiento(ID_Activo, 0) ||
           preventiva->ActivoTieneMantenimientoVencido(ID_Activo, 0, fechaSimulada) ||
           preventiva->ActivoTieneMantenimientoConvencionalVencido(ID_Activo, 0, fechaSimulada);
}

void CGlobalPreventivo::Class_Terminate() {
    Trap("CGlobalPreventivo.Class_Terminate", [&] {
        Release(boletin_);
        Release(documentoEquipo_);
        Release(equipo_);
        Release(gama_);
        Release(grupoGama_);
        Release(imputacionParalela_);
        Release(imputacionPreventiva_);
        Release(imputacionSistematica_);
        Release(lecturaEquipo_);
        Release(ordenGenerada_);
        Release(unidadLectura_);
        Release(usuarioEjecutorGama_);
        Release(ejecutorGama_);
    });
}

}  // namespace Zontara

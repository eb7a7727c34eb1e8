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
#include "frame/CGlobalPreventivo.h"
#include "frame/table_builder.h"
#include "meter/CImputacionParalela.h"
#include "meter/CImputacionSistematica.h"
#include "meter/COrdenGenerada.h"
#include "readings/CLecturaEquipo.h"

namespace Zontara {

const ClassTable& CGlobalPreventivo::ClassMembers() {
    using C = CGlobalPreventivo;
    static const ClassTable table =
        TableBuilder<C>("_CGlobalPreventivo")
            .Creatable()
            .AppObject()
            .Get("MaterialGama", &C::MaterialGama)
            .Get("EjecutorGama", &C::EjecutorGama)
            .Get("OrdenGenerada", &C::OrdenGenerada)
            .Get("UsuarioEjecutorGama", &C::UsuarioEjecutorGama)
            .Get("UnidadLectura", &C::UnidadLectura)
            .Get("LecturaEquipo", &C::LecturaEquipo)
            .Get("Boletin", &C::Boletin)
            .Get("Equipo", &C::Equipo)
            .Get("DocumentoEquipo", &C::DocumentoEquipo)
            .Get("Gama", &C::Gama)
            .Get("GrupoGama", &C::GrupoGama)
            .Get("ImputacionParalela", &C::ImputacionParalela)
            .Get("ImputacionPreventiva", &C::ImputacionPreventiva)
            .Get("ImputacionSistematica", &C::ImputacionSistematica)
            .Method("IniciarTransaccion", &C::IniciarTransaccion)
            .Method("AbortarTransaccion", &C::AbortarTransaccion)
            .Method("TerminarTransaccion", &C::TerminarTransaccion)
            .Method("ElActivoTieneMantenimientoVencido", &C::ElActivoTieneMantenimientoVencido,
                    {ByRef("ID_Activo"), OptionalByRef("fechaSimulada", "")})
            .Build();
    return table;
}

const ClassTable* CGlobalPreventivo::Table() const { return &ClassMembers(); }

}  // namespace Zontara

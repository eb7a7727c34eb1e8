#include "bulletins/CConfiguracionOTBoletin.h"
#include "frame/table_builder.h"

namespace Zontara {

const ClassTable& CConfiguracionOTBoletin::ClassMembers() {
    using C = CConfiguracionOTBoletin;
    static const ClassTable table = TableBuilder<C>("_CConfiguracionOTBoletin")
                                        .Creatable()
                                        .Get("UsuarioDestino", &C::UsuarioDestino)
                                        .Put("UsuarioDestino", &C::UsuarioDestino)
                                        .Get("EstatusFinalBoletin", &C::EstatusFinalBoletin)
                                        .Put("EstatusFinalBoletin", &C::EstatusFinalBoletin)
                                        .Get("CodigoEjecutorOT", &C::CodigoEjecutorOT)
                                        .Put("CodigoEjecutorOT", &C::CodigoEjecutorOT)
                                        .Get("EsEjecutorExterno", &C::EsEjecutorExterno)
                                        .Put("EsEjecutorExterno", &C::EsEjecutorExterno)
                                        .Get("PrioridadSolicitada", &C::PrioridadSolicitada)
                                        .Put("PrioridadSolicitada", &C::PrioridadSolicitada)
                                        .Get("TipoIntervencion", &C::TipoIntervencion)
                                        .Put("TipoIntervencion", &C::TipoIntervencion)
                                        .Get("TotalBoletinesSeleccionados", &C::TotalBoletinesSeleccionados)
                                        .Put("TotalBoletinesSeleccionados", &C::TotalBoletinesSeleccionados)
                                        .Build();
    return table;
}

const ClassTable* CConfiguracionOTBoletin::Table() const { return &ClassMembers(); }

}  // namespace Zontara

#pragma once

#include "bulletins/CConfiguracionOTBoletin.h"
#include "frame/value.h"

#include <string>
#include <string_view>

namespace host::launching {

/// The configuration of work orders in a JSON text: an object whose members are properties of `CConfiguracionOTBoletin`
/// ("UsuarioDestino", "CodigoEjecutorOT", "EsEjecutorExterno", "PrioridadSolicitada", "TipoIntervencion", ...). What is
/// left out stays 0. A `Failure`, which names `source`, for anything else.
Zontara::Ref<Zontara::CConfiguracionOTBoletin> OrdersFromJson(std::string_view json, const std::string& source);

}  // namespace host::launching

#pragma once

#include "frame/export.h"
#include "frame/object.h"

#include <cstdint>
#include <string_view>

namespace Zontara {

/// How a launch is to write work orders. A client fills one in and hands it to a launch, which reads it and never
/// changes it; a calendar launch that gets none writes bulletins instead. It lives as long as its client keeps it.
///
/// Seven plain values, 0 and false at first. Each is stored and given back unchanged, whatever it is, and nothing here
/// can fail.
class ZONTARA_EXPORT CConfiguracionOTBoletin : public Object {
public:
    static constexpr std::string_view kTypeName = "CConfiguracionOTBoletin";
    static const ClassTable& ClassMembers();
    const ClassTable* Table() const override;

    /// The user that receives the order.
    std::int32_t UsuarioDestino() const { return usuarioDestino_; }
    void UsuarioDestino(std::int32_t value) { usuarioDestino_ = value; }

    /// The status that a bulletin takes in the end. Kept for the client: no launch reads it.
    std::int16_t EstatusFinalBoletin() const { return estatusFinalBoletin_; }
    void EstatusFinalBoletin(std::int16_t value) { estatusFinalBoletin_ = value; }

    /// The executor of the order, an internal or an external one.
    std::int32_t CodigoEjecutorOT() const { return codigoEjecutorOT_; }
    void CodigoEjecutorOT(std::int32_t value) { codigoEjecutorOT_ = value; }

    /// Whether `CodigoEjecutorOT` names an external executor.
    bool EsEjecutorExterno() const { return esEjecutorExterno_; }
    void EsEjecutorExterno(bool value) { esEjecutorExterno_ = value; }

    /// The priority asked for. An order takes it as a 16-bit number, so a launch fails on one that doesn't fit.
    std::int32_t PrioridadSolicitada() const { return prioridadSolicitada_; }
    void PrioridadSolicitada(std::int32_t value) { prioridadSolicitada_ = value; }

    /// The kind of intervention.
    std::int32_t TipoIntervencion() const { return tipoIntervencion_; }
    void TipoIntervencion(std::int32_t value) { tipoIntervencion_ = value; }

    /// The number of bulletins that were selected. Kept for the client: no launch reads it.
    std::int32_t TotalBoletinesSeleccionados() const { return totalBoletinesSeleccionados_; }
    void TotalBoletinesSeleccionados(std::int32_t value) { totalBoletinesSeleccionados_ = value; }

private:
    std::int32_t usuarioDestino_ = 0;
    std::int16_t estatusFinalBoletin_ = 0;
    std::int32_t codigoEjecutorOT_ = 0;
    bool esEjecutorExterno_ = false;
    std::int32_t prioridadSolicitada_ = 0;
    std::int32_t tipoIntervencion_ = 0;
    std::int32_t totalBoletinesSeleccionados_ = 0;
};

}  // namespace Zontara

#pragma once

#include "bulletins/CConfiguracionOTBoletin.h"
#include "tests/meter/meter_test.h"

#include <string>
#include <vector>

namespace support {

/// A meter world with a configuration, and short ways to run a generation and to look at what it did.
class GenerationTest : public MeterTest {
protected:
    GenerationTest() {
        config->UsuarioDestino(11);
        config->CodigoEjecutorOT(44);
        config->PrioridadSolicitada(3);
        config->TipoIntervencion(9);
    }
    void Generate() { imputaciones->GenerarOTSSistematicas(day, config); }
    /// Keys of the assignments that got an order, in the order of the orders.
    std::vector<std::string> Ordered() {
        return world.Rows("SELECT SC_Imputacion_Sistematica FROM Orden_Trabajo ORDER BY SC_Orden_Trabajo");
    }
    std::vector<std::string> Log() { return world.Rows("SELECT * FROM Orden_Generada ORDER BY 1"); }
    /// Arguments of each call of a service, in order.
    std::vector<std::vector<Zontara::Value>> CallsTo(const std::string& service) {
        std::vector<std::vector<Zontara::Value>> calls;
        for (const Asked& asked : world.Record()) {
            if (asked.what == Asked::What::Service && asked.text == service) calls.push_back(asked.arguments);
        }
        return calls;
    }

    Zontara::Ref<Zontara::CConfiguracionOTBoletin> config = Zontara::Create<Zontara::CConfiguracionOTBoletin>();
    const Zontara::Date day = World::Day("2026-03-05");
};

}  // namespace support

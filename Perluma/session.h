#pragma once

#include "Perluma/keys.h"
#include "dhRichClient3/connection.h"
#include "frame/neighbours.h"

#include <cstdint>
#include <string>

namespace Perluma {

/// The session of an application: one open connection, the depth of its nesting transactions, its keys. One session a
/// connection, one thread at a time.
class Sesion : public Zontara::SesionGlobal {
public:
    /// A session on an open connection, at depth 0. Error 91 for none.
    explicit Sesion(Zontara::Ref<dhRichClient3::Connection> connection);

    Zontara::Ref<Zontara::Conexion> LaConexion() override { return connection_; }
    std::uint8_t ProfundidadTransaccion() const override { return depth_; }
    void ProfundidadTransaccion(std::uint8_t profundidad) override { depth_ = profundidad; }
    Zontara::Ref<Zontara::GeneradorClaves> ElGeneradorClaves() override { return keys_; }
    /// The text with each single quote doubled.
    std::string TextoParaSQL(const std::string& texto) const override;

    const Zontara::Ref<dhRichClient3::Connection>& Connection() const { return connection_; }

private:
    Zontara::Ref<dhRichClient3::Connection> connection_;
    Zontara::Ref<GeneradorClaves> keys_;
    std::uint8_t depth_ = 0;
};

}  // namespace Perluma

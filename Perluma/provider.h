#pragma once

#include "Perluma/session.h"
#include "dhRichClient3/connection.h"
#include "frame/provider.h"

#include <memory>

namespace Perluma {

/// What the component reaches of this library and of the connection: one session and the services on it. Services are
/// made anew each time they are asked for; they share the session and are cheap.
class Provider : public Zontara::Provider {
public:
    /// Everything on one open connection. Error 91 for none.
    explicit Provider(Zontara::Ref<dhRichClient3::Connection> connection);

    Zontara::SesionGlobal& Session() override { return *session_; }
    Zontara::GlobalPerluma& Perluma() override { return *services_; }
    Zontara::Ref<Zontara::Recordset> NewRecordset() override;
    Zontara::Ref<Zontara::ListaCambios> NewListaCambios() override;
    Zontara::Ref<Zontara::ServicioActivos> NewServicioActivos() override;

private:
    Zontara::Ref<Sesion> session_;
    Zontara::Ref<Zontara::GlobalPerluma> services_;
};

/// Opens the application's session on a connection and puts it in place for the component. The provider lives as long
/// as it is installed or held. Whatever was installed before is let go.
std::shared_ptr<Zontara::Provider> OpenSession(Zontara::Ref<dhRichClient3::Connection> connection);

}  // namespace Perluma

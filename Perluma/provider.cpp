#include "Perluma/provider.h"

#include "Perluma/assets.h"
#include "Perluma/change_list.h"
#include "Perluma/orders.h"
#include "dhRichClient3/recordset.h"

#include <utility>

namespace Perluma {

using Zontara::Ref;

namespace {

class GlobalPerluma : public Zontara::GlobalPerluma {
public:
    explicit GlobalPerluma(const Ref<Sesion>& session)
        : materials_(std::make_shared<ServicioMaterialesOT>(session)),
          processes_(std::make_shared<ServicioProcesos>(session)),
          orders_(std::make_shared<OrdenTrabajo>(session)),
          assets_(std::make_shared<ServicioActivos>(session)) {}

    Ref<Zontara::ServicioMaterialesOT> MaterialesOT() override { return materials_; }
    Ref<Zontara::ServicioProcesos> Procesos() override { return processes_; }
    Ref<Zontara::OrdenTrabajo> OrdenesTrabajo() override { return orders_; }
    Ref<Zontara::ServicioActivos> Activos() override { return assets_; }

private:
    Ref<Zontara::ServicioMaterialesOT> materials_;
    Ref<Zontara::ServicioProcesos> processes_;
    Ref<Zontara::OrdenTrabajo> orders_;
    Ref<Zontara::ServicioActivos> assets_;
};

}  // namespace

Provider::Provider(Ref<dhRichClient3::Connection> connection)
    : session_(std::make_shared<Sesion>(std::move(connection))), services_(std::make_shared<GlobalPerluma>(session_)) {}

Ref<Zontara::Recordset> Provider::NewRecordset() { return dhRichClient3::NewRecordset(); }

Ref<Zontara::ListaCambios> Provider::NewListaCambios() { return std::make_shared<ListaCambios>(); }

Ref<Zontara::ServicioActivos> Provider::NewServicioActivos() { return std::make_shared<ServicioActivos>(session_); }

std::shared_ptr<Zontara::Provider> OpenSession(Ref<dhRichClient3::Connection> connection) {
    auto provider = std::make_shared<Provider>(std::move(connection));
    Zontara::InstallProvider(provider);
    return provider;
}

}  // namespace Perluma

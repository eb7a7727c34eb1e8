#pragma once

#include "frame/export.h"
#include "frame/neighbours.h"

#include <memory>

namespace Zontara {

/// The one road to the neighbours. The sibling library installs its provider when a host opens a session, a test
/// installs doubles, a tracer wraps what is there.
class ZONTARA_EXPORT Provider {
public:
    virtual ~Provider();
    virtual SesionGlobal& Session() = 0;
    virtual GlobalPerluma& Perluma() = 0;
    virtual Ref<Recordset> NewRecordset() = 0;
    virtual Ref<ListaCambios> NewListaCambios() = 0;
    virtual Ref<ServicioActivos> NewServicioActivos() = 0;
    /// Hears of every event that an object raises, after its subscribers.
    virtual void EventRaised(std::string_view event, const Value& argument);
};

/// Puts a provider in place (none takes it away) and gives back the one before.
ZONTARA_EXPORT std::shared_ptr<Provider> InstallProvider(std::shared_ptr<Provider> provider);

/// The provider in place, none if there is none.
ZONTARA_EXPORT const std::shared_ptr<Provider>& InstalledProvider();

/// The provider in place. Error 91, with a text that says what to do, when there is none.
ZONTARA_EXPORT Provider& Neighbours();

/// The session of the provider in place. Error 91 as `Neighbours`.
ZONTARA_EXPORT SesionGlobal& Session();

}  // namespace Zontara

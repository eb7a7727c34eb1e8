#pragma once

#include "Perluma/tracing_provider.h"
#include "frame/neighbours.h"

#include <memory>

namespace Perluma {

/// The services of `inner`, each telling the sink of every call on it. `inner` must outlive the result.
Zontara::Ref<Zontara::GlobalPerluma> TracedServices(Zontara::GlobalPerluma& inner, std::shared_ptr<TraceSink> sink);

/// One asset service that tells the sink of every call on it.
Zontara::Ref<Zontara::ServicioActivos> TracedAssets(Zontara::Ref<Zontara::ServicioActivos> inner,
                                                    std::shared_ptr<TraceSink> sink);

}  // namespace Perluma

#include "planning/launch_ear.h"

#include "frame/convert.h"
#include "frame/provider.h"

#include <algorithm>

namespace planning {

namespace {

/// Places of arguments, from 0.
constexpr std::size_t kMeterAssignmentOfOrder = 13;
constexpr std::size_t kCrew = 1;
constexpr std::size_t kTime = 2;

}  // namespace

void LaunchEar::Forget() {
    bulletins_.clear();
    meterAssignments_.clear();
    labour_ = 0;
}

void LaunchEar::Key(const std::string& table, std::int32_t value) {
    if (table == "Boletin") bulletins_.push_back(value);
}

void LaunchEar::Service(std::string_view name, const std::vector<Zontara::Value>& arguments,
                        const Zontara::Value& /*result*/) {
    if (name == "OrdenTrabajo.CrearOrden") {
        meterAssignments_.push_back(Zontara::ConvertTo<std::int32_t>(arguments.at(kMeterAssignmentOfOrder)));
    } else if (name == "OrdenTrabajo.AsignarManoObra") {
        const double crew = Zontara::ConvertTo<double>(arguments.at(kCrew));
        labour_ = std::max(crew, 1.0) * Zontara::ConvertTo<double>(arguments.at(kTime));
    }
}

Listening::Listening() : ear_(std::make_shared<LaunchEar>()) {
    // Raises when there is no provider at all.
    Zontara::Neighbours();
    before_ = Zontara::InstalledProvider();
    Zontara::InstallProvider(std::make_shared<Perluma::TracingProvider>(before_, ear_));
}

Listening::~Listening() { Zontara::InstallProvider(before_); }

}  // namespace planning

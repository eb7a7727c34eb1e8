#include "frame/platform.h"

#include <utility>

namespace Zontara {

namespace {

std::shared_ptr<const Platform>& InForce() {
    static std::shared_ptr<const Platform> platform = std::make_shared<const Platform>();
    return platform;
}

}  // namespace

Platform::~Platform() = default;

std::int32_t Platform::VersionMajor() const { return 84; }
std::int32_t Platform::VersionMinor() const { return 0; }
std::int32_t Platform::VersionRevision() const { return 0; }

void Platform::Yield() const {}

const Platform& CurrentPlatform() { return *InForce(); }

std::shared_ptr<const Platform> ReplacePlatform(std::shared_ptr<const Platform> platform) {
    if (!platform) platform = std::make_shared<const Platform>();
    return std::exchange(InForce(), std::move(platform));
}

}  // namespace Zontara

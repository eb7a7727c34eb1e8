#include "frame/provider.h"

#include "frame/raised_error.h"

#include <utility>

namespace Zontara {

namespace {

std::shared_ptr<Provider>& InPlace() {
    static std::shared_ptr<Provider> provider;
    return provider;
}

}  // namespace

Provider::~Provider() = default;

void Provider::EventRaised(std::string_view, const Value&) {}

std::shared_ptr<Provider> InstallProvider(std::shared_ptr<Provider> provider) {
    return std::exchange(InPlace(), std::move(provider));
}

const std::shared_ptr<Provider>& InstalledProvider() { return InPlace(); }

Provider& Neighbours() {
    if (!InPlace()) {
        Raise(RunTimeError::ObjectNotSet,
              "No session is open: open one, so that its provider is installed, before calling Zontara");
    }
    return *InPlace();
}

SesionGlobal& Session() { return Neighbours().Session(); }

}  // namespace Zontara

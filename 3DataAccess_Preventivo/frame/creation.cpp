#include "frame/creation.h"

namespace Zontara {

namespace {

LifeWatcher idle;
LifeWatcher* inForce = &idle;

}  // namespace

LifeWatcher::~LifeWatcher() = default;

void LifeWatcher::Creating(std::string_view) {}

void LifeWatcher::Releasing(std::string_view) {}

LifeWatcher& CurrentLifeWatcher() { return *inForce; }

void ReplaceLifeWatcher(LifeWatcher* watcher) { inForce = watcher != nullptr ? watcher : &idle; }

}  // namespace Zontara

#include "frame/creation.h"

namespace Zontara {

namespace {

LifeWatcher idleWatcher;
LifeWatcher* lifeWatcher = &idleWatcher;

}  // namespace

LifeWatcher::~LifeWatcher() = default;

void LifeWatcher::Creating(std::string_view) {}

void LifeWatcher::Releasing(std::string_view) {}

LifeWatcher& CurrentLifeWatcher() { return *lifeWatcher; }

void ReplaceLifeWatcher(LifeWatcher* watcher) { lifeWatcher = watcher != nullptr ? watcher : &idleWatcher; }

}  // namespace Zontara

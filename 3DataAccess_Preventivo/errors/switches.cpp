#include "errors/switches.h"

namespace Zontara::HuntERR31 {

namespace {

const Switches*& Replacement() {
    static const Switches* replacement = nullptr;
    return replacement;
}

}  // namespace

const Switches& CurrentSwitches() {
    static const Switches constants;
    return Replacement() ? *Replacement() : constants;
}

void ReplaceSwitches(const Switches* switches) { Replacement() = switches; }

}  // namespace Zontara::HuntERR31

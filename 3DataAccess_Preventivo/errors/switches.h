#pragma once

#include "frame/object.h"
#include "frame/value.h"

#include <functional>
#include <string_view>

namespace Zontara::HuntERR31 {

/// The three constants that keep branches of the module from being taken. In the component they have these values and
/// no others; only a test puts others in place, to run the dialog and the branches of a transaction context.
struct Switches {
    /// Whether a handler may stop and ask for a retry in step mode.
    bool ErrStepEnabled = false;
    /// Whether there is somebody to ask.
    bool ErrCanPrompt = true;
    /// The transaction context of a component host.
    Ref<Object> ErrObjectContext;
    /// Hears the name of each private operation as it is entered. A test makes it fail by raising from here.
    std::function<void(std::string_view operation)> entering;
};

/// The switches in force.
const Switches& CurrentSwitches();

/// Puts others in force; none puts the constants back. The caller keeps them alive. For tests.
void ReplaceSwitches(const Switches* switches);

}  // namespace Zontara::HuntERR31

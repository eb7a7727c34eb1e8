#pragma once

namespace com {

/// Puts COM's registry and class factories behind the component's entry points.
void InstallRuntime();

}  // namespace com

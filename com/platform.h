#pragma once

namespace com {

/// Puts a platform in force that also reads the version of the data-access runtime and yields to the apartment's
/// message loop, as a client of a component expects. Only the first call does anything.
void InstallPlatform();

}  // namespace com

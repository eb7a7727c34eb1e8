#pragma once

#include <filesystem>

namespace bench {

/// Writes the CSV files of the sample plant into a folder, every asset with all that belongs to it so many times over
/// under keys of its own; tasks, groups and all else that assets share once. Gives the number of assets.
int WriteScaledDemo(const std::filesystem::path& folder, int times);

}  // namespace bench

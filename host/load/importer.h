#pragma once

#include "host/plant.h"

#include <cstddef>
#include <filesystem>
#include <string>
#include <utility>
#include <vector>

namespace host::load {

/// The files that an import has read, in the order in which they went in, each with its number of rows.
using Imported = std::vector<std::pair<std::string, std::size_t>>;

/// Reads the CSV files of a folder, one per table, into the plant, inside the caller's transaction. Any of the files
/// may be missing as long as no line of another refers to its rows. A `Failure` that lists every bad line (up to 50)
/// when anything is wrong with them; nothing has been written then, unless the database itself refused a row. In either
/// case it is for the caller to undo.
Imported Import(Plant& plant, const std::filesystem::path& folder);

}  // namespace host::load

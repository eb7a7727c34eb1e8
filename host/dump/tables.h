#pragma once

#include "host/plant.h"

#include <cstddef>
#include <filesystem>
#include <string>
#include <utility>
#include <vector>

namespace host::dump {

/// The files of an export or a restore, each with its number of rows.
using Files = std::vector<std::pair<std::string, std::size_t>>;

/// The table of that name, case left aside, as the schema spells it; all of them for "all". A `UsageFailure` for any
/// other name.
std::vector<std::string> TablesNamed(const std::string& name);

/// Names of the columns of a table, in their order.
std::vector<std::string> ColumnsOf(dhRichClient3::Connection& database, const std::string& table);

/// Writes each table to TABLE.csv in a folder, which is made if it isn't there; files of the same names are replaced,
/// each only when it is whole. All are of one moment, whatever others write meanwhile. A `Failure` when a file can't be
/// written.
Files Export(Plant& plant, const std::vector<std::string>& tables, const std::filesystem::path& folder);

/// Puts the rows of such files back, keys included, inside the caller's transaction. A `Failure` when any table has a
/// row already, when a file is of no table, and one that lists every bad line (up to 50); the caller undoes what is
/// written.
Files Restore(Plant& plant, const std::filesystem::path& folder);

}  // namespace host::dump

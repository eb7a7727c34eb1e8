#pragma once

#include "tests/support/folder.h"

#include <string>
#include <string_view>
#include <vector>

namespace host_test {

/// How a command ended, and what it wrote.
struct Ran {
    int status = 0;
    std::string out;
    std::string err;
};

/// The commands that the program's help lists, in its order.
std::vector<std::string> Commands();

/// Runs a command of the program in this process.
Ran Zontara(const std::vector<std::string>& words, bool terminal = false);

using support::Folder;

/// Rows of a query on a database file, cells joined by "|", null as "NULL".
std::vector<std::string> Rows(const std::string& database, std::string_view sql);
/// The one cell of the one row of a query.
std::string Scalar(const std::string& database, std::string_view sql);
/// Runs a script on a database file.
void Execute(const std::string& database, std::string_view sql);

/// The CSV files of a small plant with a row or more in every table, in `folder`.
void WriteSmallPlant(const Folder& folder);
/// A database with the small plant in it, made by `init` and `import`; its path.
std::string MakeSmallPlant(const Folder& folder);

}  // namespace host_test

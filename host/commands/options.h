#pragma once

#include "frame/date.h"
#include "frame/money.h"
#include "host/console.h"
#include "host/plant.h"

#include <CLI/CLI.hpp>

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace host {

/// The day that an option names, as yyyy-mm-dd or dd/mm/yyyy; today when it is empty. A `UsageFailure` for anything
/// else.
Zontara::Date DayOption(const std::string& text, const std::string& option);

/// The number or amount that an option names. A `UsageFailure` for anything else.
float RealOption(const std::string& text, const std::string& option);
Zontara::Money MoneyOption(const std::string& text, const std::string& option);

/// yyyy-mm-dd.
std::string Iso(Zontara::Date date);

/// The asset's identifier, which the component may put into its statements. A `Failure` when there is no such asset, or
/// when its identifier holds a quote.
std::string KnownAsset(Plant& plant, const std::string& asset);

/// Adds a command. `details` stand below its options, if there are any, then the exit statuses with those that only
/// this command has ("3 findings"), and then the example.
CLI::App* AddCommand(CLI::App& app, const std::string& name, const std::string& description, const std::string& example,
                     const std::string& details = "", const std::string& statuses = "");
/// Its first argument, the database.
void AddDatabase(CLI::App& command, std::string& path);
/// The option that each command has which answers with tables.
void AddJson(CLI::App& command, bool& json);

/// Tells which files were read or written, each with its number of rows.
void PrintFiles(Console& console, const std::vector<std::pair<std::string, std::size_t>>& files, bool json);

}  // namespace host

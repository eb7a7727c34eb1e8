#pragma once

#include "frame/date.h"
#include "frame/money.h"
#include "host/plant.h"

#include <CLI/CLI.hpp>

#include <string>

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

/// Adds a command. `details` stand below its options, if there are any, and then the example.
CLI::App* AddCommand(CLI::App& app, const std::string& name, const std::string& description, const std::string& example,
                     const std::string& details = "");
/// Its first argument, the database.
void AddDatabase(CLI::App& command, std::string& path);

}  // namespace host

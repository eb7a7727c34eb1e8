#pragma once

#include "host/console.h"

namespace CLI {
class App;
}

/// The commands of the program. Each adds its own to the parser; what it does runs while the parser ends. Failures
/// leave as exceptions: `Failure`, `UsageFailure`, or the component's error.
namespace host {

void AddInitCommand(CLI::App& app, Console& console);
void AddImportCommand(CLI::App& app, Console& console);
void AddLaunchCommand(CLI::App& app, Console& console);
void AddExplainCommand(CLI::App& app, Console& console);
void AddForecastCommand(CLI::App& app, Console& console);
void AddReadingCommand(CLI::App& app, Console& console);
void AddOverdueCommand(CLI::App& app, Console& console);
/// `advance` and `reprogram`.
void AddMeterCommands(CLI::App& app, Console& console);
void AddStatusCommand(CLI::App& app, Console& console);
void AddSheetCommand(CLI::App& app, Console& console);
void AddLintCommand(CLI::App& app, Console& console);
void AddExportCommand(CLI::App& app, Console& console);
void AddDemoCommand(CLI::App& app, Console& console);
/// `completion` and `manual`.
void AddManualCommands(CLI::App& app, Console& console);

}  // namespace host

#include "host/program.h"

#include "host/commands/commands.h"
#include "host/failure.h"
#include "host/rpc/command.h"
#include "host/text/colour.h"
#include "host/typelib/command.h"

#include <fmt/format.h>
#include <CLI/CLI.hpp>

#include <unistd.h>
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <iostream>

namespace host {

namespace {

void AddCommands(CLI::App& app, Console& console) {
    AddInitCommand(app, console);
    AddImportCommand(app, console);
    AddLaunchCommand(app, console);
    AddExplainCommand(app, console);
    AddForecastCommand(app, console);
    AddReadingCommand(app, console);
    AddOverdueCommand(app, console);
    AddMeterCommands(app, console);
    AddStatusCommand(app, console);
    AddSheetCommand(app, console);
    AddLintCommand(app, console);
    AddExportCommand(app, console);
    AddDemoCommand(app, console);
    AddRpcCommand(app, console);
    AddIdlCommand(app, console);
    AddManualCommands(app, console);
}

/// The command that was called, as far as the parser got.
std::string CommandOf(const CLI::App& app) {
    const std::vector<CLI::App*> called = app.get_subcommands();
    return called.empty() ? "" : called.front()->get_name();
}

/// The first word is a command, or an option of the program. The parser would only say that a command is missing.
void CheckCommand(const CLI::App& app, const std::vector<std::string>& words) {
    if (words.empty() || words.front().empty() || words.front().front() == '-') return;
    std::vector<std::string> names;
    for (const CLI::App* command : app.get_subcommands(nullptr))
        names.push_back(command->get_name());
    if (std::find(names.begin(), names.end(), words.front()) != names.end()) return;
    const std::string last = names.back();
    names.pop_back();
    throw CLI::ExtrasError(
        fmt::format("there is no command {}. The commands are {} and {}.", words.front(), fmt::join(names, ", "), last),
        CLI::ExitCodes::ExtrasError);
}

}  // namespace

int Run(const std::vector<std::string>& words, Console console) {
    CLI::App app("Preventive maintenance: decides what falls due, and turns it into bulletins and work orders.",
                 "zontara");
    app.require_subcommand(1);
    app.footer("\nStart with:\n  zontara demo\nEach command has a --help of its own with an example.");
    AddCommands(app, console);
    try {
        CheckCommand(app, words);
        std::vector<std::string> reversed(words.rbegin(), words.rend());
        app.parse(std::move(reversed));
        return console.status;
    } catch (const CLI::ParseError& error) {
        return app.exit(error, console.out, console.err) == 0 ? kDone : kUsage;
    } catch (...) {
        return ReportFailure(console.err, CommandOf(app));
    }
}

int Main(int argc, char** argv) {
    const char* const noColour = std::getenv("NO_COLOR");
    const char* const term = std::getenv("TERM");
    const bool outTerminal = isatty(fileno(stdout)) != 0;
    const bool errTerminal = isatty(fileno(stderr)) != 0;
    text::AllowColour(std::cout, text::WantsColour(outTerminal, noColour, term));
    text::AllowColour(std::cerr, text::WantsColour(errTerminal, noColour, term));
    const bool redraws = outTerminal && errTerminal && !text::IsDumb(term);
    const int status = Run({argv + 1, argv + std::max(argc, 1)}, {std::cout, std::cerr, redraws});
    std::cout.flush();
    if (!std::cout && status != kFailed) {
        std::cerr << "zontara: the output couldn't be written.\n";
        return kFailed;
    }
    return status;
}

}  // namespace host

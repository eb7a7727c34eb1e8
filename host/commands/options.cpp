#include "host/commands/options.h"

#include "frame/platform.h"
#include "frame/regional.h"
#include "host/failure.h"
#include "host/load/cells.h"
#include "host/program.h"
#include "host/text/grid.h"
#include "host/text/json.h"

#include <fmt/format.h>
#include <nlohmann/json.hpp>

namespace host {

namespace {

Zontara::Value OptionAs(load::CellKind kind, const std::string& text, const std::string& option) {
    std::string reason;
    const std::optional<Zontara::Value> value = load::Cell(text, kind, reason);
    if (!value) throw UsageFailure(fmt::format("{}: {}.", option, reason));
    if (value->Is<Zontara::Empty>()) throw UsageFailure(fmt::format("{}: a value is missing.", option));
    return *value;
}

}  // namespace

Zontara::Date DayOption(const std::string& text, const std::string& option) {
    if (text.empty()) {
        const Zontara::CivilDate today = Zontara::CivilOf(Zontara::CurrentPlatform().Now());
        return Zontara::DateOf(today.year, today.month, today.day);
    }
    const std::string iso = OptionAs(load::CellKind::Date, text, option).Get<std::string>();
    return Zontara::DateOf(std::stoi(iso), std::stoi(iso.substr(5, 2)), std::stoi(iso.substr(8, 2)));
}

float RealOption(const std::string& text, const std::string& option) {
    return OptionAs(load::CellKind::Real, text, option).Get<float>();
}

Zontara::Money MoneyOption(const std::string& text, const std::string& option) {
    return OptionAs(load::CellKind::Money, text, option).Get<Zontara::Money>();
}

std::string Iso(Zontara::Date date) { return Zontara::Format(date, "yyyy-mm-dd"); }

std::string KnownAsset(Plant& plant, const std::string& asset) {
    if (!plant.Database().Prepare("SELECT 1 FROM Activo WHERE ID_Activo = ?1").Bind(1, asset).Step()) {
        throw Failure(fmt::format("there is no asset '{}'. Check the identifier; case counts.", asset));
    }
    if (asset.find('\'') != std::string::npos) {
        throw Failure(fmt::format("the identifier {} holds a quote, which no statement can take.", asset));
    }
    return asset;
}

CLI::App* AddCommand(CLI::App& app, const std::string& name, const std::string& description, const std::string& example,
                     const std::string& details, const std::string& statuses) {
    CLI::App* command = app.add_subcommand(name, description);
    const std::string exit = fmt::format("\nExit status: {} done, {}{} failed, {} called in a wrong way.\n", kDone,
                                         statuses.empty() ? "" : statuses + ", ", kFailed, kUsage);
    command->footer((details.empty() ? "" : "\n" + details + "\n") + exit + "\nExample:\n  " + example);
    return command;
}

void AddDatabase(CLI::App& command, std::string& path) {
    command.add_option("DB", path, "The database file")->required();
}

void AddJson(CLI::App& command, bool& json) { command.add_flag("--json", json, "Print JSON instead of tables"); }

void PrintFiles(Console& console, const std::vector<std::pair<std::string, std::size_t>>& files, bool json) {
    text::Grid grid({{"File"}, {"Rows", text::Grid::Align::Right}});
    for (const auto& [file, rows] : files)
        grid.Add({file, rows});
    if (json) {
        text::PrintJson(console.out, grid.ToJson());
    } else {
        grid.Print(console.out);
    }
}

}  // namespace host

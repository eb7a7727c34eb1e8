#include "planning/explanation.h"

#include "host/commands/commands.h"
#include "host/commands/options.h"
#include "host/explain/report.h"
#include "host/failure.h"
#include "host/text/json.h"

#include <fmt/format.h>
#include <charconv>
#include <nlohmann/json.hpp>
#include <optional>

namespace host {

namespace {

using planning::Explanation;

struct ExplainOptions {
    std::string path;
    std::string what;
    std::string on;
    bool json = false;
};

std::optional<std::int32_t> KeyIn(const std::string& text) {
    std::int32_t key = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), key);
    if (error != std::errc() || end != text.data() + text.size() || key < 1) return std::nullopt;
    return key;
}

bool IsAsset(Plant& plant, const std::string& text) {
    return plant.Database().Prepare("SELECT 1 FROM Activo WHERE ID_Activo = ?1").Bind(1, text).Step();
}

std::vector<Explanation> Asked(Plant& plant, const std::string& what, Zontara::Date on) {
    if (IsAsset(plant, what)) return planning::ExplainAsset(plant.Component(), KnownAsset(plant, what), on);
    const std::optional<std::int32_t> key = KeyIn(what);
    if (!key) {
        throw Failure(
            fmt::format("there is no asset '{}', and it is no key of an assignment. Check the identifier; "
                        "case counts.",
                        what));
    }
    std::vector<Explanation> told = planning::ExplainAssignment(plant.Component(), *key, on);
    if (told.empty()) {
        throw Failure(
            fmt::format("there is no asset and no assignment {} (one whose asset or task is gone can't be "
                        "asked about). `zontara explain` with an asset tells the keys.",
                        *key));
    }
    return told;
}

void Explain(const ExplainOptions& options, Console& console) {
    const Zontara::Date on = DayOption(options.on, "--on");
    Plant copy(options.path, Plant::Use::Copy);
    const std::vector<Explanation> told = Asked(copy, options.what, on);
    if (options.json) {
        text::PrintJson(console.out, explain::ToJson(on, told));
    } else if (told.empty()) {
        console.out << fmt::format("Asset {} has no assignments.\n", options.what);
    } else {
        explain::Print(console.out, on, told);
    }
}

}  // namespace

void AddExplainCommand(CLI::App& app, Console& console) {
    auto options = std::make_shared<ExplainOptions>();
    CLI::App* command =
        AddCommand(app, "explain", "Tell why assignments are due or not, and when they will be.",
                   "zontara explain plant.db M-CARR-01 --on 2026-03-05",
                   "For each assignment the rule in words, the values it read, the threshold, and the first day of the "
                   "next ten years on\n"
                   "which it is due if nothing else happens. An assignment by meter goes by the average use of its "
                   "asset's readings.\n"
                   "Works on a private copy: the database is neither written nor held.");
    AddDatabase(*command, options->path);
    command->add_option("WHAT", options->what, "An asset, or the key of an assignment (of the calendar, by meter)")
        ->required();
    command->add_option("--on", options->on, "The day to ask about, yyyy-mm-dd (today)");
    AddJson(*command, options->json);
    command->callback([options, &console] { Explain(*options, console); });
}

}  // namespace host

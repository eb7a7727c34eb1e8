#include "host/overdue.h"

#include "host/commands/commands.h"
#include "host/commands/options.h"
#include "host/failure.h"
#include "host/text/json.h"

#include <fmt/format.h>
#include <algorithm>
#include <nlohmann/json.hpp>

namespace host {

namespace {

struct OverdueOptions {
    std::string path;
    std::string asset;
    std::string on;
    bool json = false;
};

void PrintForPeople(const OverdueOptions& options, Zontara::Date day, const std::vector<Overdue>& answers,
                    Console& console) {
    const auto overdue = std::count_if(answers.begin(), answers.end(), [](const Overdue& each) { return each.Any(); });
    if (!options.asset.empty()) {
        const Overdue& answer = answers.front();
        console.out << fmt::format("Asset {} ({}) on {}: {}\n", answer.asset, answer.name, Iso(day),
                                   overdue > 0 ? "overdue by " + answer.Reasons() : "nothing overdue");
        return;
    }
    console.out << fmt::format("Overdue on {}: {} of {} assets with assignments\n", Iso(day), overdue, answers.size());
    if (overdue > 0) console.out << '\n';
    Print(console.out, answers);
}

void Answer(const OverdueOptions& options, Console& console) {
    const Zontara::Date day = DayOption(options.on, "--on");
    Plant plant(options.path, Plant::Use::Read);
    std::vector<Overdue> answers;
    if (options.asset.empty()) {
        answers = AskAll(plant, day);
    } else {
        answers.push_back(AskOne(plant, KnownAsset(plant, options.asset), day));
    }
    if (options.json) {
        text::PrintJson(console.out, ToJson(day, answers));
    } else {
        PrintForPeople(options, day, answers, console);
    }
    std::string failed;
    for (const Overdue& answer : answers) {
        if (!answer.failure.empty()) failed += fmt::format("\nasset {}: {}", answer.asset, answer.failure);
    }
    if (!failed.empty()) {
        throw Failure("these assets couldn't be asked about, since one of their assignments can't be read:" + failed);
    }
}

}  // namespace

void AddOverdueCommand(CLI::App& app, Console& console) {
    auto options = std::make_shared<OverdueOptions>();
    CLI::App* command = AddCommand(app, "overdue", "Tell what maintenance is overdue, and why.",
                                   "zontara overdue plant.db --on 2026-03-06",
                                   "Overdue by meter, or by a synchronised or a conventional assignment of the "
                                   "calendar. Assets out of service are told\n"
                                   "too, though they aren't launched, and so are cancelled assignments by meter.");
    AddDatabase(*command, options->path);
    command->add_option("ASSET", options->asset, "Ask about one asset; without it all that are overdue are listed");
    command->add_option("--on", options->on, "As of this day, yyyy-mm-dd (today); the meter goes by its last reading");
    AddJson(*command, options->json);
    command->callback([options, &console] { Answer(*options, console); });
}

}  // namespace host

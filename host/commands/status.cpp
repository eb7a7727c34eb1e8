#include "planning/status.h"

#include "host/commands/commands.h"
#include "host/commands/options.h"
#include "host/overdue.h"
#include "host/text/grid.h"
#include "host/text/json.h"

#include <fmt/format.h>
#include <algorithm>
#include <nlohmann/json.hpp>

namespace host {

namespace {

using text::Grid;
constexpr auto kRight = Grid::Align::Right;

struct StatusOptions {
    std::string path;
    std::string on;
    bool json = false;
};

/// Assets overdue by each reason; one asset may count for several.
struct OverdueCounts {
    std::int64_t asked = 0;
    std::int64_t any = 0;
    std::int64_t meter = 0;
    std::int64_t synchronised = 0;
    std::int64_t conventional = 0;
    std::int64_t failed = 0;
};

OverdueCounts CountOverdue(Plant& plant, Zontara::Date day) {
    OverdueCounts counts;
    for (const Overdue& each : AskAll(plant, day)) {
        ++counts.asked;
        counts.any += each.Any() ? 1 : 0;
        counts.meter += each.meter ? 1 : 0;
        counts.synchronised += each.synchronised ? 1 : 0;
        counts.conventional += each.conventional ? 1 : 0;
        counts.failed += each.failure.empty() ? 0 : 1;
    }
    return counts;
}

Grid AssignmentsGrid(const planning::Status& status) {
    Grid grid({{"Frequency"}, {"Synchronised", kRight}, {"Conventional", kRight}, {"Meter", kRight}});
    for (const auto& each : status.frequencies)
        grid.Add({each.word, each.synchronised, each.conventional});
    if (status.meterAssignments > 0) grid.Add({"by meter", {}, {}, status.meterAssignments});
    return grid;
}

Grid LatestGrid(const planning::Status& status) {
    Grid grid({{"Latest", Grid::Align::Left, 0, "paper"}, {"Of"}, {"Day"}, {"Papers", kRight}});
    for (const auto& each : status.latest)
        grid.Add({each.paper, each.kind, each.day, each.count});
    return grid;
}

Grid BulletinsGrid(const planning::Status& status) {
    Grid grid({{"Status", kRight}, {"Name"}, {"Bulletins", kRight}, {"Under way", kRight}, {"Carried out", kRight}});
    for (const auto& each : status.bulletins)
        grid.Add({each.status, each.name, each.count, each.underWay, each.carriedOut});
    return grid;
}

Grid OrdersGrid(const planning::Status& status) {
    Grid grid({{"Year", kRight}, {"Week", kRight}, {"Calendar orders", kRight}, {"Meter orders", kRight}});
    for (const auto& each : status.orders)
        grid.Add({each.year, each.week, each.calendar, each.meter});
    return grid;
}

nlohmann::ordered_json ToJson(const planning::Status& status, const OverdueCounts& overdue, Zontara::Date day) {
    return {{"assets", {{"all", status.assets}, {"in_service", status.assetsInService}}},
            {"tasks", status.tasks},
            {"assignments", AssignmentsGrid(status).ToJson()},
            {"cancelled", status.cancelled},
            {"overdue",
             {{"on", Iso(day)},
              {"asked", overdue.asked},
              {"any", overdue.any},
              {"meter", overdue.meter},
              {"synchronised", overdue.synchronised},
              {"conventional", overdue.conventional},
              {"failed", overdue.failed}}},
            {"latest", LatestGrid(status).ToJson()},
            {"bulletins", BulletinsGrid(status).ToJson()},
            {"orders", OrdersGrid(status).ToJson()}};
}

/// A table with a blank line before it; nothing when it has no lines.
void PrintTable(std::ostream& out, const Grid& grid) {
    if (grid.Lines() == 0) return;
    out << '\n';
    grid.Print(out);
}

void Print(std::ostream& out, const planning::Status& status, const OverdueCounts& overdue, Zontara::Date day) {
    out << fmt::format("{} assets, {} in service; {} tasks; {} cancelled assignments\n", status.assets,
                       status.assetsInService, status.tasks, status.cancelled);
    const std::string line =
        fmt::format("Overdue on {}: {} of {} assets with assignments ({} by meter, {} synchronised, {} conventional)",
                    Iso(day), overdue.any, overdue.asked, overdue.meter, overdue.synchronised, overdue.conventional);
    out << text::Paint(out, overdue.any > 0 ? text::Tone::Bad : text::Tone::Good, line) << '\n';
    if (overdue.failed > 0) {
        out << text::Paint(out, text::Tone::Bad, fmt::format("Not to be asked about: {}", overdue.failed))
            << "; `zontara lint` tells why\n";
    }
    PrintTable(out, AssignmentsGrid(status));
    PrintTable(out, LatestGrid(status));
    PrintTable(out, BulletinsGrid(status));
    PrintTable(out, OrdersGrid(status));
}

void RunStatus(const StatusOptions& options, Console& console) {
    const Zontara::Date day = DayOption(options.on, "--on");
    Plant plant(options.path, Plant::Use::Read);
    const planning::Status status = planning::StatusOf(plant.Component(), plant.Database());
    const OverdueCounts overdue = CountOverdue(plant, day);
    if (options.json) {
        text::PrintJson(console.out, ToJson(status, overdue, day));
    } else {
        Print(console.out, status, overdue, day);
    }
}

}  // namespace

void AddStatusCommand(CLI::App& app, Console& console) {
    auto options = std::make_shared<StatusOptions>();
    CLI::App* command = AddCommand(app, "status", "Show the plant on one screen.", "zontara status plant.db",
                                   "Assets, assignments in force, what is overdue, the latest papers of each kind, "
                                   "bulletins by status, and the\n"
                                   "work orders of the latest weeks that have any.");
    AddDatabase(*command, options->path);
    command->add_option("--on", options->on, "Overdue as of this day, yyyy-mm-dd (today)");
    AddJson(*command, options->json);
    command->callback([options, &console] { RunStatus(*options, console); });
}

}  // namespace host

#include "planning/forecast.h"

#include "host/commands/commands.h"
#include "host/commands/options.h"
#include "host/failure.h"
#include "host/forecast/ics.h"
#include "host/forecast/page.h"
#include "host/forecast/report.h"
#include "host/progress.h"
#include "host/text/json.h"

#include "calendar/CImputacionPreventiva.h"

#include <fmt/format.h>
#include <filesystem>
#include <nlohmann/json.hpp>

namespace host {

namespace {

constexpr std::int32_t kMostWeeks = 520;

struct ForecastOptions {
    std::string path;
    std::string from;
    std::int32_t weeks = 52;
    bool csv = false;
    bool json = false;
    bool ics = false;
    bool html = false;
};

void Write(const ForecastOptions& options, const forecast::Told& told, std::ostream& out) {
    if (options.csv) {
        forecast::PrintCsv(out, told);
    } else if (options.json) {
        text::PrintJson(out, forecast::ToJson(told));
    } else if (options.ics) {
        forecast::PrintIcs(out, told);
    } else if (options.html) {
        forecast::PrintPage(out, told);
    } else {
        forecast::Print(out, told);
    }
}

void RunForecast(const ForecastOptions& options, Console& console) {
    const Zontara::Date from = DayOption(options.from, "--from");
    constexpr std::int32_t kLastYear = 9999;
    if (Zontara::CivilOf(from).year + options.weeks / 52 + 1 > kLastYear) {
        throw UsageFailure("--from: the weeks run past the year 9999. Name an earlier day.");
    }
    forecast::Told told;
    told.plant = std::filesystem::path(options.path).filename().string();
    {
        Plant copy(options.path, Plant::Use::Copy);
        Progress progress(*copy.Component().ImputacionPreventiva(), console);
        const auto onWeek = [&](std::int32_t week) {
            progress.Label(fmt::format("week {} of {}", week + 1, options.weeks));
        };
        told.forecast = planning::ForecastWeeks(copy.Component(), from, options.weeks, onWeek);
    }
    Write(options, told, console.out);
}

}  // namespace

void AddForecastCommand(CLI::App& app, Console& console) {
    auto options = std::make_shared<ForecastOptions>();
    CLI::App* command =
        AddCommand(app, "forecast", "Tell what the launches of the coming weeks will make, and what that takes.",
                   "zontara forecast plant.db --from 2026-03-02 --weeks 13",
                   "Launches all kinds week by week on a private copy; the database itself is neither written nor "
                   "held. Meters move on\n"
                   "by the average use of the year before. Hours are crew by time of the tasks, Materials what their "
                   "materials cost, and\n"
                   "Cost the tasks' own present cost. What would stop a real launch stops the forecast.");
    AddDatabase(*command, options->path);
    command->add_option("--from", options->from, "The day of the first launch, yyyy-mm-dd (today)");
    command->add_option("--weeks", options->weeks, "How many weeks (52)")->check(CLI::Range(1, kMostWeeks));
    AddJson(*command, options->json);
    CLI::Option* const json = command->get_option("--json");
    CLI::Option* const csv = command->add_flag("--csv", options->csv, "Print the weeks as comma-separated lines");
    CLI::Option* const ics =
        command->add_flag("--ics", options->ics, "Print a calendar with an event for each week, for calendar programs");
    CLI::Option* const html =
        command->add_flag("--html", options->html, "Print a page with charts that needs nothing else");
    for (CLI::Option* const form : {json, csv, ics, html}) {
        for (CLI::Option* const other : {json, csv, ics, html}) {
            if (form != other) form->excludes(other);
        }
    }
    command->callback([options, &console] { RunForecast(*options, console); });
}

}  // namespace host

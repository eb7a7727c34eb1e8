#include "planning/lint.h"
#include "host/commands/commands.h"
#include "host/commands/options.h"
#include "host/program.h"
#include "host/text/grid.h"
#include "host/text/json.h"
#include "host/text/wrap.h"

#include <fmt/format.h>
#include <algorithm>
#include <map>
#include <nlohmann/json.hpp>

namespace host {

namespace {

using planning::Finding;
using planning::Severity;

const std::vector<std::string> kWeekdays = {"monday", "tuesday",  "wednesday", "thursday",
                                            "friday", "saturday", "sunday"};

struct LintOptions {
    std::string path;
    std::string on;
    std::string weekday;
    bool json = false;
};

std::string NameOf(Severity severity) {
    if (severity == Severity::Error) return "error";
    return severity == Severity::Warning ? "warning" : "note";
}

text::Tone ToneOf(Severity severity) {
    if (severity == Severity::Error) return text::Tone::Bad;
    return severity == Severity::Warning ? text::Tone::Warning : text::Tone::Strong;
}

/// A table as people call one row of it.
std::string RowNameOf(const std::string& table) {
    static const std::map<std::string, std::string> names = {
        {"Imputacion_Preventiva", "calendar assignment"},
        {"Imputacion_Sistematica", "meter assignment"},
        {"Imputacion_Paralela", "parallel"},
        {"Lectura_Equipo", "reading"},
        {"Gama", "task key"},
        {"materiales_gama", "material"},
        {"Activo", "asset"},
        {"Proceso", "processes"},
    };
    const auto name = names.find(table);
    return name == names.end() ? table : name->second;
}

void Print(std::ostream& out, const Finding& finding) {
    constexpr std::size_t kWidth = 100;
    constexpr std::size_t kIndent = 4;
    std::string whom = finding.table == "Activo" ? "" : finding.asset;
    if (!finding.task.empty()) whom += (whom.empty() ? "task " : ", task ") + finding.task;
    out << fmt::format("{} [{}] {}{}{}\n", text::Paint(out, ToneOf(finding.severity), NameOf(finding.severity)),
                       finding.rule, RowNameOf(finding.table), finding.key.empty() ? "" : " " + finding.key,
                       whom.empty() ? "" : ": " + whom)
        << text::Wrapped(finding.what, kWidth, kIndent) << text::Wrapped(finding.advice, kWidth, kIndent) << '\n';
}

std::string Counted(const std::vector<Finding>& findings, Severity severity) {
    const auto count = std::count_if(findings.begin(), findings.end(),
                                     [&](const Finding& finding) { return finding.severity == severity; });
    return fmt::format("{} {}{}", count, NameOf(severity), count == 1 ? "" : "s");
}

nlohmann::ordered_json ToJson(const std::vector<Finding>& findings) {
    text::Grid grid({{"Severity"}, {"Rule"}, {"Table"}, {"Key"}, {"Asset"}, {"Task"}, {"What"}, {"Advice"}});
    for (const Finding& each : findings) {
        grid.Add(
            {NameOf(each.severity), each.rule, each.table, each.key, each.asset, each.task, each.what, each.advice});
    }
    return grid.ToJson();
}

void RunLint(const LintOptions& options, Console& console) {
    planning::LintRequest request{DayOption(options.on, "--on"), std::nullopt};
    if (!options.weekday.empty()) {
        const auto weekday = std::find(kWeekdays.begin(), kWeekdays.end(), options.weekday);
        request.weekday = static_cast<int>(weekday - kWeekdays.begin()) + 1;
    }
    Plant plant(options.path, Plant::Use::Read);
    const std::vector<Finding> findings = planning::Lint(plant.Component(), plant.Database(), request);
    if (!findings.empty()) console.status = kFindings;
    if (options.json) {
        text::PrintJson(console.out, ToJson(findings));
        return;
    }
    for (const Finding& finding : findings)
        Print(console.out, finding);
    if (findings.empty()) {
        console.out << "Nothing found.\n";
    } else {
        console.out << fmt::format("{}, {}, {}.\n", Counted(findings, Severity::Error),
                                   Counted(findings, Severity::Warning), Counted(findings, Severity::Note));
    }
}

}  // namespace

void AddLintCommand(CLI::App& app, Console& console) {
    auto options = std::make_shared<LintOptions>();
    CLI::App* command = AddCommand(
        app, "lint", "Find what does harm without a word: rows that are never due, always due, or stop a launch.",
        "zontara lint plant.db --weekday monday",
        "errors    a launch stops, or a row is never launched, or launched for ever\n"
        "warnings  something comes late or early, or is left out\n"
        "notes     probably meant otherwise\n"
        "The rules of the component are asked for each day up to ten years ahead. Nothing is written.",
        fmt::format("{} findings", kFindings));
    AddDatabase(*command, options->path);
    command->add_option("--on", options->on, "Look ahead from this day, yyyy-mm-dd (today)");
    command
        ->add_option("--weekday", options->weekday,
                     "The weekday of the launches, such as monday: find rows that they never meet")
        ->check(CLI::IsMember(kWeekdays));
    AddJson(*command, options->json);
    command->callback([options, &console] { RunLint(*options, console); });
}

}  // namespace host

#include "host/launching/launch.h"
#include "host/commands/commands.h"
#include "host/commands/options.h"
#include "host/failure.h"
#include "host/launching/orders.h"
#include "host/launching/report.h"
#include "host/load/sheet.h"
#include "host/text/json.h"

#include "calendar/CImputacionPreventiva.h"

#include <fmt/format.h>
#include <nlohmann/json.hpp>
#include <optional>

namespace host {

namespace {

using planning::Kind;

struct LaunchOptions {
    std::string path;
    std::string date;
    std::string kind = "synchronised";
    std::int32_t user = 0;
    std::int32_t project = 0;
    std::string chapter;
    bool json = false;
    bool dryRun = false;

    std::string ordersFile;
    std::optional<std::int32_t> orderUser;
    std::optional<std::int32_t> orderExecutor;
    std::optional<std::int32_t> orderPriority;
    std::optional<std::int32_t> orderType;
    bool orderExternal = false;
};

std::vector<Kind> KindsOf(const std::string& word) {
    if (word == "synchronised") return {Kind::Synchronised};
    if (word == "conventional") return {Kind::Conventional};
    if (word == "meter") return {Kind::Meter};
    return {Kind::Synchronised, Kind::Conventional, Kind::Meter};
}

Zontara::Ref<Zontara::CConfiguracionOTBoletin> OrdersOf(const LaunchOptions& options) {
    Zontara::Ref<Zontara::CConfiguracionOTBoletin> orders;
    if (!options.ordersFile.empty()) {
        orders = launching::OrdersFromJson(load::ReadText(options.ordersFile), options.ordersFile);
    } else if (options.orderUser || options.orderExecutor || options.orderPriority || options.orderType ||
               options.orderExternal) {
        orders = std::make_shared<Zontara::CConfiguracionOTBoletin>();
    }
    if (options.orderUser) orders->UsuarioDestino(*options.orderUser);
    if (options.orderExecutor) orders->CodigoEjecutorOT(*options.orderExecutor);
    if (options.orderPriority) orders->PrioridadSolicitada(*options.orderPriority);
    if (options.orderType) orders->TipoIntervencion(*options.orderType);
    if (options.orderExternal) orders->EsEjecutorExterno(true);
    return orders;
}

/// A project or a chapter acts only on some launches: with none of those it would launch more than was meant.
void CheckLimits(const LaunchOptions& options) {
    if (options.project > 0 && options.kind == "synchronised") {
        throw UsageFailure(
            "--project: the synchronised launch always takes all projects. Leave it out, or choose "
            "another --kind.");
    }
    if (options.chapter.empty()) return;
    if (options.kind != "meter" && options.kind != "all") {
        throw UsageFailure("--chapter: only the meter launch goes by chapter. Leave it out, or choose --kind meter.");
    }
    if (options.chapter.find('\'') != std::string::npos) {
        throw UsageFailure("--chapter: a chapter holds no quote.");
    }
}

void NoteLimits(const LaunchOptions& options, Console& console) {
    if (options.kind != "all") return;
    if (options.project > 0) {
        console.err << "Note: the synchronised launch takes all projects; --project limits the other two.\n";
    }
    if (!options.chapter.empty()) {
        console.err << "Note: the calendar launches take all chapters; --chapter limits the meter launch.\n";
    }
}

void RunLaunch(const LaunchOptions& options, Console& console) {
    CheckLimits(options);
    launching::Request request;
    request.date = DayOption(options.date, "--date");
    request.kinds = KindsOf(options.kind);
    request.user = options.user;
    request.orders = OrdersOf(options);
    request.project = options.project;
    request.chapter = options.chapter;
    NoteLimits(options, console);

    Plant plant(options.path, options.dryRun ? Plant::Use::Copy : Plant::Use::Write);
    std::vector<launching::Outcome> outcomes;
    {
        Transaction transaction(plant);
        Progress progress(*plant.Component().ImputacionPreventiva(), console);
        outcomes = launching::Launch(plant, request, progress);
        transaction.Commit();
    }
    if (options.json) {
        auto launched = launching::ToJson(request.date, outcomes);
        if (options.dryRun) launched["dry_run"] = true;
        text::PrintJson(console.out, launched);
        return;
    }
    if (options.dryRun) console.out << "Dry run: this is what would be launched; nothing is written.\n\n";
    launching::Print(console.out, request.date, outcomes);
    if (options.dryRun) launching::PrintTexts(console.out, outcomes);
}

}  // namespace

void AddLaunchCommand(CLI::App& app, Console& console) {
    auto options = std::make_shared<LaunchOptions>();
    CLI::App* command = AddCommand(app, "launch", "Turn what is due into bulletins or work orders, each once.",
                                   "zontara launch plant.db --date 2026-03-02 --kind all",
                                   "All kinds of one call run in one transaction: they are launched whole, or not at "
                                   "all. Launches at the same time\n"
                                   "wait for one another.");
    AddDatabase(*command, options->path);
    command->add_option("--date", options->date, "The day of the launch, yyyy-mm-dd (today)");
    command
        ->add_option("--kind", options->kind, "synchronised, conventional, meter, or all in this order (synchronised)")
        ->check(CLI::IsMember({"synchronised", "conventional", "meter", "all"}));
    command->add_option("--user", options->user, "The user who launches (0)");
    command->add_option("--project", options->project,
                        "Only assets of this project; the synchronised launch takes all");
    command->add_option("--chapter", options->chapter,
                        "Meter launch: only assets whose identifier begins with this character");
    command->add_flag(
        "--dry-run", options->dryRun,
        "Show what would be launched, orders with their texts, on a private copy; the database is neither "
        "written nor held");
    AddJson(*command, options->json);

    const std::string orders = "Work orders instead of bulletins (the meter launch always makes orders)";
    command
        ->add_option("--orders", options->ordersFile,
                     "A JSON file with UsuarioDestino, CodigoEjecutorOT, EsEjecutorExterno, PrioridadSolicitada and "
                     "TipoIntervencion")
        ->group(orders);
    command->add_option("--order-user", options->orderUser, "The user who gets the orders")->group(orders);
    command->add_option("--order-executor", options->orderExecutor, "Who carries them out")->group(orders);
    command->add_flag("--order-external", options->orderExternal, "The executor is an external one")->group(orders);
    command->add_option("--order-priority", options->orderPriority, "The priority; also the days until they are wanted")
        ->group(orders);
    command->add_option("--order-type", options->orderType, "The type of intervention")->group(orders);
    command->callback([options, &console] { RunLaunch(*options, console); });
}

}  // namespace host

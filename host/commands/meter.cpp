#include "host/commands/commands.h"
#include "host/commands/options.h"
#include "host/failure.h"
#include "host/meters.h"
#include "host/text/json.h"

#include "frame/convert.h"
#include "meter/CImputacionSistematica.h"

#include <fmt/format.h>
#include <functional>
#include <nlohmann/json.hpp>

namespace host {

namespace {

struct MeterOptions {
    std::string path;
    std::int32_t key = 0;
    std::string asset;
    bool json = false;
};

using Change = std::function<void(Zontara::CImputacionSistematica&, const MeterOptions&)>;

/// The component takes any key and any asset, and then changes less or more than was meant.
void CheckAssignment(Plant& plant, const MeterOptions& options) {
    KnownAsset(plant, options.asset);
    auto find = plant.Database().Prepare(
        "SELECT ID_Activo, Anulada FROM Imputacion_Sistematica WHERE SC_Imputacion_Sistematica = ?1");
    if (!find.Bind(1, options.key).Step()) {
        throw Failure(fmt::format("there is no meter assignment {}.", options.key));
    }
    if (find.Text(0) != options.asset) {
        throw Failure(fmt::format("meter assignment {} belongs to asset {}, not to {}.", options.key, find.Text(0),
                                  options.asset));
    }
    if (find.Int(1) != 0) throw Failure(fmt::format("meter assignment {} is cancelled.", options.key));
}

void Apply(const MeterOptions& options, const Change& change, Console& console) {
    Plant plant(options.path, Plant::Use::Write);
    Transaction transaction(plant);
    CheckAssignment(plant, options);
    change(*plant.Component().ImputacionSistematica(), options);
    transaction.Commit();

    const double accumulated = AccumulatedOf(plant, options.asset);
    const text::Grid states = GridOf(MeterStates(plant, options.asset));
    if (options.json) {
        text::PrintJson(console.out,
                        {{"asset", options.asset}, {"accumulated", accumulated}, {"assignments", states.ToJson()}});
        return;
    }
    console.out << fmt::format("Asset {} stands at {}. The next meter launch makes orders for what is due:\n\n",
                               options.asset, Zontara::ToText(accumulated));
    states.Print(console.out);
}

void Add(CLI::App& app, Console& console, const std::string& name, const std::string& description,
         const std::string& details, Change change) {
    auto options = std::make_shared<MeterOptions>();
    CLI::App* command =
        AddCommand(app, name, description, fmt::format("zontara {} plant.db 22 M-CARR-01", name), details);
    AddDatabase(*command, options->path);
    command->add_option("KEY", options->key, "The key of the meter assignment")->required();
    command->add_option("ASSET", options->asset, "Its asset's identifier")->required();
    AddJson(*command, options->json);
    command->callback([options, change = std::move(change), &console] { Apply(*options, change, console); });
}

}  // namespace

void AddMeterCommands(CLI::App& app, Console& console) {
    Add(app, console, "advance", "Bring a meter assignment forward, so that it is due at once.",
        "The asset's assignments with intervals no larger are due with it. The meter and the larger intervals keep "
        "their\n"
        "rhythm.",
        [](Zontara::CImputacionSistematica& assignments, const MeterOptions& options) {
            assignments.AdelantarMantenimiento(options.key, options.asset);
        });
    Add(app, console, "reprogram", "Start an asset's meter anew, so that one assignment is due at once.",
        "The accumulated reading becomes the assignment's interval, and the reference level of all the asset's\n"
        "assignments 0.",
        [](Zontara::CImputacionSistematica& assignments, const MeterOptions& options) {
            assignments.ReprogramarImputacionesDeunActivo(options.asset, options.key);
        });
}

}  // namespace host

#include "host/story/story.h"

#include "host/failure.h"
#include "host/load/importer.h"
#include "host/text/grid.h"

#include "catalogues/CEquipo.h"

#include <fmt/format.h>

namespace host::story {

namespace {

namespace fs = std::filesystem;

std::int32_t CountOf(Plant& plant, std::string_view sql) {
    auto count = plant.Database().Prepare(sql);
    count.Step();
    return count.Int(0);
}

}  // namespace

fs::path PlantFolder() {
    std::error_code ignored;
    fs::path sources = ZONTARA_DEMO_PLANT;
    if (fs::exists(sources / "assets.csv", ignored)) return sources;
    const fs::path program = fs::read_symlink("/proc/self/exe", ignored);
    fs::path installed = program.parent_path().parent_path() / "share" / "zontara" / "demo";
    if (fs::exists(installed / "assets.csv", ignored)) return installed;
    throw Failure(fmt::format("the sample plant is missing: neither {} nor {} holds it. Install the program anew.",
                              sources.string(), installed.string()));
}

void Load(Stage& stage) {
    stage.clock.SetDay(Zontara::DateOf(2026, 1, 1));
    Transaction transaction(stage.plant);
    const load::Imported imported = load::Import(stage.plant, stage.files);
    // No operation ties a meter assignment to an item of equipment, which the list of metered items goes by.
    stage.plant.Database().Prepare("UPDATE Imputacion_Sistematica SET ID_Equipo = ID_Activo").Run();
    transaction.Commit();

    stage.console.out
        << "A bottling plant in four chapters: P production, S utilities, M mobile equipment, E buildings\n\n";
    text::Grid grid({{"File"}, {"Rows", text::Grid::Align::Right}});
    for (const auto& [file, rows] : imported)
        grid.Add({file, rows});
    grid.Print(stage.console.out, 2);
    stage.console.out << fmt::format(
        "\n{} assets are out of service, {} calendar assignments are cancelled, {} items of equipment have meters.\n",
        CountOf(stage.plant, "SELECT count(*) FROM Activo WHERE estatus_actual IN (3, 4, 5, 7)"),
        CountOf(stage.plant, "SELECT count(*) FROM Imputacion_Preventiva WHERE Anulada = 1"),
        stage.plant.Component().Equipo()->Sistematicos()->TotalRegistros());
}

}  // namespace host::story

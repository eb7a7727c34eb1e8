#include "host/story/story.h"

#include "bulletins/CBoletin.h"
#include "calendar/CImputacionPreventiva.h"
#include "frame/convert.h"
#include "frame/regional.h"
#include "host/launching/launch.h"
#include "host/launching/report.h"
#include "host/text/grid.h"

#include <fmt/format.h>
#include <array>

namespace host::story {

namespace {

using launching::Outcome;
using text::Grid;
using Align = Grid::Align;

constexpr std::array<std::string_view, 8> kWords = {"Diaria",    "Semanal",    "Quincenal", "Mensual",
                                                    "Bimestral", "Trimestral", "Semestral", "Anual"};
constexpr std::size_t kOrdersShown = 8;

Outcome LaunchSynchronised(Stage& stage, Zontara::Date monday,
                           Zontara::Ref<Zontara::CConfiguracionOTBoletin> orders = nullptr) {
    stage.clock.SetDay(monday);
    launching::Request request;
    request.date = monday;
    request.kinds = {planning::Kind::Synchronised};
    request.user = 100;
    request.orders = std::move(orders);
    Transaction transaction(stage.plant);
    Progress progress(*stage.plant.Component().ImputacionPreventiva(), stage.console);
    Outcome outcome = launching::Launch(stage.plant, request, progress).front();
    transaction.Commit();
    return outcome;
}

Grid WeeksGrid() {
    std::vector<Grid::Column> columns = {
        {"Week", Align::Right}, {"Monday"}, {"Looked at", Align::Right}, {"Launched", Align::Right}};
    for (const std::string_view word : kWords)
        columns.push_back({std::string(word), Align::Right});
    return Grid(std::move(columns));
}

void AddWeek(Grid& grid, Zontara::Date monday, const Outcome& outcome) {
    std::vector<text::Cell> line = {Zontara::WeekOfYear(monday), Zontara::Format(monday, "yyyy-mm-dd"), outcome.looked,
                                    outcome.launched};
    const auto counts = launching::ByFrequency(outcome.papers);
    for (const std::string_view word : kWords) {
        text::Cell shown;
        for (const auto& [frequency, count] : counts) {
            if (frequency == word) shown = count;
        }
        line.push_back(std::move(shown));
    }
    grid.Add(std::move(line));
}

/// The asset with the most bulletins so far.
std::string BusiestAsset(Plant& plant) {
    auto find = plant.Database().Prepare(
        "SELECT ID_Equipo FROM Boletin GROUP BY ID_Equipo ORDER BY count(*) DESC, ID_Equipo LIMIT 1");
    return find.Step() ? find.Text(0) : std::string();
}

void PrintBulletinsOf(Stage& stage, const std::string& asset) {
    const auto bulletins = stage.plant.Component().Boletin();
    const auto rows = bulletins->Seleccionar(
        "Boletin.ID_Equipo ='" + asset + "'",
        "SC_Boletin,Numero_Gama,Gama.Descripcion,Frecuencia,Fecha_Lanzamiento,Fecha_Entrega,Semana_Del_Ano,Estatus");
    Grid grid({{"Bulletin", Align::Right},
               {"Task", Align::Right},
               {"Task name", Align::Left, 44},
               {"Frequency"},
               {"Week", Align::Right},
               {"Launched"},
               {"Delivery"},
               {"Status"}});
    const auto cell = [&](std::string_view column) { return Zontara::ToText(rows->Valor(column)); };
    for (; !rows->FinDeDatos(); rows->MoverSiguiente()) {
        grid.Add({cell("SC_Boletin"), cell("Numero_Gama"), cell("Descripcion"), cell("Frecuencia"),
                  cell("Semana_Del_Ano"), cell("Fecha_Lanzamiento"), cell("Fecha_Entrega"),
                  bulletins->Estatus(Zontara::ConvertTo<std::int16_t>(rows->Valor("Estatus")))});
    }
    stage.console.out << fmt::format("\nThe bulletins of asset {}\n\n", asset);
    grid.Print(stage.console.out, 2);
}

/// One order with its lines of material.
void PrintOrder(Stage& stage, const launching::Paper& order) {
    stage.console.out << fmt::format("\nOrder {} in full: {}, task {} ({}), {} of crew for {} h\n\n", order.number,
                                     order.assetName, order.task, order.taskName, order.crew, order.time);
    auto lines = stage.plant.Database().Prepare(
        "SELECT Descripcion, Cantidad, Costo_Unitario, Cantidad * Costo_Unitario FROM Material_OT"
        " WHERE SC_Orden_Trabajo = ?1 ORDER BY SC_Material_OT");
    lines.Bind(1, order.number);
    Grid grid({{"Material"}, {"Quantity", Align::Right}, {"Unit cost", Align::Right}, {"Cost", Align::Right}});
    while (lines.Step()) {
        grid.Add({lines.Text(0), fmt::format("{:g}", lines.Real(1)), fmt::format("{:.2f}", lines.Real(2)),
                  fmt::format("{:.2f}", lines.Real(3))});
    }
    grid.Print(stage.console.out, 2);
}

void PrintOrders(Stage& stage, const Outcome& outcome) {
    std::vector<launching::Paper> shown = outcome.papers;
    if (shown.size() > kOrdersShown) shown.resize(kOrdersShown);
    launching::PrintPapers(stage.console.out, shown, 2);
    if (shown.size() < outcome.papers.size()) {
        stage.console.out << fmt::format("  ... and {} more\n", outcome.papers.size() - shown.size());
    }
    const launching::Paper* fullest = nullptr;
    for (const launching::Paper& order : outcome.papers) {
        if (fullest == nullptr || order.materials > fullest->materials) fullest = &order;
    }
    if (fullest != nullptr && fullest->materials > 0) PrintOrder(stage, *fullest);
}

}  // namespace

void FirstWeeks(Stage& stage) {
    std::ostream& out = stage.console.out;
    Zontara::Date monday = Zontara::DateOf(2026, 1, 5);
    Grid grid = WeeksGrid();
    for (int week = 0; week < 5; ++week) {
        if (week > 0) monday = Zontara::AddDays(monday, 7);
        AddWeek(grid, monday, LaunchSynchronised(stage, monday));
    }
    out << "\nFive weekly launches of the synchronised assignments, into bulletins\n\n";
    grid.Print(out, 2);
    PrintBulletinsOf(stage, BusiestAsset(stage.plant));

    const Outcome again = LaunchSynchronised(stage, monday);
    out << fmt::format("\nA second run of week {}: looked at {}, launched {}\n", Zontara::WeekOfYear(monday),
                       again.looked, again.launched);

    auto orders = std::make_shared<Zontara::CConfiguracionOTBoletin>();
    orders->UsuarioDestino(100);
    orders->CodigoEjecutorOT(1);
    orders->PrioridadSolicitada(5);
    orders->TipoIntervencion(1);
    monday = Zontara::AddDays(monday, 7);
    const Outcome launched = LaunchSynchronised(stage, monday, orders);
    out << fmt::format("\nWeek {} into work orders instead: looked at {}, launched {}\n\n", Zontara::WeekOfYear(monday),
                       launched.looked, launched.launched);
    PrintOrders(stage, launched);
}

}  // namespace host::story

#include "host/overdue.h"

#include "calendar/CImputacionPreventiva.h"
#include "frame/regional.h"
#include "host/failure.h"
#include "host/text/grid.h"
#include "meter/CImputacionSistematica.h"

#include <fmt/format.h>
#include <nlohmann/json.hpp>

namespace host {

namespace {

/// Statuses of assets out of service.
bool InService(std::int32_t status) { return status != 3 && status != 4 && status != 5 && status != 7; }

void Ask(Plant& plant, Overdue& answer, Zontara::Date day) {
    const std::string on = Zontara::Format(day, "yyyy-mm-dd");
    const auto calendar = plant.Component().ImputacionPreventiva();
    answer.meter = plant.Component().ImputacionSistematica()->ActivoNecesitaMantenimiento(answer.asset);
    answer.synchronised = calendar->ActivoTieneMantenimientoVencido(answer.asset, 0, on);
    answer.conventional = calendar->ActivoTieneMantenimientoConvencionalVencido(answer.asset, 0, on);
}

}  // namespace

std::string Overdue::Reasons() const {
    std::string reasons;
    const auto add = [&](bool holds, std::string_view reason) {
        if (holds) reasons += (reasons.empty() ? "" : ", ") + std::string(reason);
    };
    add(meter, "meter");
    add(synchronised, "synchronised");
    add(conventional, "conventional");
    return reasons;
}

std::vector<Overdue> AskAll(Plant& plant, Zontara::Date day) {
    auto assets = plant.Database().Prepare(
        "SELECT a.ID_Activo, a.Descripcion, a.estatus_actual FROM Activo a"
        " WHERE EXISTS (SELECT 1 FROM Imputacion_Preventiva i WHERE i.ID_Activo = a.ID_Activo)"
        " OR EXISTS (SELECT 1 FROM Imputacion_Sistematica i WHERE i.ID_Activo = a.ID_Activo) ORDER BY a.ID_Activo");
    std::vector<Overdue> answers;
    while (assets.Step()) {
        Overdue answer;
        answer.asset = assets.Text(0);
        answer.name = assets.Text(1);
        answer.inService = InService(assets.Int(2));
        answers.push_back(std::move(answer));
    }
    for (Overdue& answer : answers) {
        try {
            Ask(plant, answer, day);
        } catch (const Zontara::RaisedError& error) {
            answer.failure = CauseOf(error);
        }
    }
    return answers;
}

Overdue AskOne(Plant& plant, const std::string& asset, Zontara::Date day) {
    Overdue answer;
    answer.asset = asset;
    auto find = plant.Database().Prepare("SELECT Descripcion, estatus_actual FROM Activo WHERE ID_Activo = ?1");
    if (find.Bind(1, asset).Step()) {
        answer.name = find.Text(0);
        answer.inService = InService(find.Int(1));
    }
    Ask(plant, answer, day);
    return answer;
}

void Print(std::ostream& out, const std::vector<Overdue>& answers, std::size_t most) {
    text::Grid grid({{"Asset"}, {"Asset name", text::Grid::Align::Left, 40}, {"Overdue by"}, {"In service"}});
    std::size_t overdue = 0;
    for (const Overdue& answer : answers) {
        if (!answer.Any() || (++overdue > most && most > 0)) continue;
        grid.Add({answer.asset, answer.name, text::Cell(answer.Reasons()).In(text::Tone::Bad),
                  text::Cell::Flag(answer.inService)});
    }
    if (grid.Lines() == 0) return;
    grid.Print(out);
    if (overdue > grid.Lines()) out << fmt::format("... and {} more\n", overdue - grid.Lines());
}

nlohmann::json ToJson(Zontara::Date day, const std::vector<Overdue>& answers) {
    nlohmann::json overdue = nlohmann::json::array();
    nlohmann::json failed = nlohmann::json::array();
    for (const Overdue& answer : answers) {
        if (!answer.failure.empty()) failed.push_back({{"asset", answer.asset}, {"reason", answer.failure}});
        if (!answer.Any()) continue;
        nlohmann::json reasons = nlohmann::json::array();
        if (answer.meter) reasons.push_back("meter");
        if (answer.synchronised) reasons.push_back("synchronised");
        if (answer.conventional) reasons.push_back("conventional");
        overdue.push_back({{"asset", answer.asset},
                           {"asset_name", answer.name},
                           {"in_service", answer.inService},
                           {"reasons", std::move(reasons)}});
    }
    return {{"on", Zontara::Format(day, "yyyy-mm-dd")}, {"overdue", std::move(overdue)}, {"failed", std::move(failed)}};
}

}  // namespace host

#include "host/forecast/report.h"

#include "frame/regional.h"
#include "host/text/grid.h"

#include <fmt/format.h>
#include <cmath>
#include <nlohmann/json.hpp>

namespace host::forecast {

namespace {

using planning::Forecast;
using planning::Material;
using planning::Meter;
using planning::Week;
using text::Cell;
using text::Grid;
using Align = Grid::Align;

/// Sums of many small numbers, without the dust of their addition.
double Clean(double number) { return std::round(number * 1e4) / 1e4; }

Cell HoursCell(double hours) { return Cell::Real(Clean(hours), Hours(hours)); }
Cell AmountCell(Zontara::Money amount) { return Cell::Real(amount.ToNumber(), Amount(amount)); }

std::vector<Cell> Figures(const Week& week) {
    return {week.synchronised,     week.conventional,  week.orders,
            HoursCell(week.hours), week.materialLines, AmountCell(week.materialCost),
            AmountCell(week.cost)};
}

Grid WeeksGrid(std::vector<Grid::Column> ahead) {
    for (const char* title : {"Synchronised", "Conventional", "Orders", "Hours", "Materials", "Material cost", "Cost"})
        ahead.push_back({title, Align::Right});
    return Grid(std::move(ahead));
}

Grid WeeksOf(const Forecast& forecast) {
    Grid grid = WeeksGrid({{"Week", Align::Right}, {"Starts"}});
    for (const Week& week : forecast.weeks) {
        std::vector<Cell> line = {Zontara::WeekOfYear(week.day), Iso(week.day)};
        for (Cell& figure : Figures(week))
            line.push_back(std::move(figure));
        grid.Add(std::move(line));
    }
    return grid;
}

Grid TotalOf(const Forecast& forecast) {
    Grid grid = WeeksGrid({});
    grid.Add(Figures(forecast.Total()));
    return grid;
}

Grid MetersOf(const Forecast& forecast) {
    Grid grid({{"Asset"},
               {"Asset name", Align::Left, 32},
               {"Use a day", Align::Right},
               {"Unit"},
               {"Readings", Align::Right},
               {"First"},
               {"Last"}});
    for (const Meter& meter : forecast.meters) {
        const planning::AverageUse& use = meter.use;
        if (use.Known()) {
            grid.Add({meter.asset, meter.name, Cell::Real(Clean(use.perDay), fmt::format("{:.2f}", use.perDay)),
                      meter.unit, use.readings, Iso(use.first), Iso(use.last)});
        } else {
            grid.Add({meter.asset, meter.name, Cell(), meter.unit, use.readings});
        }
    }
    return grid;
}

nlohmann::ordered_json ByTrade(const Forecast& forecast, const Week& week) {
    nlohmann::ordered_json hours = nlohmann::ordered_json::object();
    for (std::size_t i = 0; i < forecast.trades.size(); ++i)
        hours[forecast.trades[i]] = Clean(week.hoursByTrade[i]);
    return hours;
}

}  // namespace

std::string Iso(Zontara::Date day) { return Zontara::Format(day, "yyyy-mm-dd"); }

std::string Hours(double hours) { return fmt::format("{:.1f}", hours); }

std::string Amount(Zontara::Money amount) { return fmt::format("{:.2f}", amount.ToNumber()); }

void Print(std::ostream& out, const Told& told) {
    out << fmt::format("Forecast of {} weeks from {}, launched each week on that weekday\n\n",
                       told.forecast.weeks.size(), Iso(told.From()));
    Grid weeks = WeeksOf(told.forecast);
    std::vector<Cell> total = {Cell(), "all"};
    for (Cell& figure : Figures(told.forecast.Total()))
        total.push_back(std::move(figure));
    weeks.Add(std::move(total));
    weeks.Print(out);
    if (told.forecast.meters.empty()) return;
    out << "\nMeters move on by the average use of the year before, those without a figure stand still\n\n";
    MetersOf(told.forecast).Print(out);
}

void PrintCsv(std::ostream& out, const Told& told) {
    out << "week,starts,synchronised,conventional,orders,hours,materials,material_cost,cost\n";
    for (const Week& week : told.forecast.weeks) {
        out << fmt::format("{},{},{},{},{},{},{},{},{}\n", Zontara::WeekOfYear(week.day), Iso(week.day),
                           week.synchronised, week.conventional, week.orders, Clean(week.hours), week.materialLines,
                           week.materialCost.ToText(), week.cost.ToText());
    }
}

nlohmann::ordered_json ToJson(const Told& told) {
    const Forecast& forecast = told.forecast;
    nlohmann::ordered_json weeks = WeeksOf(forecast).ToJson();
    for (std::size_t i = 0; i < forecast.weeks.size(); ++i)
        weeks[i]["hours_by_trade"] = ByTrade(forecast, forecast.weeks[i]);
    nlohmann::ordered_json total = TotalOf(forecast).ToJson().front();
    total["hours_by_trade"] = ByTrade(forecast, forecast.Total());
    nlohmann::ordered_json materials = nlohmann::ordered_json::array();
    for (const Material& material : forecast.materials) {
        materials.push_back({{"name", material.name},
                             {"unit_cost", material.unitCost.ToNumber()},
                             {"quantity", Clean(material.quantity)}});
    }
    return {{"from", Iso(told.From())},          {"plant", told.plant},
            {"weeks", std::move(weeks)},         {"total", std::move(total)},
            {"materials", std::move(materials)}, {"meters", MetersOf(forecast).ToJson()}};
}

}  // namespace host::forecast

#include "host/forecast/page.h"

#include "host/forecast/charts.h"
#include "host/forecast/page_style.h"
#include "host/text/html.h"

#include <fmt/format.h>
#include <algorithm>
#include <string>
#include <vector>

namespace host::forecast {

namespace {

using planning::Forecast;
using planning::Material;
using planning::Meter;
using planning::Week;
using text::Html;

/// A table; cells are escaped. A column with no class of its own holds numbers.
class Table {
public:
    struct Column {
        std::string title;
        std::string style = {};
    };
    explicit Table(std::vector<Column> columns) : columns_(std::move(columns)) {
        std::vector<std::string> titles;
        for (const Column& column : columns_)
            titles.push_back(column.title);
        AddLine("th", "", titles);
        html_ += "</thead><tbody>\n";
    }

    void Add(const std::vector<std::string>& cells) { AddLine("td", "", cells); }
    void AddTotal(const std::vector<std::string>& cells) { AddLine("td", " class=\"total\"", cells); }
    std::string Done() const { return html_ + "</tbody></table></div>\n"; }

private:
    void AddLine(const char* cell, const char* style, const std::vector<std::string>& texts) {
        html_ += fmt::format("<tr{}>", style);
        for (std::size_t i = 0; i < columns_.size(); ++i) {
            const std::string& own = columns_[i].style;
            html_ += fmt::format("<{}{}>{}</{}>", cell, own.empty() ? own : " class=\"" + own + "\"", Html(texts.at(i)),
                                 cell);
        }
        html_ += "</tr>\n";
    }

    std::vector<Column> columns_;
    std::string html_ = "<div class=\"wide\"><table><thead>\n";
};

std::string Tile(const std::string& title, const std::string& figure, const std::string& more) {
    return fmt::format("<div><dt>{}</dt><dd>{}<small>{}</small></dd></div>\n", title, figure, Html(more));
}

std::string Tiles(const Forecast& forecast) {
    const Week total = forecast.Total();
    const auto busiest = std::max_element(forecast.weeks.begin(), forecast.weeks.end(),
                                          [](const Week& left, const Week& right) { return left.hours < right.hours; });
    const auto grouped = [](std::int64_t number) { return Grouped(static_cast<double>(number)); };
    return "<dl class=\"tiles\">\n" +
           Tile("Bulletins", grouped(total.Bulletins()), grouped(total.conventional) + " of them conventional") +
           Tile("Work orders", grouped(total.orders), "by meter") +
           Tile("Labour", Grouped(total.hours) + " h",
                fmt::format("{} h a week", Hours(total.hours / static_cast<double>(forecast.weeks.size())))) +
           Tile("Busiest week", Grouped(busiest->hours) + " h", "from " + Iso(busiest->day)) +
           Tile("Materials", Grouped(total.materialCost.ToNumber()), grouped(total.materialLines) + " lines") +
           Tile("Cost of the tasks", Grouped(total.cost.ToNumber()), "by the catalogue") + "</dl>\n";
}

std::string Load(const Forecast& forecast) {
    return "<section><h2>Load per week</h2>\n<p class=\"hint\">Hours of labour</p>\n" + Bars(forecast) +
           "<p class=\"key\">" + Swatch("calendar", "Bulletins") + Swatch("meter", "Orders by meter") +
           "</p></section>\n";
}

std::string Heat(const Forecast& forecast) {
    if (forecast.trades.empty()) return {};
    return "<section><h2>The weeks by trade</h2>\n<p class=\"hint\">Hours of labour</p>\n" + HeatMap(forecast) +
           "</section>\n";
}

std::string WeeksTable(const Forecast& forecast) {
    Table table(
        {{"Week", "more"}, {"Starts", "name"}, {"Bulletins"}, {"Orders"}, {"Hours"}, {"Materials", "more"}, {"Cost"}});
    const auto line = [](const std::string& number, const std::string& day, const Week& week) {
        return std::vector<std::string>{number,
                                        day,
                                        std::to_string(week.Bulletins()),
                                        std::to_string(week.orders),
                                        Hours(week.hours),
                                        Grouped(week.materialCost.ToNumber()),
                                        Grouped(week.cost.ToNumber())};
    };
    for (const Week& week : forecast.weeks)
        table.Add(line(std::to_string(Zontara::WeekOfYear(week.day)), Iso(week.day), week));
    table.AddTotal(line("", "All", forecast.Total()));
    return "<details><summary>Week by week</summary>\n" + table.Done() + "</details>\n";
}

std::string MaterialsTable(const Forecast& forecast) {
    if (forecast.materials.empty()) return {};
    const auto cost = [](const Material& material) { return material.quantity * material.unitCost.ToNumber(); };
    std::vector<Material> materials = forecast.materials;
    std::stable_sort(materials.begin(), materials.end(),
                     [&](const Material& left, const Material& right) { return cost(left) > cost(right); });
    Table table({{"Material", "text"}, {"Quantity"}, {"Unit cost"}, {"Cost"}});
    for (const Material& material : materials) {
        table.Add({material.name, fmt::format("{:.2f}", material.quantity), Amount(material.unitCost),
                   fmt::format("{:.2f}", cost(material))});
    }
    return "<details><summary>Materials</summary>\n" + table.Done() + "</details>\n";
}

std::string MetersTable(const Forecast& forecast) {
    if (forecast.meters.empty()) return {};
    Table table({{"Asset", "name"}, {"Name", "text"}, {"Use a day"}, {"Readings", "more"}, {"Last reading", "more"}});
    for (const Meter& meter : forecast.meters) {
        const bool known = meter.use.Known();
        table.Add({meter.asset, meter.name,
                   known ? fmt::format("{:.2f} {}", meter.use.perDay, meter.unit) : "none known",
                   std::to_string(meter.use.readings), known ? Iso(meter.use.last) : ""});
    }
    return "<details><summary>Average use of the meters</summary>\n" + table.Done() + "</details>\n";
}

}  // namespace

void PrintPage(std::ostream& out, const Told& told) {
    const Forecast& forecast = told.forecast;
    const std::string span = fmt::format("{} to {}", Iso(told.From()), Iso(Zontara::AddDays(told.Until(), -1)));
    out << "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
           "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n"
        << fmt::format("<title>Maintenance forecast, {}</title>\n<style>{}</style>\n</head>\n<body>\n<main>\n", span,
                       kPageStyle)
        << fmt::format("<header><h1>Maintenance forecast</h1><p>{} · {} weekly launches, {}</p></header>\n",
                       Html(told.plant), forecast.weeks.size(), span)
        << Tiles(forecast) << Load(forecast) << Heat(forecast) << WeeksTable(forecast) << MaterialsTable(forecast)
        << MetersTable(forecast)
        << "<footer>The launches were run week by week on a private copy of the plant. Meters moved on by the average "
           "use of the year before; hours are crew by time of the tasks.</footer>\n</main>\n</body>\n</html>\n";
}

}  // namespace host::forecast

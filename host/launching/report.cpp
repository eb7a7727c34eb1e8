#include "host/launching/report.h"

#include "frame/regional.h"
#include "host/text/grid.h"

#include <fmt/format.h>
#include <algorithm>
#include <array>
#include <map>
#include <nlohmann/json.hpp>

namespace host::launching {

namespace {

using text::Cell;
using text::Grid;
using Align = Grid::Align;

constexpr std::array<std::string_view, 9> kFrequencies = {
    "Fecha", "Diaria", "Semanal", "Quincenal", "Mensual", "Bimestral", "Trimestral", "Semestral", "Anual"};

std::size_t PlaceOf(const std::string& frequency) {
    return static_cast<std::size_t>(std::find(kFrequencies.begin(), kFrequencies.end(), frequency) -
                                    kFrequencies.begin());
}

void PrintBulletins(std::ostream& out, const std::vector<Paper>& papers, std::size_t indent) {
    Grid grid({{"Bulletin", Align::Right},
               {"Asset"},
               {"Asset name", Align::Left, 32},
               {"Task", Align::Right},
               {"Task name", Align::Left, 40},
               {"Frequency"},
               {"Launched"},
               {"Delivery"}});
    for (const Paper& paper : papers) {
        if (paper.order) continue;
        grid.Add({paper.number, paper.asset, paper.assetName, paper.task, paper.taskName, paper.frequency, paper.date,
                  paper.delivery});
    }
    if (grid.Lines() > 0) grid.Print(out, indent);
}

void PrintOrders(std::ostream& out, const std::vector<Paper>& papers, std::size_t indent) {
    Grid grid({{"Order", Align::Right},
               {"Asset"},
               {"Asset name", Align::Left, 32},
               {"Task", Align::Right},
               {"Task name", Align::Left, 40},
               {"Frequency"},
               {"Wanted"},
               {"Materials", Align::Right},
               {"Cost", Align::Right},
               {"Crew", Align::Right},
               {"Hours", Align::Right}});
    for (const Paper& paper : papers) {
        if (!paper.order) continue;
        grid.Add({paper.number, paper.asset, paper.assetName, paper.task, paper.taskName, paper.frequency,
                  paper.delivery, paper.materials, Cell::Real(paper.cost, fmt::format("{:.2f}", paper.cost)),
                  paper.crew, Cell::Real(paper.time, fmt::format("{:g}", paper.time))});
    }
    if (grid.Lines() > 0) grid.Print(out, indent);
}

nlohmann::json ToJson(const Paper& paper) {
    nlohmann::json fields = {
        {"type", paper.order ? "order" : "bulletin"},
        {"key", paper.number},
        {"assignment", paper.assignment},
        {"asset", paper.asset},
        {"asset_name", paper.assetName},
        {"task", paper.task},
        {"task_name", paper.taskName},
        {"frequency", paper.frequency},
        {paper.order ? "requested" : "launched", paper.date},
        {paper.order ? "wanted" : "delivery", paper.delivery},
    };
    if (paper.order) {
        fields["text"] = paper.text;
        fields["materials"] = paper.materials;
        fields["cost"] = paper.cost;
        fields["crew"] = paper.crew;
        fields["hours"] = paper.time;
    }
    return fields;
}

}  // namespace

std::vector<std::pair<std::string, std::int64_t>> ByFrequency(const std::vector<Paper>& papers) {
    std::map<std::pair<std::size_t, std::string>, std::int64_t> counts;
    for (const Paper& paper : papers)
        ++counts[{PlaceOf(paper.frequency), paper.frequency}];
    std::vector<std::pair<std::string, std::int64_t>> result;
    result.reserve(counts.size());
    for (const auto& [frequency, count] : counts)
        result.emplace_back(frequency.second, count);
    return result;
}

void PrintPapers(std::ostream& out, const std::vector<Paper>& papers, std::size_t indent) {
    PrintBulletins(out, papers, indent);
    PrintOrders(out, papers, indent);
}

void Print(std::ostream& out, Zontara::Date date, const std::vector<Outcome>& outcomes) {
    Grid grid({{"Launch"}, {"Looked at", Align::Right}, {"Launched", Align::Right}});
    std::vector<Paper> papers;
    for (const Outcome& outcome : outcomes) {
        grid.Add({std::string(NameOf(outcome.kind)), outcome.looked, outcome.launched});
        papers.insert(papers.end(), outcome.papers.begin(), outcome.papers.end());
    }
    out << fmt::format("Launch of {} (week {})\n\n", Zontara::Format(date, "yyyy-mm-dd"), Zontara::WeekOfYear(date));
    grid.Print(out);
    out << '\n';
    if (papers.empty()) {
        out << "Nothing was due.\n";
        return;
    }
    PrintPapers(out, papers);
}

void PrintTexts(std::ostream& out, const std::vector<Outcome>& outcomes) {
    Grid grid({{"Order", Align::Right}, {"Text"}});
    for (const Outcome& outcome : outcomes) {
        for (const Paper& paper : outcome.papers) {
            if (paper.order) grid.Add({paper.number, paper.text});
        }
    }
    if (grid.Lines() == 0) return;
    out << "\nTexts of the orders\n\n";
    grid.Print(out);
}

nlohmann::json ToJson(Zontara::Date date, const std::vector<Outcome>& outcomes) {
    nlohmann::json runs = nlohmann::json::array();
    std::int64_t launched = 0;
    for (const Outcome& outcome : outcomes) {
        nlohmann::json papers = nlohmann::json::array();
        for (const Paper& paper : outcome.papers)
            papers.push_back(ToJson(paper));
        nlohmann::json byFrequency = nlohmann::json::object();
        for (const auto& [frequency, count] : ByFrequency(outcome.papers))
            byFrequency[frequency] = count;
        runs.push_back({{"kind", NameOf(outcome.kind)},
                        {"looked_at", outcome.looked},
                        {"launched", outcome.launched},
                        {"by_frequency", std::move(byFrequency)},
                        {"papers", std::move(papers)}});
        launched += outcome.launched;
    }
    return {{"date", Zontara::Format(date, "yyyy-mm-dd")}, {"launched", launched}, {"runs", std::move(runs)}};
}

}  // namespace host::launching

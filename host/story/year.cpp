#include "host/story/story.h"

#include "calendar/CImputacionPreventiva.h"
#include "frame/regional.h"
#include "host/failure.h"
#include "host/launching/launch.h"
#include "host/load/table.h"
#include "host/overdue.h"
#include "host/text/grid.h"
#include "meter/CImputacionParalela.h"

#include <fmt/format.h>
#include <algorithm>

namespace host::story {

namespace {

using planning::Kind;
using text::Grid;

constexpr int kWeeks = 52;

/// The readings of the year, in the order of their days.
class Arriving {
public:
    explicit Arriving(const std::filesystem::path& folder) : table_(load::Readings()) {
        load::Problems problems;
        sheet_ = load::ReadSheet(folder, table_.file, table_.columns, problems);
        if (!problems.Empty()) throw Failure("the sample plant's readings are damaged:\n" + problems.Text());
    }

    /// Records what came in up to a day, and gives the number of readings.
    std::int64_t RecordUntil(Plant& plant, const std::string& day) {
        load::Known known;
        const std::size_t before = next_;
        for (; next_ < sheet_.rows.size() && sheet_.rows[next_].Text(0) <= day; ++next_) {
            table_.write(plant, known, sheet_.rows[next_]);
        }
        return static_cast<std::int64_t>(next_ - before);
    }

private:
    load::Table table_;
    load::Sheet sheet_;
    std::size_t next_ = 0;
};

/// What a month brought.
struct Month {
    std::string name;
    std::int64_t launches = 0;
    std::int64_t synchronised = 0;
    std::int64_t conventional = 0;
    std::int64_t readings = 0;
    std::int64_t orders = 0;
    std::int64_t parallels = 0;
};

/// Resets the parallels of the assignments that got an order, and gives their number.
std::int64_t ResetParallels(Plant& plant, const launching::Outcome& outcome, Zontara::Date day) {
    const auto parallels = plant.Component().ImputacionParalela();
    std::int64_t reset = 0;
    for (const launching::Paper& order : outcome.papers) {
        reset += parallels->Seleccionar(order.assignment)->TotalRegistros();
        parallels->ResetearParalelas(order.assignment, day);
    }
    return reset;
}

/// One Monday: readings first, then all launches, in one transaction.
void RunWeek(Stage& stage, Arriving& arriving, Zontara::Date monday, Month& month) {
    stage.clock.SetDay(monday);
    launching::Request request;
    request.date = monday;
    request.kinds = {Kind::Synchronised, Kind::Conventional, Kind::Meter};
    request.user = 100;

    Transaction transaction(stage.plant);
    month.readings += arriving.RecordUntil(stage.plant, Zontara::Format(monday, "yyyy-mm-dd"));
    Progress progress(*stage.plant.Component().ImputacionPreventiva(), stage.console);
    const std::vector<launching::Outcome> outcomes = launching::Launch(stage.plant, request, progress);
    month.synchronised += outcomes[0].launched;
    month.conventional += outcomes[1].launched;
    month.orders += outcomes[2].launched;
    month.parallels += ResetParallels(stage.plant, outcomes[2], monday);
    transaction.Commit();
    ++month.launches;
}

void PrintMonths(std::ostream& out, const std::vector<Month>& months) {
    constexpr auto right = Grid::Align::Right;
    Grid grid({{"Month"},
               {"Mondays", right},
               {"Synchronised", right},
               {"Conventional", right},
               {"Readings", right},
               {"Meter orders", right},
               {"Parallels reset", right}});
    Month all;
    const auto add = [&](const Month& month) {
        grid.Add({month.name, month.launches, month.synchronised, month.conventional, month.readings, month.orders,
                  month.parallels});
    };
    for (const Month& month : months) {
        add(month);
        all.launches += month.launches;
        all.synchronised += month.synchronised;
        all.conventional += month.conventional;
        all.readings += month.readings;
        all.orders += month.orders;
        all.parallels += month.parallels;
    }
    all.name = "all";
    add(all);
    grid.Print(out, 2);
}

Zontara::Date FirstMonday() { return Zontara::DateOf(2026, 2, 16); }

}  // namespace

void Year(Stage& stage) {
    Arriving arriving(stage.files / "year");
    std::vector<Month> months;
    for (int week = 0; week < kWeeks; ++week) {
        const Zontara::Date monday = Zontara::AddDays(FirstMonday(), week * 7);
        const std::string name = Zontara::Format(monday, "yyyy-mm");
        if (months.empty() || months.back().name != name) months.push_back({name});
        RunWeek(stage, arriving, monday, months.back());
    }
    stage.console.out << "\nA year of Mondays: readings come in, then everything due is launched\n\n";
    PrintMonths(stage.console.out, months);
}

void OverdueAtTheEnd(Stage& stage) {
    const Zontara::Date thursday = Zontara::AddDays(FirstMonday(), (kWeeks - 1) * 7 + 3);
    stage.clock.SetDay(thursday);
    const std::vector<Overdue> answers = AskAll(stage.plant, thursday);
    const auto count = [&](auto holds) { return std::count_if(answers.begin(), answers.end(), holds); };
    stage.console.out << fmt::format(
        "\nOverdue on {}: {} of {} assets with assignments ({} by meter, {} synchronised, {} conventional).\n"
        "Assets out of service are never launched, cancelled assignments by meter count all the same, and those of a\n"
        "weekday after Monday wait for the next launch.\n\n",
        Zontara::Format(thursday, "yyyy-mm-dd"), count([](const Overdue& each) { return each.Any(); }), answers.size(),
        count([](const Overdue& each) { return each.meter; }),
        count([](const Overdue& each) { return each.synchronised; }),
        count([](const Overdue& each) { return each.conventional; }));
    Print(stage.console.out, answers, 20);
}

}  // namespace host::story

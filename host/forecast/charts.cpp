#include "host/forecast/charts.h"

#include "host/forecast/report.h"
#include "host/text/html.h"

#include <fmt/format.h>
#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

namespace host::forecast {

namespace {

using planning::Forecast;
using planning::Week;
using text::Html;

/// Units of a drawing: a column a week, and the height of the bars.
constexpr std::size_t kColumn = 10;
constexpr double kHeight = 200;
constexpr int kShades = 6;

std::size_t Width(const Forecast& forecast) { return forecast.weeks.size() * kColumn; }

/// A drawing that fills the box it stands in.
std::string Drawing(const Forecast& forecast, double height, const std::string& name, const std::string& shapes) {
    return fmt::format(
        "<svg viewBox=\"0 0 {} {}\" preserveAspectRatio=\"none\" role=\"img\" aria-label=\"{}\">\n{}</svg>\n",
        Width(forecast), height, Html(name), shapes);
}

/// The distance of the lines of an axis: 1, 2 or 5 of some power of ten, so that four lines or so reach the top.
double StepOf(double top) {
    if (top <= 0) return 1;
    const double rough = top / 4;
    const double power = std::pow(10, std::floor(std::log10(rough)));
    for (const double factor : {1.0, 2.0, 5.0}) {
        if (rough <= factor * power) return factor * power;
    }
    return 10 * power;
}

struct Mark {
    std::size_t week;
    std::string text;
};

/// Where a month begins, its name; January is the year. Where there are too many, some are left out.
std::vector<Mark> Months(const Forecast& forecast) {
    constexpr std::array<const char*, 12> kNames = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                                    "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
    constexpr std::size_t kMost = 14;
    std::vector<Mark> marks;
    std::int32_t last = 0;
    for (std::size_t i = 0; i < forecast.weeks.size(); ++i) {
        const Zontara::CivilDate day = Zontara::CivilOf(forecast.weeks[i].day);
        if (day.month == last) continue;
        last = day.month;
        marks.push_back({i, day.month == 1 ? std::to_string(day.year) : kNames[static_cast<std::size_t>(last - 1)]});
    }
    std::vector<Mark> kept;
    const std::size_t most = std::max<std::size_t>(forecast.weeks.size() / kMost, 1);
    for (const Mark& mark : marks) {
        // A name needs the room of some columns; the first month may be a short one, and so may the last.
        if (most > 1 && forecast.weeks.size() - mark.week < most) continue;
        if (!kept.empty() && mark.week - kept.back().week < most) {
            if (kept.size() > 1) continue;
            kept.pop_back();
        }
        kept.push_back(mark);
    }
    return kept;
}

std::string MonthAxis(const Forecast& forecast) {
    std::string axis = "<div class=\"months\" aria-hidden=\"true\">";
    for (const Mark& mark : Months(forecast)) {
        const double left = 100.0 * static_cast<double>(mark.week) / static_cast<double>(forecast.weeks.size());
        axis += fmt::format("<span style=\"left:{:.2f}%\">{}</span>", left, mark.text);
    }
    return axis + "</div>\n";
}

std::string Bar(const Week& week, std::size_t place, double top) {
    const double meter = week.hoursOfOrders / top * kHeight;
    const double all = week.hours / top * kHeight;
    const auto rectangle = [&](const char* kind, double from, double height) {
        if (height <= 0) return std::string();
        return fmt::format("<rect class=\"{}\" x=\"{}\" y=\"{:.1f}\" width=\"8\" height=\"{:.1f}\"/>", kind,
                           place * kColumn + 1, from, height);
    };
    return fmt::format(
        "<g><title>{}: {} h, {} bulletins, {} orders</title>"
        "<rect class=\"column\" x=\"{}\" y=\"0\" width=\"{}\" height=\"{}\"/>{}{}</g>\n",
        NameOf(week), Hours(week.hours), week.Bulletins(), week.orders, place * kColumn, kColumn, kHeight,
        rectangle("calendar", kHeight - all + meter, all - meter), rectangle("meter", kHeight - all, meter));
}

/// The hours that a shade goes up to. The steps grow with the hours, so that one week above all leaves the others their
/// differences.
double BoundOf(int shade, double most) {
    const double share = static_cast<double>(shade) / kShades;
    return most * share * share;
}

int ShadeOf(double hours, double most) {
    int shade = 0;
    while (shade < kShades && hours > BoundOf(shade, most))
        ++shade;
    return shade;
}

std::string HeatRow(const Forecast& forecast, std::size_t trade, double most) {
    constexpr double kRow = 20;
    std::string cells;
    double sum = 0;
    for (std::size_t i = 0; i < forecast.weeks.size(); ++i) {
        const double hours = forecast.weeks[i].hoursByTrade[trade];
        sum += hours;
        cells += fmt::format(
            "<rect class=\"s{}\" x=\"{}\" y=\"0\" width=\"{}\" height=\"{}\"><title>{}: {} h</title></rect>\n",
            ShadeOf(hours, most), i * kColumn, kColumn - 1, kRow, NameOf(forecast.weeks[i]), Hours(hours));
    }
    const std::string name = TradeName(forecast.trades[trade]);
    return fmt::format(
        "<div class=\"heat-row\"><div class=\"heat-name\">{}</div><div class=\"heat-cells\">{}</div>"
        "<div class=\"heat-sum\">{} h</div></div>\n",
        Html(name), Drawing(forecast, kRow, name + ", hours a week", cells), Grouped(sum));
}

std::string Legend(double most) {
    std::string legend = "<p class=\"key\">";
    for (int shade = 0; shade <= kShades; ++shade) {
        legend +=
            Swatch("s" + std::to_string(shade), fmt::format("{}{:.0f}", shade == 0 ? "" : "to ", BoundOf(shade, most)));
    }
    return legend + "h a week</p>\n";
}

}  // namespace

std::string Grouped(double number) {
    std::string digits = fmt::format("{:.0f}", number);
    const std::size_t sign = number < 0 && digits.front() == '-' ? 1 : 0;
    for (std::size_t at = digits.size(); at > sign + 3;) {
        at -= 3;
        digits.insert(at, ",");
    }
    return digits;
}

std::string NameOf(const Week& week) {
    return fmt::format("{}, week {}", Iso(week.day), Zontara::WeekOfYear(week.day));
}

std::string Swatch(const std::string& shade, const std::string& text) {
    return fmt::format(
        "<span><svg class=\"swatch\" viewBox=\"0 0 1 1\"><rect class=\"{}\" width=\"1\" height=\"1\"/></svg>"
        "{}</span>",
        shade, Html(text));
}

std::string TradeName(const std::string& trade) { return trade.empty() ? "No trade" : trade; }

std::string Bars(const Forecast& forecast) {
    double most = 0;
    for (const Week& week : forecast.weeks)
        most = std::max(most, week.hours);
    const double step = StepOf(most);
    const double top = std::max(std::ceil(most / step), 1.0) * step;

    std::string shapes;
    std::string labels;
    for (double line = 0; line <= top + step / 2; line += step) {
        shapes += fmt::format("<line class=\"line\" x1=\"0\" x2=\"{}\" y1=\"{:.1f}\" y2=\"{:.1f}\"/>\n",
                              Width(forecast), kHeight - line / top * kHeight, kHeight - line / top * kHeight);
        labels += fmt::format("<span style=\"bottom:{:.2f}%\">{:g}</span>", line / top * 100, line);
    }
    for (std::size_t i = 0; i < forecast.weeks.size(); ++i)
        shapes += Bar(forecast.weeks[i], i, top);
    return "<div class=\"bars\"><div class=\"scale\" aria-hidden=\"true\">" + labels + "</div><div class=\"plot\">" +
           Drawing(forecast, kHeight, "Hours of labour a week", shapes) + "</div>" + MonthAxis(forecast) + "</div>\n";
}

std::string HeatMap(const Forecast& forecast) {
    double most = 0;
    for (const Week& week : forecast.weeks) {
        for (const double hours : week.hoursByTrade)
            most = std::max(most, hours);
    }
    std::string rows;
    for (std::size_t trade = 0; trade < forecast.trades.size(); ++trade)
        rows += HeatRow(forecast, trade, most);
    return rows + "<div class=\"heat-axis\">" + MonthAxis(forecast) + "</div>\n" + Legend(most);
}

}  // namespace host::forecast

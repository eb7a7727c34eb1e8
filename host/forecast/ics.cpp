#include "host/forecast/ics.h"

#include "frame/regional.h"

#include <fmt/format.h>
#include <string>
#include <string_view>

namespace host::forecast {

namespace {

using planning::Forecast;
using planning::Week;

constexpr std::size_t kLongestLine = 75;

/// A text value: separators and line ends escaped, other control characters left out.
std::string Escaped(std::string_view text) {
    std::string escaped;
    for (const char c : text) {
        if (c == '\n') {
            escaped += "\\n";
        } else if (c == '\\' || c == ';' || c == ',') {
            escaped += '\\';
            escaped += c;
        } else if (static_cast<unsigned char>(c) >= ' ' && c != '\x7f') {
            escaped += c;
        }
    }
    return escaped;
}

/// Writes a content line, folded so that no line is longer than 75 octets and no character is torn.
void Line(std::ostream& out, std::string_view line) {
    std::size_t room = kLongestLine;
    while (line.size() > room) {
        std::size_t end = room;
        while (end > 0 && (static_cast<unsigned char>(line[end]) & 0xC0) == 0x80)
            --end;
        out << line.substr(0, end) << "\r\n ";
        line.remove_prefix(end);
        // The blank that a continuation begins with is one of its octets.
        room = kLongestLine - 1;
    }
    out << line << "\r\n";
}

std::string Day(Zontara::Date day) { return Zontara::Format(day, "yyyymmdd"); }

std::string Summary(const Week& week) {
    if (week.Bulletins() + week.orders == 0) return "Maintenance: nothing due";
    return fmt::format("Maintenance: {} bulletins, {} orders, {} h", week.Bulletins(), week.orders, Hours(week.hours));
}

std::string Description(const Forecast& forecast, const Week& week) {
    std::string text = fmt::format(
        "Week {}\nBulletins: {} synchronised, {} conventional\nOrders by meter: {}\nMaterials: {}\nCost: {}",
        Zontara::WeekOfYear(week.day), week.synchronised, week.conventional, week.orders, Amount(week.materialCost),
        Amount(week.cost));
    for (std::size_t i = 0; i < forecast.trades.size(); ++i) {
        if (week.hoursByTrade[i] <= 0) continue;
        text += fmt::format("\n{}: {} h", forecast.trades[i].empty() ? "without a trade" : forecast.trades[i],
                            Hours(week.hoursByTrade[i]));
    }
    return text;
}

void Event(std::ostream& out, const Told& told, const Week& week) {
    Line(out, "BEGIN:VEVENT");
    Line(out, "UID:" + Escaped(Day(week.day) + "-" + told.plant) + "@forecast.zontara.invalid");
    // The first day stands for the time of making, so that the same forecast is the same file.
    Line(out, "DTSTAMP:" + Day(told.From()) + "T000000Z");
    Line(out, "DTSTART;VALUE=DATE:" + Day(week.day));
    Line(out, "DTEND;VALUE=DATE:" + Day(Zontara::AddDays(week.day, 7)));
    Line(out, "SUMMARY:" + Escaped(Summary(week)));
    Line(out, "DESCRIPTION:" + Escaped(Description(told.forecast, week)));
    Line(out, "TRANSP:TRANSPARENT");
    Line(out, "END:VEVENT");
}

}  // namespace

void PrintIcs(std::ostream& out, const Told& told) {
    Line(out, "BEGIN:VCALENDAR");
    Line(out, "VERSION:2.0");
    Line(out, "PRODID:-//Zontara//Forecast//EN");
    Line(out, "CALSCALE:GREGORIAN");
    for (const Week& week : told.forecast.weeks)
        Event(out, told, week);
    Line(out, "END:VCALENDAR");
}

}  // namespace host::forecast

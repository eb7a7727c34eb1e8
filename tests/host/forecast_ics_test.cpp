#include "host/forecast/ics.h"

#include "tests/host/run.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <memory>
#include <sstream>

namespace {

using host::forecast::PrintIcs;
using host::forecast::Told;
using host_test::Folder;
using testing::ElementsAre;
using testing::HasSubstr;

/// Two weeks of a plant whose names need escaping.
Told Sample() {
    Told told;
    told.plant = "plant; north.db";
    told.forecast.trades = {"Mecánicos; turno A, con un nombre muy largo que no cabe en una sola línea del calendario",
                            ""};
    planning::Week week;
    week.day = Zontara::DateOf(2026, 12, 28);
    week.synchronised = 5;
    week.conventional = 1;
    week.orders = 2;
    week.hours = 12.5;
    week.hoursByTrade = {12, 0.5};
    week.materialCost = Zontara::Money::FromNumber(10.25);
    week.cost = Zontara::Money::FromNumber(99);
    told.forecast.weeks.push_back(week);
    planning::Week idle;
    idle.day = Zontara::DateOf(2027, 1, 4);
    idle.hoursByTrade = {0, 0};
    told.forecast.weeks.push_back(idle);
    return told;
}

std::string Calendar(const Told& told) {
    std::ostringstream out;
    PrintIcs(out, told);
    return out.str();
}

std::vector<std::string> Lines(const std::string& text) {
    std::vector<std::string> lines;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t end = text.find("\r\n", at);
        if (end == std::string::npos) return {"a line without CRLF"};
        lines.push_back(text.substr(at, end - at));
        at = end + 2;
    }
    return lines;
}

TEST(ForecastIcs, EveryLineEndsInCrLfAndHoldsAtMost75Octets) {
    const std::string calendar = Calendar(Sample());
    bool folded = false;
    for (const std::string& line : Lines(calendar)) {
        EXPECT_LE(line.size(), 75u) << line;
        EXPECT_EQ(line.find('\n'), std::string::npos);
        folded = folded || line.front() == ' ';
        // A fold never tears a character: no line begins inside one.
        const char first = line[line.front() == ' ' ? 1 : 0];
        EXPECT_NE(static_cast<unsigned char>(first) & 0xC0, 0x80) << line;
    }
    EXPECT_TRUE(folded);
}

TEST(ForecastIcs, AWeekIsAnAllDayEventUntilTheNext) {
    const auto lines = Lines(Calendar(Sample()));
    const std::vector<std::string> head(lines.begin(), lines.begin() + 10);
    EXPECT_THAT(head,
                ElementsAre("BEGIN:VCALENDAR", "VERSION:2.0", "PRODID:-//Zontara//Forecast//EN", "CALSCALE:GREGORIAN",
                            "BEGIN:VEVENT", "UID:20261228-plant\\; north.db@forecast.zontara.invalid",
                            "DTSTAMP:20261228T000000Z", "DTSTART;VALUE=DATE:20261228", "DTEND;VALUE=DATE:20270104",
                            "SUMMARY:Maintenance: 6 bulletins\\, 2 orders\\, 12.5 h"));
    EXPECT_EQ(lines.back(), "END:VCALENDAR");
}

TEST(ForecastIcs, AnIdleWeekSaysSo) {
    EXPECT_THAT(Calendar(Sample()), HasSubstr("SUMMARY:Maintenance: nothing due\r\n"));
}

/// What a program says on its output, behind its exit status.
std::string OutputOf(const std::string& command) {
    const std::unique_ptr<FILE, int (*)(FILE*)> pipe(popen(command.c_str(), "r"), pclose);
    std::string output;
    std::array<char, 4096> part{};
    for (std::size_t count = 0; (count = fread(part.data(), 1, part.size(), pipe.get())) > 0;)
        output.append(part.data(), count);
    return output;
}

constexpr const char* kReader = R"py(import sys
import icalendar
calendar = icalendar.Calendar.from_ical(open(sys.argv[1], 'rb').read())
for event in calendar.walk('VEVENT'):
    assert not event.errors, event.errors
    print(event['UID'], event.decoded('DTSTART'), event.decoded('DTEND'), event.decoded('DTSTAMP'), sep='|')
    print(event['SUMMARY'])
    print(event['DESCRIPTION'])
)py";

TEST(ForecastIcs, ACalendarParserReadsItBack) {
    if (OutputOf("/usr/bin/python3 -c 'import icalendar; print(1)' 2>/dev/null") != "1\n")
        GTEST_SKIP() << "python3-icalendar isn't installed";
    const Folder folder;
    folder.Write("forecast.ics", Calendar(Sample()));
    folder.Write("read.py", kReader);
    EXPECT_EQ(OutputOf("/usr/bin/python3 '" + (folder / "read.py") + "' '" + (folder / "forecast.ics") + "' 2>&1"),
              "20261228-plant; north.db@forecast.zontara.invalid|2026-12-28|2027-01-04|2026-12-28 00:00:00+00:00\n"
              "Maintenance: 6 bulletins, 2 orders, 12.5 h\n"
              "Week 53\n"
              "Bulletins: 5 synchronised, 1 conventional\n"
              "Orders by meter: 2\n"
              "Materials: 10.25\n"
              "Cost: 99.00\n"
              "Mecánicos; turno A, con un nombre muy largo que no cabe en una sola línea del calendario: 12.0 h\n"
              "without a trade: 0.5 h\n"
              "20270104-plant; north.db@forecast.zontara.invalid|2027-01-04|2027-01-11|2026-12-28 00:00:00+00:00\n"
              "Maintenance: nothing due\n"
              "Week 2\n"
              "Bulletins: 0 synchronised, 0 conventional\n"
              "Orders by meter: 0\n"
              "Materials: 0.00\n"
              "Cost: 0.00\n");
}

}  // namespace

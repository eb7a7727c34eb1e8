#include "host/forecast/page.h"

#include "host/forecast/charts.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

namespace {

using host::forecast::Grouped;
using host::forecast::Told;
using testing::HasSubstr;
using testing::Not;

/// So many weeks from 2026-03-02, each with more hours than the one before.
Told Sample(int weeks) {
    Told told;
    told.plant = "<plant> & co.db";
    told.forecast.trades = {"R&D <b>", ""};
    for (int i = 0; i < weeks; ++i) {
        planning::Week week;
        week.day = Zontara::AddDays(Zontara::DateOf(2026, 3, 2), i * 7);
        week.synchronised = 3;
        week.orders = 1;
        week.hours = 10.0 * i;
        week.hoursOfOrders = 1.0 * i;
        week.hoursByTrade = {9.0 * i, 1.0 * i};
        told.forecast.weeks.push_back(week);
    }
    told.forecast.materials = {{"Grease \"EP 2\"", Zontara::Money::FromNumber(9.8), 2.5}};
    told.forecast.meters = {{"A<1>", "Pump", "h", {}}};
    return told;
}

std::string Page(const Told& told) {
    std::ostringstream out;
    host::forecast::PrintPage(out, told);
    return out.str();
}

int CountOf(const std::string& text, const std::string& part) {
    int count = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + part.size()))
        ++count;
    return count;
}

TEST(ForecastPage, NeedsNothingElse) {
    const std::string page = Page(Sample(52));
    EXPECT_THAT(page, HasSubstr("<svg "));
    for (const char* outside : {"http:", "https:", "src=", "href=", "url(", "@import", "<script"})
        EXPECT_THAT(page, Not(HasSubstr(outside)));
}

TEST(ForecastPage, NothingOfThePlantIsMarkup) {
    const std::string page = Page(Sample(2));
    for (const char* raw : {"<plant>", "<b>", "A<1>", "EP 2\""})
        EXPECT_THAT(page, Not(HasSubstr(raw)));
    for (const char* shown : {"&lt;plant&gt; &amp; co.db", "R&amp;D &lt;b&gt;", "A&lt;1&gt;", "EP 2&quot;"})
        EXPECT_THAT(page, HasSubstr(shown));
}

TEST(ForecastPage, EveryElementIsClosed) {
    const std::string page = Page(Sample(5));
    for (const char* name :
         {"svg", "g", "section", "details", "table", "tr", "td", "div", "p", "dl", "main", "title"}) {
        SCOPED_TRACE(name);
        const std::string tag = std::string("<") + name;
        EXPECT_EQ(CountOf(page, tag + ">") + CountOf(page, tag + " "), CountOf(page, std::string("</") + name + ">"));
    }
}

TEST(ForecastPage, ABarIsAsHighAsItsHoursAndHasThoseOfOrdersOnTop) {
    const std::string bars = host::forecast::Bars(Sample(3).forecast);
    EXPECT_EQ(CountOf(bars, "<g>"), 3);
    // The scale ends at 20, 200 units high: 10 hours are 100 units, of which the orders take 10.
    EXPECT_THAT(bars, HasSubstr("<title>2026-03-09, week 11: 10.0 h, 3 bulletins, 1 orders</title>"));
    EXPECT_THAT(bars, HasSubstr("<rect class=\"calendar\" x=\"11\" y=\"110.0\" width=\"8\" height=\"90.0\"/>"
                                "<rect class=\"meter\" x=\"11\" y=\"100.0\" width=\"8\" height=\"10.0\"/>"));
    EXPECT_THAT(bars, HasSubstr("<span style=\"bottom:100.00%\">20</span>"));
}

TEST(ForecastPage, TheHeatMapHasARowATradeAndACellAWeek) {
    const std::string map = host::forecast::HeatMap(Sample(4).forecast);
    EXPECT_EQ(CountOf(map, "class=\"heat-name\""), 2);
    EXPECT_EQ(CountOf(map, "<title>"), 8);
    EXPECT_THAT(map, HasSubstr("<rect class=\"s0\" x=\"0\" y=\"0\""));
    EXPECT_THAT(map, HasSubstr("<rect class=\"s6\" x=\"30\" y=\"0\" width=\"9\" height=\"20\"><title>2026-03-23, week "
                               "13: 27.0 h</title></rect>"));
    EXPECT_THAT(map, HasSubstr("<div class=\"heat-name\">No trade</div>"));
}

TEST(ForecastPage, MonthsAreNamedWhereTheyBeginAndJanuaryIsTheYear) {
    const std::string bars = host::forecast::Bars(Sample(52).forecast);
    EXPECT_THAT(bars, HasSubstr("<span style=\"left:0.00%\">Mar</span><span style=\"left:9.62%\">Apr</span>"));
    EXPECT_THAT(bars, HasSubstr(">2027</span>"));
    EXPECT_THAT(bars, Not(HasSubstr(">Jan</span>")));
}

TEST(ForecastPage, APlantWithNothingToDoHasAPageToo) {
    Told told = Sample(1);
    told.forecast = {};
    told.forecast.weeks.push_back({});
    const std::string page = Page(told);
    EXPECT_THAT(page, HasSubstr("<h2>Load per week</h2>"));
    for (const char* noNumber : {"\"nan", "\"inf", ":nan", ":inf", ">nan", ">inf"})
        EXPECT_THAT(page, Not(HasSubstr(noNumber)));
}

TEST(ForecastPage, NumbersAreGroupedByThousands) {
    const std::pair<double, const char*> cases[] = {
        {0, "0"}, {999, "999"}, {1000, "1,000"}, {1234567.4, "1,234,567"}, {-999, "-999"}, {-1000, "-1,000"}};
    for (const auto& [number, text] : cases)
        EXPECT_EQ(Grouped(number), text);
}

}  // namespace

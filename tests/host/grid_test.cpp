#include "host/text/grid.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <sstream>

namespace {

using host::text::Cell;
using host::text::Grid;
using host::text::Tone;

TEST(Grid, ColumnsStandUnderOneAnotherWithAccents) {
    Grid grid({{"Name"}, {"Rows", Grid::Align::Right}, {"Last"}});
    grid.Add({"Cañería", "7", "x"});
    grid.Add({"Gas", "1000"});
    std::ostringstream out;
    grid.Print(out, 2);
    EXPECT_EQ(out.str(),
              "  Name     Rows  Last\n"
              "  -------  ----  ----\n"
              "  Cañería     7  x\n"
              "  Gas      1000\n");
    EXPECT_EQ(grid.Lines(), 2u);
}

TEST(Grid, CutsWhatIsTooWideAndKeepsALineALine) {
    Grid grid({{"Text", Grid::Align::Left, 6}});
    grid.Add({"ñandúes"});
    grid.Add({"one\ntwo"});
    grid.Add({"a  "});
    std::ostringstream out;
    grid.Print(out);
    EXPECT_EQ(out.str(), "Text\n------\nñandú…\none t…\na\n");
}

TEST(Grid, GivesProgramsAnObjectALineWithWholeTextsAndNumbers) {
    Grid grid({{"Asset name", Grid::Align::Left, 3},
               {"Looked at", Grid::Align::Right},
               {"Cost", Grid::Align::Right},
               {"Due"},
               {"%", Grid::Align::Left, 0, "share"}});
    grid.Add({"Caña\nverde", 7, Cell::Real(0.5, "0.50"), Cell::Flag(true), "x"});
    grid.Add({"", -1});
    EXPECT_EQ(grid.ToJson().dump(),
              "[{\"asset_name\":\"Caña\\nverde\",\"looked_at\":7,\"cost\":0.5,\"due\":true,\"share\":\"x\"},"
              "{\"asset_name\":\"\",\"looked_at\":-1,\"cost\":null,\"due\":null,\"share\":null}]");
    EXPECT_EQ(Grid({{"Name"}}).ToJson().dump(), "[]");
}

TEST(Grid, PaintsHeaderRuleAndTonesOnlyWhereTheStreamAllowsIt) {
    Grid grid({{"Due"}, {"Key", Grid::Align::Right}});
    grid.Add({Cell::Flag(true, "due", "").In(Tone::Bad), 5});
    grid.Add({"", 12});
    std::ostringstream plain;
    grid.Print(plain);
    EXPECT_EQ(plain.str(), "Due  Key\n---  ---\ndue    5\n      12\n");
    std::ostringstream coloured;
    host::text::AllowColour(coloured);
    grid.Print(coloured);
    EXPECT_EQ(coloured.str(),
              "\x1b[1mDue\x1b[0m  \x1b[1mKey\x1b[0m\n"
              "\x1b[2m---\x1b[0m  \x1b[2m---\x1b[0m\n"
              "\x1b[31mdue\x1b[0m    5\n"
              "      12\n");
}

TEST(Grid, CutCountsCharactersNotBytes) {
    EXPECT_EQ(host::text::Cut("ñandú", 5), "ñandú");
    EXPECT_EQ(host::text::Cut("ñandú", 4), "ñan…");
    EXPECT_EQ(host::text::Cut("ñandú", 0), "ñandú");
    EXPECT_EQ(host::text::Length("ñandú"), 5u);
}

}  // namespace

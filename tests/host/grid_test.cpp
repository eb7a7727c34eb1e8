#include "host/text/grid.h"

#include <gtest/gtest.h>

#include <sstream>

namespace {

using host::text::Grid;

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
    std::ostringstream out;
    grid.Print(out);
    EXPECT_EQ(out.str(), "Text\n------\nñandú…\none t…\n");
}

TEST(Grid, CutCountsCharactersNotBytes) {
    EXPECT_EQ(host::text::Cut("ñandú", 5), "ñandú");
    EXPECT_EQ(host::text::Cut("ñandú", 4), "ñan…");
    EXPECT_EQ(host::text::Cut("ñandú", 0), "ñandú");
    EXPECT_EQ(host::text::Length("ñandú"), 5u);
}

}  // namespace

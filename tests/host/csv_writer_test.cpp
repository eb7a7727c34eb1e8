#include "host/csv/writer.h"

#include "host/csv/reader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

namespace {

using host::csv::Cell;
using host::csv::Quoted;

TEST(CsvWriter, QuotesOnlyWhatNeedsThem) {
    EXPECT_EQ(Cell("A-1"), "A-1");
    EXPECT_EQ(Cell(""), "");
    EXPECT_EQ(Cell("Grasa, kg"), "\"Grasa, kg\"");
    EXPECT_EQ(Cell("a;b"), "\"a;b\"");
    EXPECT_EQ(Cell("12\" tubo"), "\"12\"\" tubo\"");
    EXPECT_EQ(Cell("1.\n2."), "\"1.\n2.\"");
    EXPECT_EQ(Quoted(""), "\"\"");
}

TEST(CsvWriter, TheReaderGetsBackWhatWasWritten) {
    const std::vector<std::string> texts = {"plain", "a,b", "say \"no\"", "two\r\nlines", "ñ;"};
    std::ostringstream out;
    host::csv::WriteLine(out, {"a", "b", "c", "d", "e"});
    host::csv::WriteLine(out, texts);
    const host::csv::Document document = host::csv::Read(out.str());
    ASSERT_EQ(document.records.size(), 1u);
    EXPECT_EQ(document.records.front().cells, texts);
    EXPECT_TRUE(document.faults.empty());
}

}  // namespace

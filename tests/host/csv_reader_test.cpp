#include "host/csv/reader.h"

#include <gtest/gtest.h>

namespace {

using host::csv::Document;
using host::csv::Read;

/// Header and records with cells in brackets, each record behind its line number.
std::string Shown(const Document& document) {
    std::string shown;
    for (const std::string& name : document.header)
        shown += "[" + name + "]";
    for (const auto& record : document.records) {
        shown += " " + std::to_string(record.line) + ":";
        for (const std::string& cell : record.cells)
            shown += "[" + cell + "]";
    }
    return shown;
}

struct Accepted {
    const char* label;
    std::string text;
    std::string shown;
};

TEST(CsvReader, AcceptsTheFormsOfTheFormat) {
    const Accepted cases[] = {
        {"plain", "a,b\n1,2\n", "[a][b] 2:[1][2]"},
        {"no line end at the end", "a,b\n1,2", "[a][b] 2:[1][2]"},
        {"carriage return and line feed", "a,b\r\n1,2\r\n3,4\r\n", "[a][b] 2:[1][2] 3:[3][4]"},
        {"carriage return alone", "a,b\r1,2\r3,4", "[a][b] 2:[1][2] 3:[3][4]"},
        {"semicolons", "a;b\n1,5;2\n", "[a][b] 2:[1,5][2]"},
        {"semicolons in a quoted header don't count", "\"a;;;\",b\n1,2\n", "[a;;;][b] 2:[1][2]"},
        {"as many of both: commas", "a,b;c\n1,2\n", "[a][b;c] 2:[1][2]"},
        {"byte-order mark",
         "\xEF\xBB\xBF"
         "a,b\n1,2\n",
         "[a][b] 2:[1][2]"},
        {"separator in quotes", "a,b\n\"1,2\",3\n", "[a][b] 2:[1,2][3]"},
        {"doubled quotes", "a,b\n\"say \"\"hi\"\"\",\"\"\"\"\n", "[a][b] 2:[say \"hi\"][\"]"},
        {"line break in quotes", "a,b\n\"one\ntwo\r\nthree\",2\n4,5\n", "[a][b] 2:[one\ntwo\r\nthree][2] 5:[4][5]"},
        {"empty cells", "a,b,c\n,,3\n1,\"\",\n", "[a][b][c] 2:[][][3] 3:[1][][]"},
        {"blanks belong to a cell", "a,b\n 1 , 2\n", "[a][b] 2:[ 1 ][ 2]"},
        {"blanks around a column's name don't", " a , b\n1,2\n", "[a][b] 2:[1][2]"},
        {"empty lines are passed over", "\n\na,b\n\n1,2\n,\n\n3,4\n\n", "[a][b] 5:[1][2] 8:[3][4]"},
        {"one column", "a\n1\n2\n", "[a] 2:[1] 3:[2]"},
        {"accents and other scripts", "a\nMañana €\n", "[a] 2:[Mañana €]"},
        {"header alone", "a,b\n", "[a][b]"},
        {"nothing at all", "", ""},
        {"a mark and nothing else", "\xEF\xBB\xBF", ""},
    };
    for (const Accepted& each : cases) {
        SCOPED_TRACE(each.label);
        const Document document = Read(each.text);
        EXPECT_TRUE(document.faults.empty());
        EXPECT_EQ(Shown(document), each.shown);
    }
}

struct RefusedText {
    const char* label;
    std::string text;
    std::size_t line;
    std::size_t cell;
    std::string reason;
    std::string left;
};

TEST(CsvReader, NamesLineAndCellOfWhatIsWrongAndGoesOn) {
    const std::string inside =
        "a quote inside a cell without quotes; put the cell in quotes and double those inside it";
    const std::string behind = "text behind the quote that closes the cell; double the quotes inside it";
    const std::string notUtf8 = "the cell isn't UTF-8; save the file in that encoding";
    const RefusedText cases[] = {
        {"too few cells", "a,b\n1\n2,3\n", 2, 0, "1 cells where the header has 2", "[a][b] 3:[2][3]"},
        {"too many cells", "a,b\n1,2,3\n4,5\n", 2, 0, "3 cells where the header has 2", "[a][b] 3:[4][5]"},
        {"quote inside a bare cell", "a,b\n1,5\" pipe\n4,5\n", 2, 2, inside, "[a][b] 3:[4][5]"},
        {"text behind a closing quote", "a,b\n\"1\"x,2\n4,5\n", 2, 1, behind, "[a][b] 3:[4][5]"},
        {"quote never closed", "a,b\n1,\"2\n3,4\n", 2, 2, "the quote that opens this cell is never closed", "[a][b]"},
        {"Latin 1",
         "a,b\n1,Ma\xF1"
         "ana\n4,5\n",
         2, 2, notUtf8, "[a][b] 3:[4][5]"},
        {"character of code 0", std::string("a,b\n1,x\0y\n4,5\n", 14), 2, 2, "the cell holds a character of code 0",
         "[a][b] 3:[4][5]"},
        {"a header that is broken ends the reading", "a,\"b\"c\n1,2\n", 1, 2, behind, "[a][b]"},
    };
    for (const RefusedText& each : cases) {
        SCOPED_TRACE(each.label);
        const Document document = Read(each.text);
        ASSERT_EQ(document.faults.size(), 1u);
        EXPECT_EQ(document.faults[0].line, each.line);
        EXPECT_EQ(document.faults[0].cell, each.cell);
        EXPECT_EQ(document.faults[0].reason, each.reason);
        EXPECT_EQ(Shown(document), each.left);
    }
}

TEST(CsvReader, KeepsAllFaultsInTheOrderOfTheText) {
    const Document document = Read("a,b\n1\nx\"y,2\n3,4\n5,6,7\n");
    ASSERT_EQ(document.faults.size(), 3u);
    EXPECT_EQ(document.faults[0].line, 2u);
    EXPECT_EQ(document.faults[1].line, 3u);
    EXPECT_EQ(document.faults[2].line, 5u);
    EXPECT_EQ(Shown(document), "[a][b] 4:[3][4]");
}

TEST(CsvReader, TellsWellFormedUtf8) {
    const std::pair<std::string, bool> cases[] = {
        {"", true},
        {"abc", true},
        {"\xC3\xB1", true},
        {"\xE2\x82\xAC", true},
        {"\xF0\x9F\x94\xA7", true},
        {"\xF4\x8F\xBF\xBF", true},
        {"\xC3", false},              // cut short
        {"\xB1", false},              // no first byte
        {"\xC0\x80", false},          // overlong
        {"\xE0\x80\x80", false},      // overlong
        {"\xF0\x80\x80\x80", false},  // overlong
        {"\xED\xA0\x80", false},      // surrogate
        {"\xF4\x90\x80\x80", false},  // above U+10FFFF
        {"\xF5\x80\x80\x80", false},
        {"\xC3(", false},
    };
    for (const auto& [text, wellFormed] : cases) {
        SCOPED_TRACE(testing::PrintToString(text));
        EXPECT_EQ(host::csv::IsUtf8(text), wellFormed);
    }
}

}  // namespace

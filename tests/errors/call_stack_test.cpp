#include "frame/date.h"
#include "frame/money.h"
#include "tests/errors/doubles.h"

#include <limits>

namespace errors_test {
namespace {

class ErrSplitLocationTest : public ErrorsTest {};

TEST_F(ErrSplitLocationTest, TakesMethodAndNamesApart) {
    const struct {
        const char* location;
        const char* method;
        const char* names;
    } rows[] = {
        {"CBoletin.Buscar(SC_Boletin,sColumnas)", "CBoletin.Buscar", "SC_Boletin,sColumnas"},
        {"CGama.Existe()", "CGama.Existe", ""},
        {"Libreria.IniciarTransaccion", "Libreria.IniciarTransaccion", ""},
        {"", "", ""},
        {"(a,b)", "", "a,b"},
        {"A.B(", "A.B", ""},
        {"A.B(c", "A.B", ""},
        {"A.B(f(x),y)", "A.B", ""},
        {"A.B(ab(x),y)", "A.B", "a"},
        {"A.B(a\xC3\xB1o)", "A.B", "a\xC3\xB1o"},
        {"A.B(a\xC3\xB1", "A.B", "a"},
        {"A.B(a\xFF", "A.B", "a"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.location);
        const Location location = ErrSplitLocation(row.location);
        EXPECT_EQ(location.method, row.method);
        EXPECT_EQ(location.names, row.names);
    }
}

class ErrFormatValueTest : public ErrorsTest {};

TEST_F(ErrFormatValueTest, ShowsEveryKindOfValue) {
    const Ref<Object> none;
    const struct {
        const char* label;
        Value value;
        const char* text;
    } rows[] = {
        {"array", Value(Array{Value(1)}), "{Array}"},
        {"empty array", Value(Array{}), "{Array}"},
        {"empty", Value(Empty{}), "{Empty}"},
        {"null", Value(Null{}), "{Null}"},
        {"absent", Value(Absent{}), ""},
        {"true", Value(true), "True"},
        {"false", Value(false), "False"},
        {"byte", Value(std::uint8_t{255}), "255"},
        {"int16", Value(std::int16_t{-32768}), "-32768"},
        {"int32", Value(std::int32_t{2147483647}), "2147483647"},
        {"float32", Value(0.1F), "0.1"},
        {"float64", Value(1e20), "1E+20"},
        {"money", Value(Money::FromTenThousandths(-25000)), "-2.5"},
        {"day", Value(Date{46086.0}), "'05/03/2026'"},
        {"time", Value(Date{46086.5}), "'05/03/2026 12:00:00'"},
        {"text", Value("it's"), "'it's'"},
        {"empty text", Value(""), "''"},
        {"object", Value(std::make_shared<ObjectDouble>("Recordset")), "{Recordset}"},
        {"no object", Value(none), "{Nothing}"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.label);
        EXPECT_EQ(ErrFormatValue(row.value), row.text);
    }
}

TEST_F(ErrFormatValueTest, GivesNothingForAValueThatHasNoText) {
    EXPECT_EQ(ErrFormatValue(Value(std::numeric_limits<double>::quiet_NaN())), "");
    EXPECT_EQ(ErrFormatValue(Value(std::numeric_limits<float>::infinity())), "");
    EXPECT_EQ(ErrFormatValue(Value(Date{1e300})), "");
}

class ErrFormatArgsTest : public ErrorsTest {};

TEST_F(ErrFormatArgsTest, PairsNamesAndValuesByPosition) {
    const struct {
        const char* label;
        const char* names;
        Value values;
        const char* items;
    } rows[] = {
        {"one plain value", "SC_Boletin", Value(17), "SC_Boletin=17"},
        {"a list", "a,b", Value(Array{Value(1), Value("x")}), "a=1, b='x'"},
        {"no names and no values", "", Value(Absent{}), ""},
        {"names without values", "a,b", Value(Absent{}), "a="},
        {"an absent one in a list", "a,b,c", Value(Array{Value(1), Value(Absent{}), Value(3)}), "a=1, b=, c=3"},
        {"more values than names", "a", Value(Array{Value(1), Value(2), Value(3)}), "a=1, 2, 3"},
        {"more names than values", "a,b,c", Value(Array{Value(1)}), "a=1"},
        {"an empty list", "a,b", Value(Array{}), ""},
        {"a name left out between", "a,,c", Value(Array{Value(1), Value(2), Value(3)}), "a=1, 2, c=3"},
        {"a blank is part of a name", "a, b", Value(Array{Value(1), Value(2)}), "a=1,  b=2"},
        {"a list inside a list", "a,b", Value(Array{Value(Array{Value(1)}), Value(2)}), "a={Array}, b=2"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.label);
        Fields().mErrValues = "left over";
        EXPECT_EQ(ErrFormatArgs(row.names, row.values), row.items);
        EXPECT_EQ(Fields().mErrValues, "");
    }
}

std::string Repeated(std::string_view text, int times) {
    std::string result;
    for (int i = 0; i < times; ++i)
        result += text;
    return result;
}

TEST_F(ErrFormatArgsTest, CountsTheCharactersOfATextWithoutItsQuotes) {
    const struct {
        const char* label;
        std::string text;
        bool isLong;
    } rows[] = {
        {"40 letters", Repeated("x", 40), false},
        {"41 letters", Repeated("x", 41), true},
        {"40 accented letters", Repeated("\xC3\xB1", 40), false},
        {"41 accented letters", Repeated("\xC3\xB1", 41), true},
        {"40 of four bytes", Repeated("\xF0\x9F\x94\xA7", 40), false},
        {"41 of four bytes", Repeated("\xF0\x9F\x94\xA7", 41), true},
        {"40 invalid bytes", Repeated("\xFF", 40), false},
        {"41 invalid bytes", Repeated("\xFF", 41), true},
        {"20 sequences cut short, of two bytes each", Repeated("\xE2\x82", 20), false},
        {"21 of them", Repeated("\xE2\x82", 21), true},
        {"a pair", "a\r\nb", true},
        {"a line feed", "\n", true},
        {"a carriage return", "\r", true},
        {"nothing", "", false},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.label);
        const std::string items = ErrFormatArgs("t", Value(row.text));
        EXPECT_EQ(items, row.isLong ? "t={Text}" : "t='" + row.text + "'");
        EXPECT_EQ(Fields().mErrValues.empty(), !row.isLong);
    }
}

TEST_F(ErrFormatArgsTest, PutsALongTypeNameAsideToo) {
    const auto shortOne = std::make_shared<ObjectDouble>(Repeated("C", 38));
    const auto longOne = std::make_shared<ObjectDouble>(Repeated("C", 39));
    EXPECT_EQ(ErrFormatArgs("o", Value(shortOne)), "o={" + Repeated("C", 38) + "}");
    EXPECT_EQ(ErrFormatArgs("o", Value(longOne)), "o={Text}");
    EXPECT_EQ(Fields().mErrValues, "    Value Of o:\r\n      {" + Repeated("C", 39) + "}");
}

TEST_F(ErrFormatArgsTest, IndentsALongTextAfterEachKindOfLineBreak) {
    ErrFormatArgs("Nota", Value("a\r\nb\nc\rd\r\r\n\n\re"));
    EXPECT_EQ(Fields().mErrValues,
              "    Value Of Nota:\r\n"
              "      'a\r\n"
              "      b\n"
              "      c\r"
              "      d\r"
              "      \r\n"
              "      \n"
              "      \r"
              "      e'");
}

TEST_F(ErrFormatArgsTest, CollectsTheLongValuesInOrder) {
    EXPECT_EQ(ErrFormatArgs("a,b", Value(Array{Value("1\n2"), Value(7), Value("3\n4")})), "a={Text}, b=7, {Text}");
    EXPECT_EQ(Fields().mErrValues,
              "    Value Of a:\r\n      '1\n      2'\r\n"
              "    Value Of :\r\n      '3\n      4'");
}

TEST_F(ErrFormatArgsTest, LaysOutALongXmlTextOfANameThatSaysSo) {
    const std::string xml = "<order id=\"1\"><item/><note>text</note></order>";
    EXPECT_EQ(ErrFormatArgs("xmlOrder", Value(xml)), "xmlOrder={Text}");
    EXPECT_EQ(Fields().mErrValues,
              "    Value Of xmlOrder:\r\n"
              "      <order id=\"1\">\r\n"
              "        <item/>\r\n"
              "        <note>text\r\n"
              "        </note>\r\n"
              "      </order>");
}

TEST_F(ErrFormatArgsTest, LeavesOtherTextsAsTheyAre) {
    const std::string xml = "<order id=\"1\"><item/><note>text</note></order>";
    const struct {
        const char* label;
        const char* name;
        std::string text;
        std::string shown;
    } rows[] = {
        {"another name", "Order", xml, "'" + xml + "'"},
        {"capitals", "XMLOrder", xml, "'" + xml + "'"},
        {"not at the beginning", "axml", xml, "'" + xml + "'"},
        {"no element first", "xml", " " + xml, "' " + xml + "'"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.label);
        ErrFormatArgs(row.name, Value(row.text));
        EXPECT_EQ(Fields().mErrValues, "    Value Of " + std::string(row.name) + ":\r\n      " + row.shown);
    }
}

TEST_F(ErrFormatArgsTest, KeepsAShortXmlTextOnTheLine) {
    EXPECT_EQ(ErrFormatArgs("xml", Value("<a><b/></a>")), "xml='<a><b/></a>'");
}

class ErrXmlIndentTest : public ErrorsTest {};

TEST_F(ErrXmlIndentTest, PutsOneElementOnALine) {
    const struct {
        const char* text;
        const char* laidOut;
    } rows[] = {
        {"''", ""},
        {"'plain'", "plain"},
        {"'<a>'", "<a>"},
        {"'<a></a>'", "<a>\r\n</a>"},
        {"'<a><b>x</b></a>'", "<a>\r\n  <b>x\r\n  </b>\r\n</a>"},
        {"'<a/><b/>'", "<a/>\r\n<b/>"},
        {"'<a><b/>tail</a>'", "<a>\r\n  <b/>tail\r\n</a>"},
        {"'before<a></a>'", "before<a>\r\n</a>"},
        {"'</a></b><c>'", "</a>\r\n</b>\r\n<c>"},
        {"'</a><b><c><d>'", "</a>\r\n<b>\r\n<c>\r\n  <d>"},
        {"'<<'", "<\r\n  <"},
        {"", ""},
        {"'", ""},
        {"\xC3\xB1<a>\xC3\xB1", "<a>"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(ErrXmlIndent(row.text), row.laidOut);
    }
}

TEST_F(ErrXmlIndentTest, StaysInBoundsHoweverDeepTheNesting) {
    const std::string deep = "'" + Repeated("<a>", 20000) + "'";
    const std::string laidOut = ErrXmlIndent(deep);
    EXPECT_LE(laidOut.size(), 20000U * 5 + 1'000'000U);
    // As deep as anything real, every blank is there.
    EXPECT_EQ(laidOut.find("\r\n" + std::string(2 * 900, ' ') + "<a>\r\n"), 3U * 900 + 2U * 899 + 900U * 899U);
    EXPECT_TRUE(laidOut.ends_with("\r\n<a>\r\n<a>"));
}

class ErrPadRightTest : public ErrorsTest {};

TEST_F(ErrPadRightTest, FillsUpToTheWidthInCharacters) {
    EXPECT_EQ(ErrPadRight("ab", "-", 5), "ab---");
    EXPECT_EQ(ErrPadRight("abcde", "-", 5), "abcde");
    EXPECT_EQ(ErrPadRight("abcdef", "-", 5), "abcdef");
    EXPECT_EQ(ErrPadRight("", "*", 2), "**");
    EXPECT_EQ(ErrPadRight("a\xC3\xB1o", "-", 5), "a\xC3\xB1o--");
    EXPECT_EQ(ErrPadRight("a\xFF", "-", 3), "a\xFF-");
    EXPECT_EQ(ErrPadRight("ab", "-", -1), "ab");
}

class ErrCallStackTest : public ErrorsTest {
protected:
    std::string LinesOf(std::string_view method, std::string_view names, const Value& values,
                        std::string_view envNames = "", const Value& envValues = Absent{}) {
        Fields().mErrReport.clear();
        ErrCallStack(method, names, values, envNames, envValues);
        return Fields().mErrReport;
    }
};

TEST_F(ErrCallStackTest, FillsTheLineUpTo100Characters) {
    EXPECT_EQ(LinesOf("CBoletin.Buscar", "SC_Boletin,sColumnas", Value(Array{Value(4), Value("")})),
              "  Call Stack: CBoletin.Buscar(SC_Boletin=4, sColumnas='') "
              "------------------------------------------\r\n");
}

TEST_F(ErrCallStackTest, ShowsAMethodWithoutArgumentsWithEmptyBrackets) {
    EXPECT_EQ(LinesOf("Libreria.IniciarTransaccion", "", Absent{}),
              "  Call Stack: Libreria.IniciarTransaccion() "
              "--------------------------------------------------------\r\n");
}

TEST_F(ErrCallStackTest, DoesNotCutOrFillALineOf100CharactersOrMore) {
    for (const int length : {82, 83, 120}) {
        SCOPED_TRACE(length);
        const std::string method = Repeated("m", length);
        const std::string line = "  Call Stack: " + method + "() ";
        EXPECT_EQ(LinesOf(method, "", Absent{}), line + (length == 82 ? "-" : "") + "\r\n");
    }
}

TEST_F(ErrCallStackTest, NamesTheLineOnlyWhereTheCodeHasNumbers) {
    Fields().mErrLine = 30;
    EXPECT_EQ(LinesOf("A.B", "", Absent{}),
              "  Call Stack: A.B()  at Line 30 -------------------------------------------------------------------"
              "-\r\n");
}

TEST_F(ErrCallStackTest, PutsLongValuesBehindTheLineThatTheyBelongTo) {
    EXPECT_EQ(LinesOf("A.B", "c", Value("1\n2"), "d,e", Value(Array{Value("3\n4"), Value(true)})),
              "  Call Stack: A.B(c={Text}) ------------------------------------------------------------------------\r\n"
              "    Value Of c:\r\n      '1\n      2'\r\n"
              "    Env: d={Text}, e=True\r\n"
              "    Value Of d:\r\n      '3\n      4'\r\n");
    EXPECT_EQ(Fields().mErrValues, "");
}

TEST_F(ErrCallStackTest, AddsNothingForAUserError) {
    Fields().mErrNumber = kLowestUserError;
    EXPECT_EQ(LinesOf("A.B", "c", Value("1\n2")), "");
}

}  // namespace
}  // namespace errors_test

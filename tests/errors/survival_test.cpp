#include "errors/trap.h"
#include "tests/errors/doubles.h"

#include <algorithm>
#include <array>
#include <random>

namespace errors_test {
namespace {

/// Texts made of all that a report might trip over.
class Texts {
public:
    explicit Texts(std::uint32_t seed) : random_(seed) {}
    std::string Next(std::size_t most = 60) {
        static const std::array<std::string_view, 30> pieces = {"a",
                                                                "Z",
                                                                "7",
                                                                " ",
                                                                "%",
                                                                "%%",
                                                                "%Time%",
                                                                "%Descr%",
                                                                "%nl%",
                                                                "\b",
                                                                "\bDescr\b",
                                                                "\bnl\b",
                                                                "\r\n",
                                                                "\r",
                                                                "\n",
                                                                "\xC3\xB1",
                                                                "\xE2\x82\xAC",
                                                                "\xFF",
                                                                "\xC3",
                                                                "'",
                                                                "''",
                                                                "<",
                                                                "/>",
                                                                "(",
                                                                ")",
                                                                ",",
                                                                "=",
                                                                "{Text}",
                                                                "      ",
                                                                "    Value Of a:"};
        std::string text;
        const std::size_t count = Below(most);
        for (std::size_t i = 0; i < count; ++i)
            text += pieces[Below(pieces.size())];
        if (Below(10) == 0) text += '\0';
        return text;
    }
    std::size_t Below(std::size_t limit) { return random_() % limit; }

private:
    std::mt19937 random_;
};

/// Takes the six blanks behind each line break away again.
std::string WithoutIndent(std::string_view block) {
    std::string text;
    for (std::size_t i = 0; i < block.size(); ++i) {
        text += block[i];
        const bool pair = block[i] == '\r' && i + 1 < block.size() && block[i + 1] == '\n';
        if ((block[i] != '\n' && block[i] != '\r') || pair) continue;
        EXPECT_EQ(block.substr(i + 1, 6), "      ");
        i += 6;
    }
    return text;
}

class SurvivalTest : public ErrorsTest {
protected:
    static std::string ReportOf(std::string_view location, const Value& values) {
        const ErrorRecord raised = RaisedBy([&] {
            TrapWithoutConnection(
                location, [] { RaiseRefused(); }, [&] { return values; });
        });
        EXPECT_EQ(raised.number, kRefused);
        return raised.description;
    }
    /// The report behind its header, which must be the known one.
    static std::string BehindHeader(const std::string& report) {
        EXPECT_TRUE(report.starts_with(kRefusedHeader));
        return report.substr(std::min(report.size(), kRefusedHeader.size()));
    }
};

TEST_F(SurvivalTest, AnyTextInAnArgumentComesOutUnchanged) {
    Texts texts(20260305);
    int onLine = 0;
    int aside = 0;
    for (int round = 0; round < 3000; ++round) {
        const std::string text = texts.Next(round % 2 == 0 ? 8 : 60);
        SCOPED_TRACE(::testing::PrintToString(text));
        const std::string rest = BehindHeader(ReportOf("CBoletin.Borrar(a)", Value(text)));
        const std::string line = "  Call Stack: CBoletin.Borrar(a='" + text + "') ";
        const std::string head =
            "  Call Stack: CBoletin.Borrar(a={Text}) "
            "------------------------------------------------------------\r\n    Value Of a:\r\n      ";
        if (rest.starts_with(head)) {
            ++aside;
            ASSERT_TRUE(rest.ends_with("\r\n"));
            EXPECT_EQ(WithoutIndent(std::string_view(rest).substr(head.size(), rest.size() - head.size() - 2)),
                      "'" + text + "'");
        } else {
            ++onLine;
            ASSERT_TRUE(rest.starts_with(line));
            EXPECT_EQ(rest.find_first_not_of('-', line.size()), rest.size() - 2);
            EXPECT_TRUE(rest.ends_with("\r\n"));
        }
    }
    EXPECT_GT(onLine, 300);
    EXPECT_GT(aside, 300);
}

TEST_F(SurvivalTest, AnyLocationComesOutUnchangedInItsCallStackLine) {
    Texts texts(7);
    for (int round = 0; round < 2000; ++round) {
        const std::string location = texts.Next(20);
        SCOPED_TRACE(::testing::PrintToString(location));
        const std::string report = ReportOf(location, Arguments(1, "x", Absent{}, Null{}));
        const std::string method = location.substr(0, location.find('('));
        EXPECT_NE(report.find("  Call Stack: " + method + "("), std::string::npos);
        EXPECT_NE(report.find("'x'"), std::string::npos);
        EXPECT_TRUE(report.ends_with("\r\n"));
    }
}

TEST_F(SurvivalTest, AnyDescriptionComesOutUnchangedButForItsMarks) {
    Texts texts(11);
    for (int round = 0; round < 2000; ++round) {
        std::string text = texts.Next();
        SCOPED_TRACE(::testing::PrintToString(text));
        const ErrorRecord raised = RaisedBy([&] { TrapWithoutConnection("A.B", [&] { RaiseError(-5, "s", text); }); });
        EXPECT_EQ(raised.number, -5);
        std::replace(text.begin(), text.end(), '\b', '%');
        EXPECT_TRUE(raised.description.starts_with(text + " \r\n  Time='"));
        EXPECT_NE(raised.description.find("  Description: " + text + "\r\n  Call Stack: A.B() -"), std::string::npos);
    }
}

TEST_F(SurvivalTest, AnyValuesAtAllLeaveTheNumberAlone) {
    Texts texts(13);
    const std::array<std::function<Value()>, 9> kinds = {
        [&] { return Value(texts.Next()); },
        [&] { return Value(static_cast<std::int32_t>(texts.Below(1U << 31))); },
        [] { return Value(Null{}); },
        [] { return Value(Empty{}); },
        [] { return Value(Absent{}); },
        [] { return Value(1e308 * 10); },
        [&] { return Value(Date{static_cast<double>(texts.Below(1U << 30)) - 5e8}); },
        [&] { return Value(Array(texts.Below(3))); },
        [&] { return Value(std::make_shared<ObjectDouble>(texts.Next(5))); },
    };
    for (int round = 0; round < 1000; ++round) {
        Array values(texts.Below(12));
        for (Value& value : values)
            value = kinds[texts.Below(kinds.size())]();
        const std::string report = ReportOf("A.B(" + texts.Next() + ")", values);
        EXPECT_NE(report.find("  Call Stack: A.B("), std::string::npos);
    }
}

constexpr std::size_t kHuge = 10U << 20;

TEST_F(SurvivalTest, AHugeArgumentGoesUpThroughThreeLevels) {
    const std::string huge(kHuge, 'x');
    const ErrorRecord raised = RaisedBy([&] {
        Trap(
            "C.C(t)",
            [&] {
                TrapWithoutConnection(
                    "B.B(t)",
                    [&] {
                        Trap(
                            "A.A(t)", [] { RaiseRefused(); }, [&] { return Arguments(huge); });
                    },
                    [] { return Arguments(1); });
            },
            [&] { return Arguments(huge); });
    });
    const std::string block = "    Value Of t:\r\n      '" + huge + "'\r\n";
    const std::string_view report = raised.description;
    const std::string ending = "  Call Stack: A.A(t={Text}) " + std::string(72, '-') + "\r\n" + block +
                               "  Call Stack: B.B(t=1) " + std::string(77, '-') + "\r\n" +
                               "  Call Stack: C.C(t={Text}) " + std::string(72, '-') + "\r\n" + block;
    EXPECT_EQ(raised.number, kRefused);
    EXPECT_TRUE(report.ends_with(ending));
    EXPECT_TRUE(report.starts_with("UNIQUE constraint failed \r\n"));
    // And the module goes on working.
    EXPECT_EQ(BehindHeader(ReportOf("CBoletin.Borrar(SC_Boletin)", Value(17))), kBorrarLine);
}

TEST_F(SurvivalTest, AHugeTextOfLineBreaksIsIndentedWhole) {
    const std::string report = BehindHeader(ReportOf("CBoletin.Borrar(t)", Value(std::string(kHuge, '\n'))));
    EXPECT_EQ(report.size(), 102 + std::string_view("    Value Of t:\r\n      ''\r\n").size() + 7 * kHuge);
}

TEST_F(SurvivalTest, AHugeTextOfOpenElementsIsLaidOutInBounds) {
    std::string text;
    while (text.size() < kHuge)
        text += "<element>";
    const std::string report = BehindHeader(ReportOf("CBoletin.Borrar(xml)", Value(text)));
    // The text, a line break and six blanks for each element, and blanks for the depth of four times the text.
    EXPECT_GT(report.size(), text.size() + text.size() / 9 * 8);
    EXPECT_LT(report.size(), 5 * text.size() + text.size() / 9 * 8 + 200);
    EXPECT_TRUE(report.starts_with("  Call Stack: CBoletin.Borrar(xml={Text}) "));
}

TEST_F(SurvivalTest, AHugeTextOfClosingElementsHasNoDepthBelowZero) {
    std::string text;
    while (text.size() < kHuge)
        text += "</a>";
    const std::size_t elements = text.size() / 4;
    EXPECT_EQ(ErrXmlIndent("'" + text + "'").size(), text.size() + 2 * (elements - 1));
}

TEST_F(SurvivalTest, AHugeDescriptionStandsTwiceInItsReport) {
    std::string huge = "100%";
    while (huge.size() < kHuge)
        huge += "%Descr% \xC3\xB1\r\n";
    const ErrorRecord raised = RaisedBy([&] { Trap("A.A", [&] { RaiseError(-5, "s", huge); }); });
    EXPECT_TRUE(raised.description.starts_with(huge + " \r\n  Time='"));
    EXPECT_TRUE(raised.description.ends_with("\r\n  Description: " + huge + "\r\n  Call Stack: A.A() " +
                                             std::string(80, '-') + "\r\n"));
}

TEST_F(SurvivalTest, VeryManyArgumentsAreAllShown) {
    Array values(200000, Value(7));
    std::string names = "a";
    for (int i = 1; i < 100000; ++i)
        names += ",a";
    const std::string items = ErrFormatArgs(names, values);
    EXPECT_EQ(items.size(), 100000U * 3 + 100000U * 1 + 2U * (200000U - 1));
}

}  // namespace
}  // namespace errors_test

#include "tests/errors/doubles.h"

namespace errors_test {
namespace {

class ErrBuildHeaderTest : public ErrorsTest {
protected:
    std::string HeaderOf(std::int32_t number, std::string source, std::string description,
                         std::string_view method = "A.B") {
        Fields().mErrNumber = number;
        Fields().mErrSource = std::move(source);
        Fields().mErrDescription = std::move(description);
        ErrBuildHeader(method);
        return Fields().mErrReport;
    }
    std::string NumberLineOf(std::int32_t number) {
        const std::string header = HeaderOf(number, "s", "d");
        const std::size_t start = header.find("  Number: ");
        return header.substr(start, header.find("\r\n", start) - start);
    }
};

TEST_F(ErrBuildHeaderTest, HasFiveLinesBehindTheDescription) {
    EXPECT_EQ(HeaderOf(13, "Zontara", "Type mismatch", "CGama.Nuevo"),
              "Type mismatch \r\n"
              "  Time='03/05/26 08:00:00' App='planner:84.0.0' ADO-version='2.8' Computer='PLANT-1' \r\n"
              "  Method: CGama.Nuevo \r\n"
              "  Number: 13 = &HD = vbObjectError + 2147221517 = ERRMAP_APP_FIRST + 2147216319 \r\n"
              "  Source: Zontara \r\n"
              "  Description: Type mismatch\r\n");
}

TEST_F(ErrBuildHeaderTest, GivesTheNumberInThreeNotations) {
    const struct {
        std::int32_t number;
        const char* line;
    } rows[] = {
        {-2147216306, "  Number: -2147216306 = &H8004144E = vbObjectError + 5198 = ERRMAP_APP_FIRST + 0 = ERR_GENERAL"},
        {-2147216305, "  Number: -2147216305 = &H8004144F = vbObjectError + 5199 = ERRMAP_APP_FIRST + 1 "},
        {-2147221485, "  Number: -2147221485 = &H80040013 = vbObjectError + 19 = ERRMAP_APP_FIRST - 5179 "},
        {-2147221505, "  Number: -2147221505 = &H8003FFFF = vbObjectError - 1 = ERRMAP_APP_FIRST - 5199 "},
        {-2147483647 - 1, "  Number: -2147483648 = &H80000000 = vbObjectError - 262144 = ERRMAP_APP_FIRST - 267342 "},
        {-1, "  Number: -1 = &HFFFFFFFF = vbObjectError + 2147221503 = ERRMAP_APP_FIRST + 2147216305 "},
        {3021, "  Number: 3021 = &HBCD = vbObjectError + 2147224525 = ERRMAP_APP_FIRST + 2147219327 "},
        {262143, "  Number: 262143 = &H3FFFF = vbObjectError + 2147483647 = ERRMAP_APP_FIRST + 2147478449 "},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.number);
        EXPECT_EQ(NumberLineOf(row.number), row.line);
    }
}

TEST_F(ErrBuildHeaderTest, StopsAtANumberWhoseDistanceOverflows) {
    EXPECT_EQ(HeaderOf(262144, "engine", "text", "CGama.Nuevo"),
              "\bDescr\b \r\n"
              "  Time='03/05/26 08:00:00' App='planner:84.0.0' ADO-version='2.8' Computer='PLANT-1' \r\n"
              "  Method: CGama.Nuevo \r\n"
              "  Number: 262144 = &H40000 = vbObjectError \bErrNumRel1\b = ERRMAP_APP_FIRST \bErrNumRel2\b "
              "\bErrStd\b\r\n"
              "  Source: \bSource\b \r\n"
              "  Description: \bDescr\b\r\n");
}

TEST_F(ErrBuildHeaderTest, LetsTheOtherStepsGoOnAfterAnOverflow) {
    SetCurrent(2147483647, "engine", "text");
    const auto connection = ConnectionDouble();
    const ErrorRecord raised = RaisedBy([&] { ErrorIn("A.B(C)", Value(1), 51, connection); });
    EXPECT_EQ(raised.number, 2147483647);
    EXPECT_EQ(raised.description,
              "\bDescr\b \r\n"
              "  Time='03/05/26 08:00:00' App='planner:84.0.0' ADO-version='2.8' Computer='PLANT-1' \r\n"
              "  Method: A.B \r\n"
              "  Number: 2147483647 = &H7FFFFFFF = vbObjectError \bErrNumRel1\b = ERRMAP_APP_FIRST \bErrNumRel2\b "
              "\bErrStd\b\r\n"
              "  Source: \bSource\b \r\n"
              "  Description: \bDescr\b\r\n"
              "  ADO Info: \r\n"
              "    ADO Version:   2.8\r\n"
              "    DbObject:      Connection\r\n"
              "    Conn. String: 'Data Source=plant;Password=secret'\r\n"
              "    Conn. State:   adStateOpen\r\n"
              "  Call Stack: A.B(C=1) -----------------------------------------------------------------------------\r\n"
              "    Transaction: Attempt to call RollbackTrans succeeded\r\n");
}

TEST_F(ErrBuildHeaderTest, KeepsPercentSignsAndNamesOfFieldsInValues) {
    const std::string header = HeaderOf(5, "100%Source%", "50% of %Time% and %nl% %%");
    EXPECT_EQ(header.substr(0, header.find("\r\n")), "50% of %Time% and %nl% %% ");
    EXPECT_NE(header.find("\r\n  Source: 100%Source% \r\n  Description: 50% of %Time% and %nl% %%\r\n"),
              std::string::npos);
}

TEST_F(ErrBuildHeaderTest, TurnsAMarkOfAValueIntoAPercentSign) {
    const std::string header = HeaderOf(5, "s", "a\bb \bTime\b");
    EXPECT_EQ(header.substr(0, header.find("\r\n")), "a%b %Time% ");
}

TEST_F(ErrBuildHeaderTest, StartsANewReport) {
    Fields().mErrReport = "left over";
    EXPECT_EQ(HeaderOf(5, "s", "d").find("left over"), std::string::npos);
}

TEST_F(ErrBuildHeaderTest, ReadsTheClockToTheSecondInMonthDayYear) {
    platform->now = Date{46021.0 + 86399.0 / 86400};  // 2025-12-30 23:59:59
    EXPECT_NE(HeaderOf(5, "s", "d").find("Time='12/30/25 23:59:59'"), std::string::npos);
}

class ErrSetFieldTest : public ErrorsTest {};

TEST_F(ErrSetFieldTest, FillsEveryOccurrenceAndNoOther) {
    Fields().mErrReport = "\bA\b \bB\b \bA\b\bA\b %A% \ba\b";
    ErrSetField("A", "[\bA\b]");
    EXPECT_EQ(Fields().mErrReport, "[\bA\b] \bB\b [\bA\b][\bA\b] %A% \ba\b");
}

TEST_F(ErrSetFieldTest, MarksAFieldWithTheCharacterOfCode8) { EXPECT_EQ(ErrFieldMark(), "\x08"); }

TEST_F(ErrorsTest, SignedTextSetsTheSignApart) {
    EXPECT_EQ(ErrSignedText(0), "+ 0");
    EXPECT_EQ(ErrSignedText(7), "+ 7");
    EXPECT_EQ(ErrSignedText(-7), "- 7");
    EXPECT_EQ(ErrSignedText(-2147483647 - 1), "- 2147483648");
    EXPECT_EQ(ErrSignedText(2147483647), "+ 2147483647");
}

TEST_F(ErrorsTest, VersionTextHasThreeNumbersWithPoints) {
    platform->revision = 1207;
    EXPECT_EQ(ErrVersionText(), "84.0.1207");
}

TEST_F(ErrorsTest, ComputerNameIsWhatThePlatformSays) {
    EXPECT_EQ(ErrComputerName(), "PLANT-1");
    platform->computer = [] { return std::string(); };
    EXPECT_EQ(ErrComputerName(), "");
}

TEST_F(ErrorsTest, AdoVersionIsAQuestionMarkAfterAnyFailure) {
    EXPECT_EQ(ErrAdoVersion(), "2.8");
    platform->dataAccess = []() -> std::string { Raise(RunTimeError::CannotCreate); };
    EXPECT_EQ(ErrAdoVersion(), "?");
    platform->dataAccess = []() -> std::string { throw 1; };
    EXPECT_EQ(ErrAdoVersion(), "?");
}

TEST_F(ErrorsTest, StateTextSpellsOutTheBits) {
    const struct {
        std::int32_t state;
        const char* text;
    } rows[] = {
        {0, "adStateClosed"},
        {1, "adStateOpen"},
        {2, " + adStateConnecting"},
        {3, "adStateOpen + adStateConnecting"},
        {4, " + adStateExecuting"},
        {5, "adStateOpen + adStateExecuting"},
        {8, " + adStateFetching"},
        {9, "adStateOpen + adStateFetching"},
        {15, "adStateOpen + adStateConnecting + adStateExecuting + adStateFetching"},
        {16, ""},
        {17, "adStateOpen"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.state);
        EXPECT_EQ(ErrStateText(row.state), row.text);
    }
}

class ErrApiInfoTest : public ErrorsTest {};

TEST_F(ErrApiInfoTest, AddsOneLineForACodeThatSaysSomething) {
    const struct {
        std::int32_t code;
        const char* line;
    } rows[] = {
        {0, ""},
        {203, ""},
        {5, "  API Error: (5) Access is denied.\r\n"},
        {202, "  API Error: (202) Access is denied.\r\n"},
        {-7, "  API Error: (-7) Access is denied.\r\n"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.code);
        Fields().mErrReport.clear();
        Fields().mErrSystemCode = row.code;
        ErrApiInfo();
        EXPECT_EQ(Fields().mErrReport, row.line);
    }
}

TEST_F(ErrApiInfoTest, AsksThePlatformForJustThatCode) {
    platform->systemText = [](std::int32_t code) { return "text of " + std::to_string(code); };
    EXPECT_EQ(ErrApiMessage("1450"), "text of 1450");
}

TEST_F(ErrApiInfoTest, DropsLineBreakPairsAndZeroCharactersFromTheText) {
    platform->systemText = [](std::int32_t) { return std::string("Not\r\n enough\0 room\n.\r\r\n", 23); };
    EXPECT_EQ(ErrApiMessage("8"), "Not enough room\n.\r");
}

TEST_F(ErrApiInfoTest, ShowsAnUnknownCodeWithoutAText) {
    platform->systemText = [](std::int32_t) { return std::string(); };
    Fields().mErrSystemCode = 99999;
    ErrApiInfo();
    EXPECT_EQ(Fields().mErrReport, "  API Error: (99999) \r\n");
}

}  // namespace
}  // namespace errors_test

#include "errors/trap.h"
#include "tests/errors/doubles.h"

namespace errors_test {
namespace {

class ErrStepModeTest : public ErrorsTest {
protected:
    ErrStepModeTest() { switches.ErrStepEnabled = true; }
    bool Answered(BoxAnswer answer) {
        platform->answer = answer;
        return ErrStepMode();
    }
};

TEST_F(ErrStepModeTest, ShowsNothingInTheComponentAndSavesTheError) {
    ReplaceSwitches(nullptr);
    SetRefused();
    EXPECT_FALSE(ErrStepMode());
    EXPECT_TRUE(Fields().mErrPreserved);
    EXPECT_EQ(Fields().mErrNumber, kRefused);
    EXPECT_TRUE(platform->boxes.empty());
}

TEST_F(ErrStepModeTest, AsksInTheseWords) {
    SetRefused();
    EXPECT_FALSE(Answered(BoxAnswer::No));
    EXPECT_EQ(platform->boxes,
              std::vector<std::string>{"Stopped on Error|19|Error: UNIQUE constraint failed\r\n"
                                       "Do you want to retry the operation in step mode?\r\n"
                                       "Click YES to retry, NO to move to the caller, CANCEL for no more stops"});
}

TEST_F(ErrStepModeTest, AsksAboutThePropagatedErrorByItsFirstLine) {
    SetCurrent(kRefused, "HuntERR.ErrorIn", "UNIQUE constraint failed \r\n  Time=''\r\n");
    EXPECT_FALSE(Answered(BoxAnswer::No));
    EXPECT_EQ(platform->boxes,
              std::vector<std::string>{"Stopped on Error|19|Error: UNIQUE constraint failed  (Propagated)\r\n"
                                       "Do you want to retry the operation in step mode?\r\n"
                                       "Click YES to retry, NO to move to the caller, CANCEL for no more stops"});
}

TEST_F(ErrStepModeTest, AsksOnlyWhenAllConditionsHold) {
    const struct {
        const char* label;
        bool enabled;
        bool canPrompt;
        std::int32_t number;
        const char* helpFile;
        std::size_t asked;
    } rows[] = {
        {"all hold", true, true, 5, "", 1},
        {"another help file", true, true, 5, "nostop", 1},
        {"not enabled", false, true, 5, "", 0},
        {"nobody to ask", true, false, 5, "", 0},
        {"a user error", true, true, kLowestUserError, "", 0},
        {"no more stops", true, true, 5, "NoStop", 0},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.label);
        platform->boxes.clear();
        Fields() = ModuleFields();
        switches.ErrStepEnabled = row.enabled;
        switches.ErrCanPrompt = row.canPrompt;
        SetCurrent(row.number, "s", "d");
        CurrentError().helpFile = row.helpFile;
        EXPECT_FALSE(ErrStepMode());
        EXPECT_EQ(platform->boxes.size(), row.asked);
        EXPECT_TRUE(Fields().mErrPreserved);
    }
}

TEST_F(ErrStepModeTest, YesAsksForARetryAndForgetsTheError) {
    SetRefused();
    EXPECT_TRUE(Answered(BoxAnswer::Yes));
    EXPECT_FALSE(Fields().mErrPreserved);
}

TEST_F(ErrStepModeTest, NoAndAnyOtherAnswerGoOnToTheReport) {
    for (const BoxAnswer answer : {BoxAnswer::No, BoxAnswer::Other}) {
        Fields() = ModuleFields();
        SetRefused();
        CurrentError().helpFile = "help.chm";
        CurrentError().line = 7;
        EXPECT_FALSE(Answered(answer));
        EXPECT_TRUE(Fields().mErrPreserved);
        // Restored, which leaves the line out.
        EXPECT_EQ(CurrentError(),
                  (ErrorRecord{kRefused, "dhRichClient3", "UNIQUE constraint failed", "help.chm", 0, 0, 0}));
    }
}

TEST_F(ErrStepModeTest, CancelStopsAtNoLevelAbove) {
    platform->answer = BoxAnswer::Cancel;
    const ErrorRecord raised = RaisedBy(
        [] { TrapWithoutConnection("Out.Er", [] { TrapWithoutConnection("In.Ner", [] { RaiseRefused(); }); }); });
    EXPECT_EQ(platform->boxes.size(), 1U);
    EXPECT_EQ(raised.helpFile, "NoStop");
    EXPECT_EQ(raised.number, kRefused);
}

TEST_F(ErrStepModeTest, NoStopsAgainAtTheLevelAbove) {
    platform->answer = BoxAnswer::No;
    RaisedBy([] { TrapWithoutConnection("Out.Er", [] { TrapWithoutConnection("In.Ner", [] { RaiseRefused(); }); }); });
    EXPECT_EQ(platform->boxes.size(), 2U);
}

TEST_F(ErrStepModeTest, YesRunsTheWorkOfATrapAgain) {
    platform->answer = BoxAnswer::Yes;
    int runs = 0;
    const int result = TrapWithoutConnection("A.B", [&] {
        if (++runs < 3) RaiseRefused();
        return runs;
    });
    EXPECT_EQ(result, 3);
    EXPECT_EQ(platform->boxes.size(), 2U);
    EXPECT_EQ(CurrentError(), ErrorRecord());
    EXPECT_FALSE(Fields().mErrPreserved);
}

class ErrFirstLineTest : public ErrorsTest {};

TEST_F(ErrFirstLineTest, IsTheWholeDescriptionWhereThereIsNoReport) {
    Fields().mErrDescription = "one\r\ntwo";
    Fields().mErrReport = "other";
    EXPECT_EQ(ErrFirstLine(), "one\r\ntwo");
}

TEST_F(ErrFirstLineTest, IsThatOfTheReportUnderConstructionElseOfTheCurrentDescription) {
    Fields().mErrSource = "HuntERR.ErrorIn";
    CurrentError().description = "current\r\ntwo";
    EXPECT_EQ(ErrFirstLine(), "current");
    Fields().mErrReport = "report\r\ntwo";
    EXPECT_EQ(ErrFirstLine(), "report");
    Fields().mErrReport = "no break";
    EXPECT_EQ(ErrFirstLine(), "no break");
}

}  // namespace
}  // namespace errors_test

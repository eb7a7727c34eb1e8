#include "errors/HuntERR31.h"

#include "tests/errors/doubles.h"

#include <thread>

namespace errors_test {
namespace {

TEST(ErrorNumbers, StandWhereTheMapPutsThem) {
    EXPECT_EQ(vbObjectError, -2147221504);
    EXPECT_EQ(kLowestUserError, -2147217307);
    EXPECT_EQ(kHighestUserError, -2147216307);
    EXPECT_EQ(ERR_GENERAL, -2147216306);
    EXPECT_EQ(ERRMAP_APP_FIRST, ERR_GENERAL);
    EXPECT_EQ(kHighestUserError - kLowestUserError + 1, 1001);
}

TEST(ErrorFlags, AreTheBitsAndTheTwoSumsOfTheComponent) {
    EXPECT_EQ(ERRF_RAISE, 1);
    EXPECT_EQ(ERRF_REPORT, 2);
    EXPECT_EQ(ERRF_SETABORT, 4);
    EXPECT_EQ(ERRF_DISABLECOMMIT, 8);
    EXPECT_EQ(ERRF_ROLLBACK, 16);
    EXPECT_EQ(ERRF_WEBINFO, 32);
    EXPECT_EQ(ERRF_CLOSE, 64);
    EXPECT_EQ(kStandardFlags, 51);
    EXPECT_EQ(kFlagsWithoutConnection, 43);
    EXPECT_TRUE(ErrFlagSet(51, ERRF_ROLLBACK));
    EXPECT_FALSE(ErrFlagSet(51, ERRF_DISABLECOMMIT));
    EXPECT_FALSE(ErrFlagSet(0, 127));
}

TEST(ErrorSwitches, AreOffInTheComponent) {
    EXPECT_FALSE(CurrentSwitches().ErrStepEnabled);
    EXPECT_TRUE(CurrentSwitches().ErrCanPrompt);
    EXPECT_EQ(ErrObjectContext(), nullptr);
    EXPECT_FALSE(CurrentSwitches().entering);
}

class ErrPreserveTest : public ErrorsTest {};

TEST_F(ErrPreserveTest, SavesEveryFieldOfTheCurrentError) {
    CurrentError() = {-5, "engine", "text", "help.chm", 77, 32, 120};
    ErrPreserve();
    EXPECT_EQ(Fields().mErrNumber, -5);
    EXPECT_EQ(Fields().mErrSource, "engine");
    EXPECT_EQ(Fields().mErrDescription, "text");
    EXPECT_EQ(Fields().mErrHelpFile, "help.chm");
    EXPECT_EQ(Fields().mErrHelpContext, "77");
    EXPECT_EQ(Fields().mErrSystemCode, 32);
    EXPECT_EQ(Fields().mErrLine, 120);
    EXPECT_TRUE(Fields().mErrPreserved);
}

TEST_F(ErrPreserveTest, DoesNothingWithoutACurrentError) {
    CurrentError().description = "left over";
    ErrPreserve();
    EXPECT_FALSE(Fields().mErrPreserved);
    EXPECT_EQ(Fields().mErrDescription, "");
}

TEST_F(ErrPreserveTest, KeepsWhatIsSavedAlready) {
    SetRefused();
    ErrPreserve();
    SetCurrent(5, "other", "later");
    ErrPreserve();
    EXPECT_EQ(Fields().mErrNumber, kRefused);
    EXPECT_EQ(Fields().mErrDescription, "UNIQUE constraint failed");
}

class ErrRestoreTest : public ErrorsTest {};

TEST_F(ErrRestoreTest, MakesTheSavedErrorCurrentButForLineAndSystemCode) {
    CurrentError() = {-5, "engine", "text", "help.chm", 77, 32, 120};
    ErrPreserve();
    CurrentError() = {9, "other", "later", "other.chm", 1, 2, 3};
    ErrRestore();
    EXPECT_EQ(CurrentError(), (ErrorRecord{-5, "engine", "text", "help.chm", 77, 0, 0}));
}

TEST_F(ErrRestoreTest, DoesNothingWhenNothingIsSaved) {
    SetCurrent(9, "other", "later");
    Fields().mErrNumber = -5;
    ErrRestore();
    EXPECT_EQ(CurrentError(), (ErrorRecord{9, "other", "later", "", 0, 0, 0}));
}

TEST_F(ErrRestoreTest, LeavesTheHelpContextAtZeroWhenNoneWasSaved) {
    SetRefused();
    ErrPreserve();
    Fields().mErrHelpContext.clear();
    CurrentError().helpContext = 5;
    ErrRestore();
    EXPECT_EQ(CurrentError().helpContext, 0);
}

TEST_F(ErrRestoreTest, TakesBackANegativeHelpContext) {
    SetRefused();
    CurrentError().helpContext = -2147483647 - 1;
    ErrPreserve();
    ErrRestore();
    EXPECT_EQ(CurrentError().helpContext, -2147483647 - 1);
}

TEST_F(ErrorsTest, UserErrorsAreTheBandWithBothEnds) {
    const struct {
        std::int32_t number;
        bool user;
    } rows[] = {{-2147217308, false}, {-2147217307, true}, {-2147216900, true}, {-2147216307, true},
                {-2147216306, false}, {0, false},          {5, false},          {-2147221485, false}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.number);
        Fields().mErrNumber = row.number;
        EXPECT_EQ(ErrIsUserError(), row.user);
    }
}

TEST_F(ErrorsTest, OnlyTheMarkerAsSourceMakesAnErrorPropagated) {
    const struct {
        const char* source;
        bool propagated;
    } rows[] = {{"HuntERR.ErrorIn", true}, {"hunterr.errorin", false}, {"HuntERR.ErrorIn ", false}, {"", false}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.source);
        Fields().mErrSource = row.source;
        EXPECT_EQ(ErrIsPropagated(), row.propagated);
    }
}

TEST_F(ErrorsTest, EveryThreadHasItsOwnErrorAndItsOwnFields) {
    SetRefused();
    ErrPreserve();
    std::thread other([] {
        EXPECT_EQ(CurrentError().number, 0);
        EXPECT_FALSE(Fields().mErrPreserved);
        SetCurrent(5, "other", "later");
        const ErrorRecord raised = RaisedBy([] { ErrorIn("A.B", Absent{}, 3); });
        EXPECT_EQ(raised.number, 5);
    });
    other.join();
    EXPECT_EQ(CurrentError().number, kRefused);
    EXPECT_EQ(Fields().mErrNumber, kRefused);
    EXPECT_TRUE(Fields().mErrPreserved);
}

TEST_F(ErrorsTest, ARaisedErrorTravelsInTheExceptionAlone) {
    CurrentError() = {-5, "engine", "text", "help.chm", 77, 0, 0};
    EXPECT_EQ(RaisedBy([] { RaiseCurrentError(); }), (ErrorRecord{-5, "engine", "text", "help.chm", 77, 0, 0}));
    EXPECT_EQ(CurrentError(), ErrorRecord());
}

}  // namespace
}  // namespace errors_test

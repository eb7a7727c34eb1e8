#include "errors/HuntERR31.h"

#include "tests/errors/doubles.h"

namespace errors_test {
namespace {

class ErrorInTest : public ErrorsTest {
protected:
    std::string Report(std::int32_t flags, const Ref<Object>& dbObject = {}, const Ref<Object>& controller = {}) {
        return RaisedBy([&] {
                   ErrorIn("CBoletin.Borrar(SC_Boletin)", Value(17), flags | ERRF_RAISE, dbObject, "", Absent{},
                           controller);
               })
            .description;
    }
};

TEST_F(ErrorInTest, RaisesTheFirstNumberWithTheWholeReport) {
    SetRefused();
    CurrentError().helpFile = "help.chm";
    CurrentError().helpContext = 77;
    const ErrorRecord raised = RaisedBy([] { ErrorIn("CBoletin.Borrar(SC_Boletin)", Value(17), 43); });
    EXPECT_EQ(raised,
              (ErrorRecord{kRefused, "HuntERR.ErrorIn", Joined({kRefusedHeader, kBorrarLine}), "help.chm", 77, 0, 0}));
}

TEST_F(ErrorInTest, PutsTheSectionsInTheirOrder) {
    SetRefused();
    CurrentError().systemCode = 5;
    CurrentError().line = 120;
    switches.ErrObjectContext = ContextWithRequest();
    Fields().mErrPending = "pending\r\n";
    Fields().mErrReleased = "rsBoletin";
    const auto connection = ConnectionDouble();
    connection->members["Errors"] = Value(ErrorList({"disk full", "out of paper"}));
    const ErrorRecord raised = RaisedBy([&] {
        ErrorIn("CBoletin.Borrar(SC_Boletin)", Value(17), 51 + 64, connection, "Mode,Note",
                Array{Value(2), Value("two\r\nlines")});
    });
    EXPECT_EQ(raised.number, kRefused);
    EXPECT_EQ(raised.description,
              "UNIQUE constraint failed \r\n"
              "  Time='03/05/26 08:00:00' App='planner:84.0.0' ADO-version='2.8' Computer='PLANT-1' \r\n"
              "  Method: CBoletin.Borrar \r\n"
              "  Number: -2147221485 = &H80040013 = vbObjectError + 19 = ERRMAP_APP_FIRST - 5179 \r\n"
              "  Source: dhRichClient3 \r\n"
              "  Description: UNIQUE constraint failed\r\n"
              "  API Error: (5) Access is denied.\r\n"
              "  ADO Info: \r\n"
              "    ADO Version:   2.8\r\n"
              "    DbObject:      Connection\r\n"
              "    Conn. String: 'Data Source=plant;Password=secret'\r\n"
              "    Conn. State:   adStateOpen\r\n"
              "    Error:         disk full\r\n"
              "    Error:         out of paper\r\n"
              "\r\n"
              "  Web Info: \r\n"
              "    RequestMethod='POST'\r\n"
              "    QueryString: 'plant.example/boletines?semana=10' \r\n"
              "    FormData:    'nota=100%25' \r\n"
              "    Cookies:     's=1'  \r\n"
              "\r\n"
              "  Call Stack: CBoletin.Borrar(SC_Boletin=17)  at Line 120 ------------------------------------------\r\n"
              "    Env: Mode=2, Note={Text}\r\n"
              "    Value Of Note:\r\n"
              "      'two\r\n"
              "      lines'\r\n"
              "pending\r\n"
              "    Released Objects: rsBoletin\r\n"
              "    Transaction: Attempt to call RollbackTrans succeeded\r\n"
              "    Connection: Attempt to call Close succeeded\r\n");
}

TEST_F(ErrorInTest, SaysThatTheErrorWasLostWhenThereIsNone) {
    EXPECT_FALSE(ErrStepMode());
    const ErrorRecord raised = RaisedBy([] { ErrorIn("CBoletin.Borrar(SC_Boletin)", Value(17), 51); });
    EXPECT_EQ(raised.number, -2147216306);
    EXPECT_EQ(raised.source, "HuntERR.ErrorIn");
    EXPECT_EQ(
        raised.description,
        "ErrorIn: Error information was lost. To fix: call ErrPreserve before doing anything in error handler. \r\n"
        "  Time='03/05/26 08:00:00' App='planner:84.0.0' ADO-version='2.8' Computer='PLANT-1' \r\n"
        "  Method: CBoletin.Borrar \r\n"
        "  Number: -2147216306 = &H8004144E = vbObjectError + 5198 = ERRMAP_APP_FIRST + 0 = ERR_GENERAL\r\n"
        "  Source:  \r\n"
        "  Description: ErrorIn: Error information was lost. To fix: call ErrPreserve before doing anything in error "
        "handler.\r\n"
        "  Call Stack: CBoletin.Borrar(SC_Boletin=17) -------------------------------------------------------\r\n");
}

TEST_F(ErrorInTest, ReportsTheSavedErrorWhenTheCurrentOneWasClearedSince) {
    SetRefused();
    EXPECT_FALSE(ErrStepMode());
    ClearError();
    EXPECT_EQ(Report(43), Joined({kRefusedHeader, kBorrarLine}));
}

TEST_F(ErrorInTest, AppendsToTheReportThatCame) {
    SetCurrent(kRefused, "HuntERR.ErrorIn", Joined({kRefusedHeader, kBorrarLine}));
    CurrentError().systemCode = 5;
    const ErrorRecord raised = RaisedBy([] { ErrorIn("Outer.Run", Absent{}, 51, ConnectionDouble(0)); });
    EXPECT_EQ(raised.number, kRefused);
    EXPECT_EQ(raised.description,
              Joined({kRefusedHeader, kBorrarLine,
                      "  Call Stack: Outer.Run() "
                      "--------------------------------------------------------------------------\r\n"
                      "    Transaction: Could not call RollbackTrans: Connection is closed \r\n"}));
}

TEST_F(ErrorInTest, TriesTheRollbackAgainAtEachLevel) {
    const auto connection = ConnectionDouble();
    SetRefused();
    const ErrorRecord inner = RaisedBy([&] { ErrorIn("In.Ner", Absent{}, 19, connection); });
    CurrentError() = inner;
    const ErrorRecord outer = RaisedBy([&] { ErrorIn("Out.Er", Absent{}, 19, connection); });
    EXPECT_EQ(connection->Called(), (std::vector<std::string>{"RollbackTrans", "RollbackTrans"}));
    EXPECT_EQ(outer.description.substr(inner.description.size()),
              "  Call Stack: Out.Er() -----------------------------------------------------------------------------\r\n"
              "    Transaction: Attempt to call RollbackTrans succeeded\r\n");
}

TEST_F(ErrorInTest, GivesTheReportAsItsResultWhenItNeedNotRaise) {
    SetRefused();
    EXPECT_EQ(ErrorIn("CBoletin.Borrar(SC_Boletin)", Value(17), ERRF_REPORT), Joined({kRefusedHeader, kBorrarLine}));
    EXPECT_EQ(CurrentError().number, kRefused);
    EXPECT_EQ(CurrentError().source, "HuntERR.ErrorIn");
    EXPECT_EQ(CurrentError().description, Joined({kRefusedHeader, kBorrarLine}));
}

TEST_F(ErrorInTest, LeavesSourceAndDescriptionAloneWithoutTheReportFlag) {
    const auto connection = ConnectionDouble();
    SetRefused();
    const ErrorRecord raised = RaisedBy([&] { ErrorIn("A.B", Absent{}, ERRF_RAISE | ERRF_ROLLBACK, connection); });
    EXPECT_EQ(raised, (ErrorRecord{kRefused, "dhRichClient3", "UNIQUE constraint failed", "", 0, 0, 0}));
    EXPECT_EQ(connection->Called(), std::vector<std::string>{"RollbackTrans"});
    SetRefused();
    EXPECT_EQ(ErrorIn("A.B", Absent{}, 0), "");
}

TEST_F(ErrorInTest, LetsBothEndsOfTheUserBandThroughPlainAfterTheirCleanUp) {
    for (const std::int32_t number : {-2147217307, -2147216800, -2147216307}) {
        SCOPED_TRACE(number);
        const auto connection = ConnectionDouble();
        SetCurrent(number, "Perluma", "No crew on Sundays");
        CurrentError().helpFile = "help.chm";
        const ErrorRecord raised = RaisedBy([&] { ErrorIn("A.B(C)", Value(1), 51 + 64, connection); });
        EXPECT_EQ(raised, (ErrorRecord{number, "Perluma", "No crew on Sundays", "help.chm", 0, 0, 0}));
        // Rolled back, but not closed in spite of the flag.
        EXPECT_EQ(connection->Called(), std::vector<std::string>{"RollbackTrans"});
    }
}

TEST_F(ErrorInTest, GivesNoTextForAUserError) {
    SetCurrent(-2147217000, "Perluma", "No crew on Sundays");
    EXPECT_EQ(ErrorIn("A.B", Absent{}, ERRF_REPORT), "");
}

TEST_F(ErrorInTest, ReportsTheNumbersBesideTheUserBand) {
    for (const std::int32_t number : {-2147217308, -2147216306}) {
        SCOPED_TRACE(number);
        SetCurrent(number, "Perluma", "No crew on Sundays");
        const ErrorRecord raised = RaisedBy([] { ErrorIn("A.B", Absent{}, 51); });
        EXPECT_EQ(raised.number, number);
        EXPECT_EQ(raised.source, "HuntERR.ErrorIn");
    }
}

TEST_F(ErrorInTest, LeavesTheModuleReadyForTheNextFailure) {
    SetRefused();
    Fields().mErrPending = "pending";
    Fields().mErrReleased = "rs";
    Fields().mErrConnection = ConnectionDouble();
    const std::weak_ptr<Object> kept = Fields().mErrConnection;
    Report(51);
    EXPECT_FALSE(Fields().mErrPreserved);
    EXPECT_EQ(Fields().mErrPending, "");
    EXPECT_EQ(Fields().mErrReleased, "");
    EXPECT_EQ(Fields().mErrValues, "");
    EXPECT_EQ(Fields().mErrReport, "");
    EXPECT_TRUE(kept.expired());
    SetCurrent(5, "Zontara", "Invalid procedure call or argument");
    EXPECT_EQ(RaisedBy([] { ErrorIn("A.B", Absent{}, 51); }).number, 5);
}

TEST_F(ErrorInTest, TakesNothingOverFromAnEarlierReport) {
    SetRefused();
    Fields().mErrReport = "left over";
    FailIn("ErrBuildHeader");
    EXPECT_EQ(Report(43), kBorrarLine);
}

TEST_F(ErrorInTest, KeepsNoReferenceToTheObjectsThatItWasGiven) {
    auto connection = ConnectionDouble();
    auto controller = std::make_shared<ObjectDouble>("Controller");
    SetRefused();
    Report(51, connection, controller);
    EXPECT_EQ(connection.use_count(), 1);
    EXPECT_EQ(controller.use_count(), 1);
}

TEST_F(ErrorInTest, ShowsTheConnectionThatWasKeptOverWhenThereIsNoObject) {
    SetRefused();
    Fields().mErrConnection = ConnectionDouble(0);
    EXPECT_EQ(Report(51),
              Joined({kRefusedHeader,
                      "  ADO Info: \r\n"
                      "    ADO Version:   2.8\r\n"
                      "    DbObject:      Nothing (Connection object was preserved internally)\r\n"
                      "    Conn. String: 'Data Source=plant;Password=secret'\r\n"
                      "    Conn. State:   adStateClosed\r\n",
                      kBorrarLine, "    Transaction: Could not call RollbackTrans: Connection is closed \r\n"}));
}

}  // namespace
}  // namespace errors_test

#include "tests/errors/doubles.h"

namespace errors_test {
namespace {

/// A report with every section, taken to pieces.
constexpr std::string_view kApi = "  API Error: (5) Access is denied.\r\n";
constexpr std::string_view kAdo =
    "  ADO Info: \r\n"
    "    ADO Version:   2.8\r\n"
    "    DbObject:      Connection\r\n"
    "    Conn. String: 'Data Source=plant;Password=secret'\r\n"
    "    Conn. State:   adStateOpen\r\n";
constexpr std::string_view kWeb =
    "\r\n"
    "  Web Info: \r\n"
    "    RequestMethod='POST'\r\n"
    "    QueryString: 'plant.example/boletines?semana=10' \r\n"
    "    FormData:    'nota=100%25' \r\n"
    "    Cookies:     's=1'  \r\n"
    "\r\n";
constexpr std::string_view kEnv =
    "    Env: xmlEnv={Text}\r\n"
    "    Value Of xmlEnv:\r\n"
    "      <a>\r\n"
    "        <b/>                                       \r\n"
    "      </a>\r\n";
constexpr std::string_view kPending = "pending\r\n";
constexpr std::string_view kReleased = "    Released Objects: rs\r\n";
constexpr std::string_view kTransaction = "    Transaction: Attempt to call RollbackTrans succeeded\r\n";
constexpr std::string_view kClosed = "    Connection: Attempt to call Close succeeded\r\n";

class ForcedFailures : public ErrorsTest {
protected:
    std::shared_ptr<ObjectDouble> connection = ConnectionDouble();

    /// The whole way of a failure through ErrorIn, with everything switched on.
    std::string Report() {
        SetRefused();
        CurrentError().systemCode = 5;
        switches.ErrObjectContext = ContextWithRequest();
        Fields().mErrPending = "pending\r\n";
        Fields().mErrReleased = "rs";
        const ErrorRecord raised = RaisedBy([&] {
            ErrorIn("CBoletin.Borrar(SC_Boletin)", Value(17), 51 + 64, connection, "xmlEnv",
                    Value("<a><b/>                                       </a>"));
        });
        EXPECT_EQ(raised.number, kRefused);
        EXPECT_FALSE(Fields().mErrPreserved);
        EXPECT_FALSE(Fields().inErrorIn);
        return raised.description;
    }
};

TEST_F(ForcedFailures, NoneGivesTheWholeReport) {
    EXPECT_EQ(Report(), Joined({kRefusedHeader, kApi, kAdo, kWeb, kBorrarLine, kEnv, kPending, kReleased, kTransaction,
                                kClosed}));
}

TEST_F(ForcedFailures, ShortenTheReportAndNeverStopTheRaise) {
    constexpr std::string_view noAdoVersion =
        "UNIQUE constraint failed \r\n"
        "  Time='03/05/26 08:00:00' App='planner:84.0.0' ADO-version='?' Computer='PLANT-1' \r\n"
        "  Method: CBoletin.Borrar \r\n"
        "  Number: -2147221485 = &H80040013 = vbObjectError + 19 = ERRMAP_APP_FIRST - 5179 \r\n"
        "  Source: dhRichClient3 \r\n"
        "  Description: UNIQUE constraint failed\r\n"
        "  API Error: (5) Access is denied.\r\n"
        "  ADO Info: \r\n"
        "    ADO Version:   ?\r\n"
        "    DbObject:      Connection\r\n"
        "    Conn. String: 'Data Source=plant;Password=secret'\r\n"
        "    Conn. State:   adStateOpen\r\n";
    constexpr std::string_view noMethod =
        "UNIQUE constraint failed \r\n"
        "  Time='03/05/26 08:00:00' App='planner:84.0.0' ADO-version='2.8' Computer='PLANT-1' \r\n"
        "  Method:  \r\n"
        "  Number: -2147221485 = &H80040013 = vbObjectError + 19 = ERRMAP_APP_FIRST - 5179 \r\n"
        "  Source: dhRichClient3 \r\n"
        "  Description: UNIQUE constraint failed\r\n";
    const std::string ending = Joined({kPending, kReleased, kTransaction, kClosed});
    const struct {
        const char* operation;
        std::string report;
    } rows[] = {
        {"ErrDbConnection", Joined({kRefusedHeader, kApi, kWeb, kBorrarLine, kEnv, kPending, kReleased})},
        {"ErrSplitLocation",
         Joined({noMethod, kApi, kAdo, kWeb,
                 "  Call Stack: (17) "
                 "---------------------------------------------------------------------------------\r\n",
                 kEnv, ending})},
        {"ErrBuildHeader", Joined({kApi, kAdo, kWeb, kBorrarLine, kEnv, ending})},
        {"ErrApiInfo", Joined({kRefusedHeader, kAdo, kWeb, kBorrarLine, kEnv, ending})},
        {"ErrAdoInfo", Joined({kRefusedHeader, kApi, kWeb, kBorrarLine, kEnv, ending})},
        {"ErrAdoVersion", Joined({noAdoVersion, kWeb, kBorrarLine, kEnv, ending})},
        {"ErrWebInfo", Joined({kRefusedHeader, kApi, kAdo, kBorrarLine, kEnv, ending})},
        {"ErrCallStack", Joined({kRefusedHeader, kApi, kAdo, kWeb, ending})},
        {"ErrFormatArgs", Joined({kRefusedHeader, kApi, kAdo, kWeb,
                                  "  Call Stack: CBoletin.Borrar() "
                                  "--------------------------------------------------------------------\r\n"
                                  "    Env: \r\n",
                                  ending})},
        {"ErrFormatValue", Joined({kRefusedHeader, kApi, kAdo, kWeb,
                                   "  Call Stack: CBoletin.Borrar(SC_Boletin=) "
                                   "---------------------------------------------------------\r\n"
                                   "    Env: xmlEnv={Text}\r\n"
                                   "    Value Of xmlEnv:\r\n"
                                   "      \r\n",
                                   ending})},
        {"ErrXmlIndent", Joined({kRefusedHeader, kApi, kAdo, kWeb, kBorrarLine,
                                 "    Env: xmlEnv={Text}\r\n"
                                 "    Value Of xmlEnv:\r\n"
                                 "      \r\n",
                                 ending})},
        {"Pending", Joined({kRefusedHeader, kApi, kAdo, kWeb, kBorrarLine, kEnv, kReleased, kTransaction, kClosed})},
        {"ReleasedObjects",
         Joined({kRefusedHeader, kApi, kAdo, kWeb, kBorrarLine, kEnv, kPending, kTransaction, kClosed})},
        {"ErrRollback", Joined({kRefusedHeader, kApi, kAdo, kWeb, kBorrarLine, kEnv, kPending, kReleased, kClosed})},
        {"ErrCallMethod", Joined({kRefusedHeader, kApi, kAdo, kWeb, kBorrarLine, kEnv, kPending, kReleased,
                                  "    Transaction: Attempt to call RollbackTrans failed with error 'forced'\r\n"
                                  "    Connection: Attempt to call Close failed with error 'forced'\r\n"})},
        {"ErrCloseConnection",
         Joined({kRefusedHeader, kApi, kAdo, kWeb, kBorrarLine, kEnv, kPending, kReleased, kTransaction})},
        // Then the error goes out as it came.
        {"ErrRestore", "UNIQUE constraint failed"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.operation);
        FailIn(row.operation);
        EXPECT_EQ(Report(), row.report);
    }
}

TEST_F(ForcedFailures, OfThePlatformEndTheHeaderWhereTheyCome) {
    platform->application = []() -> std::string { throw std::bad_alloc(); };
    const std::string report = Report();
    // The web section turns the marks that are left into percent signs, wherever they stand.
    EXPECT_EQ(report.substr(0, report.find("  API Error")),
              "%Descr% \r\n"
              "  Time='03/05/26 08:00:00' App='%App%:%Ver%' ADO-version='%ADOVersion%' Computer='PLANT-1' \r\n"
              "  Method: CBoletin.Borrar \r\n"
              "  Number: %ErrNum% = &H%ErrHex% = vbObjectError %ErrNumRel1% = ERRMAP_APP_FIRST %ErrNumRel2% "
              "%ErrStd%\r\n"
              "  Source: %Source% \r\n"
              "  Description: %Descr%\r\n");
}

TEST_F(ForcedFailures, OfTheSystemsTextLeaveTheLineOut) {
    platform->systemText = [](std::int32_t) -> std::string { throw 1; };
    EXPECT_EQ(Report(),
              Joined({kRefusedHeader, kAdo, kWeb, kBorrarLine, kEnv, kPending, kReleased, kTransaction, kClosed}));
}

/// An object that can't even tell its type.
class NamelessObject : public ObjectDouble {
public:
    NamelessObject() : ObjectDouble("Nameless") {}
    std::string TypeName() const override { throw std::runtime_error("gone"); }
};

TEST_F(ForcedFailures, OfATypeNameLeaveTheValueEmptyAndGiveNoConnection) {
    SetRefused();
    const auto nameless = std::make_shared<NamelessObject>();
    const ErrorRecord raised = RaisedBy([&] { ErrorIn("A.B(c,d)", Array{Value(nameless), Value(2)}, 51, nameless); });
    EXPECT_EQ(raised.number, kRefused);
    EXPECT_TRUE(raised.description.ends_with(
        "  Description: UNIQUE constraint failed\r\n"
        "  Call Stack: A.B(c=, d=2) -------------------------------------------------------------------------\r\n"));
}

/// A type name that no memory can hold.
class EndlessName : public ObjectDouble {
public:
    EndlessName() : ObjectDouble("Endless") {}
    std::string TypeName() const override { return std::string(static_cast<std::size_t>(-1), 'x'); }
};

TEST_F(ForcedFailures, OfOneValueKeepTheOthers) {
    EXPECT_EQ(ErrFormatArgs("a,b,c", Array{Value(1), Value(std::make_shared<EndlessName>()), Value(3)}),
              "a=1, b=, c=3");
}

}  // namespace
}  // namespace errors_test

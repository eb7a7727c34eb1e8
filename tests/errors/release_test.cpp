#include "tests/errors/doubles.h"

namespace errors_test {
namespace {

using Calls = std::vector<std::string>;

class ErrDbConnectionTest : public ErrorsTest {};

TEST_F(ErrDbConnectionTest, FindsTheConnectionBehindEachTypeOfObject) {
    const auto connection = ConnectionDouble();
    EXPECT_EQ(ErrDbConnection(connection, false), connection);
    EXPECT_TRUE(connection->heard.empty());
    const struct {
        const char* type;
        const char* member;
    } rows[] = {{"Command", "ActiveConnection"},
                {"Recordset", "ActiveConnection"},
                {"Conexion", "Connection"},
                {"recordset", "Connection"}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.type);
        const auto object = std::make_shared<ObjectDouble>(row.type);
        object->members[row.member] = Value(connection);
        EXPECT_EQ(ErrDbConnection(object, false), connection);
        EXPECT_EQ(object->heard, Calls{"read " + std::string(row.member)});
        EXPECT_NE(object->members[row.member], Value(nullptr));
    }
}

TEST_F(ErrDbConnectionTest, TakesTheConnectionOffWithTheSwitchSet) {
    const auto connection = ConnectionDouble();
    for (const char* type : {"Command", "Recordset", "Anything"}) {
        SCOPED_TRACE(type);
        const std::string member = std::string(type) == "Anything" ? "Connection" : "ActiveConnection";
        const auto object = std::make_shared<ObjectDouble>(type);
        object->members[member] = Value(connection);
        EXPECT_EQ(ErrDbConnection(object, true), connection);
        EXPECT_EQ(object->members[member], Value(nullptr));
    }
    EXPECT_EQ(ErrDbConnection(connection, true), connection);
}

TEST_F(ErrDbConnectionTest, IsTheOneKeptOverForNoObject) {
    EXPECT_EQ(ErrDbConnection({}, false), nullptr);
    const auto connection = ConnectionDouble();
    Fields().mErrConnection = connection;
    EXPECT_EQ(ErrDbConnection({}, false), connection);
}

TEST_F(ErrDbConnectionTest, IsNoneAfterAnyFailure) {
    EXPECT_EQ(ErrDbConnection(std::make_shared<ObjectDouble>("Conexion"), false), nullptr);
    const auto recordset = std::make_shared<ObjectDouble>("Recordset");
    for (const Value& held : {Value(nullptr), Value(Empty{}), Value("Data Source=plant")}) {
        recordset->members["ActiveConnection"] = held;
        EXPECT_EQ(ErrDbConnection(recordset, false), nullptr);
    }
}

class ReadOnlyObject : public ObjectDouble {
public:
    using ObjectDouble::ObjectDouble;
    void WriteMember(std::string_view, const Value&) override { Raise(RunTimeError::NoSuchMember); }
};

TEST_F(ErrDbConnectionTest, IsNoneWhenTheConnectionCannotBeTakenOff) {
    const auto object = std::make_shared<ReadOnlyObject>("Recordset");
    object->members["ActiveConnection"] = Value(ConnectionDouble());
    EXPECT_EQ(ErrDbConnection(object, true), nullptr);
}

class ErrRollbackTest : public ErrorsTest {
protected:
    std::shared_ptr<ObjectDouble> connection = ConnectionDouble();
    std::shared_ptr<ObjectDouble> context = std::make_shared<ObjectDouble>("ObjectContext");
    std::shared_ptr<ObjectDouble> controller = std::make_shared<ObjectDouble>("Controller");
};

TEST_F(ErrRollbackTest, SendsAtMostOneCallByOrderOfAuthority) {
    const struct {
        const char* label;
        std::int32_t flags;
        bool connection, context, controller;
        const char* line;
        Calls toConnection, toContext, toController;
    } rows[] = {
        {"nothing to tell", 127, false, false, false, "", {}, {}, {}},
        {"a connection",
         16,
         true,
         false,
         false,
         "    Transaction: Attempt to call RollbackTrans succeeded\r\n",
         {"RollbackTrans"},
         {},
         {}},
        {"a connection without the flag", 127 - 16, true, false, false, "", {}, {}, {}},
        {"the context before the connection",
         20,
         true,
         true,
         false,
         "    Transaction: Attempt to call ObjectContext.SetAbort succeeded\r\n",
         {},
         {"SetAbort"},
         {}},
        {"the context refuses commit",
         24,
         true,
         true,
         false,
         "    Transaction: Attempt to call ObjectContext.DisableCommit succeeded\r\n",
         {},
         {"DisableCommit"},
         {}},
        {"abort before refusal",
         28,
         true,
         true,
         false,
         "    Transaction: Attempt to call ObjectContext.SetAbort succeeded\r\n",
         {},
         {"SetAbort"},
         {}},
        {"the context without its flags",
         51,
         true,
         true,
         false,
         "    Transaction: Attempt to call RollbackTrans succeeded\r\n",
         {"RollbackTrans"},
         {},
         {}},
        {"flags for a context that isn't there",
         28,
         true,
         false,
         false,
         "    Transaction: Attempt to call RollbackTrans succeeded\r\n",
         {"RollbackTrans"},
         {},
         {}},
        {"the form without object", 43, false, false, false, "", {}, {}, {}},
        {"the form without object in a context",
         43,
         false,
         true,
         false,
         "    Transaction: Attempt to call ObjectContext.DisableCommit succeeded\r\n",
         {},
         {"DisableCommit"},
         {}},
        {"a controller before all",
         127,
         true,
         true,
         true,
         "    Transaction: Attempt to call TransControlObject.SetAbort: succeeded\r\n",
         {},
         {},
         {"SetAbort"}},
        {"a controller whatever the flags",
         0,
         true,
         true,
         true,
         "    Transaction: Attempt to call TransControlObject.SetAbort: succeeded\r\n",
         {},
         {},
         {"SetAbort"}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.label);
        for (const auto& object : {connection, context, controller})
            object->heard.clear();
        Fields().mErrReport.clear();
        switches.ErrObjectContext = row.context ? context : nullptr;
        ErrRollback(row.flags, row.connection ? connection : nullptr, row.controller ? controller : nullptr);
        EXPECT_EQ(Fields().mErrReport, row.line);
        EXPECT_EQ(connection->Called(), row.toConnection);
        EXPECT_EQ(context->Called(), row.toContext);
        EXPECT_EQ(controller->Called(), row.toController);
    }
}

TEST_F(ErrRollbackTest, LeavesAClosedConnectionAloneAndSaysSo) {
    connection->members["State"] = 0;
    ErrRollback(51, connection, {});
    EXPECT_EQ(Fields().mErrReport, "    Transaction: Could not call RollbackTrans: Connection is closed \r\n");
    EXPECT_EQ(connection->Called(), Calls{});
}

TEST_F(ErrRollbackTest, SaysNothingOfAConnectionWhoseStateCannotBeRead) {
    connection->members.erase("State");
    ErrRollback(51, connection, {});
    EXPECT_EQ(Fields().mErrReport, "");
    EXPECT_EQ(connection->Called(), Calls{});
}

TEST_F(ErrRollbackTest, WritesDownTheReasonOfAFailedCall) {
    connection->calls["RollbackTrans"] = [] { RaiseError(-2147221503, "dhRichClient3", "no transaction is active"); };
    ErrRollback(51, connection, {});
    EXPECT_EQ(Fields().mErrReport,
              "    Transaction: Attempt to call RollbackTrans failed with error 'no transaction is active'\r\n");
}

TEST_F(ErrRollbackTest, MakesTheCallForAUserErrorWithoutALine) {
    Fields().mErrNumber = kHighestUserError;
    ErrRollback(0, connection, controller);
    EXPECT_EQ(Fields().mErrReport, "");
    EXPECT_EQ(controller->Called(), Calls{"SetAbort"});
}

class ErrCloseConnectionTest : public ErrorsTest {};

TEST_F(ErrCloseConnectionTest, ClosesWhatIsOpen) {
    const auto connection = ConnectionDouble(5);
    ErrCloseConnection(connection);
    EXPECT_EQ(Fields().mErrReport, "    Connection: Attempt to call Close succeeded\r\n");
    EXPECT_EQ(connection->Called(), Calls{"Close"});
}

TEST_F(ErrCloseConnectionTest, DoesNothingForNoneAClosedOneOrOneWithoutState) {
    ErrCloseConnection({});
    const auto closed = ConnectionDouble(0);
    ErrCloseConnection(closed);
    const auto stateless = std::make_shared<ObjectDouble>("Connection");
    ErrCloseConnection(stateless);
    EXPECT_EQ(Fields().mErrReport, "");
    EXPECT_EQ(closed->Called(), Calls{});
    EXPECT_EQ(stateless->Called(), Calls{});
}

TEST_F(ErrCloseConnectionTest, WritesDownTheReasonOfAFailedCall) {
    const auto connection = ConnectionDouble();
    connection->calls["Close"] = [] { Raise(RunTimeError::InvalidCall, "still in use"); };
    ErrCloseConnection(connection);
    EXPECT_EQ(Fields().mErrReport, "    Connection: Attempt to call Close failed with error 'still in use'\r\n");
}

class ErrCallMethodTest : public ErrorsTest {};

TEST_F(ErrCallMethodTest, CallsTheFourNamesThatItKnows) {
    const auto target = std::make_shared<ObjectDouble>("Any");
    for (const char* name : {"Close", "DisableCommit", "SetAbort", "RollbackTrans"}) {
        EXPECT_EQ(ErrCallMethod(target, name), "succeeded");
    }
    EXPECT_EQ(target->Called(), (Calls{"Close", "DisableCommit", "SetAbort", "RollbackTrans"}));
}

TEST_F(ErrCallMethodTest, RefusesEveryOtherName) {
    const auto target = std::make_shared<ObjectDouble>("Any");
    for (const char* name : {"CommitTrans", "close", "", "Close "}) {
        EXPECT_EQ(ErrCallMethod(target, name), "failed with error 'Unknown method'");
    }
    EXPECT_EQ(target->Called(), Calls{});
}

TEST_F(ErrCallMethodTest, TellsTheReasonOfAnyKindOfFailure) {
    const auto target = std::make_shared<ObjectDouble>("Any");
    const struct {
        std::function<void()> failure;
        const char* outcome;
    } rows[] = {
        {[] { Raise(RunTimeError::NoSuchMember); },
         "failed with error 'Object doesn't support this property or method'"},
        {[] { throw std::bad_alloc(); }, "failed with error 'Out of memory'"},
        {[] { throw std::runtime_error("line is down"); }, "failed with error 'line is down'"},
        {[] { throw 7; }, "failed with error 'Unknown exception'"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.outcome);
        target->calls["Close"] = row.failure;
        EXPECT_EQ(ErrCallMethod(target, "Close"), row.outcome);
    }
    EXPECT_EQ(ErrCallMethod({}, "Close"), "failed with error 'Object variable not set'");
}

class ReleaseInErrorInTest : public ErrorsTest {
protected:
    ErrorRecord Raised(std::int32_t flags, const Ref<Object>& dbObject, const Ref<Object>& controller = {}) {
        SetRefused();
        return RaisedBy(
            [&] { ErrorIn("CBoletin.Borrar(SC_Boletin)", Value(17), flags, dbObject, "", Absent{}, controller); });
    }
};

TEST_F(ReleaseInErrorInTest, AFailedRollbackNeverTakesTheFirstErrorsPlace) {
    const auto connection = ConnectionDouble();
    connection->calls["RollbackTrans"] = [] { RaiseError(-2147221503, "dhRichClient3", "no transaction is active"); };
    const ErrorRecord raised = Raised(51, connection);
    EXPECT_EQ(raised.number, kRefused);
    EXPECT_TRUE(raised.description.ends_with(
        Joined({kBorrarLine,
                "    Transaction: Attempt to call RollbackTrans failed with error 'no transaction is active'\r\n"})));
}

TEST_F(ReleaseInErrorInTest, AControllerTakesTheRollbacksPlace) {
    const auto connection = ConnectionDouble();
    const auto controller = std::make_shared<ObjectDouble>("Controller");
    const ErrorRecord raised = Raised(51, connection, controller);
    EXPECT_TRUE(raised.description.ends_with(
        Joined({kBorrarLine, "    Transaction: Attempt to call TransControlObject.SetAbort: succeeded\r\n"})));
    EXPECT_EQ(connection->Called(), Calls{});
}

TEST_F(ReleaseInErrorInTest, ARecordsetWithoutConnectionGivesNoSectionAndNoLine) {
    const auto recordset = std::make_shared<ObjectDouble>("Recordset");
    recordset->members["ActiveConnection"] = Empty{};
    EXPECT_EQ(Raised(51, recordset).description, Joined({kRefusedHeader, kBorrarLine}));
}

TEST_F(ReleaseInErrorInTest, AConnectionUnderAnotherNameIsLeftAlone) {
    const auto conexion = std::make_shared<ObjectDouble>("Conexion");
    conexion->members["State"] = 1;
    EXPECT_EQ(Raised(51 + 64, conexion).description, Joined({kRefusedHeader, kBorrarLine}));
    EXPECT_EQ(conexion->heard, Calls{"read Connection"});
}

TEST_F(ReleaseInErrorInTest, ClosesBehindTheRollback) {
    const auto connection = ConnectionDouble();
    const ErrorRecord raised = Raised(51 + 64, connection);
    EXPECT_EQ(connection->Called(), (Calls{"RollbackTrans", "Close"}));
    EXPECT_TRUE(
        raised.description.ends_with("    Transaction: Attempt to call RollbackTrans succeeded\r\n"
                                     "    Connection: Attempt to call Close succeeded\r\n"));
}

}  // namespace
}  // namespace errors_test

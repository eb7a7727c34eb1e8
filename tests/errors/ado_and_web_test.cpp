#include "tests/errors/doubles.h"

namespace errors_test {
namespace {

class ErrAdoInfoTest : public ErrorsTest {
protected:
    std::string SectionOf(const Ref<Object>& connection, const Ref<Object>& dbObject) {
        Fields().mErrReport.clear();
        ErrAdoInfo(connection, dbObject);
        return Fields().mErrReport;
    }
};

constexpr std::string_view kFirstLines =
    "  ADO Info: \r\n"
    "    ADO Version:   2.8\r\n"
    "    DbObject:      Connection\r\n";

TEST_F(ErrAdoInfoTest, AddsNothingForNoConnection) {
    EXPECT_EQ(SectionOf({}, std::make_shared<ObjectDouble>("Recordset")), "");
}

TEST_F(ErrAdoInfoTest, TellsTypeConnectionStringStateAndErrors) {
    const auto connection = ConnectionDouble(3);
    connection->members["Errors"] = Value(ErrorList({"one", "two"}));
    EXPECT_EQ(SectionOf(connection, std::make_shared<ObjectDouble>("Recordset")),
              "  ADO Info: \r\n"
              "    ADO Version:   2.8\r\n"
              "    DbObject:      Recordset\r\n"
              "    Conn. String: 'Data Source=plant;Password=secret'\r\n"
              "    Conn. State:   adStateOpen + adStateConnecting\r\n"
              "    Error:         one\r\n"
              "    Error:         two\r\n");
}

TEST_F(ErrAdoInfoTest, SaysWhenTheConnectionWasKeptOver) {
    const auto connection = ConnectionDouble();
    Fields().mErrConnection = connection;
    EXPECT_NE(
        SectionOf(connection, {}).find("    DbObject:      Nothing (Connection object was preserved internally)\r\n"),
        std::string::npos);
}

TEST_F(ErrAdoInfoTest, ShowsANullConnectionStringAsAnEmptyOne) {
    const auto connection = ConnectionDouble();
    connection->members["ConnectionString"] = Null{};
    EXPECT_NE(SectionOf(connection, connection).find("    Conn. String: ''\r\n"), std::string::npos);
}

TEST_F(ErrAdoInfoTest, EndsAtTheFirstMemberThatIsMissing) {
    const std::string upToString = Joined({kFirstLines, "    Conn. String: 'Data Source=plant;Password=secret'\r\n"});
    const std::string upToState = upToString + "    Conn. State:   adStateOpen\r\n";
    const struct {
        const char* missing;
        std::string section;
    } rows[] = {{"ConnectionString", std::string(kFirstLines)}, {"State", upToString}, {"Errors", upToState}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.missing);
        const auto connection = ConnectionDouble();
        connection->members.erase(row.missing);
        EXPECT_EQ(SectionOf(connection, connection), row.section);
    }
}

TEST_F(ErrAdoInfoTest, EndsAtAValueOfTheWrongKind) {
    const std::string upToString = Joined({kFirstLines, "    Conn. String: 'Data Source=plant;Password=secret'\r\n"});
    const std::string upToState = upToString + "    Conn. State:   adStateOpen\r\n";
    const struct {
        const char* member;
        Value value;
        std::string section;
    } rows[] = {{"ConnectionString", Value(nullptr), std::string(kFirstLines)},
                {"State", Value("open"), upToString},
                {"State", Value(Null{}), upToString},
                {"Errors", Value(nullptr), upToState},
                {"Errors", Value(3), upToState}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.member);
        const auto connection = ConnectionDouble();
        connection->members[row.member] = row.value;
        EXPECT_EQ(SectionOf(connection, connection), row.section);
    }
}

TEST_F(ErrAdoInfoTest, KeepsTheErrorsBeforeOneThatCannotBeRead) {
    const auto connection = ConnectionDouble();
    const auto errors = ErrorList({"one", "two", "three"});
    errors->members["1"] = Value(std::make_shared<ObjectDouble>("Error"));
    connection->members["Errors"] = Value(errors);
    EXPECT_EQ(SectionOf(connection, connection), Joined({kFirstLines,
                                                         "    Conn. String: 'Data Source=plant;Password=secret'\r\n"
                                                         "    Conn. State:   adStateOpen\r\n"
                                                         "    Error:         one\r\n"}));
}

class ErrWebInfoTest : public ErrorsTest {
protected:
    std::string Section() {
        Fields().mErrReport.clear();
        ErrWebInfo();
        return Fields().mErrReport;
    }
    std::shared_ptr<ObjectDouble> context = ContextWithRequest();
    ObjectDouble& Request() { return Member(*context, "Request"); }
    ObjectDouble& Server() { return Member(Request(), "ServerVariables"); }

private:
    static ObjectDouble& Member(ObjectDouble& object, std::string_view name) {
        return dynamic_cast<ObjectDouble&>(*object.members.find(name)->second.Get<Ref<Object>>());
    }
};

TEST_F(ErrWebInfoTest, DoesNothingWithoutAContext) { EXPECT_EQ(Section(), ""); }

TEST_F(ErrWebInfoTest, DoesNothingWithoutARequest) {
    switches.ErrObjectContext = context;
    context->members["Request"] = Value(nullptr);
    EXPECT_EQ(Section(), "");
    context->members.erase("Request");
    EXPECT_EQ(Section(), "");
}

TEST_F(ErrWebInfoTest, TellsTheRequest) {
    switches.ErrObjectContext = context;
    EXPECT_EQ(Section(),
              "\r\n"
              "  Web Info: \r\n"
              "    RequestMethod='POST'\r\n"
              "    QueryString: 'plant.example/boletines?semana=10' \r\n"
              "    FormData:    'nota=100%25' \r\n"
              "    Cookies:     's=1'  \r\n"
              "\r\n");
}

TEST_F(ErrWebInfoTest, PutsNoQuestionMarkBeforeAnEmptyQuery) {
    switches.ErrObjectContext = context;
    Request().members["queryString"] = "";
    EXPECT_NE(Section().find("    QueryString: 'plant.example/boletines' \r\n"), std::string::npos);
}

TEST_F(ErrWebInfoTest, KeepsNamesOfFieldsInValues) {
    switches.ErrObjectContext = context;
    Request().members["Form"] = "%URL% %nl% 5%";
    EXPECT_NE(Section().find("    FormData:    '%URL% %nl% 5%' \r\n"), std::string::npos);
}

TEST_F(ErrWebInfoTest, LeavesItsMarksWhereAMemberIsMissing) {
    switches.ErrObjectContext = context;
    Server().members.erase("URL");
    EXPECT_EQ(Section(),
              "\bnl\b  Web Info: \bnl\b"
              "    RequestMethod='POST'\bnl\b"
              "    QueryString: 'plant.example\bURL\b\bQS\b' \bnl\b"
              "    FormData:    '\bFormData\b' \bnl\b"
              "    Cookies:     '\bCookies\b'  \bnl\b\r\n");
}

TEST_F(ErrWebInfoTest, StandsOnlyInReportsThatAskForIt) {
    switches.ErrObjectContext = context;
    SetRefused();
    const std::string without = RaisedBy([] { ErrorIn("A.B", Absent{}, 19); }).description;
    EXPECT_EQ(without.find("Web Info"), std::string::npos);
    SetRefused();
    const std::string with = RaisedBy([] { ErrorIn("A.B", Absent{}, 51); }).description;
    EXPECT_NE(with.find("  Web Info: \r\n"), std::string::npos);
}

}  // namespace
}  // namespace errors_test

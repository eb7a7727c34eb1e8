#include "host/failure.h"

#include "host/program.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

namespace {

using host::AdviceOn;
using host::CauseOf;
using host::EngineCode;
using testing::HasSubstr;
using Zontara::RaisedError;
using Zontara::vbObjectError;

RaisedError Engine(int code, std::string description = "refused") {
    return RaisedError({vbObjectError + code, "dhRichClient3", std::move(description), "", 0, 0, 0});
}

TEST(Failure, TellsTheEnginesCodesFromOtherNumbers) {
    EXPECT_EQ(EngineCode(Engine(1)), 1);
    EXPECT_EQ(EngineCode(Engine(28)), 28);
    EXPECT_EQ(EngineCode(Engine(0)), std::nullopt);
    EXPECT_EQ(EngineCode(Engine(29)), std::nullopt);
    EXPECT_EQ(EngineCode(RaisedError({13, "Zontara", "Type mismatch", "", 0, 0, 0})), std::nullopt);
    EXPECT_EQ(EngineCode(RaisedError({2147483647, "x", "x", "", 0, 0, 0})), std::nullopt);
}

TEST(Failure, AdvisesOnWhatTheUserCanMend) {
    const std::pair<int, const char*> cases[] = {
        {5, "Another program holds the database. Try again when it has finished."},
        {6, "Another program holds the database. Try again when it has finished."},
        {8, "The database may not be written. Check the rights of the file and of its folder."},
        {9, "A statement took more steps than one may. Ask for less at a time."},
        {10, "The disk refused. Check it, then try again."},
        {11, "The file is damaged. Take a copy that is whole."},
        {13, "The disk is full. Make room, then try again."},
        {14, "Check the path, the rights of the file and of its folder, and that the folder exists."},
        {26, "The file is no database. Name another one, or make one with `zontara init`."},
        {19, ""},
    };
    for (const auto& [code, advice] : cases)
        EXPECT_EQ(AdviceOn(Engine(code)), advice) << code;
}

TEST(Failure, AdvisesOnAMissingTableOrColumnOnly) {
    EXPECT_THAT(AdviceOn(Engine(1, "no such table: Gama")), HasSubstr("isn't of this version's schema"));
    EXPECT_THAT(AdviceOn(Engine(1, "no such column: x")), HasSubstr("isn't of this version's schema"));
    EXPECT_EQ(AdviceOn(Engine(1, "near \"FROM\": syntax error")), "");
}

TEST(Failure, LeavesTheConnectionsOwnAdviceAlone) {
    EXPECT_EQ(AdviceOn(Engine(26, "The database \"x\" is no SQLite database. Check the path.")), "");
}

TEST(Failure, TheCauseIsTheFirstLineOfAReportAndAllOfAnotherText) {
    EXPECT_EQ(CauseOf(RaisedError({13, "HuntERR.ErrorIn", "Type mismatch \r\n  Time='...'\r\n", "", 0, 0, 0})),
              "Type mismatch");
    EXPECT_EQ(CauseOf(Engine(1, "one\ntwo")), "one\ntwo");
    EXPECT_EQ(CauseOf(RaisedError({17, "x", "", "", 0, 0, 0})), "error 17");
}

/// What is reported of an exception, and the status.
template <class Exception>
std::pair<int, std::string> ReportOf(const Exception& exception, const std::string& command) {
    std::ostringstream err;
    try {
        throw exception;
    } catch (...) {
        const int status = host::ReportFailure(err, command);
        return {status, err.str()};
    }
}

TEST(Failure, ReportsEachKindOfException) {
    EXPECT_EQ(ReportOf(host::Failure("no."), "init"), (std::pair<int, std::string>{1, "zontara init: no.\n"}));
    EXPECT_EQ(ReportOf(host::UsageFailure("no."), "init"),
              (std::pair<int, std::string>{2, "zontara init: no.\nRun `zontara init --help` for more.\n"}));
    EXPECT_EQ(ReportOf(std::bad_alloc(), "init"), (std::pair<int, std::string>{1, "zontara init: out of memory\n"}));
    EXPECT_EQ(ReportOf(std::runtime_error("odd"), "init"), (std::pair<int, std::string>{1, "zontara init: odd\n"}));
    EXPECT_EQ(ReportOf(Engine(5, "database is locked"), "launch"),
              (std::pair<int, std::string>{1,
                                           "zontara launch: database is locked\n"
                                           "Another program holds the database. Try again when it has finished.\n"
                                           "Nothing was launched.\n"}));
    const RaisedError reported({13, "HuntERR.ErrorIn", "Type mismatch \r\n  Method: X\r\n", "", 0, 0, 0});
    EXPECT_EQ(ReportOf(reported, "import"),
              (std::pair<int, std::string>{1,
                                           "zontara import: Type mismatch\nNothing was imported.\n\n"
                                           "Error report:\nType mismatch \n  Method: X\n"}));
}

}  // namespace

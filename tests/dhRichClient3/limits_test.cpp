#include "tests/dhRichClient3/engine_support.h"

#include <gmock/gmock.h>

namespace dhRichClient3 {
namespace {

using support::ErrorOf;
using support::RowsOf;
using ::testing::ElementsAre;

const std::string kEndless = "WITH RECURSIVE n(x) AS (SELECT 1 UNION ALL SELECT x+1 FROM n) SELECT max(x) FROM n";

std::string CountTo(int last) {
    return "WITH RECURSIVE n(x) AS (SELECT 1 UNION ALL SELECT x+1 FROM n WHERE x<" + std::to_string(last) +
           ") SELECT max(x) FROM n";
}

TEST(Limits, AStatementThatWouldNeverEndIsStopped) {
    const auto connection = support::InMemory("", 50'000);
    const std::function<void()> attempts[] = {
        [&] { RowsOf(connection, kEndless); },
        [&] { connection->Ejecutar(kEndless); },
        [&] { connection->Prepare(kEndless).Step(); },
        [&] { connection->RunScript(kEndless); },
    };
    for (const auto& attempt : attempts) {
        const auto error = ErrorOf(attempt);
        EXPECT_EQ(error.number, support::kInterrupted);
        EXPECT_EQ(error.description,
                  "The statement took more than 50000 steps of the engine, the limit of this connection, and was "
                  "stopped. Ask "
                  "for less, or raise the limit.");
    }
    EXPECT_THAT(RowsOf(connection, "SELECT 1"), ElementsAre("1"));
}

TEST(Limits, StepsAreCountedAnewForEachStatement) {
    const auto connection = support::InMemory("", 50'000);
    for (int i = 0; i < 20; ++i)
        EXPECT_THAT(RowsOf(connection, CountTo(1000)), ElementsAre("1000"));
    EXPECT_EQ(ErrorOf([&] { RowsOf(connection, CountTo(100'000)); }).number, support::kInterrupted);
}

TEST(Limits, ASmallLimitHoldsAndNoLimitHoldsNothing) {
    EXPECT_EQ(ErrorOf([&] { RowsOf(support::InMemory("", 500), CountTo(1000)); }).number, support::kInterrupted);
    EXPECT_THAT(RowsOf(support::InMemory("", 0), CountTo(200'000)), ElementsAre("200000"));
}

TEST(Limits, AReadThatIsStoppedLeavesTheTransactionOpen) {
    const auto connection = support::InMemory("CREATE TABLE t(a)", 50'000);
    connection->IniciarTrans("");
    connection->Ejecutar("INSERT INTO t VALUES(1)");
    EXPECT_EQ(ErrorOf([&] { RowsOf(connection, kEndless); }).number, support::kInterrupted);
    connection->ConfirmarTrans("");
    EXPECT_THAT(RowsOf(connection, "SELECT a FROM t"), ElementsAre("1"));
}

TEST(Limits, AGiantValueIsRefused) {
    const auto connection = support::InMemory();
    EXPECT_EQ(ErrorOf([&] { RowsOf(connection, "SELECT length(zeroblob(300000000))"); }).number, support::kTooBig);
}

TEST(Limits, RowsThatTakeTooMuchMemoryAreRefused) {
    Options options;
    options.rowBytesLimit = 100'000;
    const auto connection = Connection::Open(":memory:", options);
    const auto rows = [&](int count) {
        return support::Opened(connection, "WITH RECURSIVE n(x) AS (SELECT 1 UNION ALL SELECT x+1 FROM n WHERE x<" +
                                               std::to_string(count) + ") SELECT x, 'twenty characters ...' FROM n");
    };
    EXPECT_EQ(rows(1000)->TotalRegistros(), 1000);
    const auto error = ErrorOf([&] { rows(10'000); });
    EXPECT_EQ(error.number, support::kTooBig);
    EXPECT_EQ(error.description, "The rows take more than 100000 bytes, the limit of this connection. Ask for fewer.");
    EXPECT_EQ(rows(1000)->TotalRegistros(), 1000);
}

TEST(Limits, AnErrorOfTheDoorIsNotRememberedForTheNextStatement) {
    const auto connection = support::InMemory("CREATE TABLE t(a INTEGER PRIMARY KEY)");
    auto insert = connection->Prepare("INSERT INTO t VALUES(1)");
    insert.Run();
    EXPECT_EQ(ErrorOf([&] { connection->Ejecutar("SELECT random()"); }).number, support::kRefused);
    EXPECT_EQ(ErrorOf([&] { insert.Run(); }).number, support::kConstraint);
}

}  // namespace
}  // namespace dhRichClient3

#include "tests/dhRichClient3/engine_support.h"

#include <gmock/gmock.h>

namespace dhRichClient3 {
namespace {

using support::ErrorOf;
using support::kLost;
using support::RowsOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

struct TransactionTest : ::testing::Test {
    Zontara::Ref<Connection> connection = support::InMemory("CREATE TABLE t(a INTEGER PRIMARY KEY)", 200'000);

    std::vector<std::string> Stored() { return RowsOf(connection, "SELECT a FROM t ORDER BY a"); }
    /// The engine rolls a transaction back by itself when it interrupts a change.
    void LoseTheTransaction() {
        EXPECT_EQ(ErrorOf([&] {
                      connection->Ejecutar(
                          "INSERT INTO t WITH RECURSIVE n(x) AS (SELECT 100 UNION ALL SELECT x+1 FROM n) "
                          "SELECT x FROM n");
                  }).number,
                  support::kInterrupted);
        EXPECT_FALSE(connection->InTransaction());
    }
};

TEST_F(TransactionTest, CommitKeepsAndRollbackForgets) {
    connection->IniciarTrans("");
    EXPECT_TRUE(connection->InTransaction());
    EXPECT_TRUE(connection->TransactionMeant());
    connection->Ejecutar("INSERT INTO t VALUES(1)");
    connection->ConfirmarTrans("");
    EXPECT_FALSE(connection->InTransaction());
    EXPECT_FALSE(connection->TransactionMeant());

    connection->IniciarTrans("");
    connection->Ejecutar("INSERT INTO t VALUES(2)");
    connection->RevertirTrans("", 0);
    EXPECT_FALSE(connection->TransactionMeant());
    EXPECT_THAT(Stored(), ElementsAre("1"));
}

TEST_F(TransactionTest, WithoutABeginACommitIsTheEnginesRefusalAndARollbackFindsNothingToDo) {
    const auto error = ErrorOf([&] { connection->ConfirmarTrans(""); });
    EXPECT_EQ(error.number, support::kError);
    EXPECT_EQ(error.description, "cannot commit - no transaction is active");
    connection->Ejecutar("INSERT INTO t VALUES(1)");
    connection->RevertirTrans("", 0);
    EXPECT_FALSE(connection->TransactionMeant());
    EXPECT_THAT(Stored(), ElementsAre("1"));
}

TEST_F(TransactionTest, ASecondBeginIsRefusedAndTheFirstGoesOn) {
    connection->IniciarTrans("");
    connection->Ejecutar("INSERT INTO t VALUES(1)");
    EXPECT_EQ(ErrorOf([&] { connection->IniciarTrans(""); }).number, support::kError);
    connection->ConfirmarTrans("");
    EXPECT_THAT(Stored(), ElementsAre("1"));
}

TEST_F(TransactionTest, AFailedStatementLeavesTheTransactionOpen) {
    connection->IniciarTrans("");
    connection->Ejecutar("INSERT INTO t VALUES(1)");
    EXPECT_EQ(ErrorOf([&] { connection->Ejecutar("INSERT INTO t VALUES(1)"); }).number, support::kConstraint);
    EXPECT_TRUE(connection->InTransaction());
    connection->ConfirmarTrans("");
    EXPECT_THAT(Stored(), ElementsAre("1"));
}

TEST_F(TransactionTest, AfterALossEverythingIsRefusedUntilTheRollback) {
    connection->Ejecutar("INSERT INTO t VALUES(1)");
    connection->IniciarTrans("");
    connection->Ejecutar("INSERT INTO t VALUES(2)");
    LoseTheTransaction();
    EXPECT_TRUE(connection->TransactionMeant());

    const std::function<void()> attempts[] = {
        [&] { connection->Ejecutar("INSERT INTO t VALUES(3)"); },
        [&] { Stored(); },
        [&] { connection->ConfirmarTrans(""); },
        [&] { connection->IniciarTrans(""); },
        [&] { connection->RunScript("INSERT INTO t VALUES(3)"); },
        [&] { connection->Prepare("INSERT INTO t VALUES(3)").Run(); },
    };
    for (const auto& attempt : attempts) {
        const auto error = ErrorOf(attempt);
        EXPECT_EQ(error.number, kLost);
        EXPECT_THAT(error.description, HasSubstr("The transaction was lost"));
        EXPECT_EQ(error.source, "dhRichClient3");
    }

    connection->RevertirTrans("", 0);
    EXPECT_FALSE(connection->TransactionMeant());
    EXPECT_THAT(Stored(), ElementsAre("1"));
    connection->IniciarTrans("");
    connection->Ejecutar("INSERT INTO t VALUES(4)");
    connection->ConfirmarTrans("");
    EXPECT_THAT(Stored(), ElementsAre("1", "4"));
}

TEST_F(TransactionTest, AStatementLentBeforeTheLossIsRefusedToo) {
    auto insert = connection->Prepare("INSERT INTO t VALUES(?1)");
    connection->IniciarTrans("");
    LoseTheTransaction();
    insert.Bind(1, 5);
    EXPECT_EQ(ErrorOf([&] { insert.Run(); }).number, kLost);
    connection->RevertirTrans("", 0);
    insert.Run();
    EXPECT_THAT(Stored(), ElementsAre("5"));
}

TEST_F(TransactionTest, ALossWithoutATransactionMeantIsNone) {
    EXPECT_EQ(ErrorOf([&] {
                  connection->Ejecutar(
                      "INSERT INTO t WITH RECURSIVE n(x) AS (SELECT 1 UNION ALL SELECT x+1 FROM n) SELECT x FROM n");
              }).number,
              support::kInterrupted);
    EXPECT_THAT(Stored(), ElementsAre());
}

TEST_F(TransactionTest, AFailedBeginMeansATransactionUntilTheRollback) {
    const support::TempFolder folder;
    const auto first = support::OnFile(folder.File("a.db"), Options::Mode::Create);
    first->RunScript("CREATE TABLE t(a)");
    const auto second = support::OnFile(folder.File("a.db"));
    first->IniciarTrans("");
    const auto error = ErrorOf([&] { second->IniciarTrans(""); });
    EXPECT_EQ(error.number, support::kBusy);
    EXPECT_EQ(error.description, "database is locked");
    EXPECT_TRUE(second->TransactionMeant());
    EXPECT_EQ(ErrorOf([&] { RowsOf(second, "SELECT a FROM t"); }).number, kLost);
    first->ConfirmarTrans("");
    EXPECT_EQ(ErrorOf([&] { second->Ejecutar("INSERT INTO t VALUES(1)"); }).number, kLost);
    EXPECT_EQ(ErrorOf([&] { second->ConfirmarTrans(""); }).number, kLost);
    second->RevertirTrans("", 0);
    EXPECT_THAT(RowsOf(second, "SELECT a FROM t"), ElementsAre());
}

TEST_F(TransactionTest, AScriptJoinsTheOpenTransaction) {
    connection->IniciarTrans("");
    connection->RunScript("INSERT INTO t VALUES(1); CREATE TABLE u(a);");
    connection->RevertirTrans("", 0);
    EXPECT_THAT(Stored(), ElementsAre());
    EXPECT_EQ(ErrorOf([&] { RowsOf(connection, "SELECT a FROM u"); }).description, "no such table: u");
}

TEST_F(TransactionTest, ATransactionThatAScriptLeavesOpenIsMeant) {
    connection->RunScript("BEGIN; INSERT INTO t VALUES(1)");
    EXPECT_TRUE(connection->TransactionMeant());
    connection->RevertirTrans("", 0);
    EXPECT_THAT(Stored(), ElementsAre());
}

TEST_F(TransactionTest, TheWatcherSeesCommitsInsideAndEndsOutside) {
    std::vector<std::string> seen;
    connection->WatchCommit(
        [&] {
            seen.push_back(connection->InTransaction() ? "before, inside" : "before, outside");
            connection->Prepare("INSERT INTO t VALUES(?1)").Bind(1, 50).Run();
        },
        [&] { seen.push_back(connection->InTransaction() ? "after, inside" : "after, outside"); });
    connection->IniciarTrans("");
    connection->ConfirmarTrans("");
    EXPECT_THAT(seen, ElementsAre("before, inside", "after, outside"));
    EXPECT_THAT(Stored(), ElementsAre("50"));

    seen.clear();
    connection->IniciarTrans("");
    connection->RevertirTrans("", 0);
    EXPECT_THAT(seen, ElementsAre("after, outside"));

    seen.clear();
    connection->WatchCommit({}, {});
    connection->IniciarTrans("");
    connection->ConfirmarTrans("");
    EXPECT_THAT(seen, ElementsAre());
}

TEST_F(TransactionTest, AWatcherThatRaisesKeepsTheTransactionOpenAndUncommitted) {
    bool ended = false;
    connection->WatchCommit([] { Zontara::RaiseError(77, "test", "no"); }, [&] { ended = true; });
    connection->IniciarTrans("");
    connection->Ejecutar("INSERT INTO t VALUES(1)");
    EXPECT_EQ(ErrorOf([&] { connection->ConfirmarTrans(""); }).number, 77);
    EXPECT_TRUE(connection->InTransaction());
    EXPECT_FALSE(ended);
    connection->RevertirTrans("", 0);
    EXPECT_TRUE(ended);
    EXPECT_THAT(Stored(), ElementsAre());
}

TEST_F(TransactionTest, TheWatcherIsNotAskedAboutACommitOfNothing) {
    int asked = 0;
    connection->WatchCommit([&] { ++asked; }, [&] { ++asked; });
    EXPECT_EQ(ErrorOf([&] { connection->ConfirmarTrans(""); }).number, support::kError);
    connection->IniciarTrans("");
    LoseTheTransaction();
    EXPECT_EQ(ErrorOf([&] { connection->ConfirmarTrans(""); }).number, kLost);
    EXPECT_EQ(asked, 0);
}

}  // namespace
}  // namespace dhRichClient3

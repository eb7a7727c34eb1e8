// A question that is asked again in a transaction is answered from memory, and never with anything but what the
// database would say.
#include "tests/dhRichClient3/outcome.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

namespace dhRichClient3 {
namespace {

using support::ErrorOf;
using support::RowsOf;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr char kTables[] =
    "CREATE TABLE task(k INTEGER PRIMARY KEY, name TEXT);"
    "CREATE TABLE part(k INTEGER PRIMARY KEY, task INTEGER, name TEXT UNIQUE);"
    "CREATE TABLE log(k INTEGER PRIMARY KEY, what TEXT);"
    "CREATE VIEW parts AS SELECT task.name AS task, part.name AS part FROM task, part WHERE part.task = task.k;"
    "INSERT INTO task VALUES(1,'oil'),(2,'clean'); INSERT INTO part VALUES(1,1,'rag'),(2,1,'can')";
const std::string kParts = "SELECT name FROM part WHERE task = 1 ORDER BY k";

struct RememberedTest : ::testing::Test {
    Zontara::Ref<Connection> connection = support::InMemory(kTables);

    void SetUp() override { connection->IniciarTrans(""); }

    std::vector<std::string> Ask(const std::string& sql = kParts) { return RowsOf(connection, sql); }
    /// A question is remembered when it is asked the second time.
    void AskTwice(const std::string& sql = kParts) {
        Ask(sql);
        Ask(sql);
    }
    /// Whether the next question was answered from memory.
    bool IsRemembered(const std::string& sql = kParts) {
        const auto before = connection->Remembered();
        Ask(sql);
        return connection->Remembered() > before;
    }
};

TEST_F(RememberedTest, FromTheSecondTimeOn) {
    EXPECT_FALSE(IsRemembered());
    EXPECT_FALSE(IsRemembered());
    EXPECT_TRUE(IsRemembered());
    EXPECT_THAT(Ask(), ElementsAre("rag", "can"));
}

TEST_F(RememberedTest, ByItsWholeText) {
    AskTwice();
    EXPECT_FALSE(IsRemembered("SELECT name FROM part WHERE task = 2 ORDER BY k"));
    EXPECT_THAT(Ask("SELECT name FROM part WHERE task = 2 ORDER BY k"), IsEmpty());
}

TEST_F(RememberedTest, AnEmptyAnswerToo) {
    AskTwice("SELECT name FROM part WHERE task = 2");
    EXPECT_TRUE(IsRemembered("SELECT name FROM part WHERE task = 2"));
}

TEST_F(RememberedTest, WhateverHappensToOtherTables) {
    AskTwice();
    connection->Ejecutar("INSERT INTO log(what) VALUES('x')");
    connection->Ejecutar("UPDATE task SET name = 'x'");
    EXPECT_TRUE(IsRemembered());
}

TEST_F(RememberedTest, UntilItsTableIsChanged) {
    const std::string changes[] = {
        "INSERT INTO part VALUES(3,1,'tin')",
        "UPDATE part SET name = 'cap' WHERE k = 1",
        "DELETE FROM part WHERE k = 2",
        "REPLACE INTO part VALUES(4,1,'tin')",
        "INSERT OR IGNORE INTO part VALUES(1,1,1)",
        "INSERT INTO PART(task, name) SELECT 1, what FROM log",
        "DELETE FROM part",
    };
    for (const std::string& change : changes) {
        AskTwice();
        connection->Ejecutar(change);
        EXPECT_FALSE(IsRemembered()) << change;
    }
    EXPECT_THAT(Ask(), IsEmpty());
}

TEST_F(RememberedTest, UntilALentStatementChangesItsTable) {
    AskTwice();
    connection->Prepare("INSERT INTO part VALUES(3,1,?1) RETURNING k").Bind(1, "tin").Step();
    EXPECT_THAT(Ask(), ElementsAre("rag", "can", "tin"));
}

TEST_F(RememberedTest, UntilAQuestionThatChangesItsTable) {
    AskTwice();
    EXPECT_THAT(Ask("DELETE FROM part WHERE k = 1 RETURNING name"), ElementsAre("rag"));
    EXPECT_THAT(Ask(), ElementsAre("can"));
}

TEST_F(RememberedTest, AChangeThatReturnsRowsIsDoneEachTime) {
    const std::string add = "INSERT INTO log(what) VALUES('x') RETURNING k";
    for (const char* key : {"1", "2", "3"})
        EXPECT_THAT(Ask(add), ElementsAre(key));
}

TEST_F(RememberedTest, UntilAFailingChangeOfItsTable) {
    AskTwice();
    const std::string fails = "INSERT INTO part VALUES(5,1,'tin'),(6,1,'tin')";
    EXPECT_EQ(ErrorOf([&] { connection->Ejecutar(fails); }).number, support::kConstraint);
    EXPECT_FALSE(IsRemembered());
    EXPECT_THAT(Ask(), ElementsAre("rag", "can"));
}

TEST_F(RememberedTest, UntilATriggerChangesItsTable) {
    connection->RunScript(
        "CREATE TRIGGER t AFTER INSERT ON log BEGIN UPDATE part SET name = new.what WHERE k = 1; END");
    AskTwice();
    connection->Ejecutar("INSERT INTO log(what) VALUES('tin')");
    EXPECT_THAT(Ask(), ElementsAre("tin", "can"));
}

TEST_F(RememberedTest, ThroughAViewUntilATableBehindItIsChanged) {
    const std::string all = "SELECT task, part FROM parts ORDER BY 2";
    AskTwice(all);
    EXPECT_TRUE(IsRemembered(all));
    connection->Ejecutar("UPDATE task SET name = 'grease' WHERE k = 1");
    EXPECT_THAT(Ask(all), ElementsAre("grease|can", "grease|rag"));
}

TEST_F(RememberedTest, UntilATableOfASubSelectIsChanged) {
    const std::string counts[] = {
        "SELECT name FROM task WHERE EXISTS (SELECT 1 FROM log)",
        "SELECT count(*) FROM log",
        "SELECT (SELECT max(k) FROM log)",
        "WITH l AS (SELECT k FROM log) SELECT count(*) FROM task, l",
        "SELECT name FROM task UNION ALL SELECT what FROM log",
    };
    for (const std::string& sql : counts)
        AskTwice(sql);
    connection->Ejecutar("INSERT INTO log(what) VALUES('x')");
    for (const std::string& sql : counts)
        EXPECT_FALSE(IsRemembered(sql)) << sql;
}

TEST_F(RememberedTest, UntilTheTransactionIsRolledBack) {
    connection->Ejecutar("INSERT INTO part VALUES(3,1,'tin')");
    AskTwice();
    EXPECT_THAT(Ask(), ElementsAre("rag", "can", "tin"));
    connection->RevertirTrans("", 0);
    connection->IniciarTrans("");
    EXPECT_THAT(Ask(), ElementsAre("rag", "can"));
}

TEST_F(RememberedTest, BeyondACommit) {
    AskTwice();
    connection->ConfirmarTrans("");
    connection->IniciarTrans("");
    EXPECT_TRUE(IsRemembered());
    connection->Ejecutar("INSERT INTO part VALUES(3,1,'tin')");
    connection->ConfirmarTrans("");
    connection->IniciarTrans("");
    EXPECT_THAT(Ask(), ElementsAre("rag", "can", "tin"));
}

TEST_F(RememberedTest, OnlyInsideATransaction) {
    connection->ConfirmarTrans("");
    AskTwice();
    EXPECT_FALSE(IsRemembered());
    connection->Ejecutar("DELETE FROM part WHERE k = 1");
    connection->IniciarTrans("");
    EXPECT_THAT(Ask(), ElementsAre("can"));
}

TEST_F(RememberedTest, AChangeBetweenTwoTransactionsCounts) {
    AskTwice();
    connection->ConfirmarTrans("");
    connection->Ejecutar("DELETE FROM part WHERE k = 1");
    connection->IniciarTrans("");
    EXPECT_THAT(Ask(), ElementsAre("can"));
}

TEST_F(RememberedTest, UntilAScriptRuns) {
    AskTwice();
    connection->RunScript("UPDATE part SET name = 'tin' WHERE k = 1");
    EXPECT_THAT(Ask(), ElementsAre("tin", "can"));
    connection->RunScript("DROP TABLE part; CREATE TABLE part(name, k, task); INSERT INTO part VALUES('new',1,1)");
    EXPECT_THAT(Ask(), ElementsAre("new"));
    connection->RunScript("PRAGMA case_sensitive_like=ON");
    EXPECT_FALSE(IsRemembered());
}

TEST_F(RememberedTest, NotWhenItLooksAtTheClock) {
    const std::string questions[] = {"SELECT date('now')", "SELECT strftime('%s', 'now'), name FROM task",
                                     "SELECT CURRENT_TIMESTAMP", "SELECT unixepoch()"};
    for (const std::string& sql : questions) {
        AskTwice(sql);
        EXPECT_FALSE(IsRemembered(sql)) << sql;
    }
}

TEST_F(RememberedTest, NotWithALargeAnswer) {
    const std::string many =
        "WITH RECURSIVE n(x) AS (SELECT 1 UNION ALL SELECT x + 1 FROM n WHERE x < 1000) SELECT x FROM n";
    AskTwice(many);
    EXPECT_FALSE(IsRemembered(many));
    const std::string few = "SELECT '" + std::string(5000, 'x') + "'";
    AskTwice(few);
    EXPECT_FALSE(IsRemembered(few));
}

TEST_F(RememberedTest, NotWhenItFails) {
    const std::string fails = "SELECT abs(-9223372036854775808), name FROM task";
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(ErrorOf([&] { Ask(fails); }).number, support::kError);
}

TEST_F(RememberedTest, RecordsetsThatShareRowsMoveEachForItself) {
    AskTwice();
    const auto one = support::Opened(connection, kParts);
    const auto other = support::Opened(connection, kParts);
    one->MoverSiguiente();
    EXPECT_EQ(one->Valor("name"), Zontara::Value("can"));
    EXPECT_EQ(other->Valor("name"), Zontara::Value("rag"));
    connection->Ejecutar("DELETE FROM part");
    EXPECT_EQ(one->Valor("name"), Zontara::Value("can"));
    EXPECT_EQ(other->TotalRegistros(), 2);
}

TEST_F(RememberedTest, ManyQuestionsPushEachOtherOutAndStayRight) {
    const auto question = [](int i) { return "SELECT " + std::to_string(i) + ", name FROM task WHERE k = 1"; };
    for (int round = 0; round < 3; ++round) {
        for (int i = 0; i < 5000; ++i)
            ASSERT_THAT(Ask(question(i)), ElementsAre(std::to_string(i) + "|oil"));
    }
    AskTwice();
    EXPECT_TRUE(IsRemembered());
}

TEST_F(RememberedTest, BeyondSixtyThreeTablesToo) {
    std::string tables;
    for (int i = 0; i < 100; ++i)
        tables += "CREATE TABLE m" + std::to_string(i) + "(a); INSERT INTO m" + std::to_string(i) + " VALUES(1);";
    connection->RunScript(tables);
    for (int i = 0; i < 100; ++i) {
        const std::string table = "m" + std::to_string(i);
        const std::string question = "SELECT a FROM " + table;
        AskTwice(question);
        EXPECT_TRUE(IsRemembered(question));
        connection->Ejecutar("UPDATE " + table + " SET a = 2");
        EXPECT_THAT(Ask(question), ElementsAre("2"));
    }
}

/// What others do to the file shows in the next transaction at the latest.
struct RememberedOnFile : ::testing::Test {
    support::TempFolder folder;
    Zontara::Ref<Connection> connection = support::OnFile(folder.File("p.db"), Options::Mode::Create);
    Zontara::Ref<Connection> other;

    void SetUp() override {
        connection->RunScript(kTables);
        other = support::OnFile(folder.File("p.db"));
        connection->IniciarTrans("");
        RowsOf(connection, kParts);
        RowsOf(connection, kParts);
        connection->ConfirmarTrans("");
    }
};

TEST_F(RememberedOnFile, UntilSomebodyElseChangesTheFile) {
    other->Ejecutar("DELETE FROM part WHERE k = 1");
    connection->IniciarTrans("");
    EXPECT_THAT(RowsOf(connection, kParts), ElementsAre("can"));
}

TEST_F(RememberedOnFile, BeyondATransactionThatNobodyCameBetween) {
    connection->IniciarTrans("");
    RowsOf(connection, kParts);
    EXPECT_EQ(connection->Remembered(), 1);
}

TEST_F(RememberedOnFile, NotWhileAnotherFileIsAttached) {
    const auto keeper = support::OnFile(folder.File("second.db"), Options::Mode::Create);
    keeper->RunScript("CREATE TABLE store(a); INSERT INTO store VALUES(1)");
    connection->RunScript("ATTACH '" + folder.File("second.db") + "' AS second");
    const std::string question = "SELECT a FROM store";
    for (const int value : {2, 3, 4}) {
        connection->IniciarTrans("");
        for (int i = 0; i < 3; ++i)
            EXPECT_THAT(RowsOf(connection, question), ElementsAre(std::to_string(value - 1)));
        connection->ConfirmarTrans("");
        keeper->Ejecutar("UPDATE store SET a = " + std::to_string(value));
    }
    EXPECT_EQ(connection->Remembered(), 0);
}

TEST_F(RememberedOnFile, EvenWhenARefusedBeginCameBetween) {
    other->IniciarTrans("");
    other->Ejecutar("DELETE FROM part WHERE k = 1");
    EXPECT_EQ(ErrorOf([&] { connection->IniciarTrans(""); }).number, support::kBusy);
    connection->RevertirTrans("", 0);
    other->ConfirmarTrans("");
    connection->IniciarTrans("");
    EXPECT_THAT(RowsOf(connection, kParts), ElementsAre("can"));
}

TEST_F(RememberedOnFile, ATriggerOfSomebodyElsesCounts) {
    connection->Ejecutar("INSERT INTO log(what) VALUES('a')");
    other->RunScript("CREATE TRIGGER t AFTER INSERT ON log BEGIN DELETE FROM part WHERE k = 1; END");
    connection->IniciarTrans("");
    EXPECT_THAT(RowsOf(connection, kParts), ElementsAre("rag", "can"));
    EXPECT_THAT(RowsOf(connection, kParts), ElementsAre("rag", "can"));
    connection->Ejecutar("INSERT INTO log(what) VALUES('b')");
    EXPECT_THAT(RowsOf(connection, kParts), ElementsAre("can"));
}

TEST_F(RememberedOnFile, AViewOfSomebodyElsesCounts) {
    other->RunScript("CREATE VIEW few AS SELECT name FROM part");
    connection->IniciarTrans("");
    for (int i = 0; i < 3; ++i)
        EXPECT_THAT(RowsOf(connection, "SELECT * FROM few"), ElementsAre("can", "rag"));
    connection->ConfirmarTrans("");
    other->RunScript("DROP VIEW few; CREATE VIEW few AS SELECT what FROM log");
    connection->IniciarTrans("");
    EXPECT_THAT(RowsOf(connection, "SELECT * FROM few"), IsEmpty());
    connection->Ejecutar("INSERT INTO log(what) VALUES('b')");
    EXPECT_THAT(RowsOf(connection, "SELECT * FROM few"), ElementsAre("b"));
}

/// The same stream of questions and changes by the connection and by the engine alone.
class RememberedStream {
public:
    explicit RememberedStream(unsigned seed) : random_(seed) { Both("BEGIN IMMEDIATE"); }

    void Go(int steps) {
        for (int i = 0; i < steps; ++i) {
            const std::string text = Next();
            ASSERT_EQ(support::RunByDoor(connection_, text), plain_.Run(text)) << text;
            if (Below(150) == 0) Both(Below(3) == 0 ? "ROLLBACK" : "COMMIT");
            if (Below(400) == 0) Both(Script());
        }
        EXPECT_GT(connection_->Remembered(), steps / 5);
    }

private:
    std::size_t Below(std::size_t limit) { return random_() % limit; }
    std::string Key() { return std::to_string(Below(4)); }
    std::string OneOf(const std::vector<std::string>& texts) { return texts[Below(texts.size())]; }

    std::string Next() {
        if (Below(20) > 1) {
            return OneOf({"SELECT * FROM part WHERE task = " + Key() + " ORDER BY k",
                          "SELECT name FROM task WHERE k = " + Key(), "SELECT * FROM parts ORDER BY 1, 2",
                          "SELECT count(*), max(what) FROM log WHERE k > " + Key(),
                          "SELECT task.k FROM task LEFT JOIN part ON part.task = task.k WHERE part.k = " + Key(),
                          "SELECT k FROM task WHERE k IN (SELECT task FROM part WHERE k > " + Key() + ") ORDER BY k",
                          "SELECT nothing FROM task WHERE k = " + Key()});
        }
        return OneOf({"INSERT INTO log(what) VALUES('" + Key() + "')", "UPDATE task SET name = name || " + Key(),
                      "UPDATE part SET task = " + Key() + " WHERE k = " + Key(), "DELETE FROM part WHERE k = " + Key(),
                      "INSERT INTO part VALUES(" + Key() + "," + Key() + ",'" + Key() + "')",
                      "REPLACE INTO part VALUES(" + Key() + "," + Key() + ",'" + Key() + "')",
                      "INSERT INTO task VALUES(" + Key() + ",'x')", "DELETE FROM task WHERE k = " + Key(),
                      "DELETE FROM log WHERE k > 20"});
    }
    std::string Script() {
        return OneOf(
            {"DROP TRIGGER IF EXISTS t; CREATE TRIGGER t AFTER INSERT ON log BEGIN UPDATE part SET task = 1 "
             "WHERE k = new.k % 4; END",
             "DROP TRIGGER IF EXISTS t", "DELETE FROM log",
             "DROP TRIGGER IF EXISTS u; CREATE TRIGGER u AFTER UPDATE ON part BEGIN INSERT INTO log(what) "
             "VALUES(new.name); END",
             "DROP TRIGGER IF EXISTS u"});
    }
    /// The end of a transaction, and the begin of the next one; or a script of the administrator's.
    void Both(const std::string& what) {
        plain_.Script(what);
        if (what == "COMMIT") {
            connection_->ConfirmarTrans("");
        } else if (what == "ROLLBACK") {
            connection_->RevertirTrans("", 0);
        } else if (what != "BEGIN IMMEDIATE") {
            return connection_->RunScript(what);
        }
        if (what != "BEGIN IMMEDIATE") plain_.Script("BEGIN IMMEDIATE");
        connection_->IniciarTrans("");
    }

    Zontara::Ref<Connection> connection_ = support::InMemory(kTables);
    support::Plain plain_{kTables};
    std::mt19937 random_;
};

TEST(RememberedStreams, AreAnsweredAsTheEngineAnswersThem) {
    for (unsigned seed = 1; seed <= 4; ++seed)
        RememberedStream(seed).Go(3000);
}

}  // namespace
}  // namespace dhRichClient3

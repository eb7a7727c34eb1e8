#include "dhRichClient3/dialect/door.h"

#include "tests/dhRichClient3/engine_support.h"

#include <gmock/gmock.h>

namespace dhRichClient3 {
namespace {

using support::ErrorOf;
using support::kRefused;
using support::RowsOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

constexpr std::string_view kScript =
    "CREATE TABLE t(a INTEGER PRIMARY KEY, b TEXT); INSERT INTO t VALUES(1,'one'),(2,'two');"
    "CREATE TABLE log(what TEXT); CREATE TRIGGER note AFTER DELETE ON t BEGIN INSERT INTO log VALUES(old.b); END;";

dialect::Verdict Judged(std::string_view text) {
    std::vector<dialect::Token> tokens;
    dialect::Tokenize(text, tokens);
    return dialect::Judge(text, tokens);
}

struct Door : ::testing::Test {
    Zontara::Ref<Connection> connection = support::InMemory(kScript);
};

TEST_F(Door, DataStatementsPass) {
    constexpr std::string_view kAccepted[] = {
        "SELECT a FROM t",
        "  select max(a), sum(a) from t ; ",
        "SELECT a FROM t;;--end",
        "/* first */ SELECT substring(b,1,1), ltrim(b,'o') FROM t WHERE b like 'o%' limit 10",
        "SELECT strftime('%W','2026-03-05','weekday 1'), '---' EjecutorGama",
        "SELECT b FROM t WHERE b <> 'a;b' AND b <> \"b\" GROUP BY 1 ORDER BY 1 DESC",
        "WITH RECURSIVE n(x) AS (SELECT 1 UNION ALL SELECT x+1 FROM n WHERE x<3) SELECT x FROM n",
        "VALUES (1),(2)",
        "SELECT count(*) FROM sqlite_schema",
        "SELECT row_number() OVER (ORDER BY a), iif(a>1,'x','y'), json_extract('{\"a\":1}','$.a') FROM t",
        "SELECT printf('%05d/%-8s', a, b), format('%.3f') FROM t",
        "INSERT Into t (a,b) VALUES (3,'three')",
        "INSERT OR REPLACE INTO main.t VALUES (3,'drei')",
        "REPLACE INTO t VALUES (3,'trois')",
        "INSERT INTO t SELECT a+10,b FROM t",
        "UPDATE t SET b='attach; pragma' WHERE a =3",
        "UPDATE t SET b=replace(b,'a','') WHERE a =3 OR b = 'rollback'",
        "DELETE From t WHERE a=3",
        "WITH x AS (SELECT 11 AS k) DELETE FROM t WHERE a IN (SELECT k FROM x)",
    };
    for (const auto text : kAccepted) {
        EXPECT_EQ(Judged(text).refusal, "") << text;
        EXPECT_NO_THROW(connection->Ejecutar(std::string(text))) << text;
    }
}

TEST_F(Door, EverythingElseIsRefusedAndChangesNothing) {
    constexpr std::string_view kRefusals[] = {
        "",
        " ; ",
        "-- only a comment",
        "SELECT 1; DELETE FROM t",
        "SELECT 1;;x",
        "DELETE FROM t WHERE a=1; --\n DELETE FROM t",
        "SELECT printf('%.*c', 1000000000, 'x')",
        "SELECT \"format\"('%9999d', 1)",
        "SELECT printf(b, a) FROM t",
        "SELECT printf('%1' || '000000000d', 1)",
        "DROP TABLE t",
        "CREATE TABLE u(a)",
        "CREATE TEMP TABLE u(a)",
        "CREATE VIRTUAL TABLE f USING fts5(a)",
        "CREATE TRIGGER x AFTER INSERT ON t BEGIN SELECT 1; END",
        "ALTER TABLE t ADD COLUMN c",
        "REINDEX t",
        "ANALYZE",
        "VACUUM",
        "VACUUM INTO 'copy.db'",
        "ATTACH ':memory:' AS other",
        "DETACH main",
        "PRAGMA user_version",
        "PRAGMA user_version=5",
        "EXPLAIN SELECT 1",
        "BEGIN",
        "BEGIN IMMEDIATE",
        "COMMIT",
        "END",
        "ROLLBACK",
        "SAVEPOINT s",
        "RELEASE s",
        "INSERT OR ROLLBACK INTO t VALUES(1,'again')",
        "SELECT load_extension('x')",
        "SELECT \"LOAD_EXTENSION\" ('x')",
        "SELECT readfile('x')",
        "SELECT writefile('x','y')",
        "SELECT edit('x')",
        "SELECT fts3_tokenizer('simple')",
        "SELECT * FROM pragma_table_info('t')",
        "SELECT * FROM [pragma_database_list]",
        "INSERT INTO sqlite_schema VALUES(1,2,3,4,5)",
        "UPDATE \"main\".\"sqlite_master\" SET sql=''",
        "DELETE FROM sqlite_sequence",
        "DELETE FROM 'sqlite_schema'",
        "UPDATE OR IGNORE sqlite_schema SET sql=''",
    };
    const auto before = RowsOf(connection, "SELECT name, sql FROM sqlite_schema UNION ALL SELECT a,b FROM t");
    for (const auto text : kRefusals) {
        EXPECT_NE(Judged(text).refusal, "") << text;
        const auto executed = ErrorOf([&] { connection->Ejecutar(std::string(text)); });
        EXPECT_EQ(executed.number, kRefused) << text;
        EXPECT_EQ(executed.source, "dhRichClient3") << text;
        EXPECT_EQ(executed.description, Judged(text).refusal);
        EXPECT_EQ(ErrorOf([&] { support::Opened(connection, std::string(text)); }).number, kRefused) << text;
    }
    EXPECT_EQ(RowsOf(connection, "SELECT name, sql FROM sqlite_schema UNION ALL SELECT a,b FROM t"), before);
    EXPECT_FALSE(connection->InTransaction());
}

TEST_F(Door, AFormatIsJudgedHoweverOftenAnotherOnePassed) {
    for (int i = 0; i < 3; ++i) {
        connection->Ejecutar("UPDATE t SET b=printf('%05d',7) WHERE a=" + std::to_string(i));
        const auto error =
            ErrorOf([&] { connection->Ejecutar("UPDATE t SET b=printf('%09999d',7) WHERE a=" + std::to_string(i)); });
        EXPECT_EQ(error.number, kRefused);
    }
}

TEST_F(Door, TheEnginesLockRefusesWhatPassesTheTokens) {
    constexpr std::string_view kRefusals[] = {
        "SELECT random()",
        "SELECT hex(randomblob(4))",
        "SELECT last_insert_rowid()",
        "SELECT total_changes()",
        "SELECT sqlite_version()",
        "SELECT sqlite_compileoption_used('X')",
        "SELECT * FROM 'pragma_table_info'('t')",
        "SELECT * FROM dbstat",
        "SELECT * FROM sqlite_stmt",
        "UPDATE t SET b = random()",
    };
    for (const auto text : kRefusals) {
        EXPECT_EQ(Judged(text).refusal, "") << text;
        const auto error = ErrorOf([&] { connection->Ejecutar(std::string(text)); });
        EXPECT_EQ(error.number, kRefused) << text << ": " << error.description;
    }
    EXPECT_THAT(RowsOf(connection, "SELECT b FROM t"), ElementsAre("one", "two"));
    EXPECT_EQ(ErrorOf([&] { connection->Ejecutar("SELECT random()"); }).description,
              "A statement may not call this function (random).");
}

TEST_F(Door, ANulCharacterIsRefused) {
    const auto error = ErrorOf([&] { connection->Ejecutar(std::string("DELETE FROM t WHERE a=1\0 AND a=2", 33)); });
    EXPECT_EQ(error.number, kRefused);
    EXPECT_EQ(error.description, "There is a NUL character in the text.");
    EXPECT_THAT(RowsOf(connection, "SELECT a FROM t"), ElementsAre("1", "2"));
}

TEST_F(Door, RefusalsSayWhatIsRefused) {
    EXPECT_EQ(Judged("SELECT 1; SELECT 2").refusal, "More than one statement in the text: give them one at a time.");
    EXPECT_EQ(Judged("attach 'x' as y").refusal,
              "A statement may not begin with attach: only SELECT, INSERT, UPDATE and DELETE are allowed here.");
    EXPECT_EQ(Judged("SELECT readfile('x')").refusal, "A statement may not call readfile.");
    EXPECT_EQ(Judged("DELETE FROM sqlite_master").refusal, "The engine's own table sqlite_master may not be changed.");
    EXPECT_EQ(Judged("").refusal, "There is no statement in the text.");
}

TEST_F(Door, WrongTextsGetTheEnginesOwnRefusal) {
    const std::pair<std::string, std::string> cases[] = {
        {"SELECT ninguna FROM t", "no such column: ninguna"},
        {"SELECT a FROM nowhere", "no such table: nowhere"},
        {"  UPDATE t SET b = 'O'Brien' WHERE a =1", "near \"Brien\": syntax error"},
        {"UPDATE t SET b = 'x' 'y' WHERE a =1", "near \"'y'\": syntax error"},
        {"INSERT INTO t VALUES(9)", "table t has 2 columns but 1 values were supplied"},
        {"SELECT 'open", "unrecognized token: \"'open\""},
    };
    for (const auto& [text, description] : cases) {
        const auto error = ErrorOf([&] { connection->Ejecutar(text); });
        EXPECT_EQ(error.number, support::kError) << text;
        EXPECT_EQ(error.description, description);
    }
    EXPECT_THAT(RowsOf(connection, "SELECT b FROM t"), ElementsAre("one", "two"));
}

TEST_F(Door, ConstraintsKeepTheEnginesCodeAndText) {
    const auto error = ErrorOf([&] { connection->Ejecutar("INSERT INTO t VALUES(1,'again')"); });
    EXPECT_EQ(error.number, support::kConstraint);
    EXPECT_EQ(error.description, "UNIQUE constraint failed: t.a");
    EXPECT_EQ(error.source, "dhRichClient3");
}

TEST_F(Door, TriggersOfTheSchemaRun) {
    connection->Ejecutar("DELETE FROM t WHERE a=2");
    EXPECT_THAT(RowsOf(connection, "SELECT what FROM log"), ElementsAre("two"));
}

TEST_F(Door, AdministratorsDoorTakesSeveralStatementsAndDdl) {
    connection->RunScript("PRAGMA user_version=7; CREATE TABLE u(a); INSERT INTO u VALUES(random() IS NOT NULL);");
    EXPECT_THAT(RowsOf(connection, "SELECT a FROM u"), ElementsAre("1"));
    EXPECT_EQ(ErrorOf([&] { connection->RunScript("INSERT INTO u VALUES(2); wrong; DELETE FROM u"); }).number,
              support::kError);
    EXPECT_THAT(RowsOf(connection, "SELECT a FROM u"), ElementsAre("1", "2"));
    EXPECT_EQ(ErrorOf([&] { connection->RunScript(std::string_view("DELETE FROM u\0;", 15)); }).number, kRefused);
}

TEST_F(Door, AStatementOfTheLibrarysOwnIsNotLentToTheDoor) {
    connection->Prepare("SELECT random()").Step();
    EXPECT_EQ(ErrorOf([&] { connection->Ejecutar("SELECT random()"); }).number, kRefused);
}

TEST_F(Door, SchemasMayNotBeShadowed) {
    EXPECT_EQ(
        ErrorOf([&] { connection->RunScript("PRAGMA writable_schema=ON; UPDATE sqlite_schema SET sql='';"); }).number,
        support::kError);
    EXPECT_THAT(RowsOf(connection, "SELECT b FROM t"), ElementsAre("one", "two"));
}

}  // namespace
}  // namespace dhRichClient3

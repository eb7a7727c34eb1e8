#include "dhRichClient3/statement.h"

#include "dhRichClient3/statement_cache.h"
#include "tests/dhRichClient3/engine_support.h"

#include <gmock/gmock.h>

#include <random>
#include <string>

namespace dhRichClient3 {
namespace {

using support::ErrorOf;
using support::RowsOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using Zontara::Money;
using Zontara::Value;

struct StatementTest : ::testing::Test {
    Zontara::Ref<Connection> connection = support::InMemory("CREATE TABLE t(a, b)");
};

TEST_F(StatementTest, BindsEveryKindAsALiteralWouldStoreIt) {
    auto insert = connection->Prepare("INSERT INTO t VALUES(?1,?2)");
    int row = 0;
    const auto add = [&](auto value) { insert.Bind(1, ++row).Bind(2, value).Run(); };
    add(std::int32_t{-5});
    add(std::int64_t{5'000'000'000});
    add(2.5);
    add(0.1F);
    add(12.0F);
    add(Money::FromTenThousandths(25'000));
    add(Money::FromTenThousandths(100'000));
    add("text ñ");
    add(std::string("it's"));
    add(std::string_view());
    add(Zontara::Null{});
    add(nullptr);
    EXPECT_THAT(
        RowsOf(connection, "SELECT quote(b) FROM t ORDER BY a"),
        ElementsAre("-5", "5000000000", "2.5", "0.1", "12", "2.5", "10", "'text ñ'", "'it''s'", "''", "NULL", "NULL"));
}

TEST_F(StatementTest, ReadsColumnsByType) {
    connection->RunScript("INSERT INTO t VALUES(7,'x'),(NULL,2.5),(3000000000,x'41')");
    auto read = connection->Prepare("SELECT a,b FROM t ORDER BY rowid");
    EXPECT_EQ(read.ColumnCount(), 2);
    ASSERT_TRUE(read.Step());
    EXPECT_EQ(read.Int(0), 7);
    EXPECT_EQ(read.Text(0), "7");
    EXPECT_EQ(read.Value(0), Value(7));
    EXPECT_EQ(read.Value(1), Value("x"));
    EXPECT_FALSE(read.IsNull(0));
    ASSERT_TRUE(read.Step());
    EXPECT_TRUE(read.IsNull(0));
    EXPECT_EQ(read.Int(0), 0);
    EXPECT_EQ(read.Text(0), "");
    EXPECT_TRUE(read.Value(0).IsNull());
    EXPECT_EQ(read.Real(1), 2.5);
    EXPECT_EQ(read.Value(1), Value(2.5));
    ASSERT_TRUE(read.Step());
    EXPECT_EQ(read.Int64(0), 3'000'000'000);
    EXPECT_EQ(read.Value(0), Value(3e9));
    EXPECT_EQ(ErrorOf([&] { read.Int(0); }).number, 6);
    EXPECT_FALSE(read.Step());
    EXPECT_TRUE(read.Step());
    EXPECT_EQ(read.Int(0), 7);
}

TEST_F(StatementTest, ResetAndNewParametersStartAnew) {
    connection->RunScript("INSERT INTO t VALUES(1,'x'),(1,'y'),(2,'z')");
    auto read = connection->Prepare("SELECT b FROM t WHERE a=?1 ORDER BY b");
    read.Bind(1, 1);
    ASSERT_TRUE(read.Step());
    read.Reset();
    ASSERT_TRUE(read.Step());
    EXPECT_EQ(read.Text(0), "x");
    read.Bind(1, 2);
    ASSERT_TRUE(read.Step());
    EXPECT_EQ(read.Text(0), "z");
}

TEST_F(StatementTest, AParameterThatIsNotThereIsRefused) {
    auto read = connection->Prepare("SELECT ?1");
    EXPECT_EQ(ErrorOf([&] { read.Bind(2, 1); }).number, support::kRange);
    EXPECT_EQ(ErrorOf([&] { read.Bind(0, "x"); }).number, support::kRange);
}

TEST_F(StatementTest, RefusalsAreTheEngines) {
    EXPECT_EQ(ErrorOf([&] { connection->Prepare("SELECT x FROM t"); }).description, "no such column: x");
    connection->RunScript("CREATE UNIQUE INDEX u ON t(a)");
    auto insert = connection->Prepare("INSERT INTO t(a) VALUES(?1)");
    insert.Bind(1, 1).Run();
    const auto error = ErrorOf([&] { insert.Run(); });
    EXPECT_EQ(error.number, support::kConstraint);
    EXPECT_EQ(error.description, "UNIQUE constraint failed: t.a");
    insert.Bind(1, 2).Run();
    EXPECT_THAT(RowsOf(connection, "SELECT a FROM t"), ElementsAre("1", "2"));
    EXPECT_EQ(ErrorOf([&] { connection->Prepare("SELECT 1; SELECT 2"); }).number, support::kRefused);
    EXPECT_EQ(ErrorOf([&] { connection->Prepare(""); }).number, support::kRefused);
}

TEST_F(StatementTest, IsCompiledOnceAndComesBackClean) {
    { connection->Prepare("SELECT ?1").Bind(1, 5).Step(); }
    const auto before = connection->Compilations();
    auto again = connection->Prepare("SELECT ?1");
    EXPECT_EQ(connection->Compilations(), before);
    ASSERT_TRUE(again.Step());
    EXPECT_TRUE(again.IsNull(0));
}

TEST_F(StatementTest, TwoOfOneTextLiveSideBySide) {
    connection->RunScript("INSERT INTO t VALUES(1,1),(2,2)");
    auto outer = connection->Prepare("SELECT a FROM t ORDER BY a");
    ASSERT_TRUE(outer.Step());
    {
        auto inner = connection->Prepare("SELECT a FROM t ORDER BY a");
        ASSERT_TRUE(inner.Step());
        ASSERT_TRUE(inner.Step());
        EXPECT_EQ(inner.Int(0), 2);
    }
    EXPECT_EQ(outer.Int(0), 1);
    ASSERT_TRUE(outer.Step());
    EXPECT_EQ(outer.Int(0), 2);
}

TEST_F(StatementTest, MovingHandsItOnAndKeepsTheDatabaseOpen) {
    auto read = connection->Prepare("SELECT 1");
    auto other = connection->Prepare("SELECT 2");
    other = std::move(read);
    connection.reset();
    Statement last(std::move(other));
    ASSERT_TRUE(last.Step());
    EXPECT_EQ(last.Int(0), 1);
}

TEST_F(StatementTest, CountsTheRowsThatChanged) {
    connection->Ejecutar("INSERT INTO t VALUES(1,1),(2,2),(3,3)");
    EXPECT_EQ(connection->RowsChanged(), 3);
    connection->Ejecutar("UPDATE t SET b=0 WHERE a>1");
    EXPECT_EQ(connection->RowsChanged(), 2);
    connection->Ejecutar("DELETE FROM t WHERE a=9");
    EXPECT_EQ(connection->RowsChanged(), 0);
}

struct Shapes : StatementTest {
    std::int64_t CompiledFor(const std::string& sql) {
        const auto before = connection->Compilations();
        connection->Ejecutar(sql);
        return connection->Compilations() - before;
    }
};

TEST_F(Shapes, ChangesAreCompiledOncePerShape) {
    EXPECT_EQ(CompiledFor("INSERT INTO t VALUES(1,'one')"), 1);
    EXPECT_EQ(CompiledFor("INSERT INTO t VALUES(2,'it''s')"), 0);
    EXPECT_EQ(CompiledFor("INSERT INTO t VALUES(3,'')"), 0);
    EXPECT_EQ(CompiledFor("INSERT INTO t VALUES(-3,'')"), 1);
    EXPECT_EQ(CompiledFor("UPDATE t SET b='x' WHERE a =1"), 1);
    EXPECT_EQ(CompiledFor("UPDATE t SET b='y' WHERE a =2"), 0);
    EXPECT_EQ(CompiledFor("DELETE FROM t WHERE a=2 AND b='x'"), 1);
    EXPECT_EQ(CompiledFor("DELETE FROM t WHERE a=3 AND b=''"), 0);
    EXPECT_THAT(RowsOf(connection, "SELECT quote(a),quote(b) FROM t ORDER BY rowid"),
                ElementsAre("1|'x'", "2|'y'", "-3|''"));
}

TEST_F(Shapes, DecimalNumbersOfAChangeAreStoredAsTheEngineReadsThem) {
    connection->RunScript("CREATE TABLE n(i INTEGER, r REAL, x TEXT, z)");
    const char* const numbers[] = {"2.5",      "2.0",       ".1", "0.3", "1E+15", "1.7976931348623157e308",
                                   "4.9e-324", "123456.789"};
    for (const std::string number : numbers) {
        const std::string values = "(" + number + "," + number + "," + number + "," + number + ")";
        connection->Ejecutar("INSERT INTO n VALUES" + values);
        connection->RunScript("INSERT INTO n VALUES" + values);
    }
    EXPECT_EQ(CompiledFor("INSERT INTO n VALUES(7.5,7.5,7.5,7.5)"), 0);
    EXPECT_THAT(
        RowsOf(connection,
               "SELECT count(*), count(DISTINCT quote(i)||quote(r)||quote(x)||quote(z)) FROM n WHERE rowid < 17"),
        ElementsAre("16|8"));
}

TEST_F(Shapes, SelectsAreCompiledOncePerShape) {
    EXPECT_EQ(CompiledFor("SELECT a FROM t WHERE a =5"), 1);
    EXPECT_EQ(CompiledFor("SELECT a FROM t WHERE a =7"), 0);
    EXPECT_EQ(CompiledFor("SELECT a FROM t WHERE a ='7'"), 1);
    EXPECT_EQ(CompiledFor("SELECT a FROM t WHERE a =1"), 1);
    EXPECT_EQ(CompiledFor("SELECT a FROM t WHERE a =1"), 0);
    EXPECT_EQ(CompiledFor("SELECT a FROM t WHERE a =0"), 1);
}

TEST_F(Shapes, AWholeNumberAndADecimalOneAreOfOneShape) {
    EXPECT_EQ(CompiledFor("INSERT INTO t VALUES(1,2.5)"), 1);
    EXPECT_EQ(CompiledFor("INSERT INTO t VALUES(2,3)"), 0);
    EXPECT_EQ(CompiledFor("UPDATE t SET b=b +1 WHERE a=2"), 1);
    EXPECT_EQ(CompiledFor("UPDATE t SET b=b +0.5 WHERE a=1"), 0);
    EXPECT_THAT(RowsOf(connection, "SELECT quote(b), typeof(b) FROM t ORDER BY a"),
                ElementsAre("3.0|real", "4|integer"));
}

TEST_F(Shapes, MoreThanAreKeptStayRight) {
    const auto insert = [](std::size_t blanks, int key) {
        return "INSERT INTO t VALUES(" + std::string(blanks, ' ') + std::to_string(key) + ",'x')";
    };
    std::mt19937 random(5);
    int rows = 0;
    for (int round = 0; round < 3; ++round) {
        for (std::size_t blanks = 0; blanks < 300; ++blanks) {
            connection->Ejecutar(insert(blanks, ++rows));
            connection->Ejecutar(insert(random() % 300, ++rows));
        }
    }
    EXPECT_THAT(RowsOf(connection, "SELECT count(*), count(DISTINCT a), min(b), max(b) FROM t"),
                ElementsAre("1800|1800|x|x"));
    EXPECT_EQ(CompiledFor(insert(299, 0)), 0);
    EXPECT_EQ(CompiledFor(insert(301, 0)), 1);
}

TEST_F(Shapes, AQuoteInALiteralEndsItAsInTheText) {
    connection->Ejecutar("INSERT INTO t VALUES(5,'x')");
    EXPECT_EQ(CompiledFor("INSERT INTO t VALUES(6,'it''s')"), 0);
    EXPECT_NE(ErrorOf([&] { connection->Ejecutar("INSERT INTO t VALUES(7,'it's')"); }).number, 0);
    EXPECT_EQ(
        ErrorOf([&] { connection->Ejecutar("INSERT INTO t VALUES(8,'x'); DELETE FROM t WHERE ('x'='x')"); }).number,
        support::kRefused);
    EXPECT_EQ(ErrorOf([&] { connection->Ejecutar(std::string("INSERT INTO t VALUES(9,'x\0y')", 29)); }).number,
              support::kRefused);
    EXPECT_THAT(RowsOf(connection, "SELECT a, b FROM t"), ElementsAre("5|x", "6|it's"));
}

TEST_F(Shapes, APartialIndexStillServesTheTextsThatItIsFor) {
    connection->RunScript("CREATE INDEX few ON t(b) WHERE a = 7");
    EXPECT_EQ(CompiledFor("SELECT b FROM t INDEXED BY few WHERE a = 7 AND b > 'a'"), 1);
    EXPECT_NE(ErrorOf([&] { connection->Ejecutar("SELECT b FROM t INDEXED BY few WHERE a = 8"); }).number, 0);
    connection->RunScript("DROP INDEX few");
    EXPECT_EQ(CompiledFor("SELECT b FROM t WHERE a = 7"), 1);
    EXPECT_EQ(CompiledFor("SELECT b FROM t WHERE a = 8"), 0);
}

TEST_F(Shapes, AListLongerThanTheEngineHasParametersIsRunAsItIs) {
    std::string list = "7";
    for (int i = 0; i < 300'000; ++i)
        list += ",7";
    connection->Ejecutar("INSERT INTO t VALUES(7,'x')");
    connection->Ejecutar("UPDATE t SET b='y' WHERE a IN (" + list + ")");
    EXPECT_THAT(RowsOf(connection, "SELECT b FROM t WHERE a IN (" + list + ")"), ElementsAre("y"));
}

TEST_F(Shapes, ColumnNamesFollowWhatAnotherConnectionDoesToTheTable) {
    const support::TempFolder folder;
    const auto one = support::OnFile(folder.File("a.db"), Options::Mode::Create);
    one->RunScript("CREATE TABLE t(a, b); INSERT INTO t VALUES(7,'x')");
    const std::string all = "SELECT * FROM t WHERE a = 7";
    EXPECT_EQ(support::Opened(one, all)->TotalColumnas(), 2);
    support::OnFile(folder.File("a.db"))->RunScript("ALTER TABLE t ADD COLUMN c DEFAULT 'new'");
    EXPECT_EQ(support::Opened(one, all)->TotalColumnas(), 3);
    EXPECT_EQ(support::Opened(one, all)->NombreColumna(2), "c");
}

/// What a text stores or finds must not depend on how it is run: every text here is run once as it is, by the
/// administrator's door, and once by the closed door, on tables of all affinities.
TEST_F(Shapes, MeanExactlyWhatTheTextsMean) {
    const std::string texts[] = {
        "INSERT INTO v(i,r,n,x,z) VALUES(5,5,5,5,5)",
        "INSERT INTO v(i,r,n,x,z) VALUES('5','5','5','5','5')",
        "INSERT INTO v(i,r,n,x,z) VALUES(-5,-5,'-5','5.0','5e0')",
        "INSERT INTO v(i,r,n,x,z) VALUES('abc','','2026-03-05','  1','')",
        "INSERT INTO v(i,r,n,x,z) VALUES(007,'007',007,007,'007')",
        "INSERT INTO v(i,r,n,x,z) VALUES(2.50,2.0,2.0,2.0,2.0)",
        "INSERT INTO v(i,r,n,x,z) VALUES(999999999999999999,9999999999999999999,0x10,x'41',NULL)",
        "INSERT INTO v(x,z) VALUES('it''s','''')",
        "UPDATE v SET z='i5' WHERE i='5'",
        "UPDATE v SET z='n5' WHERE n='5'",
        "UPDATE v SET x='x5' WHERE x=5",
        "UPDATE v SET z='z5' WHERE z=5",
        "UPDATE v SET z=z||5||'a' WHERE r>2 AND r<'6'",
        "UPDATE v SET z=5/2, n='7'+1 WHERE '5'=5 OR i IN (5) OR i IN ('5','abc')",
        "UPDATE v SET z='like' WHERE x LIKE 'it%'",
        "UPDATE v SET z=substr('abcdef',2,3) WHERE i BETWEEN -5 AND '4'",
        "UPDATE v SET z=typeof(5)||typeof('5') WHERE rowid='3'",
        "DELETE FROM v WHERE 'z'='z' AND z='NULL'",
        "DELETE FROM v WHERE \"i\"=7",
    };
    const std::string table = "CREATE TABLE v(i INTEGER, r REAL, n NUMERIC, x TEXT, z)";
    const auto plain = support::InMemory(table);
    const auto door = support::InMemory(table);
    const std::string all = "SELECT quote(i),quote(r),quote(n),quote(x),quote(z) FROM v ORDER BY rowid";
    for (const auto& text : texts) {
        plain->RunScript(text);
        door->Ejecutar(text);
        EXPECT_EQ(RowsOf(door, all), RowsOf(plain, all)) << text;
        EXPECT_EQ(door->RowsChanged(), plain->RowsChanged()) << text;
    }
}

TEST_F(Shapes, ATextWhoseShapeDoesNotCompileIsRunAsItIs) {
    connection->Ejecutar("INSERT INTO t('a','b') VALUES(1,'x')");
    connection->Ejecutar("INSERT INTO 't' VALUES(2,'y')");
    EXPECT_THAT(RowsOf(connection, "SELECT a,b FROM t"), ElementsAre("1|x", "2|y"));
}

TEST_F(Shapes, AreForgottenWhenTheSchemaChanges) {
    connection->Ejecutar("INSERT INTO t VALUES(1,'x')");
    connection->RunScript("DROP TABLE t; CREATE TABLE t(a TEXT, b, c DEFAULT 'c')");
    EXPECT_EQ(ErrorOf([&] { connection->Ejecutar("INSERT INTO t VALUES(2,'y')"); }).description,
              "table t has 3 columns but 2 values were supplied");
    connection->Ejecutar("INSERT INTO t(a,b) VALUES(2,'y')");
    EXPECT_THAT(RowsOf(connection, "SELECT quote(a),b,c FROM t"), ElementsAre("'2'|y|c"));
}

struct Kept {
    std::string text;
};

TEST(StatementCacheTest, GivesBackWhatWasPutUnderATextOnce) {
    StatementCache<Kept> cache;
    EXPECT_EQ(cache.Take("a"), nullptr);
    auto held = std::make_unique<Kept>(Kept{"a"});
    const auto* const address = held.get();
    cache.Put(std::move(held));
    const auto taken = cache.Take("a");
    EXPECT_EQ(taken.get(), address);
    EXPECT_EQ(cache.Take("a"), nullptr);
}

TEST(StatementCacheTest, OfTwoWithOneTextTheLaterStays) {
    StatementCache<Kept> cache;
    cache.Put(std::make_unique<Kept>(Kept{"a"}));
    auto later = std::make_unique<Kept>(Kept{"a"});
    const auto* const address = later.get();
    cache.Put(std::move(later));
    EXPECT_EQ(cache.Take("a").get(), address);
    EXPECT_EQ(cache.Take("a"), nullptr);
}

TEST(StatementCacheTest, KeepsWhatIsUsedAndLetsGoOfWhatIsNot) {
    StatementCache<Kept> cache;
    for (int i = 0; i < 10'000; ++i) {
        cache.Put(std::make_unique<Kept>(Kept{"once " + std::to_string(i)}));
        auto often = cache.Take("often");
        if (!often) {
            EXPECT_EQ(i, 0);
            often = std::make_unique<Kept>(Kept{"often"});
        }
        cache.Put(std::move(often));
    }
    EXPECT_EQ(cache.Take("once 0"), nullptr);
    EXPECT_NE(cache.Take("once 9999"), nullptr);
    cache.Clear();
    EXPECT_EQ(cache.Take("often"), nullptr);
}

}  // namespace
}  // namespace dhRichClient3

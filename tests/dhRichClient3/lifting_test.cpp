#include "dhRichClient3/dialect/lifting.h"

#include "dhRichClient3/dialect/shape.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace dhRichClient3::dialect {
namespace {

Shape ShapeFor(const std::string& text, bool partialIndexes = false) {
    std::vector<Token> tokens;
    std::vector<Token> lifted;
    Tokenize(text, tokens);
    const auto verdict = Judge(text, tokens);
    Lift(tokens, verdict, partialIndexes, lifted);
    return Shape(text, lifted, verdict.selects);
}

struct Case {
    std::string text;
    std::string shape;
};

TEST(Lifting, TakesFromAChangeWhateverMayDiffer) {
    const Case cases[] = {
        {"  INSERT Into t (a ,b) VALUES (5,'x''y')", "  INSERT Into t (a ,b) VALUES (?,?)"},
        {"INSERT INTO t VALUES(2.5,1E-05,-3,-2.5)", "INSERT INTO t VALUES(?,?,-?,-2.5)"},
        {"UPDATE t SET a = a +12.5, b='x' WHERE c =7", "UPDATE t SET a = a +?, b=? WHERE c =?"},
        {"UPDATE t SET a=1 WHERE c =7.5", "UPDATE t SET a=? WHERE c =7.5"},
        {"DELETE FROM t WHERE a=1 AND b IN ('x',0)", "DELETE FROM t WHERE a=? AND b IN (?,?)"},
    };
    for (const auto& [text, shape] : cases)
        EXPECT_EQ(ShapeFor(text).Text(), shape);
}

TEST(Lifting, LeavesAChangeAloneWhoseLiteralsMayMatter) {
    const std::string texts[] = {
        "INSERT INTO t SELECT 5,'x' FROM u",        "UPDATE t SET a=5 WHERE b IN (SELECT 7)",
        "DELETE FROM t WHERE a=5 RETURNING a||5",   "INSERT INTO t VALUES(0x10,'x')",
        "INSERT INTO t VALUES(x'41','x')",          "INSERT INTO t VALUES(9999999999999999999,'x')",
        "WITH c AS (SELECT 1) DELETE FROM t",       "UPDATE t SET a=printf('%05d',5)",
        "DELETE FROM t WHERE a=\"format\"('%d',b)",
    };
    for (const auto& text : texts)
        EXPECT_EQ(ShapeFor(text).Text(), text);
}

TEST(Lifting, LeavesADecimalNumberThatNoOperatorLeadsTo) {
    const Case cases[] = {
        {"INSERT INTO t VALUES(''.35,'x')", "INSERT INTO t VALUES(?.35,?)"},
        {"INSERT INTO t VALUES(2.5.5)", "INSERT INTO t VALUES(?.5)"},
        {"UPDATE t SET a=abs.5", "UPDATE t SET a=abs.5"},
        {"UPDATE t SET a=(b).5", "UPDATE t SET a=(b).5"},
        {"UPDATE t SET a=b-2.5", "UPDATE t SET a=b-2.5"},
    };
    for (const auto& [text, shape] : cases)
        EXPECT_EQ(ShapeFor(text).Text(), shape);
}

TEST(Lifting, TakesFromASelectWhatAColumnIsComparedWith) {
    const Case cases[] = {
        {"SELECT a FROM t WHERE a =5 and b='x'", "SELECT a FROM t WHERE a =? and b=?"},
        {"SELECT a FROM t WHERE t.a <= '2026-03-02' or (b <> 7);", "SELECT a FROM t WHERE t.a <= ? or (b <> ?);"},
        {"SELECT a FROM t WHERE a=5 GROUP BY b HAVING b=5", "SELECT a FROM t WHERE a=? GROUP BY b HAVING b=5"},
        {"SELECT a FROM t WHERE a=5 order by 2 limit 3", "SELECT a FROM t WHERE a=? order by 2 limit 3"},
    };
    for (const auto& [text, shape] : cases)
        EXPECT_EQ(ShapeFor(text).Text(), shape);
}

TEST(Lifting, LeavesInASelectWhatNamesColumnsOrDecidesThePlan) {
    const std::string texts[] = {
        "SELECT 5,'x',a||'y' FROM t",
        "SELECT a='x' FROM t",
        "SELECT a FROM t WHERE a=0 AND b=1 AND c=01",
        "SELECT a FROM t WHERE a in (3,4,5,7)",
        "SELECT a FROM t WHERE a like 'A1%'",
        "SELECT a FROM t WHERE a BETWEEN 5 AND 7",
        "SELECT a FROM t WHERE strftime('%Y',a) ='2026'",
        "SELECT a FROM t WHERE printf('%d',a) IS '5'",
        "SELECT a FROM t WHERE a = 5 COLLATE NOCASE",
        "SELECT a FROM t WHERE a = 5+2",
        "SELECT a FROM t WHERE 5 = a",
        "SELECT a FROM t WHERE a = -5",
        "SELECT a FROM t WHERE a = 5.5",
        "SELECT a FROM t ORDER BY a = 5",
        "SELECT a FROM t GROUP BY 2",
        "SELECT a FROM t JOIN u ON t.a = 5",
        "SELECT a FROM t WHERE a = 5 AND b IN (SELECT c FROM u)",
        "SELECT a FROM t WHERE a = 5 UNION SELECT 6",
        "SELECT a FROM t WHERE a = 5 AND b = ?1",
        "WITH c AS (SELECT 1) SELECT a FROM t WHERE a = 5",
        "VALUES (5)",
    };
    for (const auto& text : texts)
        EXPECT_EQ(ShapeFor(text).Text(), text);
}

TEST(Lifting, APartialIndexKeepsTheLiteralsOfEveryWhere) {
    for (const std::string text :
         {"SELECT a FROM t WHERE a = 5", "DELETE FROM t WHERE a=5", "UPDATE t SET a=7 WHERE b=5"})
        EXPECT_EQ(ShapeFor(text, true).Text(), text);
    EXPECT_EQ(ShapeFor("INSERT INTO t VALUES(5)", true).Text(), "INSERT INTO t VALUES(?)");
}

TEST(Lifting, MoreLiteralsThanAStatementHasParametersStay) {
    std::string text = "INSERT INTO t VALUES(5";
    for (int i = 0; i < 200; ++i)
        text += ",5";
    EXPECT_EQ(ShapeFor(text + ")").LiftedCount(), 0u);
    EXPECT_EQ(ShapeFor("INSERT INTO t VALUES(5)").LiftedCount(), 1u);
}

/// Whether the second text is of the first one's shape, and with which literals.
std::string LiteralsOf(const std::string& first, const std::string& second) {
    const Shape shape = ShapeFor(first);
    std::vector<Literal> literals;
    if (!shape.Matches(second, literals)) return "another shape";
    literals.resize(shape.LiftedCount());
    std::string joined;
    for (const Literal& literal : literals)
        joined += (joined.empty() ? "" : " ") + std::string(literal.text);
    return joined;
}

TEST(Shape, MatchesTextsThatDifferInTheLiftedLiteralsAlone) {
    const std::string insert = "INSERT INTO t VALUES(5,'x',1.5)";
    const std::pair<std::string, std::string> cases[] = {
        {insert, "5 x 1.5"},
        {"INSERT INTO t VALUES(70,'it''s ''',.5)", "70 it''s '' .5"},
        {"INSERT INTO t VALUES(0,'',1E-05)", "0  1E-05"},
        {"INSERT INTO t VALUES('5','x',1.5)", "another shape"},
        {"INSERT INTO t VALUES(5.0,'x',1)", "5.0 x 1"},
        {"INSERT INTO t VALUES(5,'x''',1.5", "another shape"},
        {"INSERT INTO t VALUES(5,'x',1.5))", "another shape"},
        {"INSERT INTO t VALUES(5,'x' ,1.5)", "another shape"},
        {"INSERT INTO t VALUES(-5,'x',1.5)", "another shape"},
        {"INSERT INTO t VALUES(5a,'x',1.5)", "another shape"},
        {"INSERT INTO t VALUES(1234567890123456789,'x',1.5)", "another shape"},
        {"INSERT INTO t VALUES(5,'x,1.5)", "another shape"},
        {"INSERT INTO t VALUES(5,x'41',1.5)", "another shape"},
        {"insert INTO t VALUES(5,'x',1.5)", "another shape"},
        {"", "another shape"},
    };
    for (const auto& [text, literals] : cases)
        EXPECT_EQ(LiteralsOf(insert, text), literals) << text;
}

TEST(Shape, ANumberIsOfOneKindWhereADecimalOneIsNotLifted) {
    const std::string update = "UPDATE t SET a=5,b=-3 WHERE c =7";
    EXPECT_EQ(LiteralsOf(update, "UPDATE t SET a=2.5,b=-3 WHERE c =7"), "2.5 3 7");
    EXPECT_EQ(LiteralsOf(update, "UPDATE t SET a=5,b=-2.5 WHERE c =7"), "another shape");
    EXPECT_EQ(LiteralsOf(update, "UPDATE t SET a=5,b=-3 WHERE c =7.0"), "another shape");
}

TEST(Shape, AFlagInASelectIsOfAnotherShape) {
    const std::string select = "SELECT a FROM t WHERE a =5";
    EXPECT_EQ(LiteralsOf(select, "SELECT a FROM t WHERE a =17"), "17");
    EXPECT_EQ(LiteralsOf(select, "SELECT a FROM t WHERE a =1"), "another shape");
    EXPECT_EQ(LiteralsOf(select, "SELECT a FROM t WHERE a =00"), "another shape");
}

TEST(Shape, WithoutLiftedLiteralsIsTheTextItself) {
    EXPECT_EQ(LiteralsOf("SELECT 5", "SELECT 5"), "");
    EXPECT_EQ(LiteralsOf("SELECT 5", "SELECT 6"), "another shape");
    EXPECT_EQ(LiteralsOf("SELECT 5", "SELECT 5 "), "another shape");
}

}  // namespace
}  // namespace dhRichClient3::dialect

#include "dhRichClient3/dialect/bare_names.h"

#include "dhRichClient3/dialect/outer_select.h"
#include "tests/dhRichClient3/engine_support.h"

#include <gmock/gmock.h>

namespace dhRichClient3 {
namespace {

using support::ErrorOf;
using support::RowsOf;
using ::testing::ElementsAre;

dialect::Catalogue Tables() {
    dialect::Catalogue catalogue;
    for (const auto* table : {"A", "B", "C"})
        catalogue.Add(table, "K", "INTEGER");
    catalogue.Add("A", "X", "REAL qualified_only DEFAULT 0");
    catalogue.Add("B", "X", "REAL");
    catalogue.Add("C", "X", "REAL");
    catalogue.Add("A", "Y", "");
    catalogue.Add("B", "Y", "");
    catalogue.Add("A", "OnlyMarked", "QUALIFIED_ONLY");
    catalogue.Add("A", "Like", "QUALIFIED_ONLYISH");
    return catalogue;
}

std::string Qualified(std::string_view text, const std::vector<std::string>& names = {"X"}) {
    std::vector<dialect::Token> tokens;
    dialect::Tokenize(text, tokens);
    return dialect::QualifyBareNames(text, tokens, names, Tables()).value_or("none");
}

struct Case {
    std::string_view text;
    std::string_view expected;
};

TEST(BareNames, AreQualifiedInTheOutermostSelectOnly) {
    const Case cases[] = {
        {"SELECT X FROM A,B", "SELECT B.X FROM A,B"},
        {"SELECT x FROM A ,\nB , C", "SELECT B.x FROM A ,\nB , C"},
        {"SELECT X FROM C,B", "SELECT C.X FROM C,B"},
        {"SELECT X FROM A,B bb", "SELECT bb.X FROM A,B bb"},
        {"SELECT X FROM A,B AS \"b b\"", "SELECT \"b b\".X FROM A,B AS \"b b\""},
        {"SELECT X FROM A, main.B", "SELECT B.X FROM A, main.B"},
        {"SELECT X FROM A, main.[B] z WHERE 1", "SELECT z.X FROM A, main.[B] z WHERE 1"},
        {"SELECT \"X\" FROM A,B", "SELECT B.\"X\" FROM A,B"},
        {"SELECT DISTINCT X FROM A,B", "SELECT DISTINCT B.X FROM A,B"},
        {"SELECT A.X, X FROM A,B", "SELECT A.X, B.X FROM A,B"},
        {"SELECT 1 FROM A,B WHERE (X - Y)>=K AND 'X'<>\"a\"", "SELECT 1 FROM A,B WHERE (B.X - Y)>=K AND 'X'<>\"a\""},
        {"SELECT 1 FROM A JOIN B ON X = 1 LEFT JOIN C ON X=2",
         "SELECT 1 FROM A JOIN B ON B.X = 1 LEFT JOIN C ON B.X=2"},
        {"SELECT 1 FROM A,B GROUP BY X HAVING max(X)>1 ORDER BY X DESC, K LIMIT 3",
         "SELECT 1 FROM A,B GROUP BY B.X HAVING max(B.X)>1 ORDER BY B.X DESC, K LIMIT 3"},
        {"SELECT X FROM A,B WHERE K IN (SELECT X FROM C)", "SELECT B.X FROM A,B WHERE K IN (SELECT X FROM C)"},
        {"SELECT X FROM A,(SELECT X FROM C) q,B", "SELECT B.X FROM A,(SELECT X FROM C) q,B"},
        {"SELECT X FROM A,B UNION SELECT X FROM C", "SELECT B.X FROM A,B UNION SELECT X FROM C"},
        {"WITH X AS (SELECT X FROM C) SELECT X FROM A,B", "WITH X AS (SELECT X FROM C) SELECT B.X FROM A,B"},
        {"SELECT Y AS X, X FROM A,B ORDER BY X", "SELECT Y AS X, B.X FROM A,B ORDER BY X"},
        {"SELECT Y X FROM A,B WHERE X>0 ORDER BY X+1, X COLLATE NOCASE",
         "SELECT Y X FROM A,B WHERE B.X>0 ORDER BY B.X+1, X COLLATE NOCASE"},
        {"SELECT '---' X, X FROM A,B", "SELECT '---' X, B.X FROM A,B"},
        {"SELECT CASE WHEN X IS NOT DISTINCT FROM X THEN X END c FROM A,B",
         "SELECT CASE WHEN B.X IS NOT DISTINCT FROM B.X THEN B.X END c FROM A,B"},
        {"SELECT x(1), CAST(K AS X), X FROM A,B", "SELECT x(1), CAST(K AS X), B.X FROM A,B"},
        {"SELECT X FROM A JOIN B USING (X)", "SELECT B.X FROM A JOIN B USING (X)"},
        {"SELECT X FROM A --X\n,B;", "SELECT B.X FROM A --X\n,B;"},
    };
    for (const auto& [text, expected] : cases)
        EXPECT_EQ(Qualified(text), expected);
}

TEST(BareNames, AreReadInWhateverIsLeftOfAText) {
    const std::string_view whole =
        "SELECT X, (SELECT X FROM (B)) s, max(X) AS m FROM A a, (SELECT X FROM C) c JOIN B ON (B.K = X) WHERE X IN "
        "(SELECT 1) AND X = 'x' GROUP BY X HAVING X IS DISTINCT FROM 5 ORDER BY X, m LIMIT 5";
    for (std::size_t length = 0; length <= whole.size(); ++length) {
        std::vector<dialect::Token> tokens;
        dialect::Tokenize(whole.substr(0, length), tokens);
        const auto select = dialect::ReadOuterSelect(tokens);
        for (const auto& item : select.items) {
            EXPECT_LT(item.begin, item.end);
            EXPECT_LE(item.end, tokens.size()) << whole.substr(0, length);
        }
        for (const std::size_t name : select.bareNames)
            EXPECT_LT(name, tokens.size());
        Qualified(whole.substr(0, length));
    }
}

TEST(BareNames, ItemsKeepTheirColumnNames) {
    const Case cases[] = {
        {"SELECT max(X), X FROM A,B", "SELECT max(B.X) AS \"max(X)\", B.X FROM A,B"},
        {"SELECT X+\"K\", (X) FROM A,B", "SELECT B.X+\"K\" AS \"X+\"\"K\"\"\", (B.X) FROM A,B"},
        {"SELECT max(X) m, -X AS n, Y+1 FROM A,B", "SELECT max(B.X) m, -B.X AS n, Y+1 FROM A,B"},
        {"SELECT DISTINCT X - 1 FROM A,B", "SELECT DISTINCT B.X - 1 AS \"X - 1\" FROM A,B"},
    };
    for (const auto& [text, expected] : cases)
        EXPECT_EQ(Qualified(text), expected);
}

TEST(BareNames, SeveralNamesAreQualifiedAtOnce) {
    EXPECT_EQ(Qualified("SELECT x,y FROM A,B ORDER BY Y", {"X", "Y"}), "SELECT B.x,A.y FROM A,B ORDER BY A.Y");
}

TEST(BareNames, NothingToQualifyGivesNothing) {
    const std::string_view texts[] = {
        "SELECT X FROM A",      // marked
        "SELECT X FROM D,E",    // unknown tables
        "SELECT A.X FROM A,B",  // nowhere bare
        "SELECT 1 FROM A,B WHERE K IN (SELECT X FROM C)",
        "UPDATE B SET X=1",
        "",
    };
    for (const auto text : texts)
        EXPECT_EQ(Qualified(text), "none") << text;
}

TEST(BareNames, TheMarkIsAWordOfItsOwn) {
    const auto tables = Tables();
    EXPECT_FALSE(tables.Offers("A", "X"));
    EXPECT_FALSE(tables.Offers("a", "onlymarked"));
    EXPECT_TRUE(tables.Offers("a", "LIKE"));
    EXPECT_TRUE(tables.Offers("b", "x"));
    EXPECT_FALSE(tables.Offers("b", "nothing"));
}

TEST(BareNames, OnlyTheRefusalOfABareNameNamesIt) {
    EXPECT_EQ(dialect::AmbiguousName("ambiguous column name: X"), "X");
    EXPECT_EQ(dialect::AmbiguousName("ambiguous column name: T.X"), std::nullopt);
    EXPECT_EQ(dialect::AmbiguousName("no such column: X"), std::nullopt);
    EXPECT_EQ(dialect::AmbiguousName(""), std::nullopt);
}

struct BareNamesOnTheConnection : ::testing::Test {
    Zontara::Ref<Connection> connection = support::InMemory(
        "CREATE TABLE Imputacion(K INTEGER PRIMARY KEY, ID_Activo TEXT, Acumulado REAL QUALIFIED_ONLY DEFAULT 0, "
        "Limite INT);"
        "CREATE TABLE Activo(ID_Activo TEXT PRIMARY KEY, Acumulado REAL, Limite INT);"
        "INSERT INTO Imputacion VALUES(1,'P1',5,10),(2,'P2',6,20);"
        "INSERT INTO Activo VALUES('P1',100,1),('P2',200,2);");
};

TEST_F(BareNamesOnTheConnection, MeanTheFirstTableThatDoesNotMarkThem) {
    EXPECT_THAT(RowsOf(connection,
                       "SELECT Acumulado, Limite FROM Imputacion, Activo "
                       "WHERE Imputacion.ID_Activo = Activo.ID_Activo and Limite > 10"),
                ElementsAre("200|20"));
}

TEST_F(BareNamesOnTheConnection, QualifiedNamesStillReachTheMarkedColumn) {
    EXPECT_THAT(RowsOf(connection,
                       "SELECT Imputacion.Acumulado, Acumulado FROM Imputacion, Activo "
                       "WHERE Imputacion.ID_Activo = Activo.ID_Activo ORDER BY K"),
                ElementsAre("5|100", "6|200"));
}

TEST_F(BareNamesOnTheConnection, ColumnNamesAreThoseOfTheTextAsItCame) {
    const auto rows = support::Opened(
        connection,
        "SELECT acumulado, max(acumulado) FROM Imputacion, Activo WHERE Imputacion.ID_Activo=Activo.ID_Activo");
    EXPECT_EQ(rows->NombreColumna(0), "Acumulado");
    EXPECT_EQ(rows->NombreColumna(1), "max(acumulado)");
    EXPECT_EQ(rows->Valor("max(acumulado)"), Zontara::Value(200.0));
}

TEST_F(BareNamesOnTheConnection, AreFoundOutOncePerShape) {
    const auto text = [](int k) {
        return "SELECT Acumulado, Limite FROM Imputacion i, Activo a WHERE i.ID_Activo = a.ID_Activo and K =" +
               std::to_string(k);
    };
    EXPECT_THAT(RowsOf(connection, text(1)), ElementsAre("100|10"));
    const auto before = connection->Compilations();
    EXPECT_THAT(RowsOf(connection, text(2)), ElementsAre("200|20"));
    EXPECT_EQ(connection->Compilations() - before, 1);
    EXPECT_THAT(RowsOf(connection, text(2)), ElementsAre("200|20"));
    EXPECT_EQ(connection->Compilations() - before, 1);
}

TEST_F(BareNamesOnTheConnection, OtherRefusalsStand) {
    const std::pair<std::string, std::string> cases[] = {
        {"SELECT Acumulado FROM Imputacion i, Imputacion j", "ambiguous column name: Acumulado"},
        {"SELECT 1 FROM Activo WHERE 1 IN (SELECT Limite FROM Imputacion, Activo)", "ambiguous column name: Limite"},
        {"SELECT Ninguna FROM Imputacion, Activo", "no such column: Ninguna"},
        {"SELECT Activo.K FROM Imputacion, Activo", "no such column: Activo.K"},
    };
    for (const auto& [text, description] : cases) {
        const auto error = ErrorOf([&] { RowsOf(connection, text); });
        EXPECT_EQ(error.number, support::kError) << text;
        EXPECT_EQ(error.description, description) << text;
    }
}

TEST_F(BareNamesOnTheConnection, ChangesAreNotTouched) {
    const auto error =
        ErrorOf([&] { connection->Ejecutar("INSERT INTO Activo SELECT 'P9', Limite, 1 FROM Imputacion, Activo"); });
    EXPECT_EQ(error.number, support::kError);
    EXPECT_EQ(error.description, "ambiguous column name: Limite");
    connection->Ejecutar("UPDATE Imputacion SET Acumulado = 7 WHERE K =1");
    EXPECT_THAT(RowsOf(connection, "SELECT Acumulado FROM Imputacion ORDER BY K"), ElementsAre("7", "6"));
    EXPECT_THAT(RowsOf(connection, "SELECT count(*) FROM Activo"), ElementsAre("2"));
}

TEST_F(BareNamesOnTheConnection, ColumnsAreReadAgainAfterAScript) {
    connection->RunScript(
        "CREATE TABLE Otra(ID_Activo TEXT, Limite INT, Nueva TEXT); INSERT INTO Otra VALUES('P1',77,'n');"
        "ALTER TABLE Activo ADD COLUMN Nueva TEXT DEFAULT 'a'");
    EXPECT_THAT(RowsOf(connection, "SELECT Limite, Nueva FROM Otra, Activo WHERE Otra.ID_Activo = Activo.ID_Activo"),
                ElementsAre("77|n"));
}

TEST_F(BareNamesOnTheConnection, ColumnsAreReadAgainAfterARollbackOfAScript) {
    const std::string text =
        "SELECT Limite FROM Imputacion, Activo WHERE Imputacion.ID_Activo = Activo.ID_Activo ORDER BY K";
    connection->IniciarTrans("");
    connection->RunScript("ALTER TABLE Imputacion DROP COLUMN Limite");
    EXPECT_THAT(RowsOf(connection, text), ElementsAre("1", "2"));
    connection->RevertirTrans("", 0);
    EXPECT_THAT(RowsOf(connection, text), ElementsAre("10", "20"));
}

TEST_F(BareNamesOnTheConnection, ABrokenViewDoesNotKeepTheRestFromBeingRead) {
    connection->RunScript("CREATE VIEW v AS SELECT * FROM gone");
    EXPECT_THAT(RowsOf(connection, "SELECT Limite FROM Imputacion i, Activo a WHERE i.ID_Activo=a.ID_Activo AND K=1"),
                ElementsAre("10"));
}

}  // namespace
}  // namespace dhRichClient3

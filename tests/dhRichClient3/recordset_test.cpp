#include "dhRichClient3/recordset.h"

#include "dhRichClient3/row_store.h"
#include "tests/dhRichClient3/engine_support.h"

#include <gmock/gmock.h>

namespace dhRichClient3 {
namespace {

using support::ErrorOf;
using support::Opened;
using support::RowsOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using Zontara::Null;
using Zontara::Ref;
using Zontara::Value;

struct RecordsetTest : ::testing::Test {
    Ref<Connection> connection = support::InMemory(
        "CREATE TABLE t(K INTEGER PRIMARY KEY, Nombre TEXT); INSERT INTO t VALUES(1,'one'),(2,'two'),(3,NULL);");
    Ref<Zontara::Recordset> rows = Opened(connection, "SELECT K, Nombre FROM t ORDER BY K");
    Ref<Zontara::Recordset> none = Opened(connection, "SELECT K, Nombre FROM t WHERE K =9");
};

TEST_F(RecordsetTest, StandsOnTheFirstRowAndEndsBehindTheLast) {
    EXPECT_EQ(rows->TotalRegistros(), 3);
    EXPECT_EQ(rows->Valor("K"), Value(1));
    rows->MoverSiguiente();
    EXPECT_EQ(rows->Valor("Nombre"), Value("two"));
    rows->MoverSiguiente();
    EXPECT_FALSE(rows->FinDeDatos());
    rows->MoverSiguiente();
    EXPECT_TRUE(rows->FinDeDatos());
    rows->MoverSiguiente();
    EXPECT_TRUE(rows->FinDeDatos());
    rows->MoverPrimero();
    EXPECT_FALSE(rows->FinDeDatos());
    EXPECT_EQ(rows->Valor("K"), Value(1));
}

TEST_F(RecordsetTest, ValuesHaveTheKindOfWhatIsStored) {
    const std::pair<std::string, Value> cases[] = {
        {"SELECT 2147483647", 2147483647},
        {"SELECT -2147483648", std::numeric_limits<std::int32_t>::min()},
        {"SELECT 2147483648", 2147483648.0},
        {"SELECT -2147483649", -2147483649.0},
        {"SELECT 9007199254740993", 9007199254740992.0},
        {"SELECT 2.5", 2.5},
        {"SELECT 2.0", 2.0},
        {"SELECT 'a''ñ'", "a'ñ"},
        {"SELECT ''", ""},
        {"SELECT NULL", Null{}},
        {"SELECT x'414200'", std::string("AB\0", 3)},
        {"SELECT x''", ""},
    };
    for (const auto& [sql, value] : cases) {
        const auto opened = Opened(connection, sql);
        EXPECT_EQ(opened->ValorEn(0), value) << sql;
        EXPECT_EQ(opened->ValorEn(0).kind(), value.kind()) << sql;
    }
}

TEST_F(RecordsetTest, WithNoRowsMovesWithoutErrorAndReadsNothing) {
    none->MoverPrimero();
    EXPECT_TRUE(none->FinDeDatos());
    none->MoverSiguiente();
    EXPECT_EQ(none->TotalRegistros(), 0);
    EXPECT_EQ(none->TotalColumnas(), 2);
    EXPECT_EQ(none->NombreColumna(1), "Nombre");
    EXPECT_EQ(ErrorOf([&] { none->Valor("K"); }).number, 3021);
    EXPECT_EQ(ErrorOf([&] { none->LosCampos()->Valor("K"); }).number, 3021);
    EXPECT_EQ(ErrorOf([&] { none->ValorEn(0); }).number, 3021);
    const auto field = none->LosCampos()->Item("K");
    EXPECT_EQ(ErrorOf([&] { field->Valor(); }).number, 3021);
}

TEST_F(RecordsetTest, BehindTheLastRowIsNoCurrentRow) {
    while (!rows->FinDeDatos())
        rows->MoverSiguiente();
    EXPECT_EQ(ErrorOf([&] { rows->Valor("K"); }).number, 3021);
    EXPECT_EQ(ErrorOf([&] { rows->LosCampos()->Item("Nombre")->Valor(); }).number, 3021);
}

TEST_F(RecordsetTest, AnUnknownFieldIsNamedInTheError) {
    const std::function<void()> attempts[] = {
        [&] { rows->Valor("Apellido"); },
        [&] { rows->LosCampos()->Valor("Apellido"); },
        [&] { rows->LosCampos()->Item("Apellido"); },
        [&] { none->LosCampos()->Item("Apellido"); },
    };
    for (const auto& attempt : attempts) {
        const auto error = ErrorOf(attempt);
        EXPECT_EQ(error.number, 3265);
        EXPECT_THAT(error.description, HasSubstr("Apellido"));
        EXPECT_EQ(error.source, "dhRichClient3");
    }
    EXPECT_EQ(ErrorOf([&] { rows->ValorEn(2); }).number, 3265);
    EXPECT_EQ(ErrorOf([&] { rows->ValorEn(-1); }).number, 3265);
    EXPECT_EQ(ErrorOf([&] { rows->NombreColumna(2); }).number, 3265);
    EXPECT_EQ(ErrorOf([&] { rows->LosCampos()->Item(Null{}); }).number, 94);
}

TEST_F(RecordsetTest, FieldsAreFoundWithoutRegardToCase) {
    for (const auto* name : {"nombre", "NOMBRE", "Nombre"})
        EXPECT_EQ(rows->Valor(name), Value("one")) << name;
    EXPECT_EQ(rows->LosCampos()->Item("NOMBRE")->Valor(), Value("one"));
}

TEST_F(RecordsetTest, OfTwoColumnsOfOneNameTheFirstIsMeant) {
    const auto both = Opened(connection, "SELECT 1 AS a, 2 AS A");
    EXPECT_EQ(both->Valor("A"), Value(1));
    EXPECT_EQ(both->ValorEn(1), Value(2));
}

TEST_F(RecordsetTest, FieldsAreTheSameObjectsAndFollowTheCursor) {
    const auto fields = rows->LosCampos();
    const auto field = fields->Item("Nombre");
    EXPECT_EQ(rows->LosCampos(), fields);
    EXPECT_EQ(fields->Item("nombre"), field);
    rows->MoverSiguiente();
    EXPECT_EQ(field->Valor(), Value("two"));
    EXPECT_EQ(fields->Valor("K"), Value(2));
    rows->MoverSiguiente();
    EXPECT_TRUE(field->Valor().IsNull());
}

TEST_F(RecordsetTest, RowsOutliveRecordsetAndConnection) {
    const auto fields = rows->LosCampos();
    const auto field = fields->Item("Nombre");
    rows->MoverSiguiente();
    rows.reset();
    none.reset();
    connection.reset();
    EXPECT_EQ(field->Valor(), Value("two"));
    EXPECT_EQ(fields->Valor("K"), Value(2));
}

TEST_F(RecordsetTest, StaysAsItWasWhenTheTableChanges) {
    connection->Ejecutar("DELETE FROM t");
    EXPECT_EQ(rows->TotalRegistros(), 3);
    EXPECT_EQ(rows->Valor("Nombre"), Value("one"));
}

TEST_F(RecordsetTest, OpeningAgainShowsTheNewRowsThroughTheSameFields) {
    const auto fields = rows->LosCampos();
    const auto old = fields->Item("Nombre");
    rows->MoverSiguiente();
    rows->ConexionActiva(connection);
    rows->TextoSQL("SELECT Nombre||'!' AS Nombre FROM t WHERE K =1");
    rows->Abrir("", Zontara::Absent{}, 0);
    EXPECT_EQ(rows->TotalRegistros(), 1);
    EXPECT_EQ(rows->LosCampos(), fields);
    EXPECT_EQ(fields->Valor("Nombre"), Value("one!"));
    EXPECT_EQ(fields->Item("Nombre")->Valor(), Value("one!"));
    EXPECT_EQ(old->Valor(), Value("two"));
}

TEST_F(RecordsetTest, AFailedOpeningLeavesTheRowsThatWereThere) {
    rows->MoverSiguiente();
    rows->ConexionActiva(connection);
    rows->TextoSQL("SELECT wrong FROM t");
    EXPECT_EQ(ErrorOf([&] { rows->Abrir("", Zontara::Absent{}, 0); }).number, support::kError);
    EXPECT_EQ(rows->Valor("Nombre"), Value("two"));
}

TEST_F(RecordsetTest, WithoutAConnectionCannotBeOpened) {
    const auto fresh = NewRecordset();
    EXPECT_EQ(fresh->TotalRegistros(), 0);
    EXPECT_TRUE(fresh->FinDeDatos());
    EXPECT_EQ(fresh->TypeName(), "Recordset");
    fresh->TextoSQL("SELECT 1");
    EXPECT_EQ(ErrorOf([&] { fresh->Abrir("", Zontara::Absent{}, 0); }).number, 91);
    EXPECT_EQ(ErrorOf([&] { fresh->Valor("K"); }).number, 3265);
}

/// A connection around another, as a tracer is.
class Wrapper : public Zontara::Conexion, public RowSource {
public:
    explicit Wrapper(Ref<Connection> inner) : inner_(std::move(inner)) {}
    void IniciarTrans(const std::string& texto) override { inner_->IniciarTrans(texto); }
    void ConfirmarTrans(const std::string& texto) override { inner_->ConfirmarTrans(texto); }
    void RevertirTrans(const std::string& texto, std::int32_t modo) override { inner_->RevertirTrans(texto, modo); }
    void Ejecutar(const std::string& sql) override { inner_->Ejecutar(sql); }
    std::shared_ptr<const RowStore> Fetch(const std::string& sql) override {
        seen.push_back(sql);
        return inner_->Fetch(sql);
    }
    std::vector<std::string> seen;

private:
    Ref<Connection> inner_;
};

TEST_F(RecordsetTest, TakesItsRowsThroughAWrapperOfTheConnection) {
    const auto wrapper = std::make_shared<Wrapper>(connection);
    EXPECT_THAT(RowsOf(wrapper, "SELECT K FROM t"), ElementsAre("1", "2", "3"));
    EXPECT_THAT(wrapper->seen, ElementsAre("SELECT K FROM t"));
}

TEST_F(RecordsetTest, AChangeThatReturnsRowsIsDoneAndRead) {
    EXPECT_THAT(RowsOf(connection, "DELETE FROM t WHERE K<3 RETURNING K"), ElementsAre("1", "2"));
    EXPECT_THAT(RowsOf(connection, "SELECT K FROM t"), ElementsAre("3"));
}

TEST_F(RecordsetTest, TheDialectOfTheStatementsIsAccepted) {
    const std::pair<std::string, std::string> cases[] = {
        {"SELECT substring('PA01',1,1)", "P"},
        {"SELECT ltrim('0012','0')", "12"},
        {"SELECT ltrim(5512,5)", "12"},
        {"SELECT strftime('%Y%m%d','2026-03-05')", "20260305"},
        {"SELECT strftime('%Y','')", "NULL"},
        {"SELECT strftime('%Y%m','2026-03-05')", "202603"},
        {"SELECT strftime('%W','2026-03-05','weekday 1')", "10"},
        {"SELECT count(*) FROM t WHERE K not in (3,4,5,7)", "2"},
        {"SELECT max(K), Nombre FROM t WHERE Nombre like 'O%' group by 2 order by K DESC limit 10", "1|one"},
        {"SELECT '---' EjecutorGama", "---"},
    };
    for (const auto& [sql, row] : cases)
        EXPECT_THAT(RowsOf(connection, sql), ElementsAre(row)) << sql;
}

TEST(RowStoreTest, CellsAreSmallAndATextThatRepeatsTheOneAboveItCostsNothing) {
    RowStore store({"a", "b", "c"});
    for (int i = 0; i < 1000; ++i) {
        store.AddInteger(i);
        store.AddText("0123456789");
        store.AddText("row " + std::to_string(1000 + i));
    }
    EXPECT_EQ(store.Rows(), 1000u);
    EXPECT_EQ(store.Bytes(), 3000u * 9 + (4 + 10) + 1000u * (4 + 8));
    EXPECT_EQ(store.At(0, 1), Value("0123456789"));
    EXPECT_EQ(store.At(999, 1), Value("0123456789"));
    EXPECT_EQ(store.At(998, 2), Value("row 1998"));
}

TEST(RowStoreTest, GivesBackEveryCellOfManyRowsAsItWasAdded) {
    RowStore store({"text", "whole", "real", "null"});
    const std::string large(300'000, 'x');
    const auto textOf = [&](int row) {
        return row % 500 == 0 ? large : std::string(static_cast<std::size_t>(row % 40), 'a');
    };
    for (int row = 0; row < 3000; ++row) {
        store.AddText(textOf(row));
        store.AddInteger(row % 2 == 0 ? row : std::int64_t{row} << 32);
        store.AddReal(row / 4.0);
        store.AddNull();
    }
    for (int row = 0; row < 3000; ++row) {
        const auto at = static_cast<std::size_t>(row);
        ASSERT_EQ(store.At(at, 0), Value(textOf(row))) << row;
        ASSERT_EQ(store.At(at, 1), row % 2 == 0 ? Value(row) : Value(row * 4294967296.0)) << row;
        ASSERT_EQ(store.At(at, 2), Value(row / 4.0)) << row;
        ASSERT_TRUE(store.At(at, 3).IsNull()) << row;
    }
}

TEST(RowStoreTest, FindsTheFirstColumnOfANameInWhateverOrderNamesAreAskedFor) {
    const RowStore store({"a", "b", "A", "ab", ""});
    for (int round = 0; round < 3; ++round) {
        EXPECT_EQ(store.Find("B"), 1u);
        EXPECT_EQ(store.Find("A"), 0u);
        EXPECT_EQ(store.Find("a"), 0u);
        EXPECT_EQ(store.Find("AB"), 3u);
        EXPECT_EQ(store.Find(""), 4u);
        EXPECT_EQ(store.Find("c"), RowStore::kNone);
        EXPECT_EQ(store.Find("Ab"), 3u);
    }
    EXPECT_EQ(RowStore().Find("a"), RowStore::kNone);
}

TEST(RowStoreTest, FindsColumnsBeyondTheFirstHundreds) {
    std::vector<std::string> names;
    for (int i = 0; i < 600; ++i)
        names.push_back("c" + std::to_string(i));
    const RowStore store(names);
    for (int round = 0; round < 2; ++round) {
        for (std::size_t i = 0; i < names.size(); ++i)
            ASSERT_EQ(store.Find(names[i]), i);
    }
}

}  // namespace
}  // namespace dhRichClient3

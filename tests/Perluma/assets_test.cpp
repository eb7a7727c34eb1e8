#include "Perluma/assets.h"

#include "tests/Perluma/session_fixture.h"

namespace {

using support::ErrorOf;
using testing::ElementsAre;
using Zontara::Value;

class AssetsTest : public SessionTest {
protected:
    AssetsTest() {
        Run("INSERT INTO Activo (ID_Activo, Descripcion, estatus_actual, sc_proyecto, Acumulado_Lectura, "
            "Ultima_Lectura)"
            " VALUES ('B2', 'lathe', 3, 5, 20.5, 8), ('A2', 'pump', 0, 5, 700.25, 9), ('a3', 'fan', 1, 6, 1, 1),"
            " ('A10', 'crane', 4, 5, 2, 2), ('B1', 'press', 2, NULL, 21.5, 3), ('A''4', 'quote', 0, 7, 4, 4)");
    }
    std::vector<std::string> Selected(const std::string& chapter, bool inService, std::int32_t project,
                                      std::int32_t zero = 0) {
        std::vector<std::string> keys;
        const auto rows = assets->SeleccionarActivos(chapter, zero, zero, inService, project);
        for (; !rows->FinDeDatos(); rows->MoverSiguiente())
            keys.push_back(Zontara::ToText(rows->Valor("ID_Activo")));
        return keys;
    }

    Zontara::Ref<Zontara::ServicioActivos> assets = provider->NewServicioActivos();
};

TEST_F(AssetsTest, AnAssetIsFoundWithTheColumnsNamed) {
    const auto rows = assets->BuscarActivo("A2", "Acumulado_Lectura,Descripcion");
    EXPECT_EQ(rows->TotalRegistros(), 1);
    EXPECT_EQ(rows->TotalColumnas(), 2);
    EXPECT_EQ(rows->Valor("Acumulado_Lectura"), Value(700.25));
    EXPECT_EQ(rows->Valor("Descripcion"), Value("pump"));
}

TEST_F(AssetsTest, WithoutColumnsAllAreGiven) {
    EXPECT_EQ(assets->BuscarActivo("A2", "")->Valor("sc_proyecto"), Value(5));
}

TEST_F(AssetsTest, AnUnknownAssetGivesNoRowsAndAQuoteInAKeyBreaksNothing) {
    EXPECT_EQ(assets->BuscarActivo("Z", "ID_Activo")->TotalRegistros(), 0);
    EXPECT_EQ(assets->BuscarActivo("a2", "ID_Activo")->TotalRegistros(), 0);
    EXPECT_EQ(assets->BuscarActivo("A'4", "Descripcion")->Valor("Descripcion"), Value("quote"));
}

TEST_F(AssetsTest, AnUnknownColumnIsTheEnginesError) {
    EXPECT_EQ(ErrorOf([&] { assets->BuscarActivo("A2", "nada"); }).number, Zontara::vbObjectError + 1);
}

TEST_F(AssetsTest, TheSelectionOfALaunchIsOrderedByKeyAndHoldsWhatALaunchReads) {
    const auto rows = assets->SeleccionarActivos("", 0, 0, false, 0);
    EXPECT_EQ(rows->Valor("ID_Activo"), Value("A'4"));
    rows->MoverSiguiente();
    EXPECT_EQ(rows->Valor("ID_Activo"), Value("A10"));
    EXPECT_EQ(rows->Valor("Acumulado_Lectura"), Value(2.0));
    EXPECT_THAT(Selected("", false, 0), ElementsAre("A'4", "A10", "A2", "B1", "B2", "a3"));
}

struct SelectionCase {
    const char* label;
    const char* chapter;
    bool inService;
    std::int32_t project;
    std::vector<std::string> expected;
};

TEST_F(AssetsTest, EachArgumentOfTheSelectionLimitsIt) {
    const std::vector<SelectionCase> cases = {
        {"all in service", "", true, 0, {"A'4", "A2", "B1", "a3"}},
        {"chapter", "A", false, 0, {"A'4", "A10", "A2"}},
        {"chapter, case matters", "a", false, 0, {"a3"}},
        {"chapter of two characters", "A2", false, 0, {}},
        {"chapter that is a quote", "'", false, 0, {}},
        {"project", "", false, 5, {"A10", "A2", "B2"}},
        {"project below zero limits nothing", "B", false, -5, {"B1", "B2"}},
        {"all three", "A", true, 5, {"A2"}},
    };
    for (const SelectionCase& each : cases) {
        SCOPED_TRACE(each.label);
        EXPECT_EQ(Selected(each.chapter, each.inService, each.project), each.expected);
    }
}

TEST_F(AssetsTest, OnlyTheFourStatesAreOutOfService) {
    Run("DELETE FROM Activo; WITH RECURSIVE n(i) AS (SELECT 0 UNION ALL SELECT i + 1 FROM n WHERE i < 9)"
        " INSERT INTO Activo (ID_Activo, estatus_actual) SELECT i, i FROM n");
    EXPECT_THAT(Selected("", true, 0), ElementsAre("0", "1", "2", "6", "8", "9"));
}

TEST_F(AssetsTest, TheTwoNumbersBetweenLimitNothing) { EXPECT_EQ(Selected("", true, 0, 17), Selected("", true, 0)); }

TEST_F(AssetsTest, AnAccumulatedReadingThatIsSetIsRead) {
    EXPECT_EQ(assets->FijarAcumulado("A2", 0), Value());
    EXPECT_EQ(assets->AcumuladoActual("A2"), 0);
    assets->FijarAcumulado("A2", 4000);
    EXPECT_EQ(assets->AcumuladoActual("A2"), 4000);
    EXPECT_THAT(Rows("SELECT Acumulado_Lectura, Ultima_Lectura FROM Activo WHERE ID_Activo = 'A2'"),
                ElementsAre("4000|9"));
    EXPECT_EQ(assets->AcumuladoActual("B1"), 22);
}

TEST_F(AssetsTest, AnAccumulatedReadingSeesWhatStatementsWroteAndRoundsHalfToEven) {
    Run("UPDATE Activo SET Acumulado_Lectura = Acumulado_Lectura +0.25 WHERE ID_Activo = 'A2'");
    EXPECT_EQ(assets->AcumuladoActual("A2"), 700);
    EXPECT_EQ(assets->AcumuladoActual("B2"), 20);
    EXPECT_EQ(assets->AcumuladoActual("B1"), 22);
}

TEST_F(AssetsTest, AnUnknownAssetReadsZeroAndOneWithoutReadingToo) {
    EXPECT_EQ(assets->AcumuladoActual("Z"), 0);
    Run("UPDATE Activo SET Acumulado_Lectura = NULL WHERE ID_Activo = 'A2'");
    EXPECT_EQ(assets->AcumuladoActual("A2"), 0);
}

TEST_F(AssetsTest, AReadingBeyondInt32IsAnOverflow) {
    Run("UPDATE Activo SET Acumulado_Lectura = 3000000000 WHERE ID_Activo = 'A2'");
    EXPECT_EQ(ErrorOf([&] { assets->AcumuladoActual("A2"); }).number,
              static_cast<std::int32_t>(Zontara::RunTimeError::Overflow));
}

TEST_F(AssetsTest, AWholeReadingAndItsNoteHaveColumnsOfTheirOwn) {
    EXPECT_EQ(assets->FijarLectura("A2", 100), Value());
    EXPECT_EQ(assets->AnotarLectura("A2", "d'oil"), Value());
    EXPECT_THAT(Rows("SELECT Ultima_Lectura, Acumulado_Lectura, Activo_Lectura_Entera, Activo_Nota_Lectura FROM Activo"
                     " WHERE ID_Activo = 'A2'"),
                ElementsAre("9|700.25|100|d'oil"));
    assets->AnotarLectura("A2", "");
    EXPECT_THAT(Rows("SELECT Activo_Nota_Lectura FROM Activo WHERE ID_Activo = 'A2'"), ElementsAre(""));
}

TEST_F(AssetsTest, WritingToAnUnknownAssetChangesNothing) {
    const auto before = Rows("SELECT * FROM Activo");
    assets->FijarAcumulado("Z", 1);
    assets->FijarLectura("Z", 1);
    assets->AnotarLectura("Z", "x");
    EXPECT_EQ(Rows("SELECT * FROM Activo"), before);
}

TEST_F(AssetsTest, TheCallersRollbackUndoesEverything) {
    const auto before = Rows("SELECT * FROM Activo");
    Begin();
    assets->FijarAcumulado("A2", 1);
    assets->FijarLectura("A2", 2);
    assets->AnotarLectura("A2", "x");
    EXPECT_NE(Rows("SELECT * FROM Activo"), before);
    EXPECT_TRUE(connection->InTransaction());
    Rollback();
    EXPECT_EQ(Rows("SELECT * FROM Activo"), before);
}

}  // namespace

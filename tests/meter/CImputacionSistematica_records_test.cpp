#include "frame/Libreria.h"
#include "meter/CImputacionSistematica.h"
#include "tests/meter/meter_test.h"

using namespace Zontara;
using namespace support;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

class CImputacionSistematicaRecordsTest : public MeterTest {
protected:
    CImputacionSistematicaRecordsTest() { AddAsset("A1", "500"); }

    std::int32_t NewOf(const std::string& asset, std::int32_t limit = 200) {
        return imputaciones->Nuevo(asset, 30, "01/03/2026", 0, 9, "2026-03-02", "31.12.2026", 111, 222, 900,
                                   "2026-02-01", "3-3-2026", "alta", limit);
    }
    std::vector<std::string> Assignments() {
        return world.Rows(
            "SELECT SC_Imputacion_Sistematica, ID_Activo, SC_Gama, Anulada, Lectura_Limite,"
            " Ultimo_Acumulado FROM Imputacion_Sistematica ORDER BY 1");
    }
    int CatalogueNotices() { return imputaciones->CatalogoModificado()->Total(); }
};

TEST_F(CImputacionSistematicaRecordsTest, NuevoWritesOneRowThatCountsFromNowAndThenSendsANotice) {
    EXPECT_EQ(NewOf("A1"), 1);
    EXPECT_THAT(world.Story(),
                ElementsAre("begin", "key Imputacion_Sistematica", "service ServicioActivos.AcumuladoActual",
                            "sql "
                            "  INSERT Into Imputacion_Sistematica (SC_Imputacion_Sistematica ,ID_Activo ,SC_Gama "
                            ",Fecha_Imputacion ,Anulada ,SC_Usuario ,Fecha_Inicio ,Fecha_Fin ,Aproximacion_Lectura "
                            ",Fecha_Ultima_Modificacion ,Causa_Modificacion,Lectura_Limite,ultimo_acumulado ) VALUES "
                            "(1,'A1',30,'2026-03-01',0,9,'2026-03-02','2026-12-31',900,'2026-03-03','alta',200,500)",
                            "commit", "notice "));
    EXPECT_THAT(
        world.Rows("SELECT * FROM Imputacion_Sistematica"),
        ElementsAre("1|A1|30|2026-03-01|0|9|2026-03-02|2026-12-31|900|2026-03-03|alta|200|500|NULL|1|NULL|0|0"));
    EXPECT_EQ(imputaciones->CatalogoModificado()->Elemento(1), "");
    EXPECT_EQ(Notices(), (std::vector<int>{0, 0, 1}));
    EXPECT_EQ(world.Depth(), 0);
}

TEST_F(CImputacionSistematicaRecordsTest, NuevoIsNotDueBeforeItsIntervalIsUsedUp) {
    const std::int32_t key = NewOf("A1", 200);
    EXPECT_FALSE(imputaciones->ActivoNecesitaMantenimiento("A1", key));
    imputaciones->ActualizarAcumulado("A1", 1, {}, 199, 199);
    EXPECT_FALSE(imputaciones->ActivoNecesitaMantenimiento("A1", key));
    imputaciones->ActualizarAcumulado("A1", 1, {}, 1, 200);
    EXPECT_TRUE(imputaciones->ActivoNecesitaMantenimiento("A1", key));
}

TEST_F(CImputacionSistematicaRecordsTest, NuevoRoundsTheReadingAndTakesZeroForAnUnknownAsset) {
    AddAsset("A2", "699.5");
    AddAsset("A3", "698.5");
    EXPECT_EQ(Reference(NewOf("A2")), "700");
    EXPECT_EQ(Reference(NewOf("A3")), "698");
    EXPECT_EQ(Reference(NewOf("NONE")), "0");
}

TEST_F(CImputacionSistematicaRecordsTest, NuevoStoresATextThatIsNoDateAsItCame) {
    imputaciones->Nuevo("A1", 30, "", 7, 9, "pronto", "32/13/2026", 0, 0, 0, "", "", "", 200);
    EXPECT_THAT(world.Rows("SELECT Fecha_Imputacion, Fecha_Inicio, Fecha_Fin, Fecha_Ultima_Modificacion, Anulada"
                           " FROM Imputacion_Sistematica"),
                ElementsAre("|pronto|32/13/2026||7"));
}

TEST_F(CImputacionSistematicaRecordsTest, NuevoInsideATransactionCommitsNothing) {
    Libreria::IniciarTransaccion();
    NewOf("A1");
    EXPECT_EQ(world.Depth(), 1);
    Libreria::AbortarTransaccion();
    EXPECT_THAT(Assignments(), IsEmpty());
}

TEST_F(CImputacionSistematicaRecordsTest, AQuoteInATextBreaksTheStatementAndStoresNothing) {
    AddAssignment({7, "A1", 1000});
    const std::vector<std::string> before = Stored();
    const struct {
        const char* label;
        std::function<void()> work;
        int depth;
    } cases[] = {
        {"asset of Nuevo", [&] { NewOf("A'1"); }, 1},
        {"cause of Nuevo", [&] { imputaciones->Nuevo("A1", 30, "", 0, 9, "", "", 0, 0, 0, "", "", "it's", 200); }, 1},
        {"asset of Salvar", [&] { imputaciones->Salvar(7, "A'1", 30, "", 0, 9, "", "", 0, 200); }, 0},
        {"asset of AnularPorEquipo", [&] { imputaciones->AnularPorEquipo("A'1"); }, 0},
        {"asset of a reading", [&] { imputaciones->ActualizarAcumulado("A'1", 1, {}, 1, 1); }, 0},
        {"asset of a selection", [&] { imputaciones->SeleccionarPorEquipo("A'1"); }, 0},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.label);
        EXPECT_EQ(ErrorOf(c.work).number, Refused(1));
        EXPECT_EQ(world.Depth(), c.depth);
        world.Abort();
        EXPECT_EQ(Stored(), before);
        EXPECT_EQ(Notices(), (std::vector<int>{0, 0, 0}));
    }
}

TEST_F(CImputacionSistematicaRecordsTest, SalvarRewritesOneRowAndKeepsItsReference) {
    AddAssignment({7, "A1", 1000, 333});
    AddAssignment({8, "A1", 1000, 444});
    imputaciones->Salvar(7, "A2", 31, "01/03/2026", 1, 8, "02/03/2026", "31/12/2026", 900, 250);
    EXPECT_THAT(
        world.Story(),
        ElementsAre("sql "
                    "  UPDATE Imputacion_Sistematica SET ID_Activo ='A2',SC_Gama =31,Fecha_Imputacion ='2026-03-01' "
                    ",Anulada =1,SC_Usuario =8,Fecha_Inicio ='2026-03-02' ,Fecha_Fin ='2026-12-31' ,Lectura_Limite "
                    "=250,Aproximacion_Lectura =900 WHERE SC_Imputacion_Sistematica =7",
                    "notice "));
    EXPECT_THAT(Assignments(), ElementsAre("7|A2|31|1|250|333", "8|A1|30|0|1000|444"));
    EXPECT_EQ(world.Scalar("SELECT Fecha_Imputacion || Fecha_Inicio || Fecha_Fin || Aproximacion_Lectura FROM"
                           " Imputacion_Sistematica WHERE SC_Imputacion_Sistematica = 7"),
              "2026-03-012026-03-022026-12-31900");
    EXPECT_EQ(CatalogueNotices(), 1);
}

TEST_F(CImputacionSistematicaRecordsTest, SalvarWithASmallerIntervalCanMakeItDueAtOnce) {
    AddAssignment({7, "A1", 1000, 100});
    EXPECT_FALSE(imputaciones->ActivoNecesitaMantenimiento("A1", 7));
    imputaciones->Salvar(7, "A1", 30, "", 0, 9, "", "", 0, 400);
    EXPECT_EQ(Reference(7), "100");
    EXPECT_TRUE(imputaciones->ActivoNecesitaMantenimiento("A1", 7));
}

TEST_F(CImputacionSistematicaRecordsTest, SalvarBringsAnAnnulledRowBack) {
    AddAssignment({7, "A1", 1000});
    imputaciones->Anular(7);
    EXPECT_EQ(imputaciones->ListarImputacionesDeUnActivo("A1")->TotalRegistros(), 0);
    imputaciones->Salvar(7, "A1", 30, "", 0, 9, "", "", 0, 1000);
    EXPECT_EQ(imputaciones->ListarImputacionesDeUnActivo("A1")->TotalRegistros(), 1);
}

TEST_F(CImputacionSistematicaRecordsTest, BorrarDeletesOneRowAndLeavesWhatPointsToIt) {
    AddAssignment({7, "A1", 1000});
    AddAssignment({8, "A1", 1000});
    world.Run(
        "INSERT INTO Imputacion_Paralela VALUES (1, 7, 8), (2, 8, 7);"
        "INSERT INTO Orden_Generada VALUES (1, 1, 7, '2026-03-05', NULL)");
    imputaciones->Borrar(7);
    EXPECT_THAT(world.Story(), ElementsAre("sql "
                                           "  DELETE From Imputacion_Sistematica WHERE SC_Imputacion_Sistematica =7",
                                           "notice "));
    EXPECT_THAT(Assignments(), ElementsAre("8|A1|30|0|1000|0"));
    EXPECT_EQ(world.Scalar("SELECT COUNT(*) FROM Imputacion_Paralela"), "2");
    EXPECT_EQ(world.Scalar("SELECT COUNT(*) FROM Orden_Generada"), "1");
}

TEST_F(CImputacionSistematicaRecordsTest, AnularAnnulsOneRow) {
    AddAssignment({7, "A1", 1000});
    AddAssignment({8, "A1", 1000});
    imputaciones->Anular(7);
    EXPECT_THAT(world.Story(),
                ElementsAre("sql "
                            "  UPDATE Imputacion_Sistematica SET Anulada =1  WHERE SC_Imputacion_Sistematica =7",
                            "notice "));
    EXPECT_THAT(Assignments(), ElementsAre("7|A1|30|1|1000|0", "8|A1|30|0|1000|0"));
}

TEST_F(CImputacionSistematicaRecordsTest, AnularPorEquipoAnnulsAllRowsOfTheExactAsset) {
    AddAssignment({7, "A1", 1000});
    AddAssignment({8, "A1", 2000});
    AddAssignment({9, "A12", 1000});
    imputaciones->AnularPorEquipo("A1");
    EXPECT_THAT(world.Story(), ElementsAre("sql "
                                           "  UPDATE Imputacion_Sistematica SET Anulada =1  WHERE ID_Activo ='A1'",
                                           "notice "));
    EXPECT_THAT(Assignments(), ElementsAre("7|A1|30|1|1000|0", "8|A1|30|1|2000|0", "9|A12|30|0|1000|0"));
}

TEST_F(CImputacionSistematicaRecordsTest, AnUnknownKeyIsNoErrorAndStillSendsTheNotice) {
    AddAssignment({7, "A1", 1000});
    const std::vector<std::string> before = Stored();
    imputaciones->Salvar(77, "A1", 30, "", 0, 9, "", "", 0, 200);
    imputaciones->Borrar(77);
    imputaciones->Anular(77);
    imputaciones->AnularPorEquipo("NONE");
    imputaciones->Resetear(77, {});
    EXPECT_EQ(Stored(), before);
    EXPECT_EQ(CatalogueNotices(), 5);
}

TEST_F(CImputacionSistematicaRecordsTest, ChangesJoinTheTransactionOfTheCaller) {
    AddAssignment({7, "A1", 1000});
    const std::vector<std::string> before = Stored();
    Libreria::IniciarTransaccion();
    imputaciones->Salvar(7, "A2", 30, "", 0, 9, "", "", 0, 200);
    imputaciones->Anular(7);
    imputaciones->AnularPorEquipo("A2");
    imputaciones->Resetear(7, {});
    imputaciones->ActualizarAcumuladoDeReferencia(7, {}, 5);
    imputaciones->ActualizarAcumulado("A1", 1, {}, 1, 1);
    imputaciones->Borrar(7);
    EXPECT_EQ(world.Depth(), 1);
    Libreria::AbortarTransaccion();
    EXPECT_EQ(Stored(), before);
}

TEST_F(CImputacionSistematicaRecordsTest, AListIsMadeAtItsFirstUseAndStays) {
    const Ref<ListaCambios> lists[] = {imputaciones->ActivoReprogramado(), imputaciones->OrdenesSistematicasGeneradas(),
                                       imputaciones->CatalogoModificado()};
    for (const Ref<ListaCambios>& list : lists) {
        ASSERT_NE(list, nullptr);
        EXPECT_EQ(list->Total(), 0);
    }
    EXPECT_EQ(imputaciones->ActivoReprogramado(), lists[0]);
    EXPECT_EQ(imputaciones->OrdenesSistematicasGeneradas(), lists[1]);
    EXPECT_EQ(imputaciones->CatalogoModificado(), lists[2]);
    EXPECT_NE(lists[0], lists[1]);
    EXPECT_NE(lists[1], lists[2]);
}

TEST_F(CImputacionSistematicaRecordsTest, AListOfTheClientTakesThePlaceOfTheOwn) {
    const Ref<ListaCambios> own = imputaciones->CatalogoModificado();
    const Ref<ListaCambios> theirs = Create<CImputacionSistematica>()->CatalogoModificado();
    imputaciones->CatalogoModificado(theirs);
    EXPECT_EQ(imputaciones->CatalogoModificado(), theirs);
    imputaciones->Anular(7);
    EXPECT_EQ(theirs->Total(), 1);
    EXPECT_EQ(own->Total(), 0);

    imputaciones->CatalogoModificado(nullptr);
    EXPECT_NE(imputaciones->CatalogoModificado(), nullptr);
    EXPECT_NE(imputaciones->CatalogoModificado(), theirs);

    imputaciones->ActivoReprogramado(theirs);
    imputaciones->OrdenesSistematicasGeneradas(own);
    EXPECT_EQ(imputaciones->ActivoReprogramado(), theirs);
    EXPECT_EQ(imputaciones->OrdenesSistematicasGeneradas(), own);
}

TEST_F(CImputacionSistematicaRecordsTest, ObjectsDoNotShareNotices) {
    Create<CImputacionSistematica>()->Anular(7);
    EXPECT_EQ(CatalogueNotices(), 0);
}

TEST_F(CImputacionSistematicaRecordsTest, AFailedNoticeFailsTheOperationAfterItsCommit) {
    world.FailOn("notice ");
    const ErrorRecord error = ErrorOf([&] { NewOf("A1"); });
    EXPECT_EQ(error.number, Refused(19));
    EXPECT_THAT(Assignments(), ElementsAre("1|A1|30|0|200|500"));
    EXPECT_EQ(world.Depth(), 0);
}

}  // namespace

#include "meter/CImputacionParalela.h"

#include "frame/Libreria.h"
#include "tests/meter/meter_test.h"

using namespace Zontara;
using namespace support;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

class CImputacionParalelaTest : public MeterTest {
protected:
    CImputacionParalelaTest() {
        AddAsset("A1", "2500");
        AddAssignment({7, "A1", 1000, 100});
        AddAssignment({8, "A1", 2000, 200});
        AddAssignment({9, "A1", 4000, 300});
    }
    std::vector<std::string> Links() { return world.Rows("SELECT * FROM Imputacion_Paralela ORDER BY 1"); }
    void AddLink(int key, int assignment, int parallel) {
        world.Run("INSERT INTO Imputacion_Paralela VALUES (" + std::to_string(key) + ", " + std::to_string(assignment) +
                  ", " + std::to_string(parallel) + ")");
    }
    /// Own accumulated reading, last launch and reference of each assignment.
    std::vector<std::string> Resets() {
        return world.Rows(
            "SELECT SC_Imputacion_Sistematica, printf('%g', Acumulado_Lectura), Fecha_Ultimo_Lanzamiento,"
            " Ultimo_Acumulado FROM Imputacion_Sistematica ORDER BY 1");
    }

    Ref<CImputacionParalela> paralelas = Create<CImputacionParalela>();
    const Date day = World::Day("2026-03-05");
};

TEST_F(CImputacionParalelaTest, NuevoWritesOneLinkInOneTransactionAndGivesItsKey) {
    EXPECT_EQ(paralelas->Nuevo(7, 8), 1);
    EXPECT_THAT(world.Story(), ElementsAre("begin", "key Imputacion_Paralela",
                                           "sql   INSERT Into Imputacion_Paralela (SC_Imputacion_Paralela "
                                           ",SC_Imputacion_Sistematica ,SC_Paralela ) VALUES (1,7,8)",
                                           "commit"));
    EXPECT_THAT(Links(), ElementsAre("1|7|8"));
    EXPECT_EQ(world.Depth(), 0);
}

TEST_F(CImputacionParalelaTest, NuevoChecksNeitherTheKeysNorThePair) {
    EXPECT_EQ(paralelas->Nuevo(7, 7), 1);
    EXPECT_EQ(paralelas->Nuevo(7, 8), 2);
    EXPECT_EQ(paralelas->Nuevo(7, 8), 3);
    EXPECT_EQ(paralelas->Nuevo(500, 501), 4);
    EXPECT_THAT(Links(), ElementsAre("1|7|7", "2|7|8", "3|7|8", "4|500|501"));
}

TEST_F(CImputacionParalelaTest, NuevoInsideATransactionCommitsNothing) {
    Libreria::IniciarTransaccion();
    paralelas->Nuevo(7, 8);
    EXPECT_EQ(world.Depth(), 1);
    Libreria::AbortarTransaccion();
    EXPECT_THAT(Links(), IsEmpty());
}

TEST_F(CImputacionParalelaTest, BorrarDeletesOneLink) {
    AddLink(4, 7, 8);
    AddLink(5, 7, 9);
    paralelas->Borrar(4);
    EXPECT_THAT(world.Story(), ElementsAre("sql   DELETE From Imputacion_Paralela WHERE SC_Imputacion_Paralela =4"));
    paralelas->Borrar(77);
    EXPECT_THAT(Links(), ElementsAre("5|7|9"));
}

TEST_F(CImputacionParalelaTest, SalvarRewritesOneLink) {
    AddLink(4, 1, 2);
    AddLink(5, 1, 2);
    paralelas->Salvar(4, 7, 8);
    EXPECT_THAT(world.Story(), ElementsAre("sql   UPDATE Imputacion_Paralela SET SC_Imputacion_Sistematica "
                                           "=7,SC_Paralela =8 WHERE SC_Imputacion_Paralela =4"));
    EXPECT_THAT(Links(), ElementsAre("4|7|8", "5|1|2"));
}

TEST_F(CImputacionParalelaTest, SeleccionarGivesTheLinksOfAnAssignment) {
    AddLink(4, 7, 8);
    AddLink(5, 7, 9);
    AddLink(6, 8, 7);
    const Ref<Recordset> rs = paralelas->Seleccionar(7);
    EXPECT_THAT(
        world.Statements(),
        ElementsAre(
            "SELECT Imputacion_Paralela.SC_Imputacion_Paralela, Imputacion_Paralela.SC_Imputacion_Sistematica "
            ",Imputacion_Paralela.SC_Paralela  FROM Imputacion_Paralela, "
            "Ejecutor_Gama,Gama,Unidad_Lectura,Imputacion_Sistematica  WHERE Imputacion_Paralela.SC_Paralela = "
            "Imputacion_Sistematica.SC_Imputacion_Sistematica and  Gama.SC_Gama = Imputacion_Sistematica.SC_Gama and  "
            "Ejecutor_Gama.SC_Ejecutor_Gama = Gama.SC_Ejecutor_Gama and  Unidad_Lectura.SC_Unidad_Lectura =  "
            "Imputacion_Sistematica.SC_Unidad_Lectura  and Imputacion_Paralela.SC_Imputacion_Sistematica =7"));
    EXPECT_EQ(rs->TotalColumnas(), 3);
    EXPECT_THAT(Column(rs, "SC_Paralela"), ElementsAre("8", "9"));
    EXPECT_EQ(paralelas->Seleccionar(9)->TotalRegistros(), 0);
}

TEST_F(CImputacionParalelaTest, SeleccionarTakesColumnsWithNoTrailingBlank) {
    AddLink(4, 7, 8);
    const Ref<Recordset> rs = paralelas->Seleccionar(7, "Gama.Numero_Gama,SC_Paralela");
    EXPECT_THAT(world.Statements().front(),
                ::testing::StartsWith("Select Gama.Numero_Gama,SC_Paralela FROM Imputacion_Paralela, Ejecutor_Gama,"));
    EXPECT_THAT(Column(rs, "Numero_Gama"), ElementsAre("3"));
}

TEST_F(CImputacionParalelaTest, SeleccionarLeavesOutWhatTheJoinMisses) {
    AddLink(4, 7, 8);
    AddLink(5, 7, 9);
    AddLink(6, 7, 500);
    world.Run(
        "UPDATE Imputacion_Sistematica SET Anulada = 1 WHERE SC_Imputacion_Sistematica = 8;"
        "UPDATE Imputacion_Sistematica SET SC_Unidad_Lectura = NULL WHERE SC_Imputacion_Sistematica = 9");
    EXPECT_THAT(Column(paralelas->Seleccionar(7), "SC_Paralela"), ElementsAre("8"));
}

TEST_F(CImputacionParalelaTest, ResetearParalelasResetsTheParallelsAlone) {
    world.Run("UPDATE Imputacion_Sistematica SET Acumulado_Lectura = 55");
    AddLink(4, 7, 8);
    AddLink(5, 8, 9);
    paralelas->ResetearParalelas(7, day);
    EXPECT_THAT(Resets(), ElementsAre("7|55|NULL|100", "8|0|2026-03-05|200", "9|55|NULL|300"));
    EXPECT_EQ(imputaciones->CatalogoModificado()->Total(), 0);
}

TEST_F(CImputacionParalelaTest, ResetearParalelasFindsAnAssignmentMadeThroughTheClass) {
    const std::int32_t key =
        imputaciones->Nuevo("A1", 30, "2026-03-01", 0, 9, "2026-03-01", "", 0, 0, 0, "", "", "", 500);
    paralelas->Nuevo(7, key);
    paralelas->ResetearParalelas(7, day);
    EXPECT_EQ(world.Scalar("SELECT Fecha_Ultimo_Lanzamiento FROM Imputacion_Sistematica WHERE "
                           "SC_Imputacion_Sistematica = " +
                           std::to_string(key)),
              "2026-03-05");
}

TEST_F(CImputacionParalelaTest, ResetearParalelasResetsTwiceWhatIsLinkedTwice) {
    AddLink(4, 7, 8);
    AddLink(5, 7, 8);
    paralelas->ResetearParalelas(7, day);
    const std::string reset =
        "  UPDATE Imputacion_Sistematica SET Acumulado_Lectura = 0 , Fecha_Ultimo_Lanzamiento ='2026-03-05'  WHERE "
        "SC_Imputacion_Sistematica =8";
    const std::vector<std::string> statements = world.Statements();
    ASSERT_EQ(statements.size(), 3u);
    EXPECT_EQ(statements[1], reset);
    EXPECT_EQ(statements[2], reset);
}

TEST_F(CImputacionParalelaTest, ResetearParalelasWithoutParallelsLeavesNoTrace) {
    const std::vector<std::string> before = Stored();
    paralelas->ResetearParalelas(7, day);
    EXPECT_EQ(world.Statements().size(), 1u);
    EXPECT_EQ(Stored(), before);
}

TEST_F(CImputacionParalelaTest, ResetearParalelasKeepsWhatItResetBeforeAFailure) {
    AddLink(4, 7, 8);
    AddLink(5, 7, 9);
    world.FailOn("SC_Imputacion_Sistematica =9");
    const ErrorRecord error = ErrorOf([&] { paralelas->ResetearParalelas(7, day); });
    EXPECT_EQ(error.number, Refused(19));
    EXPECT_THAT(CallsOf(error), ElementsAre("CImputacionSistematica.Resetear(SC_Imputacion_Sistematica=9, "
                                            "Fecha_Lanzamiento='05/03/2026')",
                                            "CImputacionParalela.ResetearParalelas(SC_Imputacion_Sistematica=7, "
                                            "Fecha_Lanzamiento='05/03/2026')"));
    EXPECT_THAT(Resets(), ElementsAre("7|0|NULL|100", "8|0|2026-03-05|200", "9|0|NULL|300"));
    EXPECT_EQ(world.Depth(), 0);
}

TEST_F(CImputacionParalelaTest, EveryFailureNamesTheOperationAndItsValues) {
    AddLink(4, 1, 2);
    const std::string read = "Libreria.AbrirRecordset(rs={Recordset}, strSQL={Text})";
    const std::string nuevo = "CImputacionParalela.Nuevo(SC_Imputacion_Sistematica=7, SC_Paralela=8)";
    const struct {
        const char* failing;
        std::function<void()> work;
        std::vector<std::string> calls;
        int depth;
    } cases[] = {
        {"begin", [&] { paralelas->Nuevo(7, 8); }, {"Libreria.IniciarTransaccion()", nuevo}, 1},
        {"key Imputacion_Paralela", [&] { paralelas->Nuevo(7, 8); }, {nuevo}, 1},
        {"sql   INSERT", [&] { paralelas->Nuevo(7, 8); }, {nuevo}, 1},
        {"commit", [&] { paralelas->Nuevo(7, 8); }, {"Libreria.TerminarTransaccion()", nuevo}, 1},
        {"sql   DELETE", [&] { paralelas->Borrar(4); }, {"CImputacionParalela.Borrar(SC_Imputacion_Paralela=4)"}, 0},
        {"sql Select",
         [&] { paralelas->Seleccionar(7, "SC_Paralela"); },
         {read, "CImputacionParalela.Seleccionar(SC_Imputacion_Sistematica=7, sColumnas='SC_Paralela')"},
         0},
        {"sql   UPDATE",
         [&] { paralelas->Salvar(4, 7, 8); },
         {"CImputacionParalela.Salvar(SC_Imputacion_Paralela=4, SC_Imputacion_Sistematica=7, SC_Paralela=8)"},
         0},
        {"sql SELECT",
         [&] { paralelas->ResetearParalelas(7, day); },
         {read, "CImputacionParalela.Seleccionar(SC_Imputacion_Sistematica=7, sColumnas='')",
          "CImputacionParalela.ResetearParalelas(SC_Imputacion_Sistematica=7, Fecha_Lanzamiento='05/03/2026')"},
         0},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.failing + (" in " + c.calls.back()));
        world.FailOn(c.failing);
        const ErrorRecord error = ErrorOf(c.work);
        EXPECT_EQ(error.number, Refused(19));
        EXPECT_EQ(CallsOf(error), c.calls);
        EXPECT_EQ(world.Depth(), c.depth);
        world.Abort();
        EXPECT_THAT(Links(), ElementsAre("4|1|2"));
    }
}

}  // namespace

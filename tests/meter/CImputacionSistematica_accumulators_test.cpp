#include "meter/CImputacionSistematica.h"
#include "tests/meter/meter_test.h"

#include <limits>

using namespace Zontara;
using namespace support;
using ::testing::ElementsAre;

namespace {

class CImputacionSistematicaAccumulatorsTest : public MeterTest {
protected:
    const Date day = World::Day("2026-03-05 14:00:00");
};

TEST_F(CImputacionSistematicaAccumulatorsTest, ActualizarAcumuladoAddsOneValueAndKeepsTheOther) {
    AddAsset("A1", "500", "70");
    AddAsset("A2", "500", "70");
    imputaciones->ActualizarAcumulado("A1", 999, {}, 12.5F, 100);
    EXPECT_THAT(world.Story(), ElementsAre("sql "
                                           "Update activo SET  Acumulado_Lectura = Acumulado_Lectura +12.5, "
                                           "Ultima_Lectura = 100 Where id_activo ='A1'"));
    EXPECT_THAT(world.Rows("SELECT ID_Activo, Acumulado_Lectura, Ultima_Lectura FROM Activo ORDER BY 1"),
                ElementsAre("A1|512.5|100", "A2|500|70"));
    EXPECT_EQ(Notices(), (std::vector<int>{0, 0, 0}));
}

TEST_F(CImputacionSistematicaAccumulatorsTest, ActualizarAcumuladoWritesItsNumbersInTheirDefaultText) {
    AddAsset("A1", "500");
    const struct {
        float increment;
        float reading;
        std::string end;
        std::string accumulated;
    } cases[] = {
        {-12.5F, 0.0F, "+-12.5, Ultima_Lectura = 0 Where id_activo ='A1'", "487.5"},
        {0.1F, -3.0F, "+0.1, Ultima_Lectura = -3 Where id_activo ='A1'", "500.1"},
        {-0.0F, 1e20F, "+0, Ultima_Lectura = 1E+20 Where id_activo ='A1'", "500"},
        {1e-6F, 16777216.0F, "+1E-06, Ultima_Lectura = 16777216 Where id_activo ='A1'", "500.000001"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.end);
        world.Run("UPDATE Activo SET Acumulado_Lectura = 500");
        world.Forget();
        imputaciones->ActualizarAcumulado("A1", 1, day, c.increment, c.reading);
        EXPECT_THAT(world.Statements(), ElementsAre(::testing::EndsWith(c.end)));
        EXPECT_EQ(world.Scalar("SELECT printf('%!.10g', Acumulado_Lectura) FROM Activo WHERE 1"),
                  c.accumulated.find('.') == std::string::npos ? c.accumulated + ".0" : c.accumulated);
    }
}

TEST_F(CImputacionSistematicaAccumulatorsTest, ActualizarAcumuladoRefusesWhatIsNoFiniteNumber) {
    AddAsset("A1", "500");
    const std::vector<std::string> before = Stored();
    for (const float value : {std::numeric_limits<float>::infinity(), std::numeric_limits<float>::quiet_NaN()}) {
        EXPECT_EQ(ErrorOf([&] { imputaciones->ActualizarAcumulado("A1", 1, day, value, 1); }).number, 6);
        EXPECT_EQ(ErrorOf([&] { imputaciones->ActualizarAcumulado("A1", 1, day, 1, value); }).number, 6);
    }
    EXPECT_EQ(Stored(), before);
}

TEST_F(CImputacionSistematicaAccumulatorsTest, ActualizarAcumuladoOfAnUnknownAssetTouchesNothing) {
    AddAsset("A1", "500");
    const std::vector<std::string> before = Stored();
    imputaciones->ActualizarAcumulado("NONE", 1, day, 1, 1);
    EXPECT_EQ(Stored(), before);
}

TEST_F(CImputacionSistematicaAccumulatorsTest, ActualizarAcumuladoDeReferenciaSetsOneReferenceAndNothingElse) {
    AddAsset("A1", "500");
    AddAssignment({7, "A1", 1000, 100});
    AddAssignment({8, "A1", 1000, 100});
    imputaciones->ActualizarAcumuladoDeReferencia(7, day, -700);
    EXPECT_THAT(
        world.Story(),
        ElementsAre("sql "
                    "  UPDATE Imputacion_Sistematica SET Ultimo_Acumulado = -700 WHERE SC_Imputacion_Sistematica =7"));
    EXPECT_EQ(Reference(7), "-700");
    EXPECT_EQ(Reference(8), "100");
    EXPECT_EQ(world.Scalar("SELECT COUNT(Fecha_Ultimo_Lanzamiento) FROM Imputacion_Sistematica"), "0");
    EXPECT_EQ(Notices(), (std::vector<int>{0, 0, 0}));
}

TEST_F(CImputacionSistematicaAccumulatorsTest, ResetearLeavesTheReferenceAndTheAssetAlone) {
    AddAsset("A1", "1500");
    AddAssignment({7, "A1", 1000, 100});
    world.Run("UPDATE Imputacion_Sistematica SET Acumulado_Lectura = 55");
    imputaciones->Resetear(7, day);
    EXPECT_THAT(world.Story(), ElementsAre("sql "
                                           "  UPDATE Imputacion_Sistematica SET Acumulado_Lectura = 0 , "
                                           "Fecha_Ultimo_Lanzamiento ='2026-03-05'  WHERE SC_Imputacion_Sistematica =7",
                                           "notice "));
    EXPECT_THAT(world.Rows("SELECT printf('%g', Acumulado_Lectura), Fecha_Ultimo_Lanzamiento, Ultimo_Acumulado FROM"
                           " Imputacion_Sistematica"),
                ElementsAre("0|2026-03-05|100"));
    EXPECT_EQ(Accumulated("A1"), "1500");
    EXPECT_TRUE(imputaciones->ActivoNecesitaMantenimiento("A1", 7));
    EXPECT_EQ(Notices(), (std::vector<int>{0, 0, 1}));
}

TEST_F(CImputacionSistematicaAccumulatorsTest, ActivoNecesitaMantenimientoIncludesTheExactLimit) {
    const struct {
        const char* label;
        std::string accumulated;
        int reference;
        int limit;
        bool due;
    } cases[] = {
        {"just reached", "700", 500, 200, true},
        {"one short", "699", 500, 200, false},
        {"a fraction short", "699.75", 500, 200, false},
        {"overshot", "701", 500, 200, true},
        {"a negative reference", "300", -700, 1000, true},
        {"a reference ahead", "300", 400, 0, false},
        {"no interval", "500", 500, 0, true},
        {"a negative interval", "499", 500, -1, true},
    };
    int key = 1;
    for (const auto& c : cases) {
        SCOPED_TRACE(c.label);
        const std::string asset = "A" + std::to_string(key);
        AddAsset(asset, c.accumulated);
        AddAssignment({key, asset, c.limit, c.reference});
        EXPECT_EQ(imputaciones->ActivoNecesitaMantenimiento(asset), c.due);
        EXPECT_EQ(imputaciones->ActivoNecesitaMantenimiento(asset, key), c.due);
        ++key;
    }
}

TEST_F(CImputacionSistematicaAccumulatorsTest, ActivoNecesitaMantenimientoAsksAllOrOne) {
    AddAsset("A1", "1500");
    AddAsset("A12", "9000");
    AddAssignment({7, "A1", 1000});
    AddAssignment({8, "A1", 4000});
    AddAssignment({9, "A12", 1000});
    EXPECT_TRUE(imputaciones->ActivoNecesitaMantenimiento("A1"));
    EXPECT_TRUE(imputaciones->ActivoNecesitaMantenimiento("A1", 7));
    EXPECT_FALSE(imputaciones->ActivoNecesitaMantenimiento("A1", 8));
    EXPECT_FALSE(imputaciones->ActivoNecesitaMantenimiento("A1", 9));
    EXPECT_FALSE(imputaciones->ActivoNecesitaMantenimiento("A"));
    const std::vector<std::string> statements = world.Statements();
    EXPECT_EQ(statements[1],
              "select Activo.id_Activo from Imputacion_Sistematica, Activo  where  Imputacion_Sistematica.ID_Activo = "
              "Activo.ID_Activo  and  (acumulado_lectura-ultimo_acumulado)>=lectura_limite and  Activo.id_Activo ='A1' "
              "and Imputacion_Sistematica.sc_Imputacion_Sistematica=7");
    EXPECT_EQ(statements[1], statements[0] + " and Imputacion_Sistematica.sc_Imputacion_Sistematica=7");
}

TEST_F(CImputacionSistematicaAccumulatorsTest, AnAnnulledAssignmentMakesItsAssetNeedMaintenance) {
    AddAsset("A1", "1500");
    AddAssignment({7, "A1", 1000, 0, 0, 1});
    EXPECT_TRUE(imputaciones->ActivoNecesitaMantenimiento("A1"));
}

TEST_F(CImputacionSistematicaAccumulatorsTest, AssignmentsOfOneAssetKeepTheirOwnRhythm) {
    AddAsset("A1", "1000");
    AddAssignment({7, "A1", 1000});
    AddAssignment({8, "A1", 4000});
    const auto due = [&] {
        return std::vector<bool>{imputaciones->ActivoNecesitaMantenimiento("A1", 7),
                                 imputaciones->ActivoNecesitaMantenimiento("A1", 8)};
    };
    EXPECT_EQ(due(), (std::vector<bool>{true, false}));
    imputaciones->ActualizarAcumuladoDeReferencia(7, day, 1000);
    EXPECT_EQ(due(), (std::vector<bool>{false, false}));
    imputaciones->ActualizarAcumulado("A1", 1, day, 1000, 0);
    EXPECT_EQ(due(), (std::vector<bool>{true, false}));
    imputaciones->ActualizarAcumuladoDeReferencia(7, day, 2000);
    imputaciones->ActualizarAcumulado("A1", 1, day, 1999, 0);
    EXPECT_EQ(due(), (std::vector<bool>{true, false}));
    imputaciones->ActualizarAcumulado("A1", 1, day, 1, 0);
    EXPECT_EQ(due(), (std::vector<bool>{true, true}));
}

TEST_F(CImputacionSistematicaAccumulatorsTest, AnApproximationIsReachedByTheWholeReading) {
    AddAsset("A1", "899");
    AddAsset("A2", "5000");
    AddAssignment({7, "A1", 1000, 0, 900});
    AddAssignment({8, "A2", 1000, 0, 0});
    EXPECT_FALSE(imputaciones->ElActivoTieneAproximacionesVencidas("A1"));
    EXPECT_EQ(world.Statements().front(),
              "SELECT  1 from Activo,Imputacion_Sistematica  WHERE Activo.ID_Activo='A1' and  "
              "Imputacion_Sistematica.ID_Activo = Activo.ID_Activo  and Activo.Acumulado_Lectura >= "
              "Imputacion_Sistematica.Aproximacion_Lectura and  Imputacion_Sistematica.Aproximacion_Lectura>0 ");
    imputaciones->ActualizarAcumulado("A1", 1, day, 1, 0);
    EXPECT_TRUE(imputaciones->ElActivoTieneAproximacionesVencidas("A1"));
    imputaciones->ActualizarAcumuladoDeReferencia(7, day, 900);
    EXPECT_TRUE(imputaciones->ElActivoTieneAproximacionesVencidas("A1"));
    imputaciones->Anular(7);
    EXPECT_TRUE(imputaciones->ElActivoTieneAproximacionesVencidas("A1"));

    EXPECT_FALSE(imputaciones->ElActivoTieneAproximacionesVencidas("A2"));
    EXPECT_FALSE(imputaciones->ElActivoTieneAproximacionesVencidas("A"));
    EXPECT_FALSE(imputaciones->ElActivoTieneAproximacionesVencidas("NONE"));
}

TEST_F(CImputacionSistematicaAccumulatorsTest, EsProgramacionPrimaWantsEveryPairToDivide) {
    const struct {
        const char* label;
        std::vector<int> intervals;
        std::int32_t candidate;
        bool meshes;
    } cases[] = {
        {"between two that divide", {2000, 500}, 1000, true},
        {"a larger that doesn't divide", {2000, 500}, 1500, false},
        {"a smaller that doesn't divide", {2000, 300}, 1000, false},
        {"equal", {1000}, 1000, true},
        {"one over all", {2000, 500}, 1, true},
        {"nothing to mesh with", {}, 1500, true},
        {"zero beside intervals", {2000}, 0, false},
        {"zero beside zero", {0}, 0, false},
        {"an interval of zero", {1000, 0}, 1000, false},
        {"zero beside nothing", {}, 0, true},
        {"a negative multiple", {2000}, -1000, true},
        {"a negative that doesn't divide", {2000}, -1500, false},
        {"the least number beside minus one", {-1}, std::numeric_limits<std::int32_t>::min(), false},
    };
    int key = 1;
    int number = 0;
    for (const auto& c : cases) {
        SCOPED_TRACE(c.label);
        const std::string asset = "A" + std::to_string(++number);
        AddAsset(asset, "0");
        for (const int interval : c.intervals)
            AddAssignment({key++, asset, interval});
        EXPECT_EQ(imputaciones->EsProgramacionPrima(c.candidate, asset), c.meshes);
    }
}

TEST_F(CImputacionSistematicaAccumulatorsTest, EsProgramacionPrimaLooksAtLiveAssignmentsOnly) {
    AddAsset("A1", "0");
    AddAssignment({7, "A1", 700, 0, 0, 1});
    AddAssignment({8, "A1", 2000});
    EXPECT_TRUE(imputaciones->EsProgramacionPrima(1000, "A1"));
    EXPECT_THAT(world.Statements(), ElementsAre(::testing::StartsWith("Select  Lectura_Limite  FROM Imputacion")));
}

TEST_F(CImputacionSistematicaAccumulatorsTest, EsProgramacionPrimaStopsAtTheFirstThatDoesNotMesh) {
    AddAsset("A1", "0");
    AddAssignment({7, "A1", 2000});
    AddAssignment({8, "A1", 1000});
    world.Run("UPDATE Imputacion_Sistematica SET Lectura_Limite = NULL WHERE SC_Imputacion_Sistematica = 8");
    EXPECT_FALSE(imputaciones->EsProgramacionPrima(1500, "A1"));
    EXPECT_EQ(ErrorOf([&] { imputaciones->EsProgramacionPrima(1000, "A1"); }).number, 94);
}

}  // namespace

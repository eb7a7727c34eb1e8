#include "calendar/CImputacionPreventiva.h"

#include "frame/Libreria.h"
#include "tests/calendar/plant.h"

namespace {

using support::ActiveSelection;
using support::ErrorOf;
using support::ExpectCallStack;
using support::kForced;
using support::World;
using testing::ElementsAre;

class OverdueTest : public support::CalendarTest {
protected:
    bool Synchronised(const std::string& day = "", std::int32_t assignment = 0) {
        return preventive->ActivoTieneMantenimientoVencido("A-1", assignment, day);
    }
    bool Conventional(const std::string& day = "", std::int32_t assignment = 0) {
        return preventive->ActivoTieneMantenimientoConvencionalVencido("A-1", assignment, day);
    }
};

TEST_F(OverdueTest, TheSynchronisedQuestionAsksForTheWholeAssetWhateverItsStatus) {
    world.Run("UPDATE Activo SET estatus_actual = 3");
    Add({.key = 4});
    EXPECT_TRUE(preventive->ActivoTieneMantenimientoVencido("A-1", 77));
    EXPECT_THAT(world.Story(), ElementsAre("sql " + ActiveSelection("Es_Sincronizada=1  and Activo.ID_Activo='A-1' ")));
    EXPECT_EQ(Launch("2026-03-05"), 0);
}

TEST_F(OverdueTest, TheConventionalQuestionPassesTheAssignmentOn) {
    AddConventional({.key = 4, .frequency = "Diaria", .last = "2026-03-05"});
    AddConventional({.key = 5, .frequency = "Diaria", .last = "2026-03-01"});
    EXPECT_FALSE(Conventional("", 4));
    EXPECT_THAT(world.Story(),
                ElementsAre("sql " + ActiveSelection("Es_Sincronizada=0   and Activo.ID_Activo='A-1' and "
                                                     "Imputacion_Preventiva.SC_Imputacion_Preventiva=4")));
    EXPECT_TRUE(Conventional("", 5));
    EXPECT_TRUE(Conventional());
}

TEST_F(OverdueTest, AnAssetWithoutActiveAssignmentsIsNotOverdue) {
    Add({.key = 1, .cancelled = 1});
    AddConventional({.key = 2, .frequency = "Diaria", .cancelled = 1});
    EXPECT_FALSE(Synchronised());
    EXPECT_FALSE(Conventional());
    EXPECT_FALSE(preventive->ActivoTieneMantenimientoVencido("Z-9"));
}

TEST_F(OverdueTest, ASimulatedDayReplacesToday) {
    Add({.key = 1, .week = 10, .start = "2026-03-01"});
    AddConventional({.key = 2, .frequency = "Mensual", .anchor = "5", .last = "2026-03-05", .start = "2026-03-01"});
    EXPECT_FALSE(Synchronised());
    EXPECT_FALSE(Conventional());
    EXPECT_TRUE(Synchronised("09/03/2026"));
    EXPECT_FALSE(Conventional("04/04/2026"));
    EXPECT_TRUE(Conventional("05/04/2026"));
    EXPECT_FALSE(Synchronised("28/02/2026"));
    EXPECT_FALSE(Conventional("28/02/2026"));
    EXPECT_THAT(world.Statements().back(), testing::HasSubstr("Fecha_Inicio <= '2026-02-28' "));
}

TEST_F(OverdueTest, TheSimulatedDayIsReadInTheSystemsDateForm) {
    Add({.key = 1, .start = "2026-04-01"});
    EXPECT_FALSE(Synchronised("04/03/2026"));
    world.Platform().shortDate = "mm/dd/yyyy";
    EXPECT_TRUE(Synchronised("04/03/2026"));
}

TEST_F(OverdueTest, TheTimeOfDayPlaysNoPart) {
    AddConventional({.key = 1, .frequency = "Semanal", .anchor = "4", .last = "2026-02-26"});
    world.Platform().now = World::Day("2026-03-05 00:00:01");
    EXPECT_TRUE(Conventional());
    EXPECT_TRUE(Conventional("05/03/2026 23:59:59"));
}

TEST_F(OverdueTest, AnIntervalOfZeroOrBelowIsDueAtOnce) {
    Add({.key = 1, .frequency = "Fecha", .interval = 0});
    AddConventional({.key = 2, .frequency = "Other", .interval = -1});
    EXPECT_TRUE(Synchronised());
    EXPECT_TRUE(Conventional());
}

TEST_F(OverdueTest, ALaunchedWeeklyRowIsDueAgainInEveryWeekOfAnotherNumber) {
    Add({.key = 1});
    EXPECT_EQ(Launch("2026-03-05"), 1);
    EXPECT_FALSE(Synchronised("02/03/2026"));
    EXPECT_FALSE(Synchronised("08/03/2026"));
    EXPECT_TRUE(Synchronised("01/03/2026"));
    EXPECT_TRUE(Synchronised("09/03/2026"));
    EXPECT_FALSE(Synchronised("05/03/2027"));
}

TEST_F(OverdueTest, TheWalkStopsAtTheFirstDueRow) {
    Add({.key = 2});
    Add({.key = 3, .frequency = "Mensual", .anchor = "bad"});
    AddConventional({.key = 5, .frequency = "Diaria"});
    AddConventional({.key = 6, .frequency = "Mensual", .anchor = "bad"});
    EXPECT_TRUE(Synchronised());
    EXPECT_TRUE(Conventional());
    Add({.key = 1, .frequency = "Anual", .anchor = "bad"});
    AddConventional({.key = 4, .frequency = "Anual", .anchor = "1"});
    EXPECT_EQ(support::NumberOf([&] { Synchronised(); }), 13);
    EXPECT_EQ(support::NumberOf([&] { Conventional(); }), 9);
}

TEST_F(OverdueTest, TheAssignmentHasNoInfluenceOnTheSynchronisedQuestion) {
    Add({.key = 1, .week = 10});
    Add({.key = 2});
    EXPECT_TRUE(Synchronised("", 1));
    EXPECT_TRUE(Synchronised("", 2));
    EXPECT_TRUE(Synchronised("", 99));
    preventive->Anular(2);
    EXPECT_FALSE(Synchronised("", 1));
}

TEST_F(OverdueTest, WorksOutNoDayThatOnlyALaunchWouldBook) {
    AddConventional({.key = 1, .frequency = "Semanal", .anchor = "-1E10", .last = "2026-01-01"});
    EXPECT_TRUE(Conventional());
    EXPECT_EQ(support::NumberOf([&] { LaunchConventional("2026-03-05"); }), 6);
}

TEST_F(OverdueTest, WritesNothing) {
    Add({.key = 1});
    AddConventional({.key = 2, .frequency = "Diaria"});
    const std::vector<std::string> before = Stored();
    Synchronised();
    Conventional();
    EXPECT_EQ(Stored(), before);
    EXPECT_EQ(world.Platform().yields, 0);
    EXPECT_EQ(preventive->OTPreventivaGenerada()->Total(), 0);
}

TEST_F(OverdueTest, FailuresComeWithoutALevelOfTheirOwn) {
    AddConventional({.key = 1, .frequency = "Mensual", .anchor = "bad"});
    for (const char* day : {"soon", "31/02/2026", "2026", "08:00"}) {
        const Zontara::ErrorRecord error = ErrorOf([&] { Synchronised(day); });
        EXPECT_EQ(error.number, 13) << day;
        EXPECT_NE(error.source, "HuntERR.ErrorIn");
    }
    EXPECT_NE(ErrorOf([&] { Conventional(); }).source, "HuntERR.ErrorIn");
    world.FailOn("sql SELECT");
    ExpectCallStack(ErrorOf([&] { Synchronised(); }), "Libreria.AbrirRecordset(rs={Recordset}, strSQL={Text})",
                    "CImputacionPreventiva.SeleccionarActivas(Fecha_Lanzamiento='05/03/2026 08:00:00', sColumnas='')");
}

class ReiniciarTareaNoSincronizadaTest : public support::CalendarTest {};

TEST_F(ReiniciarTareaNoSincronizadaTest, RestartsAllConventionalAssignmentsOfTheAssetInOneStatement) {
    AddAsset("A-10");
    Add({.key = 1, .done = 5});
    AddConventional({.key = 2, .done = 5});
    AddConventional({.key = 3, .cancelled = 1});
    AddConventional({.key = 4, .asset = "A-10"});
    preventive->ReiniciarTareaNoSincronizada("A-1", World::Day("2026-03-05 10:00:00"));
    EXPECT_THAT(world.Story(), ElementsAre("sql   UPDATE Imputacion_Preventiva SET  Fecha_Ultimo_Lanzamiento "
                                           "='2026-03-05'  WHERE  ID_Activo ='A-1' and es_sincronizada=0"));
    EXPECT_EQ(State(1), "2026-01-01|1|5|0");
    EXPECT_EQ(State(2), "2026-03-05|1|5|0");
    EXPECT_EQ(State(3), "2026-03-05|1|0|1");
    EXPECT_EQ(State(4), "2026-01-01|1|0|0");
    EXPECT_EQ(preventive->CatalogoModificado()->Total(), 0);
}

TEST_F(ReiniciarTareaNoSincronizadaTest, AMonthlyAssignmentIsThenNotDueUntilItsDayOfTheNextMonth) {
    AddConventional({.key = 1, .frequency = "Mensual", .anchor = "10", .last = "2026-01-10"});
    const auto overdue = [&](const char* day) {
        return preventive->ActivoTieneMantenimientoConvencionalVencido("A-1", 0, day);
    };
    EXPECT_TRUE(overdue(""));
    preventive->ReiniciarTareaNoSincronizada("A-1", World::Day("2026-03-05"));
    EXPECT_FALSE(overdue(""));
    EXPECT_FALSE(overdue("31/03/2026"));
    EXPECT_FALSE(overdue("09/04/2026"));
    EXPECT_TRUE(overdue("10/04/2026"));
}

TEST_F(ReiniciarTareaNoSincronizadaTest, JoinsTheCallersTransactionAndLetsFailuresThrough) {
    AddConventional({.key = 1});
    Zontara::Libreria::IniciarTransaccion();
    preventive->ReiniciarTareaNoSincronizada("A-1", World::Day("2026-03-05"));
    EXPECT_EQ(world.Depth(), 1);
    Zontara::Libreria::AbortarTransaccion();
    EXPECT_EQ(State(), "2026-01-01|1|0|0");
    world.FailOn("sql   UPDATE");
    const Zontara::ErrorRecord error =
        ErrorOf([&] { preventive->ReiniciarTareaNoSincronizada("A-1", World::Day("2026-03-05")); });
    EXPECT_EQ(error.number, kForced);
    EXPECT_EQ(error.source, "dhRichClient3");
    EXPECT_EQ(State(), "2026-01-01|1|0|0");
}

}  // namespace

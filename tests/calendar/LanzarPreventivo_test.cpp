#include "calendar/CImputacionPreventiva.h"

#include "frame/Libreria.h"
#include "tests/calendar/plant.h"

namespace {

using support::ActiveSelection;
using support::World;
using testing::ElementsAre;
using Zontara::Value;

class LanzarPreventivoTest : public support::CalendarTest {};

TEST_F(LanzarPreventivoTest, WithoutAnyRowNothingHappensAtAll) {
    Add({.key = 1, .start = "2026-03-06"});
    EXPECT_EQ(Launch("2026-03-05"), 0);
    EXPECT_EQ(world.Record().size(), 1u);
    EXPECT_EQ(world.Platform().yields, 0);
    EXPECT_EQ(preventive->OTPreventivaGenerada()->Total(), 0);
}

TEST_F(LanzarPreventivoTest, ADueRowGetsABulletinAndIsMovedOnInOneTransaction) {
    Add({.key = 4, .week = 9});
    EXPECT_EQ(Launch("2026-03-05"), 1);
    EXPECT_THAT(
        world.Story(),
        ElementsAre("sql " + ActiveSelection("activo.estatus_actual not in (3,4,5,7)  and Es_Sincronizada=1   "),
                    "event ImputacionesRecuperadas", "begin", "event ProcesandoImputacion", "key Boletin",
                    "sql   INSERT Into Boletin (SC_Boletin ,SC_Imputacion_Preventiva ,ID_Equipo ,Fecha_Lanzamiento "
                    ",Fecha_Entrega ,Fecha_Real_Entrega ,Lunes ,Martes ,Miercoles ,Jueves ,Viernes ,Sabado ,Domingo "
                    ",Semana_Del_Ano ,SC_Usuario ) VALUES "
                    "(1,4,'A-1','2026-03-05','2026-03-12','2026-03-05','','','','','','','',10,3)",
                    "sql UPDATE Imputacion_Preventiva SET  Fecha_Ultimo_Lanzamiento ='2026-03-05' ,  Semana = 10 Where "
                    "SC_Imputacion_Preventiva =4",
                    "commit", "notice "));
    EXPECT_EQ(State(4), "2026-03-05|10|0|0");
    EXPECT_THAT(Bulletins(), ElementsAre("4|2026-03-05|2026-03-12"));
    EXPECT_EQ(preventive->OTPreventivaGenerada()->Total(), 1);
    EXPECT_EQ(preventive->CatalogoModificado()->Total(), 0);
}

TEST_F(LanzarPreventivoTest, RowsOfWhichNoneIsDueStillMakeEventsAnEmptyTransactionAndANotice) {
    Add({.key = 1, .week = 10});
    Add({.key = 2, .week = 10});
    const std::vector<std::string> before = Stored();
    EXPECT_EQ(Launch("2026-03-05"), 0);
    const std::vector<std::string> story = world.Story();
    EXPECT_THAT(std::vector<std::string>(story.begin() + 1, story.end()),
                ElementsAre("event ImputacionesRecuperadas", "begin", "event ProcesandoImputacion",
                            "event ProcesandoImputacion", "commit", "notice "));
    EXPECT_EQ(Stored(), before);
    EXPECT_EQ(preventive->OTPreventivaGenerada()->Total(), 1);
}

TEST_F(LanzarPreventivoTest, EventsCarryTheNumberOfRowsAndTheRowAndEachIsFollowedByAYield) {
    for (int key = 1; key <= 3; ++key)
        Add({.key = key});
    std::vector<std::string> heard;
    const std::int32_t subscription = preventive->Subscribe([&](std::string_view event, Value& argument) {
        heard.push_back(std::string(event) + " " + std::to_string(argument.Get<std::int32_t>()));
        argument = Value(99);
    });
    world.Platform().onYield = [&] { heard.push_back("yield"); };
    EXPECT_EQ(Launch("2026-03-05"), 3);
    EXPECT_THAT(heard, ElementsAre("ImputacionesRecuperadas 3", "yield", "ProcesandoImputacion 1", "yield",
                                   "ProcesandoImputacion 2", "yield", "ProcesandoImputacion 3", "yield"));
    EXPECT_EQ(world.Platform().yields, 4);

    preventive->Unsubscribe(subscription);
    heard.clear();
    Launch("2026-03-09");
    EXPECT_THAT(heard, ElementsAre("yield", "yield", "yield", "yield"));
}

TEST_F(LanzarPreventivoTest, ASecondRunInTheSameWeekLaunchesNothingOfTheShortFrequencies) {
    int key = 0;
    for (const char* frequency : {"Diaria", "Semanal", "Quincenal", "Mensual"}) {
        Add({.key = ++key, .frequency = frequency, .anchor = "1"});
    }
    EXPECT_EQ(Launch("2026-03-02"), 4);
    EXPECT_EQ(Launch("2026-03-02"), 0);
    EXPECT_EQ(Launch("2026-03-07"), 0);
    EXPECT_EQ(Launch("2026-03-09"), 2);
}

TEST_F(LanzarPreventivoTest, AMonthlyRowInAnotherWeekOfTheMonthIsLookedAtAgain) {
    Add({.key = 1, .frequency = "Mensual", .anchor = "2", .last = "2026-02-10", .week = 7});
    EXPECT_EQ(Launch("2026-03-16"), 0);
    EXPECT_EQ(State(), "2026-02-10|7|0|0");
    EXPECT_EQ(Launch("2026-04-08"), 1);
    EXPECT_EQ(State(), "2026-04-08|15|0|0");
}

TEST_F(LanzarPreventivoTest, DaysToDeliveryGoByTheFrequency) {
    int key = 0;
    for (const char* frequency :
         {"Diaria", "Semanal", "Quincenal", "Mensual", "Bimestral", "Trimestral", "Semestral", "Anual"}) {
        Add({.key = ++key, .frequency = frequency, .anchor = "3", .last = "2025-03-15"});
    }
    EXPECT_EQ(Launch("2026-03-20"), 8);
    EXPECT_THAT(Bulletins(),
                ElementsAre("1|2026-03-20|2026-03-27", "2|2026-03-20|2026-03-27", "3|2026-03-20|2026-04-04",
                            "4|2026-03-20|2026-04-19", "5|2026-03-01|2026-03-01", "6|2026-03-01|2026-03-01",
                            "7|2026-03-01|2026-03-01", "8|2026-03-01|2026-03-31"));
}

TEST_F(LanzarPreventivoTest, AThreeMonthlyRowIsBookedOnTheFirstOfItsMonth) {
    Add({.key = 1, .frequency = "Trimestral", .anchor = "3", .last = "2025-12-01"});
    EXPECT_EQ(Launch("2026-03-20"), 1);
    EXPECT_EQ(State(), "2026-03-01|9|0|0");
    EXPECT_THAT(world.Rows("SELECT Fecha_Lanzamiento, Fecha_Entrega, Fecha_Real_Entrega, Semana_Del_Ano FROM Boletin"),
                ElementsAre("2026-03-01|2026-03-01|2026-03-01|9"));
}

TEST_F(LanzarPreventivoTest, ADateFrequencyIsNeverLaunchedUnlessItsIntervalLetsEverythingPass) {
    Add({.key = 1, .frequency = "Fecha", .anchor = "05/03/2026"});
    EXPECT_EQ(Launch("2026-03-05"), 0);
    world.Run("UPDATE Imputacion_Preventiva SET Intervalo_Frecuencia = -1");
    EXPECT_EQ(Launch("2026-03-05"), 1);
}

TEST_F(LanzarPreventivoTest, AnIntervalOfZeroIsLaunchedUnderTheDayBookedLastOrTheZeroDate) {
    Add({.key = 1, .frequency = "Fecha", .interval = 0});
    Add({.key = 2, .frequency = "Trimestral", .anchor = "3", .last = "2025-12-01"});
    Add({.key = 3, .frequency = "Semanal", .week = 12, .interval = 0});
    EXPECT_EQ(Launch("2026-03-20"), 3);
    EXPECT_EQ(State(1), "1899-12-30|53|0|0");
    EXPECT_EQ(State(3), "2026-03-01|9|0|0");
    EXPECT_THAT(Bulletins(),
                ElementsAre("1|1899-12-30|1899-12-30", "2|2026-03-01|2026-03-01", "3|2026-03-01|2026-03-08"));
    EXPECT_EQ(Launch("2026-03-20"), 2);
}

TEST_F(LanzarPreventivoTest, ARowThatBooksItsDayWithoutBeingDueLeavesItToTheNext) {
    Add({.key = 1, .frequency = "Mensual", .anchor = "1"});
    Add({.key = 2, .frequency = "Fecha", .interval = 0});
    EXPECT_EQ(Launch("2026-03-20"), 1);
    EXPECT_EQ(State(1), "2026-01-01|1|0|0");
    EXPECT_EQ(State(2), "2026-03-20|12|0|0");
}

TEST_F(LanzarPreventivoTest, TheIntervalMustBeReachedByTheStep) {
    Add({.key = 1, .interval = 2});
    Add({.key = 2, .frequency = "Bimestral", .anchor = "3", .interval = 2});
    Add({.key = 3, .frequency = "Bimestral", .anchor = "3", .interval = 3});
    EXPECT_EQ(Launch("2026-03-05"), 1);
    EXPECT_EQ(State(2), "2026-03-01|9|0|0");
}

TEST_F(LanzarPreventivoTest, ARunningCycleAddsItsStep) {
    Add({.key = 1, .frequency = "Trimestral", .anchor = "3", .last = "2025-12-01", .cycle = 12, .done = 3, .ends = 1});
    EXPECT_EQ(Launch("2026-03-05"), 1);
    EXPECT_EQ(world.Statements().back(),
              "UPDATE Imputacion_Preventiva SET  acumulado_Ciclo = acumulado_Ciclo + 3,  Fecha_Ultimo_Lanzamiento "
              "='2026-03-01' ,  Semana = 9 Where SC_Imputacion_Preventiva =1");
    EXPECT_EQ(State(), "2026-03-01|9|6|0");
}

TEST_F(LanzarPreventivoTest, TheLaunchThatCompletesTheCycleStillWritesItsBulletinAndCancelsTheRow) {
    Add({.key = 1, .frequency = "Mensual", .anchor = "1", .cycle = 3, .done = 2, .ends = 1});
    EXPECT_EQ(Launch("2026-03-05"), 1);
    EXPECT_EQ(world.Statements().back(),
              "UPDATE Imputacion_Preventiva SET  Anulada = 1, Acumulado_Ciclo =0,  Fecha_Ultimo_Lanzamiento "
              "='2026-03-05' ,  Semana = 10 Where SC_Imputacion_Preventiva =1");
    EXPECT_EQ(State(), "2026-03-05|10|0|1");
    EXPECT_EQ(Bulletins().size(), 1u);
    EXPECT_EQ(Launch("2026-04-02"), 0);
}

TEST_F(LanzarPreventivoTest, CyclesThatDoNotEndStandStill) {
    const struct {
        std::int32_t cycle, done, ends;
        const char* after;
    } cases[] = {{10, 4, 0, "4|0"}, {0, 4, 1, "4|0"}, {-1, 4, 1, "4|0"}, {10, 4, 2, "5|0"},
                 {5, 4, 1, "0|1"},  {3, 9, 1, "0|1"}, {6, 4, 1, "5|0"},  {1, 0, 1, "0|1"}};
    int key = 0;
    for (const auto& each : cases)
        Add({.key = ++key, .cycle = each.cycle, .done = each.done, .ends = each.ends});
    EXPECT_EQ(Launch("2026-03-05"), 8);
    key = 0;
    for (const auto& each : cases)
        EXPECT_EQ(State(++key), std::string("2026-03-05|10|") + each.after) << key;
}

TEST_F(LanzarPreventivoTest, NullsOfACycleNeverCompare) {
    for (int key = 1; key <= 3; ++key)
        Add({.key = key, .cycle = 1, .done = 0, .ends = 1});
    world.Run(
        "UPDATE Imputacion_Preventiva SET Numero_Repeticion_Ciclo = NULL WHERE SC_Imputacion_Preventiva = 1;"
        "UPDATE Imputacion_Preventiva SET Finaliza = NULL WHERE SC_Imputacion_Preventiva = 2;"
        "UPDATE Imputacion_Preventiva SET Acumulado_Ciclo = NULL WHERE SC_Imputacion_Preventiva = 3");
    EXPECT_EQ(Launch("2026-03-05"), 3);
    EXPECT_EQ(State(1), "2026-03-05|10|0|0");
    EXPECT_EQ(State(2), "2026-03-05|10|0|0");
    EXPECT_EQ(State(3), "2026-03-05|10|NULL|0");
}

TEST_F(LanzarPreventivoTest, LooksOnlyAtLiveSynchronisedRowsOfAssetsInServiceOfAllProjects) {
    AddAsset("A-2", 3);
    AddAsset("A-3", 0, 9);
    Add({.key = 1});
    Add({.key = 2, .asset = "A-2"});
    Add({.key = 3, .asset = "A-3"});
    Add({.key = 4, .cancelled = 1});
    AddConventional({.key = 5, .frequency = "Diaria"});
    EXPECT_EQ(preventive->LanzarPreventivo(World::Day("2026-03-05"), 3, "Larga", nullptr, 1), 2);
    EXPECT_THAT(Bulletins(), ElementsAre("1|2026-03-05|2026-03-12", "3|2026-03-05|2026-03-12"));
}

TEST_F(LanzarPreventivoTest, KeepsTheTimeOfDayOutOfEverythingStored) {
    Add({.key = 1});
    EXPECT_EQ(Launch("2026-03-05 17:30:00"), 1);
    EXPECT_EQ(State(), "2026-03-05|10|0|0");
    EXPECT_THAT(Bulletins(), ElementsAre("1|2026-03-05|2026-03-12"));
}

TEST_F(LanzarPreventivoTest, BulletinsAreRightUnderAnyShortDateForm) {
    Add({.key = 1});
    for (const char* form : {"mm/dd/yyyy", "yyyy-mm-dd", "dd.mm.yyyy"}) {
        world.Platform().shortDate = form;
        world.Run("DELETE FROM Boletin; UPDATE Imputacion_Preventiva SET Semana = 1");
        EXPECT_EQ(Launch("2026-03-05"), 1);
        EXPECT_THAT(Bulletins(), ElementsAre("1|2026-03-05|2026-03-12")) << form;
    }
}

TEST_F(LanzarPreventivoTest, InsideATransactionOfTheCallerItCommitsNothing) {
    Add({.key = 1});
    const std::vector<std::string> before = Stored();
    Zontara::Libreria::IniciarTransaccion();
    EXPECT_EQ(Launch("2026-03-05"), 1);
    EXPECT_EQ(world.Depth(), 1);
    EXPECT_TRUE(world.InTransaction());
    EXPECT_EQ(preventive->OTPreventivaGenerada()->Total(), 1);
    Zontara::Libreria::AbortarTransaccion();
    EXPECT_EQ(Stored(), before);
}

TEST_F(LanzarPreventivoTest, ARunStartedDuringAYieldNestsInTheOpenTransaction) {
    Add({.key = 1});
    AddConventional({.key = 2, .frequency = "Diaria"});
    int nested = -1;
    const auto other = Zontara::Create<Zontara::CImputacionPreventiva>();
    world.Platform().onYield = [&] {
        if (nested >= 0 || world.Depth() == 0) return;
        nested = 0;
        nested = other->LanzarPreventivoConvensional(World::Day("2026-03-05"), 3, "");
        EXPECT_EQ(world.Depth(), 1);
    };
    EXPECT_EQ(Launch("2026-03-05"), 1);
    EXPECT_EQ(nested, 1);
    EXPECT_EQ(world.Depth(), 0);
    EXPECT_EQ(Bulletins().size(), 2u);
    EXPECT_THAT(world.Story(), testing::Contains("begin").Times(1));
}

}  // namespace

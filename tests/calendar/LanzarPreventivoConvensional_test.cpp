#include "calendar/CImputacionPreventiva.h"

#include "tests/calendar/plant.h"

namespace {

using support::ActiveSelection;
using support::World;
using testing::ElementsAre;
using testing::IsEmpty;
using Zontara::Value;

class LanzarPreventivoConvensionalTest : public support::CalendarTest {};

TEST_F(LanzarPreventivoConvensionalTest, ADueRowGetsABulletinUnderTheBookedDayInOneTransaction) {
    AddConventional({.key = 4, .anchor = "1", .last = "2026-02-20", .cycle = 9, .done = 2, .ends = 1});
    EXPECT_EQ(LaunchConventional("2026-03-05"), 1);
    EXPECT_THAT(
        world.Story(),
        ElementsAre(
            "sql " + ActiveSelection("activo.estatus_actual not in (3,4,5,7)  and Es_Sincronizada=0    "),
            "event ImputacionesRecuperadas", "begin", "event ProcesandoImputacion", "key Boletin",
            "sql   INSERT Into Boletin (SC_Boletin ,SC_Imputacion_Preventiva ,ID_Equipo ,Fecha_Lanzamiento "
            ",Fecha_Entrega ,Fecha_Real_Entrega ,Lunes ,Martes ,Miercoles ,Jueves ,Viernes ,Sabado ,Domingo "
            ",Semana_Del_Ano ,SC_Usuario ) VALUES "
            "(1,4,'A-1','2026-03-02','2026-03-09','2026-03-02','','','','','','','',10,3)",
            "sql UPDATE Imputacion_Preventiva SET  acumulado_Ciclo = acumulado_Ciclo + 1,  Fecha_Ultimo_Lanzamiento "
            "='2026-03-02' ,  Semana = 10 Where SC_Imputacion_Preventiva =4",
            "commit", "notice "));
    EXPECT_EQ(State(4), "2026-03-02|10|3|0");
    EXPECT_EQ(preventive->OTPreventivaGenerada()->Total(), 1);
}

TEST_F(LanzarPreventivoConvensionalTest, WithoutAnyRowNothingHappensAtAll) {
    Add({.key = 1});
    EXPECT_EQ(LaunchConventional("2026-03-05"), 0);
    EXPECT_EQ(world.Record().size(), 1u);
    EXPECT_EQ(preventive->OTPreventivaGenerada()->Total(), 0);
}

TEST_F(LanzarPreventivoConvensionalTest, AProjectLimitsTheRowsThatAreVisited) {
    AddAsset("A-2", 0, 5);
    AddConventional({.key = 1, .frequency = "Diaria"});
    AddConventional({.key = 2, .asset = "A-2", .frequency = "Diaria"});
    std::vector<std::string> heard;
    preventive->Subscribe([&](std::string_view event, Value& argument) {
        heard.push_back(std::string(event) + " " + std::to_string(argument.Get<std::int32_t>()));
    });
    EXPECT_EQ(preventive->LanzarPreventivoConvensional(World::Day("2026-03-05"), 3, "", nullptr, 5), 1);
    EXPECT_THAT(heard, ElementsAre("ImputacionesRecuperadas 1", "ProcesandoImputacion 1"));
    EXPECT_THAT(world.Statements().front(), testing::EndsWith(" and Es_Sincronizada=0   and activo.sc_proyecto=5  "));
    EXPECT_THAT(Bulletins(), ElementsAre("2|2026-03-05|2026-03-12"));
    EXPECT_EQ(preventive->LanzarPreventivoConvensional(World::Day("2026-03-05"), 3, "", nullptr, -5), 1);
    EXPECT_EQ(State(1), "2026-03-05|10|0|0");
}

TEST_F(LanzarPreventivoConvensionalTest, EachFrequencyBooksItsOwnDay) {
    const struct {
        const char* frequency;
        const char* anchor;
        const char* last;
        const char* state;
    } cases[] = {
        {"Fecha", "20/03/2026", "2026-03-10", "2026-03-20|12|0|0"},
        {"Diaria", "", "2026-03-19", "2026-03-20|12|0|0"},
        {"Semanal", "3", "2026-03-11", "2026-03-18|12|0|0"},
        {"Quincenal", "", "2026-03-01", "2026-03-15|11|0|0"},
        {"Mensual", "10", "2026-02-10", "2026-03-10|11|0|0"},
        {"Bimestral", "10,1", "2026-01-10", "2026-03-10|11|0|0"},
        {"Trimestral", "31,1", "2025-11-10", "2026-03-31|14|0|0"},
        {"Semestral", "20,1", "2025-09-20", "2026-03-20|12|0|0"},
        {"Anual", "1,1", "2025-03-20", "2026-03-01|9|0|0"},
    };
    int key = 0;
    for (const auto& each : cases) {
        AddConventional({.key = ++key, .frequency = each.frequency, .anchor = each.anchor, .last = each.last});
    }
    EXPECT_EQ(LaunchConventional("2026-03-20"), 9);
    key = 0;
    for (const auto& each : cases)
        EXPECT_EQ(State(++key), each.state) << each.frequency;
}

TEST_F(LanzarPreventivoConvensionalTest, TheStepMustReachTheInterval) {
    AddConventional({.key = 1, .frequency = "Bimestral", .anchor = "1,1", .last = "2026-01-01", .interval = 2});
    AddConventional({.key = 2, .frequency = "Mensual", .anchor = "1", .last = "2020-01-01", .interval = 2});
    EXPECT_EQ(LaunchConventional("2026-03-05"), 1);
    EXPECT_EQ(State(1), "2026-03-01|9|0|0");
    EXPECT_EQ(State(2), "2020-01-01|1|0|0");
}

TEST_F(LanzarPreventivoConvensionalTest, ADayThatIsNotDueIsNotBookedForTheRowsBehind) {
    AddConventional({.key = 1, .frequency = "Diaria", .last = "2026-03-05"});
    AddConventional({.key = 2, .frequency = "Diaria", .last = "2026-03-05", .interval = 0});
    EXPECT_EQ(LaunchConventional("2026-03-05"), 1);
    EXPECT_EQ(State(2), "1899-12-30|53|0|0");
}

TEST_F(LanzarPreventivoConvensionalTest, ADateRowStopsBeingDueWithoutBeingCancelled) {
    AddConventional({.key = 1, .frequency = "Fecha", .anchor = "05/03/2026"});
    EXPECT_EQ(LaunchConventional("2026-03-05"), 1);
    EXPECT_EQ(LaunchConventional("2026-03-05"), 0);
    EXPECT_EQ(State(), "2026-03-05|10|0|0");
}

TEST_F(LanzarPreventivoConvensionalTest, ADateRowWithACycleOfOneEndsWithItsLaunch) {
    AddConventional({.key = 1, .frequency = "Fecha", .anchor = "05/03/2026", .cycle = 1, .ends = 1});
    EXPECT_EQ(LaunchConventional("2026-03-05"), 1);
    EXPECT_EQ(State(), "2026-03-05|10|0|1");
}

TEST_F(LanzarPreventivoConvensionalTest, TheBookedDayAnchorsTheNextCount) {
    AddConventional({.key = 1, .frequency = "Quincenal", .last = "2026-02-01"});
    EXPECT_EQ(LaunchConventional("2026-03-15"), 1);
    EXPECT_EQ(State(), "2026-03-01|9|0|0");
    EXPECT_EQ(LaunchConventional("2026-03-15"), 0);
    EXPECT_EQ(LaunchConventional("2026-03-16"), 1);
    EXPECT_EQ(State(), "2026-03-15|11|0|0");
    EXPECT_EQ(LaunchConventional("2026-03-30"), 0);
}

TEST_F(LanzarPreventivoConvensionalTest, SkipsAssetsOutOfServiceAndSynchronisedRows) {
    AddAsset("A-2", 7);
    AddConventional({.key = 1, .asset = "A-2", .frequency = "Diaria"});
    Add({.key = 2, .frequency = "Diaria"});
    EXPECT_EQ(LaunchConventional("2026-03-05"), 0);
    EXPECT_THAT(Bulletins(), IsEmpty());
}

}  // namespace

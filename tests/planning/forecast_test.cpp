#include "planning/forecast.h"

#include "tests/planning/plant.h"

#include "bulletins/CConfiguracionOTBoletin.h"
#include "meter/CImputacionSistematica.h"

namespace {

using planning::Forecast;
using planning::Week;
using support::Assignment;
using support::World;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

struct ForecastTest : support::PlanningTest {
    Forecast Run(int weeks, const std::string& from = "2026-03-09") {
        return planning::ForecastWeeks(component, World::Day(from), weeks, [&](int week) { heard.push_back(week); });
    }
    template <class Member> static std::vector<double> Each(const Forecast& forecast, Member member) {
        std::vector<double> values;
        for (const Week& week : forecast.weeks)
            values.push_back(static_cast<double>(week.*member));
        return values;
    }

    std::vector<int> heard;
};

TEST_F(ForecastTest, LaunchesEachWeekOnTheSameWeekday) {
    Add({1});
    const Forecast forecast = Run(3);
    ASSERT_THAT(forecast.weeks, SizeIs(3));
    EXPECT_EQ(forecast.weeks[0].day, World::Day("2026-03-09"));
    EXPECT_EQ(forecast.weeks[2].day, World::Day("2026-03-23"));
    EXPECT_THAT(Each(forecast, &Week::synchronised), ElementsAre(1, 1, 1));
    EXPECT_THAT(heard, ElementsAre(0, 1, 2));
}

TEST_F(ForecastTest, KindsAreCountedApart) {
    Add({1});
    Assignment monthly{2};
    monthly.frequency = "Mensual";
    monthly.anchor = "16";
    monthly.last = "2026-02-16";
    AddConventional(monthly);
    const Forecast forecast = Run(3);
    EXPECT_THAT(Each(forecast, &Week::conventional), ElementsAre(0, 1, 0));
    EXPECT_EQ(forecast.weeks[1].Bulletins(), 2);
    EXPECT_EQ(forecast.Total().Bulletins(), 4);
}

TEST_F(ForecastTest, SaysWhatTheRealLaunchesThenDo) {
    int key = 0;
    for (const char* frequency : {"Diaria", "Semanal", "Quincenal", "Mensual", "Bimestral", "Trimestral", "Anual"}) {
        Assignment row{++key};
        row.frequency = frequency;
        row.anchor = "3";
        row.last = "2025-03-03";
        Add(row);
        row.key = ++key;
        row.anchor = "3,3";
        if (row.frequency != "Semanal") AddConventional(row);
    }
    SetMeter("A-1", 700);
    AddMeterAssignment(1, "A-1", 40, 650);
    const Forecast forecast = Run(20);
    EXPECT_THAT(Bulletins(), IsEmpty());
    for (const Week& week : forecast.weeks) {
        EXPECT_EQ(preventive->LanzarPreventivo(week.day, 0, ""), week.synchronised);
        EXPECT_EQ(preventive->LanzarPreventivoConvensional(week.day, 0, ""), week.conventional);
        const std::string before = world.Scalar("SELECT count(*) FROM Orden_Trabajo");
        component.ImputacionSistematica()->GenerarOTSSistematicas(week.day,
                                                                  std::make_shared<Zontara::CConfiguracionOTBoletin>());
        const std::string after = world.Scalar("SELECT count(*) FROM Orden_Trabajo");
        EXPECT_EQ(std::stoi(after) - std::stoi(before), week.orders);
    }
    EXPECT_GT(forecast.Total().Bulletins(), 40);
    EXPECT_EQ(forecast.Total().orders, 1);
}

TEST_F(ForecastTest, MetersMoveOnByTheirAverageUse) {
    SetMeter("A-1", 700);
    AddMeterAssignment(1, "A-1", 100, 660);
    AddMeterAssignment(2, "A-1", 1000, 660);
    AddMeterAssignment(3, "A-1", 10, 0, 1);
    UseFiveADay("A-1");
    // 740 on the first Monday, 35 more each week; the first order lifts the reference to 775.
    const Forecast forecast = Run(5);
    EXPECT_THAT(Each(forecast, &Week::orders), ElementsAre(0, 1, 0, 0, 1));
    ASSERT_THAT(forecast.meters, SizeIs(1));
    EXPECT_EQ(forecast.meters[0].asset, "A-1");
    EXPECT_EQ(forecast.meters[0].name, "Pump");
    EXPECT_EQ(forecast.meters[0].unit, "h");
    EXPECT_DOUBLE_EQ(forecast.meters[0].use.perDay, 5);
}

TEST_F(ForecastTest, AMeterWithoutReadingsStandsStill) {
    SetMeter("A-1", 700);
    AddMeterAssignment(1, "A-1", 100, 660);
    const Forecast forecast = Run(52);
    EXPECT_EQ(forecast.Total().orders, 0);
    ASSERT_THAT(forecast.meters, SizeIs(1));
    EXPECT_FALSE(forecast.meters[0].use.Known());
}

TEST_F(ForecastTest, AddsUpHoursMaterialsAndCostOfTheTasks) {
    world.Run(
        "UPDATE Gama SET Costo_Actual = 12.5;"
        "INSERT INTO materiales_gama (Descripcion, Costo_Unitario, Cantidad_Necesaria, sc_gama, item)"
        " VALUES ('Grease', 9.8, 0.5, 7, 1), ('Cloth', 0.25, 4, 7, 2)");
    AddAsset("A-2");
    Add({1});
    Add({2, "A-2"});
    const Forecast forecast = Run(2);
    for (const Week& week : forecast.weeks) {
        EXPECT_DOUBLE_EQ(week.hours, 6) << "two tasks of two people for an hour and a half";
        EXPECT_EQ(week.materialLines, 4);
        EXPECT_EQ(week.materialCost.ToText(), "11.8");
        EXPECT_EQ(week.cost.ToText(), "25");
    }
    EXPECT_EQ(forecast.Total().materialCost.ToText(), "23.6");
    EXPECT_EQ(forecast.Total().cost.ToText(), "50");
    ASSERT_THAT(forecast.materials, SizeIs(2));
    EXPECT_EQ(forecast.materials[0].name, "Cloth");
    EXPECT_DOUBLE_EQ(forecast.materials[0].quantity, 16);
    EXPECT_EQ(forecast.materials[1].unitCost.ToText(), "9.8");
}

TEST_F(ForecastTest, HoursAreTheOnesThatAWorkOrderWouldGet) {
    const std::pair<const char*, double> cases[] = {
        {"Tiempo_Necesario = '2.5', Hombres_Necesarios = 3", 7.5},
        {"Tiempo_Necesario = '2 h', Hombres_Necesarios = 3", 0},
        {"Tiempo_Necesario = '2', Hombres_Necesarios = 0", 2},
        {"Tiempo_Necesario = '2', Hombres_Necesarios = NULL", 0},
        {"Tiempo_Necesario = NULL, Hombres_Necesarios = 1", 0},
    };
    Add({1});
    for (const auto& [values, hours] : cases) {
        SCOPED_TRACE(values);
        world.Run("UPDATE Gama SET " + std::string(values));
        const Forecast forecast = Run(1);
        EXPECT_EQ(forecast.Total().synchronised, 1);
        EXPECT_DOUBLE_EQ(forecast.Total().hours, hours);
    }
}

TEST_F(ForecastTest, HoursAreToldByTradeInThePlantsOrder) {
    world.Run(
        "INSERT INTO Ejecutor_Gama VALUES (2, 'Electricians', 0);"
        "INSERT INTO Ejecutor_Gama VALUES (3, 'Idle', 2);"
        "INSERT INTO Gama (SC_Gama, Descripcion, SC_Grupo_Gama, SC_Ejecutor_Gama, Numero_Gama, Tiempo_Necesario,"
        " Hombres_Necesarios) VALUES (8, 'Check', 1, 2, 13, '1', 1), (9, 'Sweep', 1, 0, 14, '4', 1)");
    Add({1});
    Add({2, "A-1", 8});
    Add({3, "A-1", 9});
    const Forecast forecast = Run(1);
    EXPECT_THAT(forecast.trades, ElementsAre("Electricians", "Workshop", ""));
    EXPECT_THAT(forecast.weeks[0].hoursByTrade, ElementsAre(1, 3, 4));
    EXPECT_THAT(forecast.Total().hoursByTrade, ElementsAre(1, 3, 4));
}

TEST_F(ForecastTest, LeavesNothingBehind) {
    Add({1});
    SetMeter("A-1", 700);
    AddMeterAssignment(1, "A-1", 10, 0);
    UseFiveADay("A-1");
    const auto before = StoredAndMeters();
    EXPECT_GT(Run(4).Total().orders, 0);
    EXPECT_EQ(StoredAndMeters(), before);
    EXPECT_EQ(world.Depth(), 0);
    world.Forget();
    component.ImputacionPreventiva();
    EXPECT_THAT(world.Story(), IsEmpty());
}

TEST_F(ForecastTest, WhatStopsALaunchStopsItAndLeavesNothingBehind) {
    Add({1});
    Assignment bad{2};
    bad.frequency = "Mensual";
    bad.anchor = "soon";
    AddConventional(bad);
    const auto before = StoredAndMeters();
    EXPECT_EQ(support::NumberOf([&] { Run(4); }), 13);
    EXPECT_EQ(StoredAndMeters(), before);
    EXPECT_EQ(world.Depth(), 0);
    EXPECT_FALSE(world.InTransaction());
}

TEST_F(ForecastTest, OfNoWeeksIsEmpty) {
    const Forecast forecast = Run(0);
    EXPECT_THAT(forecast.weeks, IsEmpty());
    EXPECT_EQ(forecast.Total().Bulletins(), 0);
}

}  // namespace

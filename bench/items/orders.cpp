#include "bench/items/compared.h"
#include "bench/items/items.h"
#include "bench/items/streams.h"
#include "bench/plant.h"
#include "calendar/CImputacionPreventiva.h"
#include "meter/CImputacionSistematica.h"

#include <string>
#include <vector>

namespace bench {

namespace {

constexpr char kReset[] =
    "UPDATE Imputacion_Preventiva SET Semana = 9, Fecha_Ultimo_Lanzamiento = '2026-02-23';"
    "UPDATE Imputacion_Sistematica SET Ultimo_Acumulado = 3000;"
    "DELETE FROM Orden_Trabajo; DELETE FROM Orden_Generada; DELETE FROM Material_OT";

void AddRatios(const std::string& what, const Times& times, Table& table) {
    table.AddRatio("2", what + " : bound by hand", times.ours, times.bound, 1.25);
    table.AddRatio("2", what + " : the same, each question once", times.ours, times.once, 0);
}

void MeasureMeter(Component::Where where, const Scale& scale, Table& table) {
    const int assets = scale.Rows(10'000);
    const std::string what = "GenerarOTSSistematicas, " + std::to_string(assets) + " assets by 4" + PlaceOf(where);
    Progress(what);
    const Plant plant("meter");
    plant.AddMetered(assets, 4);
    plant.AddProcess();
    const Pair pair(plant.Path(), where);
    Zontara::CImputacionSistematica meter;
    const auto orders = Orders();
    const auto written = [&] {
        auto count = pair.component.Connection().Prepare("SELECT count(*) FROM Orden_Trabajo");
        return count.Step() ? count.Int(0) : 0;
    };
    const auto byHand = [&](Questions questions) {
        return Side{[&] { pair.bound.Run(kReset); },
                    [&pair, assets, questions] {
                        Require(GenerateMeterOrders(pair.bound, questions) == assets * 4,
                                "an order for each assignment");
                    }};
    };
    const auto times = Alternate(scale.rounds, {{[&] { pair.component.Connection().RunScript(kReset); },
                                                 [&] {
                                                     meter.GenerarOTSSistematicas(LaunchDay(), orders, "", 0, 0);
                                                     Require(written() == assets * 4, "an order for each assignment");
                                                 }},
                                                byHand(Questions::EachTime),
                                                byHand(Questions::Once)});
    AddRatios(what, {times[0], times[1], times[2]}, table);
}

}  // namespace

Times CompareOrders(Component::Where where, int rows, int rounds, bool alsoOnce) {
    const Plant plant("orders");
    plant.AddWeekly(rows);
    plant.AddProcess();
    const Pair pair(plant.Path(), where);
    Zontara::CImputacionPreventiva calendar;
    const auto orders = Orders();
    const auto byHand = [&](Questions questions) {
        return Side{[&] { pair.bound.Run(kReset); },
                    [&pair, rows, questions] {
                        Require(LaunchOrders(pair.bound, questions) == rows, "an order for each row");
                    }};
    };
    std::vector<Side> sides{
        {[&] { pair.component.Connection().RunScript(kReset); },
         [&] { Require(calendar.LanzarPreventivo(LaunchDay(), 7, "Breve", orders) == rows, "an order for each row"); }},
        byHand(Questions::EachTime)};
    if (alsoOnce) sides.push_back(byHand(Questions::Once));
    const auto times = Alternate(rounds, sides);
    return {times[0], times[1], alsoOnce ? times[2] : std::vector<double>()};
}

void MeasureOrders(const Scale& scale, Table& table) {
    const int rows = scale.Rows(100'000);
    for (const auto where : {Component::Where::InMemory, Component::Where::OnFile}) {
        const std::string what =
            "LanzarPreventivo, " + std::to_string(rows) + " orders of 3 materials" + PlaceOf(where);
        Progress(what);
        AddRatios(what, CompareOrders(where, rows, scale.rounds, true), table);
        MeasureMeter(where, scale, table);
    }
}

}  // namespace bench

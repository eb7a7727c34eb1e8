#include "planning/status.h"

#include "bulletins/CBoletin.h"
#include "calendar/frequency.h"
#include "frame/convert.h"
#include "frame/provider.h"

#include <algorithm>
#include <map>
#include <utility>

namespace planning {

namespace {

using dhRichClient3::Connection;

std::int64_t Count(Connection& database, std::string_view query) {
    auto row = database.Prepare(query);
    return row.Step() ? row.Int64(0) : 0;
}

void ReadFrequencies(Connection& database, Status& status) {
    auto row = database.Prepare(
        "SELECT coalesce(Frecuencia, ''), sum(Es_Sincronizada = 1), sum(Es_Sincronizada = 0)"
        " FROM Imputacion_Preventiva WHERE coalesce(Anulada, 0) = 0 GROUP BY 1 ORDER BY 1");
    while (row.Step())
        status.frequencies.push_back({row.Text(0), row.Int64(1), row.Int64(2)});
    const auto place = [](const Status::Frequency& each) {
        using Zontara::calendar::Frequency;
        const Frequency frequency = Zontara::calendar::FrequencyOf(each.word);
        return std::pair(frequency == Frequency::Unknown, frequency);
    };
    std::stable_sort(status.frequencies.begin(), status.frequencies.end(),
                     [&](const auto& a, const auto& b) { return place(a) < place(b); });
}

void ReadLatest(Connection& database, Status& status) {
    auto row = database.Prepare(
        "SELECT 'bulletin', CASE i.Es_Sincronizada WHEN 1 THEN 'synchronised' ELSE 'conventional' END, "
        "b.Fecha_Lanzamiento"
        " AS Dia, count(*) FROM Boletin b JOIN Imputacion_Preventiva i USING (SC_Imputacion_Preventiva) GROUP BY 2, 3"
        " UNION ALL SELECT 'order', CASE o.Origen WHEN 1 THEN 'meter' ELSE 'calendar' END, g.Fecha_Generacion, count(*)"
        " FROM Orden_Generada g JOIN Orden_Trabajo o USING (SC_Orden_Trabajo) GROUP BY 2, 3 ORDER BY 1, 2 DESC, Dia "
        "DESC");
    while (row.Step()) {
        Status::Latest latest{row.Text(0), row.Text(1), row.Text(2), row.Int64(3)};
        const bool first = status.latest.empty() || status.latest.back().paper != latest.paper ||
                           status.latest.back().kind != latest.kind;
        if (first) status.latest.push_back(std::move(latest));
    }
}

void ReadBulletins(Zontara::CGlobalPreventivo& component, Connection& database, Status& status) {
    auto row = database.Prepare(
        "SELECT coalesce(Estatus, 0), count(*), sum(Boletin_En_Ejecucion <> 0), sum(Boletin_Realizado <> 0)"
        " FROM Boletin GROUP BY 1 ORDER BY 1");
    while (row.Step()) {
        const std::int16_t number = Zontara::NarrowToInt16(row.Int(0));
        status.bulletins.push_back(
            {number, component.Boletin()->Estatus(number), row.Int64(1), row.Int64(2), row.Int64(3)});
    }
}

void ReadOrders(Connection& database, Status& status) {
    auto row = database.Prepare(
        "SELECT g.Fecha_Generacion, sum(o.Origen = 0), sum(o.Origen = 1) FROM Orden_Generada g"
        " JOIN Orden_Trabajo o USING (SC_Orden_Trabajo) WHERE g.Fecha_Generacion IS NOT NULL GROUP BY 1");
    std::map<std::pair<std::int32_t, std::int32_t>, Status::Week> weeks;
    while (row.Step()) {
        const Zontara::Date day = Zontara::ConvertTo<Zontara::Date>(row.Value(0));
        const std::int32_t year = Zontara::CivilOf(day).year;
        const std::int32_t number = Zontara::WeekOfYear(day);
        Status::Week& week = weeks[{year, number}];
        week.year = year;
        week.week = number;
        week.calendar += row.Int64(1);
        week.meter += row.Int64(2);
    }
    while (weeks.size() > kWeeksOfOrders)
        weeks.erase(weeks.begin());
    for (const auto& [number, week] : weeks)
        status.orders.push_back(week);
}

}  // namespace

Status StatusOf(Zontara::CGlobalPreventivo& component, Connection& database) {
    Status status;
    status.assets = Count(database, "SELECT count(*) FROM Activo");
    status.assetsInService =
        Zontara::Neighbours().Perluma().Activos()->SeleccionarActivos("", 0, 0, true, 0)->TotalRegistros();
    status.tasks = Count(database, "SELECT count(*) FROM Gama");
    ReadFrequencies(database, status);
    status.meterAssignments =
        Count(database, "SELECT count(*) FROM Imputacion_Sistematica WHERE coalesce(Anulada, 0) = 0");
    status.cancelled = Count(database,
                             "SELECT (SELECT count(*) FROM Imputacion_Preventiva WHERE Anulada <> 0)"
                             " + (SELECT count(*) FROM Imputacion_Sistematica WHERE Anulada <> 0)");
    ReadLatest(database, status);
    ReadBulletins(component, database, status);
    ReadOrders(database, status);
    return status;
}

}  // namespace planning

#include "planning/forecast.h"

#include "bulletins/CBoletin.h"
#include "bulletins/CConfiguracionOTBoletin.h"
#include "calendar/CImputacionPreventiva.h"
#include "catalogues/CEjecutorGama.h"
#include "frame/convert.h"
#include "meter/CImputacionSistematica.h"
#include "planning/launch_ear.h"
#include "planning/task_needs.h"

#include <algorithm>
#include <map>
#include <tuple>
#include <utility>

namespace planning {

namespace {

using Zontara::CGlobalPreventivo;
using Zontara::Date;
using Zontara::Money;

Money Sum(Money left, Money right) { return Money::FromTenThousandths(left.TenThousandths() + right.TenThousandths()); }

/// Everything that the forecast writes: undone when it goes.
class Undone {
public:
    explicit Undone(CGlobalPreventivo& component) : component_(component) { component_.IniciarTransaccion(); }
    ~Undone() { component_.AbortarTransaccion(); }
    Undone(const Undone&) = delete;
    Undone& operator=(const Undone&) = delete;

private:
    CGlobalPreventivo& component_;
};

/// The assets with live meter assignments, by asset.
std::vector<Meter> MetersOf(CGlobalPreventivo& component, Date from) {
    const auto uses = AverageUses(component, from);
    const auto rows = component.ImputacionSistematica()->SeleccionarPorEquipo(
        "", "Activo.ID_Activo,Activo.Descripcion,Anulada,Unidad_Lectura.Descripcion as Unidad ");
    std::vector<Meter> meters;
    for (; !rows->FinDeDatos(); rows->MoverSiguiente()) {
        std::string asset = Zontara::ToText(rows->Valor("ID_Activo"));
        if (Zontara::ToText(rows->Valor("Anulada")) != "0") continue;
        if (!meters.empty() && meters.back().asset == asset) continue;
        const auto use = uses.find(asset);
        meters.push_back({std::move(asset), Zontara::ToText(rows->Valor("Descripcion")),
                          Zontara::ToText(rows->Valor("Unidad")), use == uses.end() ? AverageUse() : use->second});
    }
    return meters;
}

/// The launches of the weeks, one after the other.
class Run {
public:
    Run(CGlobalPreventivo& component, Date from)
        : component_(component),
          tasks_(component, listening_.Ear()),
          meters_(MetersOf(component, from)),
          moved_(meters_.size()) {
        ReadCalendarTasks();
    }

    void LaunchWeek(Date day);
    Forecast Result();

private:
    using HoursByExecutor = std::map<std::int32_t, double>;

    void ReadCalendarTasks();
    void MoveMeters(Date day);
    /// Adds the bulletins that were just heard of, and gives their number.
    std::int64_t AddBulletins();
    std::int64_t AddOrders();
    void AddTask(std::int32_t task);
    void NameTrades(Forecast& forecast) const;

    CGlobalPreventivo& component_;
    Listening listening_;
    TaskBook tasks_;
    std::vector<Meter> meters_;
    /// What each meter was moved on by so far, in the order of the meters.
    std::vector<double> moved_;
    std::map<std::int32_t, std::int32_t> taskOfCalendar_;
    std::map<std::int32_t, std::int32_t> taskOfMeter_;

    std::vector<Week> weeks_;
    std::vector<HoursByExecutor> hours_;
    std::map<std::pair<std::string, Money>, double> materials_;
};

void Run::ReadCalendarTasks() {
    for (const bool synchronised : {true, false}) {
        const auto rows = component_.ImputacionPreventiva()->SeleccionarActivas(
            Zontara::DateOf(9999, 12, 31), "SC_Imputacion_Preventiva,Gama.SC_Gama", synchronised);
        for (; !rows->FinDeDatos(); rows->MoverSiguiente()) {
            taskOfCalendar_.emplace(Zontara::ConvertTo<std::int32_t>(rows->Valor("SC_Imputacion_Preventiva")),
                                    Zontara::ConvertTo<std::int32_t>(rows->Valor("SC_Gama")));
        }
    }
}

void Run::MoveMeters(Date day) {
    for (std::size_t i = 0; i < meters_.size(); ++i) {
        const AverageUse& use = meters_[i].use;
        const double growth = use.GrowthUntil(day) - moved_[i];
        if (growth <= 0) continue;
        moved_[i] += growth;
        component_.ImputacionSistematica()->ActualizarAcumulado(meters_[i].asset, 0, day, static_cast<float>(growth),
                                                                static_cast<float>(use.shown + moved_[i]));
    }
}

void Run::LaunchWeek(Date day) {
    constexpr std::int32_t kNobody = 0;
    weeks_.push_back({});
    hours_.push_back({});
    weeks_.back().day = day;
    MoveMeters(day);

    listening_.Ear().Forget();
    component_.ImputacionPreventiva()->LanzarPreventivo(day, kNobody, "");
    weeks_.back().synchronised = AddBulletins();
    component_.ImputacionPreventiva()->LanzarPreventivoConvensional(day, kNobody, "");
    weeks_.back().conventional = AddBulletins();
    component_.ImputacionSistematica()->GenerarOTSSistematicas(day,
                                                               std::make_shared<Zontara::CConfiguracionOTBoletin>());
    weeks_.back().orders = AddOrders();
}

std::int64_t Run::AddBulletins() {
    const std::vector<std::int32_t> bulletins = listening_.Ear().Bulletins();
    for (const std::int32_t bulletin : bulletins) {
        const auto row = component_.Boletin()->Buscar(bulletin, "SC_Imputacion_Preventiva");
        const auto assignment = Zontara::ConvertTo<std::int32_t>(row->Valor("SC_Imputacion_Preventiva"));
        AddTask(taskOfCalendar_.at(assignment));
    }
    listening_.Ear().Forget();
    return static_cast<std::int64_t>(bulletins.size());
}

std::int64_t Run::AddOrders() {
    const std::vector<std::int32_t> assignments = listening_.Ear().MeterAssignments();
    for (const std::int32_t assignment : assignments) {
        auto task = taskOfMeter_.find(assignment);
        if (task == taskOfMeter_.end()) {
            const std::int32_t key = component_.ImputacionSistematica()->IdGamaImputacion(assignment);
            task = taskOfMeter_.emplace(assignment, key).first;
        }
        AddTask(task->second);
        weeks_.back().hoursOfOrders += tasks_.Of(task->second).hours;
    }
    listening_.Ear().Forget();
    return static_cast<std::int64_t>(assignments.size());
}

void Run::AddTask(std::int32_t task) {
    const TaskNeeds& needs = tasks_.Of(task);
    Week& week = weeks_.back();
    week.hours += needs.hours;
    if (needs.hours > 0) hours_.back()[needs.executor] += needs.hours;
    week.materialLines += static_cast<std::int64_t>(needs.materials.size());
    week.materialCost = Sum(week.materialCost, needs.materialCost);
    week.cost = Sum(week.cost, needs.cost);
    for (const Material& material : needs.materials)
        materials_[{material.name, material.unitCost}] += material.quantity;
}

/// The executors with hours get their names and their order, and each week its hours by them.
void Run::NameTrades(Forecast& forecast) const {
    HoursByExecutor all;
    for (const HoursByExecutor& week : hours_)
        all.insert(week.begin(), week.end());
    // Those without an executor, or with one that is gone, come last.
    std::map<std::int32_t, std::pair<std::int32_t, std::string>> names;
    const auto rows = component_.EjecutorGama()->Seleccionar("SC_Ejecutor_Gama,Descripcion,Orden_En_Lista");
    for (; !rows->FinDeDatos(); rows->MoverSiguiente()) {
        const auto place = Zontara::NumberIn(Zontara::ToText(rows->Valor("Orden_En_Lista"))).value_or(0);
        names[Zontara::ConvertTo<std::int32_t>(rows->Valor("SC_Ejecutor_Gama"))] = {
            Zontara::RoundToInt32(place), Zontara::ToText(rows->Valor("Descripcion"))};
    }
    std::vector<std::tuple<bool, std::int32_t, std::string, std::int32_t>> order;
    for (const auto& [executor, hours] : all) {
        const auto name = names.find(executor);
        if (name == names.end()) {
            order.emplace_back(true, 0, "", executor);
        } else {
            order.emplace_back(false, name->second.first, name->second.second, executor);
        }
    }
    std::sort(order.begin(), order.end());
    for (const auto& [missing, place, name, executor] : order) {
        forecast.trades.push_back(name);
        for (std::size_t week = 0; week < forecast.weeks.size(); ++week) {
            const auto hours = hours_[week].find(executor);
            forecast.weeks[week].hoursByTrade.push_back(hours == hours_[week].end() ? 0 : hours->second);
        }
    }
}

Forecast Run::Result() {
    Forecast forecast;
    forecast.weeks = std::move(weeks_);
    forecast.meters = std::move(meters_);
    NameTrades(forecast);
    for (const auto& [material, quantity] : materials_)
        forecast.materials.push_back({material.first, material.second, quantity});
    return forecast;
}

}  // namespace

Week Forecast::Total() const {
    Week total;
    if (!weeks.empty()) total.day = weeks.front().day;
    total.hoursByTrade.resize(trades.size());
    for (const Week& week : weeks) {
        total.synchronised += week.synchronised;
        total.conventional += week.conventional;
        total.orders += week.orders;
        total.hours += week.hours;
        total.hoursOfOrders += week.hoursOfOrders;
        for (std::size_t i = 0; i < trades.size(); ++i)
            total.hoursByTrade[i] += week.hoursByTrade[i];
        total.materialLines += week.materialLines;
        total.materialCost = Sum(total.materialCost, week.materialCost);
        total.cost = Sum(total.cost, week.cost);
    }
    return total;
}

Forecast ForecastWeeks(CGlobalPreventivo& component, Date from, std::int32_t weeks,
                       const std::function<void(std::int32_t)>& onWeek) {
    const Undone undone(component);
    Run run(component, from);
    for (std::int32_t week = 0; week < weeks; ++week) {
        onWeek(week);
        run.LaunchWeek(Zontara::AddDays(from, week * 7));
    }
    return run.Result();
}

}  // namespace planning

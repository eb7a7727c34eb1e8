#include "planning/average_use.h"

#include "frame/convert.h"
#include "readings/CLecturaEquipo.h"

#include <algorithm>

namespace planning {

namespace {

using Zontara::Date;

constexpr std::int32_t kDaysLookedBack = 365;

/// The readings of one asset so far. Those of its first day are the level that the growth is counted from.
struct Collected {
    AverageUse use;
    double growth = 0;
    double growthOfFirstDay = 0;

    void Add(Date day, double grown, double shown) {
        if (use.readings == 0 || day.days < use.first.days) {
            use.first = day;
            growthOfFirstDay = 0;
        }
        if (day == use.first) growthOfFirstDay += grown;
        if (use.readings == 0 || day.days >= use.last.days) {
            use.last = day;
            use.shown = shown;
        }
        growth += grown;
        ++use.readings;
    }

    AverageUse Average() const {
        AverageUse average = use;
        if (use.Known()) {
            const double perDay = (growth - growthOfFirstDay) / Zontara::DaysBetween(use.first, use.last);
            average.perDay = std::max(perDay, 0.0);
        }
        return average;
    }
};

}  // namespace

double AverageUse::GrowthUntil(Date day) const {
    return perDay * std::max(Zontara::DaysBetween(last, day), std::int32_t{0});
}

std::map<std::string, AverageUse> AverageUses(Zontara::CGlobalPreventivo& component, Date on,
                                              const std::string& asset) {
    const auto rows = component.LecturaEquipo()->ObtenerLecturas(Zontara::AddDays(on, -kDaysLookedBack), on, "", 0, 0,
                                                                 "Activo.ID_Activo,Fecha,Valor_Real,Lectura",
                                                                 asset.empty() ? asset : "'" + asset + "'");
    std::map<std::string, Collected> byAsset;
    for (; !rows->FinDeDatos(); rows->MoverSiguiente()) {
        byAsset[Zontara::ToText(rows->Valor("ID_Activo"))].Add(Zontara::ConvertTo<Date>(rows->Valor("Fecha")),
                                                               Zontara::ConvertTo<double>(rows->Valor("Valor_Real")),
                                                               Zontara::ConvertTo<double>(rows->Valor("Lectura")));
    }
    std::map<std::string, AverageUse> uses;
    for (const auto& [key, collected] : byAsset)
        uses.emplace(key, collected.Average());
    return uses;
}

}  // namespace planning

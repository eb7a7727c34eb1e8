#include "planning/explanation.h"

#include "calendar/CImputacionPreventiva.h"
#include "frame/convert.h"
#include "frame/provider.h"
#include "meter/CImputacionSistematica.h"
#include "planning/explain_parts.h"

#include <algorithm>
#include <iterator>

namespace planning {

namespace {

using Zontara::CGlobalPreventivo;
using Zontara::Date;

Date YearsLater(Date day) {
    constexpr std::int32_t kLastYear = 9999;
    const Zontara::CivilDate civil = Zontara::CivilOf(day);
    return Zontara::DateOf(std::min(civil.year + kYearsAhead, kLastYear), civil.month, civil.day);
}

/// Whether a launch selects the asset at all.
bool InService(const std::string& asset) {
    const auto assets = Zontara::Neighbours().NewServicioActivos()->SeleccionarActivos("", 0, 0, true, 0);
    for (; !assets->FinDeDatos(); assets->MoverSiguiente()) {
        if (Zontara::ToText(assets->Valor("ID_Activo")) == asset) return true;
    }
    return false;
}

Question Ask(CGlobalPreventivo& component, const std::string& asset, Date on) {
    return {component, asset, 0, on, YearsLater(on), InService(asset)};
}

void Append(std::vector<Explanation>& all, std::vector<Explanation> more) {
    std::sort(more.begin(), more.end(), [](const auto& left, const auto& right) { return left.key < right.key; });
    std::move(more.begin(), more.end(), std::back_inserter(all));
}

/// The asset of the first row; the empty text when there is none.
std::string AssetIn(const Zontara::Ref<Zontara::Recordset>& rows) {
    return rows->FinDeDatos() ? std::string() : Zontara::ToText(rows->Valor("ID_Activo"));
}

std::string AssetOfCalendar(CGlobalPreventivo& component, std::int32_t key) {
    const auto calendar = component.ImputacionPreventiva();
    const Date forever = Zontara::DateOf(9999, 12, 31);
    for (const bool synchronised : {true, false}) {
        std::string asset =
            AssetIn(calendar->SeleccionarActivas(forever, "Activo.ID_Activo", synchronised, "", false, 0, key));
        if (!asset.empty()) return asset;
    }
    return AssetIn(calendar->Buscar(key, "Activo.ID_Activo "));
}

}  // namespace

std::vector<Explanation> ExplainAsset(CGlobalPreventivo& component, const std::string& asset, Date on) {
    const Question question = Ask(component, asset, on);
    std::vector<Explanation> all;
    Append(all, ExplainCalendar(question, Kind::Synchronised));
    Append(all, ExplainCalendar(question, Kind::Conventional));
    Append(all, ExplainMeter(question));
    return all;
}

std::vector<Explanation> ExplainAssignment(CGlobalPreventivo& component, std::int32_t key, Date on) {
    std::vector<Explanation> all;
    if (const std::string asset = AssetOfCalendar(component, key); !asset.empty()) {
        Question question = Ask(component, asset, on);
        question.key = key;
        Append(all, ExplainCalendar(question, Kind::Synchronised));
        Append(all, ExplainCalendar(question, Kind::Conventional));
    }
    const std::string metered = AssetIn(component.ImputacionSistematica()->Buscar(key, "Activo.ID_Activo "));
    if (!metered.empty()) {
        Question question = Ask(component, metered, on);
        question.key = key;
        Append(all, ExplainMeter(question));
    }
    return all;
}

}  // namespace planning

#include "planning/task_needs.h"

#include "catalogues/CGama.h"
#include "catalogues/CMaterialGama.h"
#include "frame/convert.h"
#include "frame/raised_error.h"

namespace planning {

namespace {

/// No order has this key: labour that is put on it is heard and goes nowhere.
constexpr std::int32_t kNoOrder = 0;

double NumberOrNothing(const Zontara::Value& value) { return Zontara::NumberIn(Zontara::ToText(value)).value_or(0); }

}  // namespace

const TaskNeeds& TaskBook::Of(std::int32_t task) {
    const auto found = known_.find(task);
    if (found != known_.end()) return found->second;
    return known_.emplace(task, Read(task)).first->second;
}

TaskNeeds TaskBook::Read(std::int32_t task) {
    TaskNeeds needs;
    const auto row = component_.Gama()->Buscar(task, "SC_Ejecutor_Gama,Costo_Actual");
    if (row->FinDeDatos()) return needs;
    needs.executor = Zontara::RoundToInt32(NumberOrNothing(row->Valor("SC_Ejecutor_Gama")));
    needs.cost = Zontara::Money::FromNumber(NumberOrNothing(row->Valor("Costo_Actual")));
    needs.hours = HoursOf(task);
    needs.materials = MaterialsOf(task);
    needs.materialCost = component_.MaterialGama()->CostoTotalMaterialesGama(task);
    return needs;
}

double TaskBook::HoursOf(std::int32_t task) {
    ear_.Forget();
    try {
        component_.MaterialGama()->AsignarManoObraAOT(kNoOrder, task);
    } catch (const Zontara::RaisedError&) {
        // A task without a crew can't be put on an order; its bulletins are launched all the same.
        return 0;
    }
    return ear_.Labour();
}

std::vector<Material> TaskBook::MaterialsOf(std::int32_t task) {
    std::vector<Material> materials;
    const auto rows = component_.MaterialGama()->ListarMaterialesDeUnaGama(task);
    for (; !rows->FinDeDatos(); rows->MoverSiguiente()) {
        materials.push_back({Zontara::ToText(rows->Valor("Descripcion")),
                             Zontara::Money::FromNumber(NumberOrNothing(rows->Valor("Costo_Unitario"))),
                             NumberOrNothing(rows->Valor("Cantidad_Necesaria"))});
    }
    return materials;
}

}  // namespace planning

#include "calendar/CImputacionPreventiva.h"
#include "catalogues/CEjecutorGama.h"
#include "catalogues/CEquipo.h"
#include "catalogues/CGama.h"
#include "catalogues/CMaterialGama.h"
#include "frame/convert.h"
#include "frame/provider.h"
#include "planning/lint_parts.h"

#include <fmt/format.h>
#include <unordered_set>

namespace planning::lint {

namespace {

void Add(const Look& look, const dhRichClient3::Statement& task, Severity severity, std::string rule, std::string what,
         std::string advice) {
    look.findings.push_back({severity, std::move(rule), "Gama", task.Text(0), "", TaskName(task.Text(1), task.Text(2)),
                             std::move(what), std::move(advice)});
}

/// The tasks that the catalogue lists.
std::unordered_set<std::string> ListedTasks(const Look& look) {
    constexpr std::int32_t kAllGroups = 0;
    const auto rows = look.component.Gama()->Seleccionar(kAllGroups, "Gama.SC_Gama");
    std::unordered_set<std::string> keys;
    ForEach(*rows, [&] { keys.insert(TextIn(*rows, "SC_Gama")); });
    return keys;
}

std::unordered_set<std::string> Executors(const Look& look) {
    const auto rows = look.component.EjecutorGama()->Seleccionar("SC_Ejecutor_Gama");
    std::unordered_set<std::string> keys;
    ForEach(*rows, [&] { keys.insert(TextIn(*rows, "SC_Ejecutor_Gama")); });
    return keys;
}

/// What a launch into work orders reads of a task. Crew and time are read as it reads them.
void CheckLabour(const Look& look, const dhRichClient3::Statement& task) {
    try {
        Zontara::ConvertTo<std::int16_t>(task.Value(4));
    } catch (const Zontara::RaisedError& error) {
        Add(look, task, Severity::Error, "stops-launch",
            fmt::format("Stops every launch that makes a work order of it: its crew can't be read ({}).",
                        CauseOf(error)),
            "Enter Hombres_Necesarios, 0 or more.");
    }
    const std::string time = task.Text(5);
    if (time.find_first_not_of(' ') == std::string::npos || Zontara::NumberIn(time)) return;
    Add(look, task, Severity::Warning, "no-hours",
        fmt::format("Its work orders are planned with 0 hours: the time '{}' isn't a number.", time),
        "Write Tiempo_Necesario in hours, as a number with a point.");
}

void CheckMaterials(const Look& look, const dhRichClient3::Statement& task) {
    const auto rows = look.component.MaterialGama()->ListarMaterialesDeUnaGama(task.Int(0));
    ForEach(*rows, [&] {
        try {
            Zontara::ConvertTo<Zontara::Money>(rows->Valor("Costo_Unitario"));
            Zontara::ConvertTo<float>(rows->Valor("Cantidad_Necesaria"));
            Zontara::ConvertTo<std::string>(rows->Valor("Descripcion"));
        } catch (const Zontara::RaisedError& error) {
            look.findings.push_back({Severity::Error, "stops-launch", "materiales_gama",
                                     TextIn(*rows, "sc_materiales_gama"), "", TaskName(task.Text(1), task.Text(2)),
                                     fmt::format("Stops every launch that makes a work order of its task: the line of "
                                                 "material can't be read ({}).",
                                                 CauseOf(error)),
                                     "Enter its description, cost and quantity."});
        }
    });
}

void CheckTasks(const Look& look) {
    const std::unordered_set<std::string> listed = ListedTasks(look);
    const std::unordered_set<std::string> executors = Executors(look);
    auto task = look.database.Prepare(
        "SELECT SC_Gama, Numero_Gama, Descripcion, SC_Ejecutor_Gama, Hombres_Necesarios, Tiempo_Necesario FROM Gama"
        " ORDER BY 1");
    while (task.Step()) {
        if (listed.count(task.Text(0)) == 0) {
            Add(look, task, Severity::Warning, "left-out",
                "Has no group that is there: the catalogue of tasks, most lists of assignments and the list of "
                "bulletins "
                "leave it out. Calendar launches launch it all the same; meter launches never do.",
                "Give the task a group.");
        }
        if (executors.count(task.Text(3)) == 0) {
            Add(look, task, Severity::Warning, "left-out",
                "Has no executor that is there: the lists of assignments, of parallels and of bulletins leave it out. "
                "It "
                "is launched all the same.",
                "Give the task an executor.");
        }
        CheckLabour(look, task);
        CheckMaterials(look, task);
    }
}

/// The list of bulletins holds only those of an item of equipment with the asset's own identifier.
void CheckEquipment(const Look& look) {
    auto assets = look.database.Prepare(
        "SELECT DISTINCT a.ID_Activo FROM Imputacion_Preventiva i JOIN Activo a ON a.ID_Activo = i.ID_Activo"
        " WHERE coalesce(i.Anulada, 0) = 0 AND instr(a.ID_Activo, '''') = 0 ORDER BY 1");
    while (assets.Step()) {
        const std::string asset = assets.Text(0);
        if (look.component.Equipo()->ExisteEquipo(asset)) continue;
        look.findings.push_back({Severity::Warning, "left-out", "Activo", asset, asset, "",
                                 "The list of bulletins leaves its bulletins out: no item of equipment has the asset's "
                                 "identifier.",
                                 fmt::format("Enter the item of equipment {}.", asset)});
    }
}

void CheckProcess(const Look& look) {
    constexpr std::int32_t kActive = 1;
    if (!Zontara::Neighbours().Perluma().Procesos()->SeleccionarProcesos(kActive)->FinDeDatos()) return;
    look.findings.push_back({Severity::Note, "no-process", "Proceso", "", "", "",
                             "Work orders are made without a process: none is active.", "Enter an active process."});
}

}  // namespace

void Catalogues(const Look& look) {
    CheckTasks(look);
    CheckEquipment(look);
    CheckProcess(look);
}

}  // namespace planning::lint

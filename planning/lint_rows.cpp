#include "calendar/CImputacionPreventiva.h"
#include "frame/convert.h"
#include "planning/lint_parts.h"

#include <fmt/format.h>
#include <unordered_set>

namespace planning::lint {

namespace {

using Row = dhRichClient3::Statement;

/// Calendar assignments that aren't cancelled, as the table holds them, with what they refer to. The condition chooses
/// among them.
Row InForce(const Look& look, std::string_view condition) {
    return look.database.Prepare(fmt::format(
        "SELECT i.SC_Imputacion_Preventiva, i.ID_Activo, g.Numero_Gama, g.Descripcion, i.Fecha_Inicio,"
        " i.Es_Sincronizada, i.Numero_Repeticion_Ciclo, i.Frecuencia, a.ID_Activo IS NULL, g.SC_Gama IS NULL"
        " FROM Imputacion_Preventiva i LEFT JOIN Activo a ON a.ID_Activo = i.ID_Activo"
        " LEFT JOIN Gama g ON g.SC_Gama = i.SC_Gama"
        " WHERE coalesce(i.Anulada, 0) = 0 AND {} ORDER BY 1",
        condition));
}

void Add(const Look& look, const Row& row, Severity severity, std::string rule, std::string what, std::string advice) {
    look.findings.push_back({severity, std::move(rule), "Imputacion_Preventiva", row.Text(0), row.Text(1),
                             TaskName(row.Text(2), row.Text(3)), std::move(what), std::move(advice)});
}

/// The keys that launches select, whatever the day.
std::unordered_set<std::string> Selected(const Look& look) {
    std::unordered_set<std::string> keys;
    for (const bool synchronised : {true, false}) {
        const auto rows = look.component.ImputacionPreventiva()->SeleccionarActivas(
            Zontara::DateOf(9999, 12, 31), "SC_Imputacion_Preventiva", synchronised);
        ForEach(*rows, [&] { keys.insert(TextIn(*rows, "SC_Imputacion_Preventiva")); });
    }
    return keys;
}

/// Why no launch selects a row, and what helps.
std::pair<std::string, std::string> WhyNotSelected(const Row& row) {
    if (row.Int(8) != 0) return {"its asset isn't there", "Enter the asset, or cancel the assignment."};
    if (row.Int(9) != 0) return {"its task isn't there", "Enter the task, or cancel the assignment."};
    if (row.IsNull(4)) return {"it has no Fecha_Inicio", "Enter the day from which it is to be launched."};
    if (row.IsNull(5) || (row.Text(5) != "0" && row.Text(5) != "1")) {
        return {"it is neither synchronised nor conventional", "Set Es_Sincronizada to 1 or 0."};
    }
    return {"a column of it holds what no selection asks for", "Check Anulada (0) and Fecha_Inicio (yyyy-mm-dd)."};
}

void CheckSelection(const Look& look) {
    const std::unordered_set<std::string> selected = Selected(look);
    Row row = InForce(look, "1");
    while (row.Step()) {
        if (selected.count(row.Text(0)) > 0) continue;
        const auto [reason, advice] = WhyNotSelected(row);
        Add(look, row, Severity::Error, "never-selected",
            fmt::format("Never launched nor told to be overdue: {}, so that no launch selects it.", reason), advice);
    }
}

void CheckStart(const Look& look) {
    Row row = InForce(look, "i.Fecha_Inicio NOT GLOB '[0-9][0-9][0-9][0-9]-[0-1][0-9]-[0-3][0-9]'");
    while (row.Step()) {
        Add(look, row, Severity::Warning, "compares-texts",
            fmt::format("Begins by chance: Fecha_Inicio '{}' is compared with the launch day as a text yyyy-mm-dd.",
                        row.Text(4)),
            "Write Fecha_Inicio as yyyy-mm-dd.");
    }
}

void CheckEnd(const Look& look) {
    Row row = InForce(look, "i.Finaliza <> 0 AND coalesce(i.Numero_Repeticion_Ciclo, 0) <= 0");
    while (row.Step()) {
        Add(look, row, Severity::Note, "never-ends",
            "Goes on for ever although Finaliza says that it ends: its cycle has no length.",
            "Set Numero_Repeticion_Ciclo to the steps after which it ends, or Finaliza to 0.");
    }
}

void CheckTwins(const Look& look) {
    Row row = InForce(look,
                      "EXISTS (SELECT 1 FROM Imputacion_Preventiva o WHERE o.ID_Activo = i.ID_Activo"
                      " AND o.SC_Gama = i.SC_Gama AND o.Frecuencia = i.Frecuencia"
                      " AND o.Es_Sincronizada = i.Es_Sincronizada AND coalesce(o.Anulada, 0) = 0"
                      " AND o.SC_Imputacion_Preventiva < i.SC_Imputacion_Preventiva)");
    while (row.Step()) {
        Add(look, row, Severity::Note, "twice",
            fmt::format("Launched beside another assignment of the same task, asset and frequency {}: two papers for "
                        "one work.",
                        row.Text(7)),
            "Cancel one of the two, unless both are meant.");
    }
}

/// A quote in an asset's identifier ends the texts of the statements that hold it.
void CheckQuotes(const Look& look) {
    auto assets = look.database.Prepare(
        "SELECT ID_Activo, Descripcion FROM Activo WHERE instr(ID_Activo, '''') > 0 AND (ID_Activo IN (SELECT ID_Activo"
        " FROM Imputacion_Preventiva) OR ID_Activo IN (SELECT ID_Activo FROM Imputacion_Sistematica)) ORDER BY 1");
    while (assets.Step()) {
        try {
            look.component.ImputacionPreventiva()->ActivoTieneMantenimientoVencido(assets.Text(0));
        } catch (const Zontara::RaisedError& error) {
            look.findings.push_back({Severity::Error, "stops-launch", "Activo", assets.Text(0), assets.Text(0), "",
                                     fmt::format("Stops every launch in which one of its assignments is due: the quote "
                                                 "in the identifier breaks the statements ({}).",
                                                 CauseOf(error)),
                                     "Give the asset an identifier without a quote."});
        }
    }
}

}  // namespace

void CalendarRows(const Look& look) {
    CheckSelection(look);
    CheckStart(look);
    CheckEnd(look);
    CheckTwins(look);
    CheckQuotes(look);
}

}  // namespace planning::lint

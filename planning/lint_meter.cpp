#include "frame/convert.h"
#include "meter/CImputacionParalela.h"
#include "meter/CImputacionSistematica.h"
#include "planning/lint_parts.h"
#include "readings/CLecturaEquipo.h"

#include <fmt/format.h>
#include <unordered_set>

namespace planning::lint {

namespace {

using Zontara::Recordset;

constexpr const char* kTable = "Imputacion_Sistematica";
/// What the meter launch reads of each row, and what findings tell.
constexpr const char* kColumns =
    "SC_Imputacion_Sistematica,Activo.ID_Activo,Gama.Numero_Gama,Gama.Descripcion,Acumulado_Lectura,Ultimo_Acumulado,"
    "Lectura_Limite,Aproximacion_Lectura,Fecha_Inicio,Fecha_Fin";

void Add(const Look& look, const Recordset& row, Severity severity, std::string rule, std::string what,
         std::string advice) {
    look.findings.push_back({severity, std::move(rule), kTable, TextIn(row, "SC_Imputacion_Sistematica"),
                             TextIn(row, "ID_Activo"), TaskName(TextIn(row, "Numero_Gama"), TextIn(row, "Descripcion")),
                             std::move(what), std::move(advice)});
}

/// The counters of a row as the launch takes them: whole numbers.
struct Counters {
    std::int32_t accumulated = 0;
    std::int32_t reference = 0;
    std::int32_t limit = 0;
};

/// None, and a finding, when the launch couldn't take them.
std::optional<Counters> CountersOf(const Look& look, const Recordset& row) {
    const auto whole = [&](std::string_view column) { return Zontara::ConvertTo<std::int32_t>(row.Valor(column)); };
    try {
        return Counters{whole("Acumulado_Lectura"), whole("Ultimo_Acumulado"), whole("Lectura_Limite")};
    } catch (const Zontara::RaisedError& error) {
        Add(look, row, Severity::Error, "stops-launch",
            fmt::format("Stops the meter launch at this asset, so that no later asset gets its orders: {} "
                        "(Acumulado_Lectura '{}', Ultimo_Acumulado '{}', Lectura_Limite '{}').",
                        CauseOf(error), TextIn(row, "Acumulado_Lectura"), TextIn(row, "Ultimo_Acumulado"),
                        TextIn(row, "Lectura_Limite")),
            "Enter whole numbers, or cancel the assignment.");
        return std::nullopt;
    }
}

void CheckCounters(const Look& look, const Recordset& row) {
    const std::optional<Counters> counters = CountersOf(look, row);
    if (!counters) return;
    const auto [accumulated, reference, limit] = *counters;
    if (limit <= 0) {
        Add(look, row, Severity::Error, "always-due",
            fmt::format("An order at every meter launch, whatever the meter shows: its interval is {}.", limit),
            "Set Lectura_Limite to 1 or more.");
    }
    if (reference > accumulated) {
        Add(look, row, Severity::Warning, "meter-backwards",
            fmt::format("Comes late: the meter stands at {}, behind the reference level {} that its interval of {} is "
                        "counted from, so it is due only at {}.",
                        accumulated, reference, limit, std::int64_t{reference} + limit),
            "Reprogram the asset, or correct its readings.");
    }
    const Zontara::Value warning = row.Valor("Aproximacion_Lectura");
    const double level = warning.IsNull() ? 0 : Zontara::ConvertTo<double>(warning);
    if (level > 0 && level <= reference) {
        Add(look, row, Severity::Note, "warns-for-good",
            fmt::format("Its early warning is on for good: the level {} is one of the whole accumulated reading, and "
                        "lies behind the reference level {}.",
                        Zontara::ToText(warning), reference),
            "Set Aproximacion_Lectura beyond the reference level at each launch, or to 0 for no warning.");
    }
}

void CheckDates(const Look& look, const Recordset& row) {
    const std::string on = Iso(look.request.on);
    const std::string from = TextIn(row, "Fecha_Inicio");
    const std::string to = TextIn(row, "Fecha_Fin");
    if (!to.empty() && to < on) {
        Add(look, row, Severity::Warning, "ended",
            fmt::format("Goes on being launched after its end of {}: no launch by meter reads Fecha_Fin.", to),
            "Cancel the assignment.");
    }
    if (from > on) {
        Add(look, row, Severity::Warning, "not-begun",
            fmt::format("Is launched before it begins on {}: no launch by meter reads Fecha_Inicio.", from),
            "Enter the assignment when it begins, or set Ultimo_Acumulado accordingly.");
    }
}

/// One note an asset: its intervals are meant to divide one another, and the component has a question for it.
void CheckIntervals(const Look& look, Recordset& rows) {
    const auto assignments = look.component.ImputacionSistematica();
    bool told = false;
    ForEach(rows, [&] {
        const Zontara::Value limit = rows.Valor("Lectura_Limite");
        if (told || limit.IsNull()) return;
        const std::int32_t interval = Zontara::ConvertTo<std::int32_t>(limit);
        if (interval <= 0 || assignments->EsProgramacionPrima(interval, TextIn(rows, "ID_Activo"))) return;
        told = true;
        Add(look, rows, Severity::Note, "intervals-dont-mesh",
            fmt::format("Its orders fall apart from the asset's others: {} and another interval of the asset don't "
                        "divide one another.",
                        interval),
            "Choose intervals that are multiples of one another.");
    });
}

void CheckReadingsOf(const Look& look, Recordset& rows) {
    rows.MoverPrimero();
    if (rows.FinDeDatos()) return;
    const std::string asset = TextIn(rows, "ID_Activo");
    if (!look.component.LecturaEquipo()->Ultimas10Lecturas(asset, "SC_Lectura")->FinDeDatos()) return;
    look.findings.push_back(
        {Severity::Note, "never-read", "Activo", asset, asset, "",
         "Nobody has read its meter so far: its meter assignments come due only when readings come.",
         "Enter readings."});
}

/// Why the list that launches walk leaves a row out, and what helps. The columns are those of `CheckLeftOut`.
std::pair<std::string, std::string> WhyLeftOut(const dhRichClient3::Statement& row) {
    if (row.Int(4) != 0) return {"its asset isn't there", "Enter the asset, or cancel the assignment."};
    if (row.Int(5) != 0) return {"its task isn't there", "Enter the task, or cancel the assignment."};
    if (row.Int(6) != 0) return {"its task has no group", "Give the task a group that is there."};
    if (row.Int(7) != 0) return {"its asset has no reading unit", "Give the asset a unit that is there."};
    return {"Anulada is neither 0 nor 1", "Set Anulada to 0."};
}

void CheckLeftOut(const Look& look, const std::unordered_set<std::string>& listed) {
    auto row = look.database.Prepare(
        "SELECT i.SC_Imputacion_Sistematica, i.ID_Activo, g.Numero_Gama, g.Descripcion, a.ID_Activo IS NULL,"
        " g.SC_Gama IS NULL, r.SC_Grupo_Gama IS NULL, u.SC_Unidad_Lectura IS NULL"
        " FROM Imputacion_Sistematica i LEFT JOIN Activo a ON a.ID_Activo = i.ID_Activo"
        " LEFT JOIN Gama g ON g.SC_Gama = i.SC_Gama LEFT JOIN Grupo_Gama r ON r.SC_Grupo_Gama = g.SC_Grupo_Gama"
        " LEFT JOIN Unidad_Lectura u ON u.SC_Unidad_Lectura = a.SC_Unidad_Lectura"
        " WHERE coalesce(i.Anulada, 0) = 0 AND coalesce(instr(i.ID_Activo, ''''), 0) = 0 ORDER BY 1");
    while (row.Step()) {
        if (listed.count(row.Text(0)) > 0) continue;
        const auto [reason, advice] = WhyLeftOut(row);
        look.findings.push_back({Severity::Error, "never-selected", kTable, row.Text(0), row.Text(1),
                                 TaskName(row.Text(2), row.Text(3)),
                                 fmt::format("Never launched: {}, so that the list which launches walk leaves it out. "
                                             "Questions may tell it to be overdue all the same.",
                                             reason),
                                 advice});
    }
}

void CheckTwins(const Look& look) {
    auto row = look.database.Prepare(
        "SELECT i.SC_Imputacion_Sistematica, i.ID_Activo, g.Numero_Gama, g.Descripcion, i.Lectura_Limite"
        " FROM Imputacion_Sistematica i LEFT JOIN Gama g ON g.SC_Gama = i.SC_Gama"
        " WHERE coalesce(i.Anulada, 0) = 0 AND EXISTS (SELECT 1 FROM Imputacion_Sistematica o"
        " WHERE o.ID_Activo = i.ID_Activo AND o.SC_Gama = i.SC_Gama AND o.Lectura_Limite = i.Lectura_Limite"
        " AND coalesce(o.Anulada, 0) = 0 AND o.SC_Imputacion_Sistematica < i.SC_Imputacion_Sistematica) ORDER BY 1");
    while (row.Step()) {
        look.findings.push_back({Severity::Note, "twice", kTable, row.Text(0), row.Text(1),
                                 TaskName(row.Text(2), row.Text(3)),
                                 fmt::format("Launched beside another assignment of the same task, asset and interval "
                                             "{}: two orders for one work.",
                                             row.Text(4)),
                                 "Cancel one of the two, unless both are meant."});
    }
}

/// Parallels that a reset doesn't reach, since the list of them leaves them out.
void CheckParallels(const Look& look) {
    auto row = look.database.Prepare(
        "SELECT p.SC_Imputacion_Paralela, p.SC_Imputacion_Sistematica, p.SC_Paralela, i.ID_Activo"
        " FROM Imputacion_Paralela p LEFT JOIN Imputacion_Sistematica i ON i.SC_Imputacion_Sistematica = p.SC_Paralela"
        " ORDER BY 1");
    while (row.Step()) {
        const auto listed =
            look.component.ImputacionParalela()->Seleccionar(row.Int(1), "Imputacion_Paralela.SC_Imputacion_Paralela");
        bool found = false;
        ForEach(*listed, [&] { found = found || TextIn(*listed, "SC_Imputacion_Paralela") == row.Text(0); });
        if (found) continue;
        look.findings.push_back({Severity::Warning, "parallel-left-out", "Imputacion_Paralela", row.Text(0),
                                 row.Text(3), "",
                                 fmt::format("Meter assignment {} isn't reset with assignment {}: it isn't there, or "
                                             "has no reading unit, or its task has no executor.",
                                             row.Text(2), row.Text(1)),
                                 "Complete the assignment's task and unit, or remove the link."});
    }
}

void CheckReadings(const Look& look) {
    auto row = look.database.Prepare(
        "SELECT l.SC_Lectura, l.ID_Equipo, l.Fecha, l.Lectura, l.Lectura_Anterior, l.Valor_Real, a.ID_Activo IS NULL"
        " FROM Lectura_Equipo l LEFT JOIN Activo a ON a.ID_Activo = l.ID_Equipo"
        " WHERE l.Valor_Real < 0 OR a.ID_Activo IS NULL ORDER BY 1");
    while (row.Step()) {
        const auto add = [&](Severity severity, std::string rule, std::string what, std::string advice) {
            look.findings.push_back({severity, std::move(rule), "Lectura_Equipo", row.Text(0), row.Text(1), "",
                                     std::move(what), std::move(advice)});
        };
        if (row.Int(6) != 0) {
            add(Severity::Warning, "reading-of-no-asset",
                fmt::format("The reading of {} counts nowhere: its asset isn't there.", row.Text(2)),
                "Enter the asset, and the reading once more; or remove the reading.");
        } else {
            add(Severity::Warning, "meter-backwards",
                fmt::format("The reading of {} set the accumulated reading back by {}: the meter showed {} after {}. "
                            "The asset's meter assignments come due that much later.",
                            row.Text(2), Zontara::ToText(-row.Real(5)), Zontara::ToText(row.Real(3)),
                            Zontara::ToText(row.Real(4))),
                "If the meter was exchanged or turned over, enter a reading of the same value that adds what is "
                "missing.");
        }
    }
}

}  // namespace

void Meters(const Look& look) {
    auto assets = look.database.Prepare(
        "SELECT DISTINCT ID_Activo FROM Imputacion_Sistematica WHERE coalesce(Anulada, 0) = 0 AND ID_Activo IS NOT NULL"
        " AND instr(ID_Activo, '''') = 0 ORDER BY 1");
    std::unordered_set<std::string> listed;
    while (assets.Step()) {
        const auto rows =
            look.component.ImputacionSistematica()->ListarImputacionesDeUnActivo(assets.Text(0), kColumns);
        ForEach(*rows, [&] {
            listed.insert(TextIn(*rows, "SC_Imputacion_Sistematica"));
            CheckCounters(look, *rows);
            CheckDates(look, *rows);
        });
        CheckIntervals(look, *rows);
        CheckReadingsOf(look, *rows);
    }
    CheckLeftOut(look, listed);
    CheckTwins(look);
    CheckParallels(look);
    CheckReadings(look);
}

}  // namespace planning::lint

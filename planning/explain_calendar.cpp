#include "calendar/CImputacionPreventiva.h"
#include "calendar/due.h"
#include "frame/convert.h"
#include "frame/raised_error.h"
#include "planning/day_search.h"
#include "planning/explain_parts.h"
#include "planning/rule_words.h"

#include <set>

namespace planning {

namespace {

using State = Explanation::State;
using Zontara::Date;
using Zontara::Recordset;
using Zontara::Ref;
using Zontara::calendar::LaunchKind;

/// The columns that the rules and an explanation read, as a launch's own selection has them.
constexpr const char* kColumns =
    "Activo.ID_Activo,SC_Imputacion_Preventiva,Gama.Descripcion,Numero_Gama,Anulada,Frecuencia,Intervalo_Frecuencia,"
    "Imputacion_Preventiva.Fecha_Ultimo_Lanzamiento,Semana,Programacion,Es_Sincronizada";

const LaunchKind& RulesOf(Kind kind) {
    return kind == Kind::Synchronised ? Zontara::calendar::kSynchronised : Zontara::calendar::kConventional;
}

/// What a launch of that day looks at, but for assets out of service.
Ref<Recordset> LookedAt(const Question& question, Kind kind, Date day, std::int32_t key) {
    return question.component.ImputacionPreventiva()->SeleccionarActivas(day, "", RulesOf(kind).synchronised,
                                                                         question.asset, false, 0, key);
}

std::int32_t KeyOf(const Recordset& row) {
    return Zontara::ConvertTo<std::int32_t>(row.Valor("SC_Imputacion_Preventiva"));
}

Explanation Described(const Question& question, Kind kind, const Recordset& row) {
    Explanation result;
    result.kind = kind;
    result.key = KeyOf(row);
    result.asset = question.asset;
    result.inService = question.inService;
    result.task = Zontara::RoundToInt32(Zontara::NumberIn(Zontara::ToText(row.Valor("Numero_Gama"))).value_or(0));
    result.taskName = Zontara::ToText(row.Valor("Descripcion"));
    result.frequency = Zontara::ToText(row.Valor("frecuencia"));
    result.rule = CalendarRule(kind, result.frequency);
    result.facts = CalendarFacts(kind, row, question.on);
    result.threshold = {"Intervalo_Frecuencia", Zontara::ToText(row.Valor("Intervalo_Frecuencia"))};
    return result;
}

/// Asks the rule about the day and, from the first day that a launch looks at the row, about each day ahead. `begun`:
/// that day has come.
void AskRule(const Question& question, const Recordset& row, bool begun, Explanation& result) {
    const LaunchKind& rules = RulesOf(result.kind);
    const auto dueOn = [&](Date day) { return Zontara::calendar::ReachesInterval(row, rules.due(row, day).step); };
    try {
        const Zontara::calendar::Due due = rules.due(row, question.on);
        result.reached = {"step", std::to_string(due.step)};
        result.state = !begun ? State::NotBegun : dueOn(question.on) ? State::Due : State::NotDue;
        if (result.state == State::Due && due.booking) result.books = due.booking->On(question.on);
        const std::optional<Date> from =
            begun ? question.on : FirstDayOfRest(question.on, question.until, [&](Date day) {
                return !LookedAt(question, result.kind, day, result.key)->FinDeDatos();
            });
        if (from) result.next = FirstDay(*from, question.until, dueOn);
    } catch (const Zontara::RaisedError& error) {
        result.state = State::Unreadable;
        result.failure = error.Description();
    }
}

std::set<std::int32_t> KeysIn(const Ref<Recordset>& rows) {
    std::set<std::int32_t> keys;
    for (; !rows->FinDeDatos(); rows->MoverSiguiente())
        keys.insert(KeyOf(*rows));
    return keys;
}

/// The assignments of the asset that no launch ever looks at.
void AddOthers(const Question& question, Kind kind, const std::set<std::int32_t>& known,
               std::vector<Explanation>& all) {
    const auto rows = question.component.ImputacionPreventiva()->SeleccionarPorEquipo(question.asset, kColumns);
    for (; !rows->FinDeDatos(); rows->MoverSiguiente()) {
        // The list goes by the beginning of the identifier.
        if (Zontara::ToText(rows->Valor("ID_Activo")) != question.asset || known.count(KeyOf(*rows)) > 0) continue;
        if (question.key != 0 && KeyOf(*rows) != question.key) continue;
        if ((Zontara::ToText(rows->Valor("Es_Sincronizada")) == "1") != RulesOf(kind).synchronised) continue;
        Explanation result = Described(question, kind, *rows);
        result.state = Zontara::ToText(rows->Valor("Anulada")) == "0" ? State::NotBegun : State::Cancelled;
        all.push_back(std::move(result));
    }
}

}  // namespace

std::vector<Explanation> ExplainCalendar(const Question& question, Kind kind) {
    std::vector<Explanation> all;
    const std::set<std::int32_t> begun = KeysIn(LookedAt(question, kind, question.on, question.key));
    std::set<std::int32_t> live;
    const auto rows = LookedAt(question, kind, Zontara::DateOf(9999, 12, 31), question.key);
    for (; !rows->FinDeDatos(); rows->MoverSiguiente()) {
        Explanation result = Described(question, kind, *rows);
        live.insert(result.key);
        AskRule(question, *rows, begun.count(result.key) > 0, result);
        all.push_back(std::move(result));
    }
    AddOthers(question, kind, live, all);
    return all;
}

}  // namespace planning

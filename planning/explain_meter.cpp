#include "frame/convert.h"
#include "meter/CImputacionSistematica.h"
#include "planning/day_search.h"
#include "planning/explain_parts.h"
#include "planning/rule_words.h"

namespace planning {

namespace {

using State = Explanation::State;
using Zontara::Date;
using Zontara::Recordset;

constexpr const char* kColumns =
    "Activo.ID_Activo,SC_Imputacion_Sistematica,Numero_Gama,Gama.Descripcion,Anulada,Lectura_Limite,Ultimo_Acumulado,"
    "Activo.Acumulado_Lectura,Unidad_Lectura.Descripcion as Unidad ";

/// The day is undone when this goes: the meter stands where it stood.
class MovedMeter {
public:
    MovedMeter(const Question& question, double growth) : component_(question.component) {
        component_.IniciarTransaccion();
        component_.ImputacionSistematica()->ActualizarAcumulado(question.asset, 0, question.on,
                                                                static_cast<float>(growth), 0);
    }
    ~MovedMeter() { component_.AbortarTransaccion(); }
    MovedMeter(const MovedMeter&) = delete;
    MovedMeter& operator=(const MovedMeter&) = delete;

private:
    Zontara::CGlobalPreventivo& component_;
};

Explanation Described(const Question& question, const Recordset& row) {
    const auto text = [&](std::string_view column) { return Zontara::ToText(row.Valor(column)); };
    Explanation result;
    result.kind = Kind::Meter;
    result.key = Zontara::ConvertTo<std::int32_t>(row.Valor("SC_Imputacion_Sistematica"));
    result.asset = question.asset;
    result.inService = question.inService;
    result.task = Zontara::RoundToInt32(Zontara::NumberIn(text("Numero_Gama")).value_or(0));
    result.taskName = text("Descripcion");
    result.unit = text("Unidad");
    result.frequency = text("Lectura_Limite") + " " + result.unit;
    result.rule = MeterRule();
    result.facts = {{"Acumulado_Lectura", text("Acumulado_Lectura")}, {"Ultimo_Acumulado", text("Ultimo_Acumulado")}};
    const auto reading = Zontara::NumberIn(text("Acumulado_Lectura"));
    const auto reference = Zontara::NumberIn(text("Ultimo_Acumulado"));
    result.reached = {"growth", reading && reference ? Zontara::ToText(*reading - *reference) : "unknown"};
    result.threshold = {"Lectura_Limite", text("Lectura_Limite")};
    return result;
}

/// Asks about the day, and then about the meter as it stands on later days at the average use.
void AskMeter(const Question& question, const AverageUse& use, Explanation& result) {
    const auto meter = question.component.ImputacionSistematica();
    const auto due = [&] { return meter->ActivoNecesitaMantenimiento(question.asset, result.key); };
    if (due()) {
        result.state = State::Due;
        result.next = question.on;
        return;
    }
    result.state = State::NotDue;
    if (use.perDay <= 0) return;
    result.next = FirstDayOfRest(Zontara::AddDays(question.on, 1), question.until, [&](Date day) {
        const MovedMeter moved(question, use.GrowthUntil(day));
        return due();
    });
}

}  // namespace

std::vector<Explanation> ExplainMeter(const Question& question) {
    std::vector<Explanation> all;
    const auto rows = question.component.ImputacionSistematica()->SeleccionarPorEquipo(question.asset, kColumns);
    if (rows->FinDeDatos()) return all;
    const auto uses = AverageUses(question.component, question.on, question.asset);
    const auto found = uses.find(question.asset);
    const AverageUse use = found == uses.end() ? AverageUse() : found->second;
    for (; !rows->FinDeDatos(); rows->MoverSiguiente()) {
        // The list goes by the beginning of the identifier.
        if (Zontara::ToText(rows->Valor("ID_Activo")) != question.asset) continue;
        Explanation result = Described(question, *rows);
        if (question.key != 0 && result.key != question.key) continue;
        result.use = use;
        if (Zontara::ToText(rows->Valor("Anulada")) == "0") {
            AskMeter(question, use, result);
        } else {
            result.state = State::Cancelled;
        }
        all.push_back(std::move(result));
    }
    return all;
}

}  // namespace planning

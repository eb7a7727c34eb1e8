#include "host/meters.h"

namespace host {

double AccumulatedOf(Plant& plant, const std::string& asset) {
    auto find = plant.Database().Prepare("SELECT Acumulado_Lectura FROM Activo WHERE ID_Activo = ?1");
    return find.Bind(1, asset).Step() ? find.Real(0) : 0;
}

std::vector<MeterState> MeterStates(Plant& plant, const std::string& asset) {
    auto rows = plant.Database().Prepare(
        "SELECT i.SC_Imputacion_Sistematica, g.Numero_Gama, g.Descripcion, i.Lectura_Limite, i.Ultimo_Acumulado,"
        " a.Acumulado_Lectura - i.Ultimo_Acumulado"
        " FROM Imputacion_Sistematica i"
        " JOIN Activo a ON a.ID_Activo = i.ID_Activo"
        " JOIN Gama g ON g.SC_Gama = i.SC_Gama"
        " WHERE i.ID_Activo = ?1 AND i.Anulada = 0 ORDER BY i.Lectura_Limite DESC, i.SC_Imputacion_Sistematica");
    rows.Bind(1, asset);
    std::vector<MeterState> states;
    while (rows.Step()) {
        states.push_back({rows.Int(0), rows.Int(1), rows.Text(2), rows.Int(3), rows.Int(4), rows.Real(5)});
    }
    return states;
}

text::Grid GridOf(const std::vector<MeterState>& states) {
    using Align = text::Grid::Align;
    text::Grid grid({{"Key", Align::Right},
                     {"Task", Align::Right},
                     {"Task name", Align::Left, 40},
                     {"Interval", Align::Right},
                     {"Reference", Align::Right},
                     {"Growth", Align::Right},
                     {"Due"}});
    for (const MeterState& state : states) {
        text::Cell due = text::Cell::Flag(state.Due(), "due", "").In(text::Tone::Bad);
        grid.Add({state.key, state.task, state.taskName, state.limit, state.reference, text::Cell::Real(state.growth),
                  std::move(due)});
    }
    return grid;
}

}  // namespace host

#include "bench/items/compared.h"
#include "bench/items/items.h"
#include "bench/items/memory.h"
#include "bench/plant.h"
#include "calendar/CImputacionPreventiva.h"

#include <string>
#include <vector>

namespace bench {

namespace {

/// The statement of `SeleccionarActivas`, as the component makes it.
const char* const kStatement =
    "SELECT Activo.ID_Activo,SC_Imputacion_Preventiva ,Imputacion_Preventiva.SC_Imputacion_Preventiva as "
    "ID,Gama.SC_Gama "
    ",Gama.Descripcion,Fecha_Imputacion ,Anulada ,SC_Usuario ,Frecuencia ,Intervalo_Frecuencia "
    ",Numero_Repeticion_Ciclo "
    ",Acumulado_Ciclo ,Fecha_Inicio ,Numero_Gama,'---' EjecutorGama,Fecha_Ultima_Modificacion , "
    "Imputacion_Preventiva.Fecha_Ultimo_Lanzamiento,Causa_Modificacion ,Semana,Finaliza, Programacion  FROM "
    "Imputacion_Preventiva, Activo,Gama  WHERE Anulada =0 and Fecha_Inicio <= '2026-03-02' and Gama.sc_gama "
    "=Imputacion_Preventiva.sc_gama and  Imputacion_Preventiva.id_activo =Activo.id_activo  and activo.estatus_actual "
    "not "
    "in (3,4,5,7)  and Es_Sincronizada=1   ";

/// Reads every cell of every row by its column's name; gives the number of cells that aren't null.
std::int64_t Walk(Zontara::Recordset& rows) {
    std::vector<std::string> names;
    for (std::int32_t i = 0; i < rows.TotalColumnas(); ++i)
        names.push_back(rows.NombreColumna(i));
    std::int64_t cells = 0;
    for (rows.MoverPrimero(); !rows.FinDeDatos(); rows.MoverSiguiente()) {
        for (const auto& name : names)
            cells += rows.Valor(name).IsNull() ? 0 : 1;
    }
    return cells;
}

double BytesPerCell(const Plant& plant, int rows) {
    const Component component(plant.Path(), Component::Where::OnFile);
    Zontara::CImputacionPreventiva calendar;
    const PeakMemory peak;
    const auto held = calendar.SeleccionarActivas(LaunchDay(), "", true, "", true, 0, 0);
    return static_cast<double>(peak.Grown()) / (static_cast<double>(rows) * held->TotalColumnas());
}

}  // namespace

Times CompareRows(int rows, int rounds) {
    const Plant plant("rows");
    plant.AddWeekly(rows);
    const Component component(plant.Path(), Component::Where::OnFile);
    const Database bound = Database::OnFile(plant.Path());
    Zontara::CImputacionPreventiva calendar;
    const auto times = Alternate(rounds, {{{},
                                           [&] {
                                               const auto all =
                                                   calendar.SeleccionarActivas(LaunchDay(), "", true, "", true, 0, 0);
                                               Require(Walk(*all) == std::int64_t{rows} * 19, "19 cells of each row");
                                           }},
                                          {{}, [&] {
                                               Prepared select(bound, kStatement);
                                               Require(select.DropAll() == rows, "all rows");
                                           }}});
    return {times[0], times[1]};
}

void MeasureRows(const Scale& scale, Table& table) {
    const int rows = scale.Rows(1'000'000);
    const std::string what = "SeleccionarActivas, " + std::to_string(rows) + " rows";
    Progress(what);
    const Times times = CompareRows(rows, scale.rounds);
    table.AddRatio("3", what + " walked by name : bare step loop", times.ours, times.bound, 1.25);
    const Plant plant("memory");
    plant.AddWeekly(rows);
    table.Add({"3", what + ", bytes a cell with its text, peak", "", "", BytesPerCell(plant, rows), 16});
}

}  // namespace bench

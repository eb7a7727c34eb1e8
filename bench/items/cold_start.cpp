#include "bench/items/items.h"
#include "bench/plant.h"
#include "bench/process.h"

#include <algorithm>
#include <string>
#include <vector>

namespace bench {

namespace {

constexpr int kRunsOfARound = 10;

/// The three queries of an overdue question about one asset, as somebody types them.
const char* const kQueries =
    "select Activo.id_Activo from Imputacion_Sistematica, Activo where Imputacion_Sistematica.ID_Activo ="
    " Activo.ID_Activo and (Activo.acumulado_lectura-ultimo_acumulado)>=lectura_limite and Activo.id_Activo "
    "='P-0004321';"
    "SELECT Frecuencia, Intervalo_Frecuencia, Imputacion_Preventiva.Fecha_Ultimo_Lanzamiento, Semana, Programacion FROM"
    " Imputacion_Preventiva, Activo, Gama WHERE Anulada =0 and Fecha_Inicio <= '2026-03-02' and Gama.sc_gama ="
    " Imputacion_Preventiva.sc_gama and Imputacion_Preventiva.id_activo =Activo.id_activo and Es_Sincronizada=1 and"
    " Activo.ID_Activo='P-0004321';"
    "SELECT Frecuencia, Intervalo_Frecuencia, Imputacion_Preventiva.Fecha_Ultimo_Lanzamiento, Semana, Programacion FROM"
    " Imputacion_Preventiva, Activo, Gama WHERE Anulada =0 and Fecha_Inicio <= '2026-03-02' and Gama.sc_gama ="
    " Imputacion_Preventiva.sc_gama and Imputacion_Preventiva.id_activo =Activo.id_activo and Es_Sincronizada=0 and"
    " Activo.ID_Activo='P-0004321'";

/// The quickest of a few starts: whatever disturbs one makes it longer.
double Quickest(const std::vector<std::string>& arguments) {
    double quickest = 1e9;
    for (int i = 0; i < kRunsOfARound; ++i)
        quickest = std::min(quickest, RunProgram(arguments).wallSeconds);
    return quickest;
}

}  // namespace

void MeasureColdStart(const Scale& scale, Table& table) {
    constexpr int kAssets = 10'000;
    Progress("cold start");
    const Plant plant("start");
    plant.AddWeekly(kAssets);
    std::vector<double> ours;
    std::vector<double> shell;
    for (int round = 0; round < scale.rounds; ++round) {
        ours.push_back(Quickest({ZONTARA_PROGRAM, "overdue", plant.Path(), "P-0004321", "--on", "2026-03-02"}));
        shell.push_back(Quickest({"sqlite3", plant.Path(), kQueries}));
    }
    table.AddRatio("7",
                   "zontara overdue of one asset of " + std::to_string(kAssets) + " : sqlite3, 3 queries, wall time",
                   ours, shell, 1.5);
}

}  // namespace bench

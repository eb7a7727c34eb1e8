#include "bench/items/items.h"
#include "bench/plant.h"
#include "frame/CGlobalPreventivo.h"

#include <cstdio>
#include <string>
#include <vector>

namespace bench {

namespace {

constexpr int kQuestions = 2000;

/// Nothing is due in week 10, so that each question asks all three times.
void AddAssignments(const Plant& plant, int assets) {
    plant.AddMetered(assets, 1);
    const std::string insert =
        "INSERT INTO Imputacion_Preventiva (ID_Activo, SC_Gama, Fecha_Imputacion, Anulada, SC_Usuario, Frecuencia,"
        " Intervalo_Frecuencia, Fecha_Inicio, Fecha_Ultimo_Lanzamiento, Semana, Programacion, Es_Sincronizada)"
        " SELECT ID_Activo, 1001, '2026-01-01', 0, 7, 'Semanal', 1, '2026-01-01', '2026-03-02', 10, '1', ";
    plant.Run("UPDATE Imputacion_Sistematica SET Ultimo_Acumulado = 5000;" + insert + "1 FROM Activo;" + insert +
              "1 FROM Activo;" + insert + "0 FROM Activo");
}

/// The three statements of a question, with a parameter for the asset.
constexpr std::string_view kBare[] = {
    "select Activo.id_Activo from Imputacion_Sistematica, Activo where Imputacion_Sistematica.ID_Activo ="
    " Activo.ID_Activo and (Activo.acumulado_lectura-ultimo_acumulado)>=lectura_limite and Activo.id_Activo =?1",
    "SELECT Activo.ID_Activo, SC_Imputacion_Preventiva, Frecuencia, Intervalo_Frecuencia, Fecha_Inicio,"
    " Imputacion_Preventiva.Fecha_Ultimo_Lanzamiento, Semana, Programacion FROM Imputacion_Preventiva, Activo, Gama"
    " WHERE Anulada =0 and Fecha_Inicio <= '2026-03-02' and Gama.sc_gama =Imputacion_Preventiva.sc_gama and"
    " Imputacion_Preventiva.id_activo =Activo.id_activo and Es_Sincronizada=1 and Activo.ID_Activo=?1",
    "SELECT Activo.ID_Activo, SC_Imputacion_Preventiva, Frecuencia, Intervalo_Frecuencia, Fecha_Inicio,"
    " Imputacion_Preventiva.Fecha_Ultimo_Lanzamiento, Semana, Programacion FROM Imputacion_Preventiva, Activo, Gama"
    " WHERE Anulada =0 and Fecha_Inicio <= '2026-03-02' and Gama.sc_gama =Imputacion_Preventiva.sc_gama and"
    " Imputacion_Preventiva.id_activo =Activo.id_activo and Es_Sincronizada=0 and Activo.ID_Activo=?1",
};

/// Keys of assets from all over the plant.
std::vector<std::string> SomeAssets(int assets) {
    std::vector<std::string> keys;
    for (int i = 0; i < kQuestions; ++i) {
        char key[16];
        std::snprintf(key, sizeof key, "P-%07d", static_cast<int>(std::int64_t{i} * 7919 % assets) + 1);
        keys.emplace_back(key);
    }
    return keys;
}

void MeasureQuestions(const Plant& plant, int assets, const Scale& scale, Table& table) {
    const Pair pair(plant.Path(), Component::Where::OnFile);
    const std::vector<std::string> keys = SomeAssets(assets);
    Zontara::CGlobalPreventivo zontara;
    Prepared meter(pair.bound, kBare[0]);
    Prepared synchronised(pair.bound, kBare[1]);
    Prepared conventional(pair.bound, kBare[2]);
    const auto times =
        Alternate(scale.rounds, {{{},
                                  [&] {
                                      for (const auto& key : keys) {
                                          Require(!zontara.ElActivoTieneMantenimientoVencido(key, "2026-03-02"),
                                                  "nothing overdue");
                                      }
                                  }},
                                 {{}, [&] {
                                      for (const auto& key : keys) {
                                          Require(meter.Bind(1, key).DropAll() == 0, "nothing by meter");
                                          Require(synchronised.Bind(1, key).DropAll() == 2, "two rows");
                                          Require(conventional.Bind(1, key).DropAll() == 1, "one row");
                                      }
                                  }}});
    table.AddRatio("4",
                   std::to_string(kQuestions) + " x ElActivoTieneMantenimientoVencido, " + std::to_string(assets) +
                       " assets : 3 queries",
                   times[0], times[1], 4);
}

/// What the index without regard to case is worth to a selection under a prefix.
void MeasurePrefix(const Plant& plant, const Scale& scale, Table& table) {
    const Database bound = Database::OnFile(plant.Path());
    const char* const select = "SELECT SC_Gama FROM Imputacion_Preventiva WHERE ID_Activo like 'P-00000%'";
    const auto measured = [&] {
        Prepared prepared(bound, select);
        prepared.DropAll();
    };
    auto times = Alternate(scale.rounds, {{{}, measured}});
    bound.Run("DROP INDEX Imputacion_Preventiva_Prefijo");
    times.push_back(Alternate(scale.rounds, {{{}, measured}}).front());
    table.AddRatio("4", "a prefix like with no index on NOCASE : with it", times[1], times[0], 0);
}

}  // namespace

void MeasureOverdue(const Scale& scale, Table& table) {
    const int assets = scale.Rows(100'000);
    Progress("overdue questions, " + std::to_string(assets) + " assets");
    const Plant plant("overdue");
    AddAssignments(plant, assets);
    MeasureQuestions(plant, assets, scale, table);
    MeasurePrefix(plant, scale, table);
}

}  // namespace bench

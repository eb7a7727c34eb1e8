#include "bench/items/compared.h"
#include "bench/items/items.h"
#include "bench/items/streams.h"
#include "frame/CGlobalPreventivo.h"
#include "readings/CLecturaEquipo.h"

#include <cstdio>
#include <string>

namespace bench {

namespace {

constexpr int kAssets = 1000;
constexpr char kReset[] = "DELETE FROM Lectura_Equipo; UPDATE Activo SET Acumulado_Lectura = 0, Ultima_Lectura = 0";

std::vector<std::string> AssetKeys() {
    std::vector<std::string> keys;
    for (int i = 1; i <= kAssets; ++i) {
        char key[16];
        std::snprintf(key, sizeof key, "P-%07d", i);
        keys.emplace_back(key);
    }
    return keys;
}

/// What a meter shows after so many readings, in quarters.
double MeterAt(int reading) { return 100 + reading * 0.25; }

void EnterByComponent(int readings, const std::vector<std::string>& assets) {
    Zontara::CGlobalPreventivo zontara;
    const auto meter = zontara.LecturaEquipo();
    zontara.IniciarTransaccion();
    for (int i = 0; i < readings; ++i) {
        const auto now = static_cast<float>(MeterAt(i));
        meter->Nuevo("02/03/2026", assets[static_cast<std::size_t>(i % kAssets)], 4, 12.5F, now, now - 12.5F, 0,
                     "turno A", "12", {}, "");
    }
    zontara.TerminarTransaccion();
}

}  // namespace

void EnterReadings(const Database& database, int readings, const std::vector<std::string>& assets) {
    database.Run("BEGIN IMMEDIATE");
    Keys keys(database, "Lectura_Equipo", "SC_Lectura", Keys::Way::InMemory);
    keys.Begin();
    Prepared insert(
        database,
        "INSERT INTO Lectura_Equipo (SC_Lectura, Fecha, ID_Equipo, SC_Unidad_Lectura, Valor_Real, Lectura,"
        " Lectura_Anterior, Combustible_Consumido, Nota, Departamento_A_Quien_Se_Carga, Valor_Del_Vale_Salida,"
        " Numero_Vale) VALUES (?1, ?2, ?3, 4, ?4, ?5, ?6, ?7, ?8, ?9, ?10, ?11)");
    Prepared move(
        database,
        "UPDATE Activo SET Acumulado_Lectura = Acumulado_Lectura + ?1, Ultima_Lectura = ?2 WHERE ID_Activo = ?3");
    Prepared note(database, "UPDATE Activo SET Activo_Nota_Lectura = ?1 WHERE ID_Activo = ?2");
    Prepared whole(database, "UPDATE Activo SET Activo_Lectura_Entera = ?1 WHERE ID_Activo = ?2");
    for (int i = 0; i < readings; ++i) {
        const std::string& asset = assets[static_cast<std::size_t>(i % kAssets)];
        const double now = MeterAt(i);
        insert.Bind(1, keys.Next()).Bind(2, "2026-03-02").Bind(3, asset).Bind(4, 12.5).Bind(5, now).Bind(6, now - 12.5);
        insert.Bind(7, 0).Bind(8, "turno A").Bind(9, "12").Bind(10, 0).Bind(11, "").Run();
        move.Bind(1, 12.5).Bind(2, now).Bind(3, asset).Run();
        note.Bind(1, "turno A").Bind(2, asset).Run();
        whole.Bind(1, static_cast<int>(now)).Bind(2, asset).Run();
    }
    keys.Save();
    database.Run("COMMIT");
}

Times CompareReadings(Component::Where where, int readings, int rounds) {
    const Plant plant("readings");
    plant.AddMetered(kAssets, 1);
    const Pair pair(plant.Path(), where);
    const std::vector<std::string> assets = AssetKeys();
    const auto times = Alternate(
        rounds, {{[&] { pair.component.Connection().RunScript(kReset); }, [&] { EnterByComponent(readings, assets); }},
                 {[&] { pair.bound.Run(kReset); }, [&] { EnterReadings(pair.bound, readings, assets); }}});
    return {times[0], times[1]};
}

void MeasureReadings(const Scale& scale, Table& table) {
    const int readings = scale.Rows(100'000);
    for (const auto where : {Component::Where::InMemory, Component::Where::OnFile}) {
        const std::string what = "CLecturaEquipo.Nuevo, " + std::to_string(readings) + " readings" + PlaceOf(where);
        Progress(what);
        const Times times = CompareReadings(where, readings, scale.rounds);
        table.AddRatio("5", what + " : bound by hand", times.ours, times.bound, 1.25);
    }
}

}  // namespace bench

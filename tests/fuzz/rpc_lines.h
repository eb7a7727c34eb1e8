#pragma once

#include "host/rpc/bridge.h"
#include "host/rpc/json.h"

#include <cstddef>
#include <cstdlib>
#include <iostream>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

/// An input of the bridge's fuzz target: lines, each a request or garbage.
namespace fuzz {

/// A plant in which every operation has something to work on.
inline constexpr const char* kPlant = R"(
INSERT INTO Unidad_Lectura VALUES (1, 'h');
INSERT INTO Activo (ID_Activo, Descripcion, SC_Unidad_Lectura, Acumulado_Lectura) VALUES ('A-1', 'Pump', 1, 700), ('B-1', 'Fan', 1, 0);
INSERT INTO Grupo_Gama VALUES (1, 'Pumps', 1);
INSERT INTO Ejecutor_Gama VALUES (1, 'Mechanics', 1);
INSERT INTO Gama (SC_Gama, Descripcion, SC_Grupo_Gama, SC_Ejecutor_Gama, Numero_Gama, Hombres_Necesarios, Tiempo_Necesario)
    VALUES (1, 'Oil', 1, 1, 1, 2, '1.5');
INSERT INTO materiales_gama VALUES (1, 'Oil', 2.5, 10, 1, 1);
INSERT INTO Equipo (ID_Equipo, ID_Activo, Nivel) VALUES ('A-1', 'A-1', 1);
INSERT INTO Imputacion_Preventiva (SC_Imputacion_Preventiva, ID_Activo, SC_Gama, Anulada, Frecuencia, Intervalo_Frecuencia,
    Fecha_Inicio, Fecha_Ultimo_Lanzamiento, Semana, Programacion, Es_Sincronizada, Numero_Repeticion_Ciclo, Acumulado_Ciclo, Finaliza)
    VALUES (1, 'A-1', 1, 0, 'Semanal', 1, '2026-01-01', '2026-02-01', 5, '1', 1, 3, 0, 1),
           (2, 'A-1', 1, 0, 'Bimestral', 1, '2026-01-01', '2025-01-01', 5, '5,8', 0, 0, 0, 0);
INSERT INTO Imputacion_Sistematica (SC_Imputacion_Sistematica, ID_Activo, SC_Gama, Ultimo_Acumulado, Lectura_Limite, Fecha_Inicio)
    VALUES (1, 'A-1', 1, 0, 500, '2026-01-01'), (2, 'A-1', 1, 0, 1000, '2026-01-01');
INSERT INTO Imputacion_Paralela VALUES (1, 1, 2);
INSERT INTO Proceso (SC_Proceso) VALUES (1);
)";

/// Whether a line is a request for the administrator's door. It lets a caller write files, which is what it is for.
inline bool OpensTheDoor(std::string_view text) {
    const std::optional<host::rpc::Line> line = host::rpc::ReadLine(text);
    if (!line || !line->json.is_object()) return false;
    const auto method = line->json.find("method");
    return method != line->json.end() && *method == "execute";
}

/// Ends the program unless an answer is one line of JSON with either a result or an error.
inline void Check(std::string_view line, const std::string& answer) {
    const host::rpc::Json json = host::rpc::Json::parse(answer, nullptr, false);
    const bool sound = json.is_object() && json.value("jsonrpc", "") == "2.0" && json.contains("id") &&
                       json.contains("result") != json.contains("error") && answer.find('\n') == std::string::npos;
    if (sound) return;
    std::cerr << "line:   " << line << "\nanswer: " << answer << std::endl;
    std::abort();
}

/// Feeds an input to a new bridge, line by line.
inline void Feed(std::string_view input) {
    host::rpc::Settings settings;
    settings.database = ":memory:";
    settings.create = true;
    settings.trace = true;
    settings.now = Zontara::DateOf(2026, 3, 5);
    settings.stepLimit = 200000;
    host::rpc::Bridge bridge(settings);
    bridge.Answer(host::rpc::WriteLine({{"jsonrpc", "2.0"}, {"method", "execute"}, {"params", {{"sql", kPlant}}}}));
    while (!input.empty()) {
        const std::string_view line = input.substr(0, input.find('\n'));
        input.remove_prefix(line.size() < input.size() ? line.size() + 1 : line.size());
        if (OpensTheDoor(line)) continue;
        if (const std::optional<std::string> answer = bridge.Answer(line)) Check(line, *answer);
    }
}

}  // namespace fuzz

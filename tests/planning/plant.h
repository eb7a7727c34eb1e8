#pragma once

#include "frame/CGlobalPreventivo.h"
#include "tests/calendar/plant.h"

#include <string>

namespace support {

/// The small plant of the calendar's tests, with meters. The component works on the test's own database in place of a
/// private copy, so that a test sees what is left behind.
class PlanningTest : public CalendarTest {
protected:
    PlanningTest() { world.Run("INSERT INTO Unidad_Lectura VALUES (1, 'h')"); }

    /// Gives an asset a meter.
    void SetMeter(const std::string& asset, double accumulated) {
        world.Run("UPDATE Activo SET SC_Unidad_Lectura = 1, Acumulado_Lectura = " + std::to_string(accumulated) +
                  " WHERE ID_Activo = '" + asset + "'");
    }
    void AddMeterAssignment(int key, const std::string& asset, int limit, int reference, int cancelled = 0) {
        world.Run(
            "INSERT INTO Imputacion_Sistematica (SC_Imputacion_Sistematica, ID_Activo, SC_Gama, Anulada, Fecha_Inicio,"
            " Lectura_Limite, Ultimo_Acumulado) VALUES (" +
            std::to_string(key) + ", '" + asset + "', 7, " + std::to_string(cancelled) + ", '2020-01-01', " +
            std::to_string(limit) + ", " + std::to_string(reference) + ")");
    }
    /// A reading that is in the accumulated reading already.
    void AddReading(const std::string& asset, const std::string& day, double grown, double shown = 0) {
        world.Run("INSERT INTO Lectura_Equipo (Fecha, ID_Equipo, SC_Unidad_Lectura, Valor_Real, Lectura) VALUES ('" +
                  day + "', '" + asset + "', 1, " + std::to_string(grown) + ", " + std::to_string(shown) + ")");
    }
    /// Five hours a day until 2026-03-01.
    void UseFiveADay(const std::string& asset) {
        AddReading(asset, "2026-02-09", 1000);
        AddReading(asset, "2026-03-01", 100, 700);
    }

    /// All that asking may not change.
    std::vector<std::string> StoredAndMeters() {
        std::vector<std::string> all = Stored();
        for (const char* table : {"Activo", "Imputacion_Sistematica", "Lectura_Equipo", "Clave"}) {
            for (std::string& row : world.Rows("SELECT '" + std::string(table) + "', * FROM " + table))
                all.push_back(std::move(row));
        }
        return all;
    }

    Zontara::CGlobalPreventivo component;
};

}  // namespace support

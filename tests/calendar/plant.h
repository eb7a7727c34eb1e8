#pragma once

#include "calendar/CImputacionPreventiva.h"
#include "frame/creation.h"
#include "frame/raised_error.h"
#include "tests/support/world.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

namespace support {

/// A row of `Imputacion_Preventiva`. Anchor and last launch are texts of the database.
struct Assignment {
    std::int32_t key = 1;
    std::string asset = "A-1";
    std::int32_t task = 7;
    std::string frequency = "Semanal";
    std::string anchor = "1";
    std::string last = "2026-01-01";
    std::int32_t week = 1;
    std::int32_t interval = 1;
    std::int32_t cycle = 0;
    std::int32_t done = 0;
    std::int32_t ends = 0;
    bool synchronised = true;
    std::string start = "2020-01-01";
    std::int32_t cancelled = 0;
};

/// The statement that selects the rows in force on 2026-03-05, with what follows the join.
inline std::string ActiveSelection(const std::string& rest) {
    return "SELECT Activo.ID_Activo,SC_Imputacion_Preventiva ,Imputacion_Preventiva.SC_Imputacion_Preventiva as ID,"
           "Gama.SC_Gama ,Gama.Descripcion,Fecha_Imputacion ,Anulada ,SC_Usuario ,Frecuencia ,Intervalo_Frecuencia "
           ",Numero_Repeticion_Ciclo ,Acumulado_Ciclo ,Fecha_Inicio ,Numero_Gama,'---' "
           "EjecutorGama,Fecha_Ultima_Modificacion , Imputacion_Preventiva.Fecha_Ultimo_Lanzamiento,Causa_Modificacion "
           ",Semana,Finaliza, Programacion  FROM Imputacion_Preventiva, Activo,Gama  WHERE Anulada =0 and "
           "Fecha_Inicio <= '2026-03-05' and Gama.sc_gama =Imputacion_Preventiva.sc_gama and  "
           "Imputacion_Preventiva.id_activo =Activo.id_activo  and " +
           rest;
}

/// A small plant: asset A-1 in service, task 7 with number 12 of group 1 and executor 1, and no assignment yet.
/// Today is Thursday 2026-03-05, in week 10 of the year and week 1 of the month.
class CalendarTest : public testing::Test {
protected:
    CalendarTest() {
        world.Run(
            "INSERT INTO Grupo_Gama VALUES (1, 'Mechanics', 1);"
            "INSERT INTO Ejecutor_Gama VALUES (1, 'Workshop', 1);"
            "INSERT INTO Gama (SC_Gama, Descripcion, SC_Grupo_Gama, SC_Ejecutor_Gama, Numero_Gama, Tiempo_Necesario,"
            " Hombres_Necesarios) VALUES (7, 'Oil change', 1, 1, 12, '1.5', 2);");
        AddAsset("A-1");
    }

    void AddAsset(const std::string& key, int status = 0, int project = 1) {
        world.Run("INSERT INTO Activo (ID_Activo, Descripcion, estatus_actual, sc_proyecto) VALUES ('" + key +
                  "', 'Pump', " + std::to_string(status) + ", " + std::to_string(project) + ")");
    }

    void Add(const Assignment& row) {
        const auto number = [](std::int32_t value) { return std::to_string(value); };
        world.Run(
            "INSERT INTO Imputacion_Preventiva (SC_Imputacion_Preventiva, ID_Activo, SC_Gama, Anulada, Frecuencia,"
            " Intervalo_Frecuencia, Numero_Repeticion_Ciclo, Acumulado_Ciclo, Fecha_Inicio, Fecha_Ultimo_Lanzamiento,"
            " Semana, Finaliza, Programacion, Es_Sincronizada) VALUES (" +
            number(row.key) + ", '" + row.asset + "', " + number(row.task) + ", " + number(row.cancelled) + ", '" +
            row.frequency + "', " + number(row.interval) + ", " + number(row.cycle) + ", " + number(row.done) + ", '" +
            row.start + "', '" + row.last + "', " + number(row.week) + ", " + number(row.ends) + ", '" + row.anchor +
            "', " + (row.synchronised ? "1" : "0") + ")");
    }
    void AddConventional(Assignment row) {
        row.synchronised = false;
        Add(row);
    }

    std::int32_t Launch(const std::string& day) { return preventive->LanzarPreventivo(World::Day(day), 3, "Breve"); }
    std::int32_t LaunchConventional(const std::string& day) {
        return preventive->LanzarPreventivoConvensional(World::Day(day), 3, "Breve");
    }

    std::vector<std::string> Bulletins() {
        return world.Rows(
            "SELECT SC_Imputacion_Preventiva, Fecha_Lanzamiento, Fecha_Entrega FROM Boletin ORDER BY SC_Boletin");
    }
    /// Last launch, week, accumulated cycle and mark of cancellation of an assignment.
    std::string State(std::int32_t key = 1) {
        return world
            .Rows(
                "SELECT Fecha_Ultimo_Lanzamiento, Semana, Acumulado_Ciclo, Anulada FROM Imputacion_Preventiva"
                " WHERE SC_Imputacion_Preventiva = " +
                std::to_string(key))
            .at(0);
    }
    /// All that a launch may change.
    std::vector<std::string> Stored() {
        std::vector<std::string> all;
        for (const char* table :
             {"Imputacion_Preventiva", "Boletin", "Orden_Trabajo", "Material_OT", "Orden_Generada"}) {
            for (std::string& row : world.Rows("SELECT '" + std::string(table) + "', * FROM " + table)) {
                all.push_back(std::move(row));
            }
        }
        return all;
    }

    World world;
    Zontara::Ref<Zontara::CImputacionPreventiva> preventive = Zontara::Create<Zontara::CImputacionPreventiva>();
};

/// An error's number.
inline std::int32_t NumberOf(const std::function<void()>& work) { return ErrorOf(work).number; }

/// An engine's refusal of a statement that it can't read.
inline constexpr std::int32_t kRefused = Zontara::vbObjectError + 1;
/// What `World::FailOn` raises unless told otherwise.
inline constexpr std::int32_t kForced = Zontara::vbObjectError + 19;

/// The whole call stack of a report, innermost level first.
template <class... Levels> void ExpectCallStack(const Zontara::ErrorRecord& error, const Levels&... levels) {
    EXPECT_EQ(error.source, "HuntERR.ErrorIn");
    EXPECT_THAT(CallStackOf(error.description), testing::ElementsAre("  Call Stack: " + std::string(levels)...));
}

}  // namespace support

// Calendar assignments, meter assignments and their parallels.

#include "host/load/table.h"

#include "calendar/CImputacionPreventiva.h"
#include "frame/platform.h"
#include "host/load/programming.h"
#include "meter/CImputacionParalela.h"
#include "meter/CImputacionSistematica.h"

#include <fmt/format.h>

namespace host::load {

namespace {

enum Calendar : std::size_t {
    kAsset,
    kTask,
    kSynchronised,
    kFrequency,
    kInterval,
    kProgramming,
    kStart,
    kLastLaunch,
    kMade,
    kWeek,
    kCancelled,
    kEnds,
    kCycle,
    kCycleDone,
    kUser,
    kShortText,
    kChanged,
    kReason,
};
enum Meter : std::size_t {
    kMeterAsset,
    kMeterTask,
    kLimit,
    kMeterStart,
    kApproximation,
    kReference,
    kMeterEnd,
    kMeterMade,
    kMeterCancelled,
    kMeterUser,
    kMeterChanged,
    kMeterReason,
};
enum Parallel : std::size_t { kOfAsset, kOfTask, kParallelAsset, kParallelTask };

std::string MeterCode(const Row& row, std::size_t asset, std::size_t task) {
    return AssignmentCode({row.Text(asset), std::to_string(row.Int32(task))});
}

void TellCalendar(const Line& line) {
    const Row& row = line.row;
    if (row.Byte(kCancelled) != 0) return;
    const std::string code = AssignmentCode({row.Text(kAsset), std::to_string(row.Int32(kTask)),
                                             std::to_string(row.Byte(kSynchronised)), row.Text(kFrequency)});
    if (!line.known.calendar.Add(code)) {
        line.Fail(fmt::format("asset '{}' already has task {} with this kind and frequency in force", row.Text(kAsset),
                              row.Int32(kTask)));
    }
}

void CheckCalendar(const Line& line) {
    line.Require(kAsset, line.known.assets, "asset", "assets.csv");
    line.Require(kTask, line.known.tasks, "task", "tasks.csv");
    const std::string frequency = line.row.Text(kFrequency);
    if (!IsFrequency(frequency)) {
        line.Fail(kFrequency, fmt::format("'{}' is none of Fecha, Diaria, Semanal, Quincenal, Mensual, Bimestral, "
                                          "Trimestral, Semestral and Anual",
                                          frequency));
        return;
    }
    const std::string fault =
        ProgrammingFault(line.row.Byte(kSynchronised) != 0, frequency, line.row.Text(kProgramming));
    if (!fault.empty()) line.Fail(kProgramming, fault);
}

void WriteCalendar(Plant& plant, Known& known, const Row& row) {
    const std::string start = row.Text(kStart);
    const std::string made = row.Has(kMade) ? row.Text(kMade) : start;
    plant.Component().ImputacionPreventiva()->Nuevo(
        row.Text(kAsset), known.tasks.Key(std::to_string(row.Int32(kTask))), made, row.Byte(kCancelled),
        row.Int32(kUser), row.Text(kFrequency), row.Int16(kInterval), row.Int32(kCycle), row.Int32(kCycleDone), start,
        row.Text(kLastLaunch), row.Has(kChanged) ? row.Text(kChanged) : made, row.Text(kReason), row.Int32(kWeek),
        row.Byte(kEnds), row.Text(kProgramming), row.Byte(kSynchronised) != 0, row.Text(kShortText));
}

void TellMeter(const Line& line) {
    if (!line.known.meter.Add(MeterCode(line.row, kMeterAsset, kMeterTask))) {
        line.Fail(fmt::format("asset '{}' already has task {} by meter", line.row.Text(kMeterAsset),
                              line.row.Int32(kMeterTask)));
    }
}

void WriteMeter(Plant& plant, Known& known, const Row& row) {
    const auto assignments = plant.Component().ImputacionSistematica();
    const std::string start = row.Text(kMeterStart);
    const std::string made = row.Has(kMeterMade) ? row.Text(kMeterMade) : start;
    const std::int32_t key = assignments->Nuevo(
        row.Text(kMeterAsset), known.tasks.Key(std::to_string(row.Int32(kMeterTask))), made, row.Byte(kMeterCancelled),
        row.Int32(kMeterUser), start, row.Text(kMeterEnd), 0, 0, row.Int32(kApproximation), "",
        row.Has(kMeterChanged) ? row.Text(kMeterChanged) : made, row.Text(kMeterReason), row.Int32(kLimit));
    if (row.Has(kReference)) {
        assignments->ActualizarAcumuladoDeReferencia(key, Zontara::CurrentPlatform().Now(), row.Int32(kReference));
    }
    known.meter.Set(MeterCode(row, kMeterAsset, kMeterTask), key);
}

void CheckParallel(const Line& line) {
    for (const auto& [asset, task] : {std::pair{kOfAsset, kOfTask}, std::pair{kParallelAsset, kParallelTask}}) {
        if (!line.known.meter.Has(MeterCode(line.row, asset, task))) {
            line.Fail(asset, fmt::format("asset '{}' has no task {} by meter in meter.csv or in the database",
                                         line.row.Text(asset), line.row.Int32(task)));
        }
    }
}

void WriteParallel(Plant& plant, Known& known, const Row& row) {
    plant.Component().ImputacionParalela()->Nuevo(known.meter.Key(MeterCode(row, kOfAsset, kOfTask)),
                                                  known.meter.Key(MeterCode(row, kParallelAsset, kParallelTask)));
}

}  // namespace

Table CalendarAssignments() {
    return {"calendar.csv",
            {
                {"ID_Activo", CellKind::PlainCode, true},
                {"Numero_Gama", CellKind::Int32, true},
                {"Es_Sincronizada", CellKind::Flag, true},
                {"Frecuencia", CellKind::PlainCode, true},
                {"Intervalo_Frecuencia", CellKind::Int16, true},
                {"Programacion", CellKind::PlainCode},
                {"Fecha_Inicio", CellKind::Date, true},
                {"Fecha_Ultimo_Lanzamiento", CellKind::Date, true},
                {"Fecha_Imputacion", CellKind::Date},
                {"Semana", CellKind::Int32},
                {"Anulada", CellKind::Flag},
                {"Finaliza", CellKind::Flag},
                {"Numero_Repeticion_Ciclo", CellKind::Int32},
                {"Acumulado_Ciclo", CellKind::Int32},
                {"SC_Usuario", CellKind::Int32},
                {"Descripcion_Breve", CellKind::PlainText},
                {"Fecha_Ultima_Modificacion", CellKind::Date},
                {"Causa_Modificacion", CellKind::PlainText},
            },
            TellCalendar,
            CheckCalendar,
            WriteCalendar};
}

Table MeterAssignments() {
    return {"meter.csv",
            {
                {"ID_Activo", CellKind::PlainCode, true},
                {"Numero_Gama", CellKind::Int32, true},
                {"Lectura_Limite", CellKind::Int32, true},
                {"Fecha_Inicio", CellKind::Date, true},
                {"Aproximacion_Lectura", CellKind::Int32},
                {"Ultimo_Acumulado", CellKind::Int32},
                {"Fecha_Fin", CellKind::Date},
                {"Fecha_Imputacion", CellKind::Date},
                {"Anulada", CellKind::Flag},
                {"SC_Usuario", CellKind::Int32},
                {"Fecha_Ultima_Modificacion", CellKind::Date},
                {"Causa_Modificacion", CellKind::PlainText},
            },
            TellMeter,
            [](const Line& line) {
                line.Require(kMeterAsset, line.known.assets, "asset", "assets.csv");
                line.Require(kMeterTask, line.known.tasks, "task", "tasks.csv");
            },
            WriteMeter};
}

Table Parallels() {
    return {"parallels.csv",
            {
                {"ID_Activo", CellKind::PlainCode, true},
                {"Numero_Gama", CellKind::Int32, true},
                {"ID_Activo_Paralela", CellKind::PlainCode, true},
                {"Numero_Gama_Paralela", CellKind::Int32, true},
            },
            nullptr,
            CheckParallel,
            WriteParallel};
}

}  // namespace host::load

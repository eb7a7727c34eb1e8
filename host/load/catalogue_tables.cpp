// Units, groups, executors, tasks and what belongs to them.

#include "host/load/table.h"

#include "catalogues/CEjecutorGama.h"
#include "catalogues/CGama.h"
#include "catalogues/CGrupoGama.h"
#include "catalogues/CMaterialGama.h"
#include "catalogues/CUnidadLectura.h"
#include "catalogues/CUsuarioEjecutorGama.h"

#include <fmt/format.h>

namespace host::load {

namespace {

enum Unit : std::size_t { kUnitName };
enum Group : std::size_t { kGroupName, kGroupOrder };
enum Executor : std::size_t { kExecutorName, kExecutorOrder };
enum User : std::size_t { kUserKey, kUserExecutor };
enum Task : std::size_t {
    kTaskNumber,
    kTaskName,
    kTaskGroup,
    kTaskExecutor,
    kTaskText,
    kTaskStopped,
    kTaskType,
    kTaskCost,
    kTaskTime,
    kTaskScheme,
    kTaskCoordination,
    kTaskSafety,
    kTaskTools,
    kTaskContractor,
    kTaskCrew,
    kTaskSpecialist,
    kTaskFrequency,
};
enum Material : std::size_t { kMaterialTask, kMaterialItem, kMaterialName, kMaterialCost, kMaterialQuantity };

std::string Number(const Row& row, std::size_t column) { return std::to_string(row.Int32(column)); }

void WriteTask(Plant& plant, Known& known, const Row& row) {
    const std::int32_t key = plant.Component().Gama()->Nuevo(
        row.Text(kTaskName), row.Text(kTaskText), row.Byte(kTaskStopped), known.groups.Key(row.Text(kTaskGroup)),
        known.executors.Key(row.Text(kTaskExecutor)), row.Int32(kTaskNumber), row.Text(kTaskType), row.Money(kTaskCost),
        row.Text(kTaskTime), row.Text(kTaskScheme), row.Text(kTaskCoordination), row.Text(kTaskSafety),
        row.Text(kTaskTools), row.Int32(kTaskContractor), row.Byte(kTaskCrew), row.Text(kTaskSpecialist),
        row.Text(kTaskFrequency));
    known.tasks.Set(Number(row, kTaskNumber), key);
}

}  // namespace

Table Units() {
    return {"units.csv",
            {{"Descripcion", CellKind::Code, true}},
            [](const Line& line) { line.Register(kUnitName, line.known.units, "a reading unit"); },
            nullptr,
            [](Plant& plant, Known& known, const Row& row) {
                known.units.Set(row.Text(kUnitName), plant.Component().UnidadLectura()->Nuevo(row.Text(kUnitName)));
            }};
}

Table Groups() {
    return {"groups.csv",
            {{"Descripcion", CellKind::Code, true}, {"Orden_Lista", CellKind::Int32}},
            [](const Line& line) { line.Register(kGroupName, line.known.groups, "a group"); },
            nullptr,
            [](Plant& plant, Known& known, const Row& row) {
                known.groups.Set(row.Text(kGroupName),
                                 plant.Component().GrupoGama()->Nuevo(row.Text(kGroupName), row.Int32(kGroupOrder)));
            }};
}

Table Executors() {
    return {"executors.csv",
            {{"Descripcion", CellKind::Code, true}, {"Orden_En_Lista", CellKind::Byte}},
            [](const Line& line) { line.Register(kExecutorName, line.known.executors, "an executor"); },
            nullptr,
            [](Plant& plant, Known& known, const Row& row) {
                known.executors.Set(row.Text(kExecutorName), plant.Component().EjecutorGama()->Nuevo(
                                                                 row.Text(kExecutorName), row.Byte(kExecutorOrder)));
            }};
}

Table Users() {
    return {"users.csv",
            {{"SC_Usuario", CellKind::Int32, true}, {"Ejecutor", CellKind::Code, true}},
            nullptr,
            [](const Line& line) { line.Require(kUserExecutor, line.known.executors, "executor", "executors.csv"); },
            [](Plant& plant, Known& known, const Row& row) {
                plant.Component().UsuarioEjecutorGama()->Nuevo(row.Int32(kUserKey),
                                                               known.executors.Key(row.Text(kUserExecutor)));
            }};
}

Table Tasks() {
    return {"tasks.csv",
            {
                {"Numero_Gama", CellKind::Int32, true},
                {"Descripcion", CellKind::Text, true},
                {"Grupo", CellKind::Code, true},
                {"Ejecutor", CellKind::Code, true},
                {"Texto_Mantenimiento"},
                {"Equipo_Parado", CellKind::Flag},
                {"Tipo_Gama", CellKind::PlainCode},
                {"Costo_Actual", CellKind::Money},
                {"Tiempo_Necesario", CellKind::PlainCode},
                {"Esquema"},
                {"Coordinaciones"},
                {"Seguridades"},
                {"Materiales_Herramientas"},
                {"SC_Contratista", CellKind::Int32},
                {"Hombres_Necesarios", CellKind::Byte},
                {"Especialista", CellKind::PlainText},
                {"Frecuencia_Gama"},
            },
            [](const Line& line) { line.Register(kTaskNumber, line.known.tasks, "a task"); },
            [](const Line& line) {
                line.Require(kTaskGroup, line.known.groups, "group", "groups.csv");
                line.Require(kTaskExecutor, line.known.executors, "executor", "executors.csv");
            },
            WriteTask};
}

Table Materials() {
    return {"materials.csv",
            {
                {"Numero_Gama", CellKind::Int32, true},
                {"item", CellKind::Int16, true},
                {"Descripcion", CellKind::PlainText, true},
                {"Costo_Unitario", CellKind::Money, true},
                {"Cantidad_Necesaria", CellKind::Real, true},
            },
            nullptr,
            [](const Line& line) { line.Require(kMaterialTask, line.known.tasks, "task", "tasks.csv"); },
            [](Plant& plant, Known& known, const Row& row) {
                plant.Component().MaterialGama()->AgregarItem(row.Int16(kMaterialItem), row.Text(kMaterialName),
                                                              row.Money(kMaterialCost), row.Real(kMaterialQuantity),
                                                              known.tasks.Key(Number(row, kMaterialTask)));
            }};
}

}  // namespace host::load

#include "bench/plant.h"

#include "Perluma/provider.h"
#include "frame/provider.h"
#include "schema/create.h"

#include <unistd.h>

#include <cstdio>
#include <filesystem>

namespace bench {

namespace {

using dhRichClient3::Connection;

/// Tasks of a kind, as many as a large plant has, in which the assignments take turns.
constexpr int kTasks = 200;

/// Counts from 1 to `count` as n(i).
std::string Counting(int count) {
    return "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < " + std::to_string(count) + ")";
}

Zontara::Ref<Connection> Opened(const std::string& path) {
    dhRichClient3::Options options;
    options.mode = dhRichClient3::Options::Mode::Create;
    options.stepLimit = 0;
    return Connection::Open(path, options);
}

}  // namespace

Plant::Plant(const std::string& name)
    : path_(
          (std::filesystem::temp_directory_path() / ("zontara-bench-" + std::to_string(getpid()) + "-" + name + ".db"))
              .string()) {
    Remove();
    schema::Create(*Opened(path_));
}

Plant::~Plant() { Remove(); }

void Plant::Remove() const {
    for (const char* end : {"", "-wal", "-shm"})
        std::remove((path_ + end).c_str());
}

void Plant::Run(const std::string& script) const { Opened(path_)->RunScript("BEGIN;" + script + ";COMMIT"); }

void Plant::AddWeekly(int assets) const {
    Run(Counting(kTasks) +
        " INSERT INTO Gama (SC_Gama, Descripcion, Numero_Gama, Hombres_Necesarios, Tiempo_Necesario)"
        " SELECT i, 'Engrase general ' || i, 10 + i, 2, '1.5' FROM n;" +
        Counting(kTasks) +
        " INSERT INTO materiales_gama SELECT i * 3, 'Grasa', 4.25, 0.5, i, 1 FROM n"
        " UNION ALL SELECT i * 3 + 1, 'Trapo', 0.5, 2, i, 2 FROM n"
        " UNION ALL SELECT i * 3 + 2, 'Guantes', 1, 1, i, 3 FROM n;" +
        Counting(assets) +
        " INSERT INTO Activo (ID_Activo, Descripcion, estatus_actual, Acumulado_Lectura)"
        " SELECT printf('P-%07d', i), 'Bomba ' || i, 0, 0 FROM n;" +
        Counting(assets) +
        " INSERT INTO Imputacion_Preventiva (SC_Imputacion_Preventiva, ID_Activo, SC_Gama, Fecha_Imputacion, Anulada,"
        " SC_Usuario, Frecuencia, Intervalo_Frecuencia, Numero_Repeticion_Ciclo, Acumulado_Ciclo, Fecha_Inicio,"
        " Fecha_Ultimo_Lanzamiento, Semana, Finaliza, Programacion, Es_Sincronizada, Descripcion_Breve)"
        " SELECT i, printf('P-%07d', i), i % " +
        std::to_string(kTasks) +
        " + 1, '2026-01-01', 0, 7, 'Semanal', 1, 0, 0, '2026-01-01', '2026-02-23', 9, 0, '1', 1, '' FROM n");
}

void Plant::AddMetered(int assets, int assignments) const {
    Run("INSERT INTO Unidad_Lectura VALUES (4, 'h'); INSERT INTO Grupo_Gama VALUES (3, 'Mecánica', 1);" +
        Counting(kTasks) +
        " INSERT INTO Gama (SC_Gama, Descripcion, Numero_Gama, SC_Grupo_Gama, SC_Ejecutor_Gama,"
        " Hombres_Necesarios, Tiempo_Necesario)"
        " SELECT 1000 + i, 'Cambio de aceite ' || i, 60 + i, 3, 2, 2, '1.5' FROM n;" +
        Counting(kTasks) +
        " INSERT INTO materiales_gama SELECT 3000 + i * 3, 'Aceite', 7.25, 4.5, 1000 + i, 1 FROM n"
        " UNION ALL SELECT 3001 + i * 3, 'Filtro', 12.5, 1, 1000 + i, 2 FROM n"
        " UNION ALL SELECT 3002 + i * 3, 'Junta', 1, 1, 1000 + i, 3 FROM n;" +
        Counting(assets) +
        " INSERT INTO Activo (ID_Activo, Descripcion, estatus_actual, SC_Unidad_Lectura, Acumulado_Lectura)"
        " SELECT printf('P-%07d', i), 'Compresor ' || i, 0, 4, 5000 FROM n WHERE true"
        " ON CONFLICT (ID_Activo) DO UPDATE SET SC_Unidad_Lectura = 4;" +
        Counting(assets * assignments) +
        " INSERT INTO Imputacion_Sistematica (SC_Imputacion_Sistematica, ID_Activo, ID_Equipo, SC_Gama, Anulada,"
        " Lectura_Limite, Ultimo_Acumulado, Fecha_Ultimo_Lanzamiento)"
        " SELECT i, printf('P-%07d', (i - 1) / " +
        std::to_string(assignments) + " + 1), '', 1001 + i % " + std::to_string(kTasks) +
        ", 0, 1000 + i % 7, 3000, '2026-02-23' FROM n");
}

void Plant::AddProcess() const { Run("INSERT INTO Proceso VALUES (1, 'Preventivo', 1, 1)"); }

Zontara::Date LaunchDay() { return Zontara::DateOf(2026, 3, 2); }

Component::Component(const std::string& path, Where where)
    : connection_(Opened(where == Where::OnFile ? path : ":memory:")) {
    if (where == Where::InMemory) {
        schema::Create(*connection_);
        connection_->RunScript("ATTACH '" + path + "' AS plant");
        std::string copies;
        for (const std::string& table : schema::Tables())
            copies += "INSERT INTO main." + table + " SELECT * FROM plant." + table + ";";
        connection_->RunScript("BEGIN;" + copies + "COMMIT; DETACH plant");
    }
    Perluma::OpenSession(connection_);
}

Component::~Component() { Zontara::InstallProvider(nullptr); }

Pair::Pair(const std::string& plant, Component::Where where)
    : component(plant, where),
      bound(where == Component::Where::OnFile ? Database::OnFile(plant) : Database::InMemory(plant)) {}

std::string PlaceOf(Component::Where where) { return where == Component::Where::OnFile ? ", file" : ", memory"; }

Zontara::Ref<Zontara::CConfiguracionOTBoletin> Orders() {
    auto orders = std::make_shared<Zontara::CConfiguracionOTBoletin>();
    orders->UsuarioDestino(7);
    orders->CodigoEjecutorOT(2);
    orders->PrioridadSolicitada(3);
    orders->TipoIntervencion(1);
    return orders;
}

}  // namespace bench

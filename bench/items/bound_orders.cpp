#include "bench/items/streams.h"

#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

namespace bench {

namespace {

/// An order with its log entry, materials and labour, as both kinds of launch write it.
class OrderStream {
public:
    OrderStream(const Database& database, Questions questions)
        : questions_(questions),
          orders_(database, "Orden_Trabajo", "SC_Orden_Trabajo", Keys::Way::InMemory),
          log_(database, "Orden_Generada", "SC_Orden_Generada", Keys::Way::InMemory),
          materials_(database, "Material_OT", "SC_Material_OT", Keys::Way::InMemory),
          process_(database, "SELECT SC_Proceso, Estatus_Valido FROM Proceso WHERE Activo <> 0 ORDER BY SC_Proceso"),
          order_(database,
                 "INSERT INTO Orden_Trabajo (SC_Orden_Trabajo, Descripcion, Fecha_Solicitud, Fecha_Deseada, Origen,"
                 " SC_Ejecutor_Interno, Texto_Trabajo, SC_Usuario_Destino, Prioridad, ID_Activo, SC_Tipo_Intervencion,"
                 " SC_Proceso, SC_Ejecutor_Externo, SC_Imputacion_Sistematica, SC_Gama)"
                 " VALUES (?1, ?2, ?3, ?4, ?5, 2, ?6, 7, 3, ?7, 1, ?8, 0, ?9, ?10)"),
          entry_(database,
                 "INSERT INTO Orden_Generada (SC_Orden_Generada, SC_Orden_Trabajo, SC_Imputacion_Sistematica,"
                 " Fecha_Generacion) VALUES (?1, ?2, ?3, ?4)"),
          listed_(database, "SELECT * FROM materiales_gama WHERE sc_gama = ?1"),
          material_(database,
                    "INSERT INTO Material_OT (SC_Material_OT, SC_Orden_Trabajo, Linea, Descripcion, Costo_Unitario,"
                    " Cantidad) VALUES (?1, ?2, ?3, ?4, ?5, ?6)"),
          crew_(database, "SELECT Hombres_Necesarios, Tiempo_Necesario FROM Gama WHERE SC_Gama = ?1"),
          labour_(database, "UPDATE Orden_Trabajo SET Hombres = ?2, Tiempo = ?3 WHERE SC_Orden_Trabajo = ?1") {}

    void Begin() {
        orders_.Begin();
        log_.Begin();
        materials_.Begin();
    }
    void Save() {
        orders_.Save();
        log_.Save();
        materials_.Save();
    }

    struct Order {
        std::string description;
        std::string text;
        std::string asset;
        int origin;
        int logged;
        int assignment;
        int task;
        /// What the order itself keeps of the task.
        int keptTask;
    };
    void Write(const Order& order) {
        if (questions_ == Questions::EachTime || !processNumber_) processNumber_ = AskProcess();
        const int key = orders_.Next();
        order_.Bind(1, key).Bind(2, order.description).Bind(3, "2026-03-02").Bind(4, "2026-03-05");
        order_.Bind(5, order.origin).Bind(6, order.text).Bind(7, order.asset).Bind(8, *processNumber_);
        order_.Bind(9, order.assignment).Bind(10, order.keptTask).Run();
        entry_.Bind(1, log_.Next()).Bind(2, key).Bind(3, order.logged).Bind(4, "2026-03-02").Run();
        if (questions_ == Questions::Once) {
            const auto [known, isNew] = tasks_.try_emplace(order.task);
            if (isNew) known->second = {AskMaterials(order.task), AskLabour(order.task)};
            WriteMaterials(key, known->second.materials);
            WriteLabour(key, known->second.labour);
        } else {
            WriteMaterials(key, AskMaterials(order.task));
            WriteLabour(key, AskLabour(order.task));
        }
    }

private:
    struct Material {
        std::string description;
        double cost;
        double amount;
    };
    struct Labour {
        int men;
        double hours;
    };
    struct Task {
        std::vector<Material> materials;
        Labour labour;
    };

    int AskProcess() {
        const int process = process_.Step() ? process_.Int(0) : 0;
        process_.Reset();
        return process;
    }
    std::vector<Material> AskMaterials(int task) {
        std::vector<Material> materials;
        listed_.Bind(1, task);
        while (listed_.Step())
            materials.push_back({listed_.Text(1), listed_.Real(2), listed_.Real(3)});
        listed_.Reset();
        return materials;
    }
    Labour AskLabour(int task) {
        crew_.Bind(1, task).Step();
        const Labour labour{crew_.Int(0), crew_.Real(1)};
        crew_.Reset();
        return labour;
    }
    void WriteMaterials(int order, const std::vector<Material>& materials) {
        for (const Material& each : materials) {
            material_.Bind(1, materials_.Next()).Bind(2, order).Bind(3, static_cast<int>(materials.size()));
            material_.Bind(4, each.description).Bind(5, each.cost).Bind(6, each.amount).Run();
        }
    }
    void WriteLabour(int order, const Labour& labour) {
        labour_.Bind(1, order).Bind(2, labour.men).Bind(3, labour.hours).Run();
    }

    Questions questions_;
    std::optional<int> processNumber_;
    std::unordered_map<int, Task> tasks_;
    Keys orders_;
    Keys log_;
    Keys materials_;
    Prepared process_;
    Prepared order_;
    Prepared entry_;
    Prepared listed_;
    Prepared material_;
    Prepared crew_;
    Prepared labour_;
};

struct MeterRow {
    int key;
    int limit;
    int task;
    int last;
    std::string unit;
    int number;
    std::string group;
    double reading;
};

const char* const kMeterRows =
    "SELECT SC_Imputacion_Sistematica, Lectura_Limite, Gama.SC_Gama, Ultimo_Acumulado, Unidad_Lectura.Descripcion,"
    " Gama.Numero_Gama, Grupo_Gama.Descripcion, Activo.Acumulado_Lectura"
    " FROM Imputacion_Sistematica, Activo, Gama, Grupo_Gama, Unidad_Lectura"
    " WHERE Imputacion_Sistematica.ID_Activo = Activo.ID_Activo"
    " AND Activo.SC_Unidad_Lectura = Unidad_Lectura.SC_Unidad_Lectura AND Gama.SC_Gama = Imputacion_Sistematica.SC_Gama"
    " AND Grupo_Gama.SC_Grupo_Gama = Gama.SC_Grupo_Gama AND Imputacion_Sistematica.ID_Activo = ?1 AND Anulada = 0"
    " ORDER BY Lectura_Limite DESC";

}  // namespace

int LaunchOrders(const Database& database, Questions questions) {
    const std::vector<ActiveRow> rows = ActiveRows(database);
    database.Run("BEGIN IMMEDIATE");
    OrderStream stream(database, questions);
    stream.Begin();
    Prepared book(database, kBooking);
    int orders = 0;
    for (const ActiveRow& row : rows) {
        if (!row.Due()) continue;
        const std::string text = "Execute Task --- Nº " + std::to_string(row.number) + " ,Frequency " + row.frequency;
        stream.Write({row.description, text, row.asset, 0, 99, 0, row.task, row.task});
        book.Bind(1, "2026-03-02").Bind(2, 10).Bind(3, row.key).Run();
        ++orders;
    }
    stream.Save();
    database.Run("COMMIT");
    return orders;
}

int GenerateMeterOrders(const Database& database, Questions questions) {
    struct Asset {
        std::string key;
        int reading;
    };
    std::vector<Asset> assets;
    Prepared all(database,
                 "SELECT ID_Activo, Acumulado_Lectura FROM Activo WHERE estatus_actual NOT IN (3, 4, 5, 7) ORDER BY"
                 " ID_Activo");
    while (all.Step())
        assets.push_back({all.Text(0), all.Int(1)});
    OrderStream stream(database, questions);
    Prepared select(database, kMeterRows);
    Prepared begin(database, "BEGIN IMMEDIATE");
    Prepared commit(database, "COMMIT");
    Prepared move(database,
                  "UPDATE Imputacion_Sistematica SET Ultimo_Acumulado = ?1 WHERE SC_Imputacion_Sistematica = ?2");
    int orders = 0;
    for (const Asset& asset : assets) {
        std::vector<MeterRow> rows;
        select.Bind(1, asset.key);
        while (select.Step()) {
            rows.push_back({select.Int(0), select.Int(1), select.Int(2), select.Int(3), select.Text(4), select.Int(5),
                            select.Text(6), select.Real(7)});
        }
        select.Reset();
        begin.Run();
        stream.Begin();
        for (const MeterRow& row : rows) {
            if (asset.reading - row.last < row.limit) continue;
            const std::string text =
                "Execute Task  Nº " + std::to_string(row.number) + " of " + std::to_string(row.limit) + " " + row.unit +
                " after been reached the accumulated " + std::to_string(static_cast<int>(row.reading)) + " " + row.unit;
            stream.Write({row.group, text, asset.key, 1, row.key, row.key, row.task, 0});
            move.Bind(1, asset.reading).Bind(2, row.key).Run();
            ++orders;
        }
        stream.Save();
        commit.Run();
    }
    return orders;
}

}  // namespace bench

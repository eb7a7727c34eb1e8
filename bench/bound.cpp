#include "bench/bound.h"

#include <sqlite3.h>

#include <stdexcept>
#include <string>
#include <vector>

namespace bench {

namespace {

struct Database {
    explicit Database(const std::string& path) {
        if (sqlite3_open(path.c_str(), &handle) != SQLITE_OK) throw std::runtime_error(sqlite3_errmsg(handle));
    }
    ~Database() { sqlite3_close(handle); }
    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;

    void Run(const char* sql) const {
        if (sqlite3_exec(handle, sql, nullptr, nullptr, nullptr) != SQLITE_OK) {
            throw std::runtime_error(sqlite3_errmsg(handle));
        }
    }
    sqlite3* handle = nullptr;
};

class Prepared {
public:
    Prepared(const Database& database, const char* sql) : database_(database.handle) {
        if (sqlite3_prepare_v2(database_, sql, -1, &statement_, nullptr) != SQLITE_OK) {
            throw std::runtime_error(sqlite3_errmsg(database_));
        }
    }
    ~Prepared() { sqlite3_finalize(statement_); }
    Prepared(const Prepared&) = delete;
    Prepared& operator=(const Prepared&) = delete;

    void Bind(int position, int value) { sqlite3_bind_int(statement_, position, value); }
    void Bind(int position, const std::string& text) {
        sqlite3_bind_text(statement_, position, text.data(), static_cast<int>(text.size()), SQLITE_STATIC);
    }
    bool Step() {
        const int code = sqlite3_step(statement_);
        if (code != SQLITE_ROW && code != SQLITE_DONE) throw std::runtime_error(sqlite3_errmsg(database_));
        return code == SQLITE_ROW;
    }
    void Run() {
        Step();
        sqlite3_reset(statement_);
    }
    int Int(int column) { return sqlite3_column_int(statement_, column); }
    std::string Text(int column) {
        return std::string(reinterpret_cast<const char*>(sqlite3_column_text(statement_, column)),
                           static_cast<std::size_t>(sqlite3_column_bytes(statement_, column)));
    }

private:
    sqlite3* database_;
    sqlite3_stmt* statement_ = nullptr;
};

struct Row {
    int key;
    std::string asset;
    std::string frequency;
    int week;
    int interval;
};

std::vector<Row> ActiveRows(const Database& database) {
    Prepared select(database,
                    "SELECT SC_Imputacion_Preventiva, Activo.ID_Activo, Frecuencia, Semana, Intervalo_Frecuencia"
                    " FROM Imputacion_Preventiva, Activo, Gama WHERE Anulada = 0 AND Fecha_Inicio <= '2026-03-02'"
                    " AND Gama.SC_Gama = Imputacion_Preventiva.SC_Gama"
                    " AND Imputacion_Preventiva.ID_Activo = Activo.ID_Activo"
                    " AND estatus_actual NOT IN (3,4,5,7) AND Es_Sincronizada = 1");
    std::vector<Row> rows;
    while (select.Step())
        rows.push_back({select.Int(0), select.Text(1), select.Text(2), select.Int(3), select.Int(4)});
    return rows;
}

}  // namespace

int LaunchBound(const std::string& path) {
    const Database database(path);
    database.Run("PRAGMA synchronous = FULL");
    const std::vector<Row> rows = ActiveRows(database);
    database.Run("BEGIN IMMEDIATE");
    Prepared key(database,
                 "INSERT INTO Clave (Tabla, Ultima_Clave) VALUES ('boletin', 1)"
                 " ON CONFLICT (Tabla) DO UPDATE SET Ultima_Clave = Ultima_Clave + 1 RETURNING Ultima_Clave");
    Prepared insert(database,
                    "INSERT INTO Boletin (SC_Boletin, SC_Imputacion_Preventiva, ID_Equipo, Fecha_Lanzamiento,"
                    " Fecha_Entrega, Fecha_Real_Entrega, Lunes, Martes, Miercoles, Jueves, Viernes, Sabado, Domingo,"
                    " Semana_Del_Ano, SC_Usuario) VALUES (?1,?2,?3,?4,?5,?4,'','','','','','','',?6,?7)");
    Prepared update(database,
                    "UPDATE Imputacion_Preventiva SET Fecha_Ultimo_Lanzamiento = ?1, Semana = ?2"
                    " WHERE SC_Imputacion_Preventiva = ?3");
    const std::string launched = "2026-03-02";
    const std::string delivery = "2026-03-09";
    int bulletins = 0;
    for (const Row& row : rows) {
        if (row.frequency != "Semanal" || row.week == 10 || row.interval > 1) continue;
        key.Step();
        const int next = key.Int(0);
        key.Run();
        insert.Bind(1, next);
        insert.Bind(2, row.key);
        insert.Bind(3, row.asset);
        insert.Bind(4, launched);
        insert.Bind(5, delivery);
        insert.Bind(6, 10);
        insert.Bind(7, 7);
        insert.Run();
        update.Bind(1, launched);
        update.Bind(2, 10);
        update.Bind(3, row.key);
        update.Run();
        ++bulletins;
    }
    database.Run("COMMIT");
    return bulletins;
}

}  // namespace bench

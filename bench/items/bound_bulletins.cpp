#include "bench/items/streams.h"

#include <vector>

namespace bench {

const char* const kSelectActive =
    "SELECT SC_Imputacion_Preventiva, Activo.ID_Activo, Frecuencia, Semana, Intervalo_Frecuencia, Gama.SC_Gama,"
    " Gama.Descripcion, Numero_Gama FROM Imputacion_Preventiva, Activo, Gama"
    " WHERE Anulada = 0 AND Fecha_Inicio <= '2026-03-02' AND Gama.SC_Gama = Imputacion_Preventiva.SC_Gama"
    " AND Imputacion_Preventiva.ID_Activo = Activo.ID_Activo AND estatus_actual NOT IN (3,4,5,7)"
    " AND Es_Sincronizada = 1";

std::vector<ActiveRow> ActiveRows(const Database& database) {
    Prepared select(database, kSelectActive);
    std::vector<ActiveRow> rows;
    while (select.Step())
        rows.push_back({select.Int(0), select.Text(1), select.Text(2), select.Int(3), select.Int(4), select.Int(5),
                        select.Text(6), select.Int(7)});
    return rows;
}

const char* const kBooking =
    "UPDATE Imputacion_Preventiva SET Fecha_Ultimo_Lanzamiento = ?1, Semana = ?2 WHERE SC_Imputacion_Preventiva = ?3";

int LaunchBulletins(const Database& database, Keys::Way way) {
    const std::vector<ActiveRow> rows = ActiveRows(database);
    database.Run("BEGIN IMMEDIATE");
    Keys keys(database, "Boletin", "SC_Boletin", way);
    keys.Begin();
    Prepared insert(database,
                    "INSERT INTO Boletin (SC_Boletin, SC_Imputacion_Preventiva, ID_Equipo, Fecha_Lanzamiento,"
                    " Fecha_Entrega, Fecha_Real_Entrega, Lunes, Martes, Miercoles, Jueves, Viernes, Sabado, Domingo,"
                    " Semana_Del_Ano, SC_Usuario) VALUES (?1,?2,?3,?4,?5,?4,'','','','','','','',?6,?7)");
    Prepared book(database, kBooking);
    int bulletins = 0;
    for (const ActiveRow& row : rows) {
        if (!row.Due()) continue;
        insert.Bind(1, keys.Next()).Bind(2, row.key).Bind(3, row.asset).Bind(4, "2026-03-02").Bind(5, "2026-03-09");
        insert.Bind(6, 10).Bind(7, 7).Run();
        book.Bind(1, "2026-03-02").Bind(2, 10).Bind(3, row.key).Run();
        ++bulletins;
    }
    keys.Save();
    database.Run("COMMIT");
    return bulletins;
}

}  // namespace bench

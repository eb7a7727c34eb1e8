#include "bench/plant.h"

#include "schema/create.h"

#include <cstdio>
#include <filesystem>

namespace bench {

void FillPlant(dhRichClient3::Connection& connection, int assets) {
    schema::Create(connection);
    const std::string count = std::to_string(assets);
    connection.RunScript(
        "BEGIN;"
        "INSERT INTO Gama (SC_Gama, Descripcion, Numero_Gama) VALUES (1, 'Engrase general', 1);"
        "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < " +
        count +
        ")"
        " INSERT INTO Activo (ID_Activo, Descripcion, estatus_actual)"
        " SELECT printf('P-%07d', i), 'Bomba ' || i, 0 FROM n;"
        "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < " +
        count +
        ")"
        " INSERT INTO Imputacion_Preventiva (SC_Imputacion_Preventiva, ID_Activo, SC_Gama, Fecha_Imputacion, Anulada,"
        " SC_Usuario, Frecuencia, Intervalo_Frecuencia, Numero_Repeticion_Ciclo, Acumulado_Ciclo, Fecha_Inicio,"
        " Fecha_Ultimo_Lanzamiento, Semana, Finaliza, Programacion, Es_Sincronizada, Descripcion_Breve)"
        " SELECT i, printf('P-%07d', i), 1, '2026-01-01', 0, 7, 'Semanal', 1, 0, 0, '2026-01-01', '2026-02-23', 9, 0, "
        "'1', 1, ''"
        " FROM n;"
        "COMMIT;");
}

void MakeDue(dhRichClient3::Connection& connection) {
    connection.RunScript(
        "UPDATE Imputacion_Preventiva SET Semana = 9, Fecha_Ultimo_Lanzamiento = '2026-02-23'; DELETE FROM Boletin");
}

ScratchFile::ScratchFile(const std::string& name)
    : path_((std::filesystem::temp_directory_path() / ("zontara-bench-" + name + ".db")).string()) {
    Remove();
}

ScratchFile::~ScratchFile() { Remove(); }

void ScratchFile::Remove() const {
    for (const char* end : {"", "-wal", "-shm"})
        std::remove((path_ + end).c_str());
}

}  // namespace bench

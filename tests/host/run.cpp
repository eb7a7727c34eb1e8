#include "tests/host/run.h"

#include "dhRichClient3/connection.h"
#include "host/program.h"

#include <gtest/gtest.h>

#include <sstream>

namespace host_test {

Ran Zontara(const std::vector<std::string>& words, bool terminal) {
    std::ostringstream out;
    std::ostringstream err;
    const int status = host::Run(words, {out, err, terminal});
    return {status, out.str(), err.str()};
}

std::vector<std::string> Commands() {
    std::istringstream help(Zontara({"--help"}).out);
    std::vector<std::string> commands;
    bool listed = false;
    for (std::string line; std::getline(help, line);) {
        if (listed && line.rfind("  ", 0) != 0) break;
        if (listed && line[2] != ' ') commands.push_back(line.substr(2, line.find(' ', 2) - 2));
        listed = listed || line == "Subcommands:";
    }
    return commands;
}

std::vector<std::string> Rows(const std::string& database, std::string_view sql) {
    auto connection = dhRichClient3::Connection::Open(database);
    auto query = connection->Prepare(sql);
    std::vector<std::string> rows;
    while (query.Step()) {
        std::string row;
        for (int i = 0; i < query.ColumnCount(); ++i) {
            row += (i > 0 ? "|" : "") + (query.IsNull(i) ? std::string("NULL") : query.Text(i));
        }
        rows.push_back(std::move(row));
    }
    return rows;
}

std::string Scalar(const std::string& database, std::string_view sql) {
    const std::vector<std::string> rows = Rows(database, sql);
    return rows.empty() ? std::string() : rows.front();
}

void Execute(const std::string& database, std::string_view sql) {
    dhRichClient3::Connection::Open(database)->RunScript(sql);
}

void WriteSmallPlant(const Folder& folder) {
    folder.Write("units.csv", "Descripcion\nh\nkm\n");
    folder.Write("groups.csv", "Descripcion,Orden_Lista\nMecánica,2\nLubricación,1\n");
    folder.Write("executors.csv", "Descripcion,Orden_En_Lista\nTaller,3\n");
    folder.Write("users.csv", "SC_Usuario,Ejecutor\n100,Taller\n");
    folder.Write("tasks.csv",
                 "Numero_Gama,Descripcion,Grupo,Ejecutor,Texto_Mantenimiento,Costo_Actual,Tiempo_Necesario,"
                 "Hombres_Necesarios\n"
                 "7,Engrase,Lubricación,Taller,\"1. Parar.\n2. Engrasar.\",12.5,1.5,2\n"
                 "8,Revisión d'en Pere,Mecánica,Taller,,,,1\n");
    folder.Write("materials.csv",
                 "Numero_Gama;item;Descripcion;Costo_Unitario;Cantidad_Necesaria\n"
                 "7;1;Grasa, kg;9.8;0.5\n7;2;Paño;0.25;4\n");
    folder.Write("processes.csv", "Descripcion,Estatus_Valido,Activo\nPreventivo,1,\nCorrectivo,1,0\n");
    folder.Write("assets.csv",
                 "ID_Activo,Descripcion,sc_proyecto,Unidad,Acumulado_Lectura,Ultima_Lectura,estatus_actual\n"
                 "A-1,Bomba,1,h,1000,1000,0\nA-2,Compresor,2,h,50,50,0\nB-1,Grúa,1,,,,3\n");
    folder.Write("equipment.csv",
                 "ID_Equipo,Descripcion,Nivel,Equipo_Padre,ID_Activo,Fecha_Ultimo_Mantenimiento,Foto\n"
                 "A-1,Bomba,1,,A-1,15/12/2025,a1.jpg\nA-1.1,Motor,2,A-1,A-1,,\n");
    folder.Write("documents.csv",
                 "ID_Equipo,Descripcion,Nombre_Documento,Documento_Digital,Localizacion,SC_Archivo_Digital\n"
                 "A-1,Manual,Manual de la bomba,1,Estante 2,5000\n");
    folder.Write("calendar.csv",
                 "ID_Activo,Numero_Gama,Es_Sincronizada,Frecuencia,Intervalo_Frecuencia,Programacion,Fecha_Inicio,"
                 "Fecha_Ultimo_Lanzamiento,Semana,Anulada\n"
                 "A-1,7,1,Semanal,1,,2026-01-01,2025-12-29,53,0\n"
                 "A-1,8,0,Mensual,1,5,2026-01-01,2025-12-05,,0\n"
                 "A-2,7,1,Mensual,1,1,2026-01-01,2025-12-01,49,0\n"
                 "B-1,8,1,Semanal,1,,2026-01-01,2025-12-29,53,0\n"
                 "A-2,8,1,Semanal,1,,2026-01-01,2025-12-29,53,1\n");
    folder.Write("meter.csv",
                 "ID_Activo,Numero_Gama,Lectura_Limite,Fecha_Inicio,Aproximacion_Lectura,Ultimo_Acumulado\n"
                 "A-1,7,250,2026-01-01,1200,800\nA-1,8,500,2026-01-01,,\nA-2,7,100,2026-01-01,,0\n");
    folder.Write("parallels.csv", "ID_Activo,Numero_Gama,ID_Activo_Paralela,Numero_Gama_Paralela\nA-1,8,A-1,7\n");
    folder.Write("readings.csv",
                 "Fecha,ID_Activo,Lectura,Valor_Real,Combustible_Consumido,Nota,Valor_Del_Vale_Salida,Numero_Vale\n"
                 "2026-01-02,A-1,1030,,,,,\n03/01/2026,A-1,1040.5,,7.5,Todo bien,12.25,V-1\n");
}

std::string MakeSmallPlant(const Folder& folder) {
    WriteSmallPlant(folder);
    const std::string database = folder / "plant.db";
    EXPECT_EQ(Zontara({"init", database}).status, host::kDone);
    const Ran imported = Zontara({"import", database, folder.Path().string()});
    EXPECT_EQ(imported.status, host::kDone) << imported.err;
    return database;
}

}  // namespace host_test

#include "host/load/importer.h"

#include "host/load/table.h"
#include "tests/host/importing.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using host_test::Empty;
using host_test::Execute;
using host_test::Folder;
using host_test::Import;
using host_test::MakeSmallPlant;
using host_test::Ran;
using host_test::Rows;
using host_test::RowsOf;
using host_test::Scalar;
using testing::ElementsAre;
using testing::HasSubstr;

TEST(Import, EveryTableGetsItsRows) {
    const Folder folder;
    host_test::WriteSmallPlant(folder);
    const std::string database = Empty(folder);
    const Ran ran = Import(folder, database);
    EXPECT_EQ(ran.status, 0) << ran.err;
    EXPECT_EQ(ran.out,
              "File           Rows\n"
              "-------------  ----\n"
              "units.csv         2\n"
              "groups.csv        2\n"
              "executors.csv     1\n"
              "users.csv         1\n"
              "tasks.csv         2\n"
              "materials.csv     2\n"
              "processes.csv     2\n"
              "assets.csv        3\n"
              "equipment.csv     2\n"
              "documents.csv     1\n"
              "calendar.csv      5\n"
              "meter.csv         3\n"
              "parallels.csv     1\n"
              "readings.csv      2\n");
    EXPECT_EQ(ran.err, "");
}

TEST(Import, CatalogueRowsHoldTheCellsWithReferencesResolved) {
    const Folder folder;
    const std::string database = MakeSmallPlant(folder);
    EXPECT_THAT(Rows(database, "SELECT SC_Unidad_Lectura, Descripcion FROM Unidad_Lectura"),
                ElementsAre("1|h", "2|km"));
    EXPECT_THAT(Rows(database, "SELECT * FROM Grupo_Gama"), ElementsAre("1|Mecánica|2", "2|Lubricación|1"));
    EXPECT_THAT(Rows(database, "SELECT * FROM Ejecutor_Gama"), ElementsAre("1|Taller|3"));
    EXPECT_THAT(Rows(database, "SELECT * FROM Usuario_Ejecutor_Gama"), ElementsAre("1|100|1"));
    EXPECT_THAT(Rows(database,
                     "SELECT SC_Gama, Numero_Gama, Descripcion, Texto_Mantenimiento, SC_Grupo_Gama,"
                     " SC_Ejecutor_Gama, Costo_Actual, Tiempo_Necesario, Hombres_Necesarios FROM Gama"),
                ElementsAre("1|7|Engrase|1. Parar.\n2. Engrasar.|2|1|12.5|1.5|2", "2|8|Revisión d'en Pere||1|1|0||1"));
    EXPECT_THAT(Rows(database,
                     "SELECT sc_gama, item, Descripcion, Costo_Unitario, Cantidad_Necesaria"
                     " FROM materiales_gama"),
                ElementsAre("1|1|Grasa, kg|9.8|0.5", "1|2|Paño|0.25|4.0"));
    EXPECT_THAT(Rows(database, "SELECT * FROM Proceso"), ElementsAre("1|Preventivo|1|1", "2|Correctivo|1|0"));
}

TEST(Import, PlantRowsHoldTheCellsWithReferencesResolved) {
    const Folder folder;
    const std::string database = MakeSmallPlant(folder);
    EXPECT_THAT(
        Rows(database,
             "SELECT ID_Activo, Descripcion, estatus_actual, sc_proyecto, SC_Unidad_Lectura,"
             " Acumulado_Lectura, Ultima_Lectura FROM Activo"),
        ElementsAre("A-1|Bomba|0|1|1|1040.5|1040.5", "A-2|Compresor|0|2|1|50.0|50.0", "B-1|Grúa|3|1|NULL|0.0|0.0"));
    EXPECT_THAT(Rows(database,
                     "SELECT ID_Equipo, Descripcion, Nivel, Equipo_Padre, ID_Activo,"
                     " Fecha_Ultimo_Mantenimiento, Foto FROM Equipo"),
                ElementsAre("A-1|Bomba|1||A-1|2025-12-15|a1.jpg", "A-1.1|Motor|2|A-1|A-1||"));
    EXPECT_THAT(Rows(database, "SELECT * FROM Documento_Equipo"),
                ElementsAre("1|Manual|Manual de la bomba|1|Estante 2|A-1|5000"));
}

TEST(Import, AssignmentsHoldTheCellsWithReferencesResolved) {
    const Folder folder;
    const std::string database = MakeSmallPlant(folder);
    EXPECT_THAT(Rows(database,
                     "SELECT ID_Activo, SC_Gama, Es_Sincronizada, Frecuencia, Intervalo_Frecuencia,"
                     " Programacion, Fecha_Inicio, Fecha_Ultimo_Lanzamiento, Fecha_Imputacion, Semana,"
                     " Anulada FROM Imputacion_Preventiva ORDER BY SC_Imputacion_Preventiva LIMIT 2"),
                ElementsAre("A-1|1|1|Semanal|1||2026-01-01|2025-12-29|2026-01-01|53|0",
                            "A-1|2|0|Mensual|1|5|2026-01-01|2025-12-05|2026-01-01|0|0"));
    EXPECT_THAT(Rows(database,
                     "SELECT ID_Activo, SC_Gama, Lectura_Limite, Aproximacion_Lectura, Ultimo_Acumulado,"
                     " SC_Unidad_Lectura FROM Imputacion_Sistematica"),
                ElementsAre("A-1|1|250|1200|800|1", "A-1|2|500|0|1000|1", "A-2|1|100|0|0|1"));
    EXPECT_THAT(Rows(database, "SELECT * FROM Imputacion_Paralela"), ElementsAre("1|2|1"));
    EXPECT_THAT(Rows(database,
                     "SELECT Fecha, ID_Equipo, SC_Unidad_Lectura, Valor_Real, Lectura, Lectura_Anterior,"
                     " Combustible_Consumido, Nota, Valor_Del_Vale_Salida, Numero_Vale FROM Lectura_Equipo"),
                ElementsAre("2026-01-02|A-1|1|30.0|1030.0|1000.0|0.0||0|",
                            "2026-01-03|A-1|1|10.5|1040.5|1030.0|7.5|Todo bien|12.25|V-1"));
}

TEST(Import, ColumnsComeInAnyOrderAndCase) {
    const Folder folder;
    folder.Write("groups.csv", "ORDEN_LISTA;descripcion\n4;Mecánica\n");
    const std::string database = Empty(folder);
    EXPECT_EQ(Import(folder, database).status, 0);
    EXPECT_THAT(Rows(database, "SELECT Descripcion, Orden_Lista FROM Grupo_Gama"), ElementsAre("Mecánica|4"));
}

TEST(Import, LaterFilesReferToWhatTheDatabaseHolds) {
    const Folder folder;
    const std::string database = MakeSmallPlant(folder);
    const Folder later;
    later.Write("readings.csv", "Fecha,ID_Activo,Lectura\n2026-02-01,A-2,75\n");
    later.Write("calendar.csv",
                "ID_Activo,Numero_Gama,Es_Sincronizada,Frecuencia,Intervalo_Frecuencia,Fecha_Inicio,"
                "Fecha_Ultimo_Lanzamiento\nA-2,8,1,Semanal,1,2026-01-01,2025-12-29\n");
    const Ran ran = Import(later, database);
    EXPECT_EQ(ran.status, 0) << ran.err;
    EXPECT_EQ(Scalar(database, "SELECT Acumulado_Lectura, Ultima_Lectura FROM Activo WHERE ID_Activo = 'A-2'"),
              "75.0|75.0");
    EXPECT_EQ(Scalar(database, "SELECT count(*) FROM Imputacion_Preventiva WHERE ID_Activo = 'A-2' AND SC_Gama = 2"),
              "2");
}

TEST(Import, TheSameAssignmentTwiceIsRefusedUnlessOneIsCancelled) {
    const Folder folder;
    host_test::WriteSmallPlant(folder);
    const std::string header =
        "ID_Activo,Numero_Gama,Es_Sincronizada,Frecuencia,Intervalo_Frecuencia,Fecha_Inicio,"
        "Fecha_Ultimo_Lanzamiento,Anulada\n";
    const std::string line = "A-1,7,1,Semanal,1,2026-01-01,2025-12-29,";
    folder.Write("calendar.csv", header + line + "0\n" + line + "0\n");
    const std::string database = Empty(folder);
    EXPECT_THAT(Import(folder, database).err, HasSubstr("calendar.csv, line 3: asset 'A-1' already has task 7 with "
                                                        "this kind and frequency in force"));
    EXPECT_EQ(RowsOf(database), 0);

    folder.Write("calendar.csv", header + line + "0\n" + line + "1\n");
    EXPECT_EQ(Import(folder, database).status, 0);
    EXPECT_EQ(Scalar(database, "SELECT count(*) FROM Imputacion_Preventiva"), "2");
}

TEST(Import, ASecondImportOfTheSameFilesIsRefused) {
    const Folder folder;
    const std::string database = MakeSmallPlant(folder);
    const int before = RowsOf(database);
    const Ran ran = Import(folder, database);
    EXPECT_EQ(ran.status, 1);
    EXPECT_THAT(ran.err, HasSubstr("assets.csv, line 2, column ID_Activo: there is already an asset 'A-1'"));
    EXPECT_THAT(ran.err, HasSubstr("calendar.csv, line 2: asset 'A-1' already has task 7"));
    EXPECT_THAT(ran.err, HasSubstr("meter.csv, line 2: asset 'A-1' already has task 7 by meter"));
    EXPECT_EQ(RowsOf(database), before);
}

TEST(Import, ListsAllProblemsInTheOrderOfFilesAndLines) {
    const Folder folder;
    host_test::WriteSmallPlant(folder);
    folder.Write("assets.csv", "ID_Activo,Descripcion,Unidad\nA-1,a,m3\nA-2,b,h\nB-1,c,\nB-2,,\n");
    folder.Write("users.csv", "SC_Usuario,Ejecutor\nx,Taller\n100,Nadie\n");
    const Ran ran = Import(folder, Empty(folder));
    EXPECT_THAT(ran.err, testing::StartsWith(
                             "zontara import: nothing was imported; there are 4 problems to mend:\n"
                             "users.csv, line 2, column SC_Usuario: 'x' is no whole number from -2147483648 to "
                             "2147483647\n"
                             "users.csv, line 3, column Ejecutor: no executor 'Nadie' in executors.csv or in the "
                             "database\n"
                             "assets.csv, line 2, column Unidad: no reading unit 'm3' in units.csv or in the database\n"
                             "assets.csv, line 5, column Descripcion: the cell is empty\n"));
}

TEST(Import, ListsFiftyProblemsAndCountsTheRest) {
    const Folder folder;
    std::string text = "SC_Usuario,Ejecutor\n";
    for (int i = 0; i < 53; ++i)
        text += "x,\n";
    folder.Write("users.csv", text);
    const Ran ran = Import(folder, Empty(folder));
    EXPECT_THAT(ran.err, HasSubstr("there are 106 problems to mend:"));
    EXPECT_THAT(ran.err, HasSubstr("users.csv, line 26, column Ejecutor: the cell is empty\n... and 56 more\n"));
    EXPECT_THAT(ran.err, testing::Not(HasSubstr("line 27")));
}

TEST(Import, AFileThatIsMissingShowsWhereItIsReferredTo) {
    const Folder folder;
    host_test::WriteSmallPlant(folder);
    std::filesystem::remove(folder / "groups.csv");
    const Ran ran = Import(folder, Empty(folder));
    EXPECT_EQ(ran.status, 1);
    EXPECT_THAT(ran.err,
                HasSubstr("tasks.csv, line 2, column Grupo: no group 'Lubricación' in groups.csv or in the database"));
}

TEST(Import, AFileOfNoTableIsRefused) {
    const Folder folder;
    host_test::WriteSmallPlant(folder);
    folder.Write("material.csv", "a\n1\n");
    const std::string database = Empty(folder);
    const Ran ran = Import(folder, database);
    EXPECT_EQ(ran.status, 1);
    EXPECT_THAT(ran.err, HasSubstr("material.csv is the file of no table. The files are units.csv, groups.csv,"));
    EXPECT_EQ(RowsOf(database), 0);
}

TEST(Import, AFolderWithoutFilesOrNoFolderIsRefused) {
    const Folder folder;
    const std::string database = Empty(folder);
    EXPECT_THAT(Import(folder, database).err, HasSubstr("holds none of the files of an import. The files are units."));
    const Ran missing = host_test::Zontara({"import", database, folder / "nowhere"});
    EXPECT_EQ(missing.status, 1);
    EXPECT_THAT(missing.err, HasSubstr("nowhere can't be read: "));
}

TEST(Import, AFileThatCannotBeReadIsRefused) {
    const Folder folder;
    host_test::WriteSmallPlant(folder);
    std::filesystem::remove(folder / "units.csv");
    std::filesystem::create_directory(folder / "units.csv");
    const Ran ran = Import(folder, Empty(folder));
    EXPECT_EQ(ran.status, 1);
    EXPECT_THAT(ran.err, HasSubstr("units.csv can't be read. Check that it is a file that you may read."));
}

TEST(Import, WhatTheDatabaseRefusesNamesItsLineAndIsUndone) {
    const Folder folder;
    host_test::WriteSmallPlant(folder);
    const std::string database = Empty(folder);
    Execute(database,
            "CREATE TRIGGER no BEFORE INSERT ON Equipo WHEN new.Nivel = 2"
            " BEGIN SELECT raise(ABORT, 'no second level here'); END");
    const Ran ran = Import(folder, database);
    EXPECT_EQ(ran.status, 1);
    EXPECT_THAT(ran.err, testing::StartsWith("zontara import: equipment.csv, line 3: no second level here"));
    EXPECT_THAT(ran.err, HasSubstr("Call Stack: CEquipo.Nuevo("));
    EXPECT_EQ(RowsOf(database), 0);
}

TEST(Import, EveryColumnThatTheComponentWritesUnescapedRefusesQuotes) {
    const std::vector<std::string> unescaped = {
        "Tipo_Gama",
        "Tiempo_Necesario",
        "Especialista",
        "ID_Activo",
        "ID_Equipo",
        "Equipo_Padre",
        "Foto",
        "Localizacion",
        "Frecuencia",
        "Programacion",
        "Descripcion_Breve",
        "Causa_Modificacion",
        "ID_Activo_Paralela",
    };
    for (const host::load::Table& table : host::load::Tables()) {
        for (const host::load::Column& column : table.columns) {
            const bool plain =
                column.kind == host::load::CellKind::PlainText || column.kind == host::load::CellKind::PlainCode;
            const bool wanted = std::find(unescaped.begin(), unescaped.end(), column.name) != unescaped.end() ||
                                (table.file == "materials.csv" && column.name == "Descripcion");
            if (wanted) {
                EXPECT_TRUE(plain) << table.file << " " << column.name;
            }
        }
    }
}

}  // namespace

#include "host/dump/tables.h"
#include "host/program.h"
#include "host/story/story.h"

#include "schema/create.h"
#include "tests/host/run.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <nlohmann/json.hpp>

namespace {

using host_test::Execute;
using host_test::Folder;
using host_test::MakeSmallPlant;
using host_test::Ran;
using host_test::Rows;
using host_test::Scalar;
using host_test::Zontara;
using testing::HasSubstr;

void Exported(const std::string& database, const std::string& folder) {
    const Ran ran = Zontara({"export", database, "all", folder});
    EXPECT_EQ(ran.status, host::kDone) << ran.err;
}

Ran Restored(const std::string& database, const std::string& folder) {
    if (!std::filesystem::exists(database)) {
        EXPECT_EQ(Zontara({"init", database}).status, host::kDone);
    }
    return Zontara({"import", database, folder, "--restore"});
}

/// Exports, restores and exports again: each file is the same, byte for byte.
void ExpectRoundTrip(const Folder& folder, const std::string& database) {
    Exported(database, folder / "first");
    const Ran restored = Restored(folder / "restored.db", folder / "first");
    EXPECT_EQ(restored.status, host::kDone) << restored.err;
    Exported(folder / "restored.db", folder / "second");
    for (const std::string& table : schema::Tables()) {
        const std::string first = folder.Read("first/" + table + ".csv");
        EXPECT_FALSE(first.empty()) << table;
        EXPECT_EQ(first, folder.Read("second/" + table + ".csv")) << table;
    }
}

std::size_t RowsIn(const std::string& database) {
    std::size_t rows = 0;
    for (const std::string& table : schema::Tables())
        rows += std::stoul(Scalar(database, "SELECT count(*) FROM " + table));
    return rows;
}

TEST(Export, WritesTheRowsOfATableAsTheyAre) {
    const Folder folder;
    const std::string database = MakeSmallPlant(folder);
    const Ran ran = Zontara({"export", database, "unidad_lectura", folder / "out"});
    EXPECT_EQ(ran.status, host::kDone) << ran.err;
    EXPECT_EQ(ran.out, "File                Rows\n------------------  ----\nUnidad_Lectura.csv     2\n");
    EXPECT_EQ(folder.Read("out/Unidad_Lectura.csv"), "SC_Unidad_Lectura,Descripcion\n1,\"h\"\n2,\"km\"\n");
}

TEST(Export, TellsNullEmptyTextNumbersAndBytesApart) {
    const Folder folder;
    const std::string database = folder / "plant.db";
    ASSERT_EQ(Zontara({"init", database}).status, host::kDone);
    Execute(
        database,
        "INSERT INTO Boletin (SC_Boletin, Lunes, Martes, Miercoles, Jueves, Viernes, Sabado, Domingo, Nota, Estatus)"
        " VALUES (9007199254740993, NULL, '', 'a \"b\",\r\nc', '12', x'00FF', CAST(x'C3' AS TEXT),"
        " CAST(x'6100' AS TEXT), 'ñ;', 2.5)");
    ASSERT_EQ(Zontara({"export", database, "Boletin", folder / "out"}).status, host::kDone);
    const std::string file = folder.Read("out/Boletin.csv");
    EXPECT_EQ(file.substr(file.find('\n') + 1),
              "9007199254740993,,,,,,,\"\",\"a \"\"b\"\",\r\nc\",\"12\",x'00ff',t'c3',t'6100',,,\"ñ;\",2.5,,0,0\n");
    ExpectRoundTrip(folder, database);
}

TEST(Export, RoundTripsASmallPlantAndWhatLaunchesMade) {
    const Folder folder;
    const std::string database = MakeSmallPlant(folder);
    EXPECT_EQ(Zontara({"launch", database, "--date", "2026-01-05", "--kind", "all"}).status, host::kDone);
    EXPECT_EQ(Zontara({"launch", database, "--date", "2026-01-12", "--kind", "all", "--order-user", "1"}).status,
              host::kDone);
    ExpectRoundTrip(folder, database);
}

TEST(Export, RoundTripsTheEdgesOfNumbersAndRowsOfNullsAlone) {
    const Folder folder;
    const std::string database = folder / "plant.db";
    ASSERT_EQ(Zontara({"init", database}).status, host::kDone);
    Execute(database,
            "INSERT INTO Lectura_Equipo (SC_Lectura, Lectura, Valor_Real, Lectura_Anterior, Combustible_Consumido,"
            " Valor_Del_Vale_Salida, SC_Unidad_Lectura) VALUES (1, 1e300, 9e999, -9e999, 0.1, 12.3456, 'km'),"
            " (-5, 5e-324, 1e15, 123456789012345678, -0.0, '', 2.5), (9223372036854775807, 3, 0, 1, 2, 3, NULL);"
            "INSERT INTO Documento_Equipo DEFAULT VALUES; UPDATE Documento_Equipo SET Documento_Digital = NULL");
    ExpectRoundTrip(folder, database);
}

TEST(ExportLong, RoundTripsTheDemoAfterItsYear) {
    const Folder folder;
    ASSERT_EQ(Zontara({"demo", folder / "demo"}).status, host::kDone);
    ExpectRoundTrip(folder, folder / "demo/plant.db");
}

TEST(Export, LeavesTheUnitsOfMeterAssignmentsAsTheyAre) {
    const Folder folder;
    const std::string database = MakeSmallPlant(folder);
    Execute(database, "UPDATE Imputacion_Sistematica SET SC_Unidad_Lectura = NULL WHERE SC_Imputacion_Sistematica = 3");
    ExpectRoundTrip(folder, database);
    EXPECT_EQ(Scalar(folder / "restored.db",
                     "SELECT SC_Unidad_Lectura FROM Imputacion_Sistematica WHERE SC_Imputacion_Sistematica = 3"),
              "NULL");
}

TEST(Export, RefusesAnUnknownTableAndAFolderThatCantBe) {
    const Folder folder;
    const std::string database = MakeSmallPlant(folder);
    const Ran unknown = Zontara({"export", database, "Cancion", folder / "out"});
    EXPECT_EQ(unknown.status, host::kUsage);
    EXPECT_THAT(unknown.err, HasSubstr("there is no table Cancion. The tables are Activo, "));
    EXPECT_FALSE(std::filesystem::exists(folder / "out"));
    folder.Write("file", "");
    EXPECT_THAT(Zontara({"export", database, "all", folder / "file"}).err, HasSubstr("can't be made"));
    EXPECT_THAT(Zontara({"export", folder / "none.db", "all", folder / "out"}).err, HasSubstr("there is no database"));
}

TEST(Export, ReplacesAFileOnlyWhenItIsWhole) {
    const Folder folder;
    const std::string database = MakeSmallPlant(folder);
    folder.Write("out/Unidad_Lectura.csv", "old");
    folder.Write("out/Activo.csv/inside", "a folder in the place of a file");
    EXPECT_EQ(Zontara({"export", database, "Unidad_Lectura", folder / "out"}).status, host::kDone);
    EXPECT_THAT(folder.Read("out/Unidad_Lectura.csv"), HasSubstr("\"km\""));
    const Ran ran = Zontara({"export", database, "Activo", folder / "out"});
    EXPECT_EQ(ran.status, host::kFailed);
    EXPECT_THAT(ran.err, HasSubstr("Activo.csv can't be written."));
    EXPECT_FALSE(std::filesystem::exists(folder / "out/Activo.csv.part"));
}

TEST(Restore, KeepsKeysAndCountsOnFromThem) {
    const Folder folder;
    const std::string database = MakeSmallPlant(folder);
    Execute(database,
            "UPDATE Gama SET SC_Gama = 70 WHERE SC_Gama = 2; UPDATE Clave SET Ultima_Clave = 80"
            " WHERE Tabla = 'Gama'");
    Exported(database, folder / "out");
    EXPECT_EQ(Restored(folder / "new.db", folder / "out").status, host::kDone);
    EXPECT_THAT(Rows(folder / "new.db", "SELECT SC_Gama FROM Gama"), testing::ElementsAre("1", "70"));
    folder.Write("more/tasks.csv", "Numero_Gama,Descripcion,Grupo,Ejecutor\n9,Más,Mecánica,Taller\n");
    const Ran more = Zontara({"import", folder / "new.db", folder / "more"});
    EXPECT_EQ(more.status, host::kDone) << more.err;
    EXPECT_EQ(Scalar(folder / "new.db", "SELECT max(SC_Gama) FROM Gama"), "81");
}

TEST(Restore, RefusesADatabaseThatHoldsAnything) {
    const Folder folder;
    const std::string database = MakeSmallPlant(folder);
    Exported(database, folder / "out");
    const Ran ran = Restored(database, folder / "out");
    EXPECT_EQ(ran.status, host::kFailed);
    EXPECT_EQ(ran.err,
              "zontara import: the database isn't empty: Activo has rows. Restore into a new one, made by `zontara "
              "init`.\n");
}

/// A file that can't be put back, and what is said about it.
struct Bad {
    const char* label;
    const char* file;
    const char* text;
    const char* said;
};

class RestoreOfABadFile : public testing::TestWithParam<Bad> {};

TEST_P(RestoreOfABadFile, WritesNothing) {
    const Folder folder;
    Exported(MakeSmallPlant(folder), folder / "out");
    folder.Write(std::string("out/") + GetParam().file, GetParam().text);
    const Ran ran = Restored(folder / "new.db", folder / "out");
    EXPECT_EQ(ran.status, host::kFailed);
    EXPECT_THAT(ran.err, HasSubstr(GetParam().said));
    EXPECT_EQ(RowsIn(folder / "new.db"), 0u);
}

std::string LabelOf(const testing::TestParamInfo<Bad>& bad) { return bad.param.label; }

const Bad kBad[] = {
    {"TextWithoutQuotes", "Unidad_Lectura.csv", "SC_Unidad_Lectura,Descripcion\n1,h\n",
     "Unidad_Lectura.csv, line 2, column Descripcion: 'h' is no number; put texts in quotes"},
    {"BytesThatAreNone", "Unidad_Lectura.csv", "SC_Unidad_Lectura,Descripcion\n1,x'0g'\n", "'x'0g'' is no number"},
    {"AMissingColumn", "Unidad_Lectura.csv", "SC_Unidad_Lectura\n1\n",
     "Unidad_Lectura.csv, line 1: the header must name the table's columns: SC_Unidad_Lectura,Descripcion"},
    {"AnUnknownColumn", "Unidad_Lectura.csv", "SC_Unidad_Lectura,Nombre\n1,\"h\"\n", "the header must name"},
    {"TooManyCells", "Unidad_Lectura.csv", "SC_Unidad_Lectura,Descripcion\n1,\"h\",2\n",
     "Unidad_Lectura.csv, line 2: 3 cells where the header has 2"},
    {"AnOpenQuote", "Unidad_Lectura.csv", "SC_Unidad_Lectura,Descripcion\n1,\"h\n", "is never closed"},
    {"AnEmptyFile", "Unidad_Lectura.csv", "", "the header must name the table's columns"},
    {"AKeyTwice", "Unidad_Lectura.csv", "SC_Unidad_Lectura,Descripcion\n1,\"h\"\n1,\"km\"\n",
     "Unidad_Lectura.csv, line 3: UNIQUE constraint failed"},
    {"AKeyThatIsNoNumber", "Unidad_Lectura.csv", "SC_Unidad_Lectura,Descripcion\n\"x\",\"h\"\n",
     "Unidad_Lectura.csv, line 2: datatype mismatch"},
    {"AFileOfNoTable", "Cancion.csv", "a,b\n", "Cancion.csv is the export of no table."},
};

INSTANTIATE_TEST_SUITE_P(Restore, RestoreOfABadFile, testing::ValuesIn(kBad), LabelOf);

TEST(Restore, RefusesAFolderWithoutAnExport) {
    const Folder folder;
    folder.Write("out/readme.txt", "");
    EXPECT_THAT(Restored(folder / "new.db", folder / "out").err,
                HasSubstr("holds no export. Make one with `zontara export DB all DIR`."));
    EXPECT_THAT(Restored(folder / "new.db", folder / "none").err, HasSubstr("can't be read"));
}

TEST(Import, TakesNewKeysAndMapsThoseThatOthersReferTo) {
    const Folder folder;
    const std::string database = MakeSmallPlant(folder);
    folder.Write("more/tasks.csv", "Numero_Gama,Descripcion,Grupo,Ejecutor\n9,Más,Mecánica,Taller\n");
    folder.Write("more/calendar.csv",
                 "ID_Activo,Numero_Gama,Es_Sincronizada,Frecuencia,Intervalo_Frecuencia,Programacion,Fecha_Inicio,"
                 "Fecha_Ultimo_Lanzamiento\nA-1,9,1,Mensual,1,1,2026-01-01,2025-12-01\n");
    ASSERT_EQ(Zontara({"import", database, folder / "more"}).status, host::kDone);
    EXPECT_EQ(Scalar(database, "SELECT SC_Gama, SC_Grupo_Gama FROM Gama WHERE Numero_Gama = 9"), "3|1");
    EXPECT_EQ(Scalar(database, "SELECT SC_Imputacion_Preventiva, SC_Gama FROM Imputacion_Preventiva ORDER BY 1 DESC"),
              "6|3");
}

}  // namespace

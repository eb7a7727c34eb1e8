#include "host/load/problems.h"

#include "tests/host/importing.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using host_test::Empty;
using host_test::Folder;
using host_test::Import;
using host_test::Ran;
using host_test::RowsOf;
using host_test::Scalar;
using testing::HasSubstr;

struct Bad {
    const char* label;
    const char* file;
    const char* text;
    const char* problem;
};

/// Each case changes one file of the small plant.
const Bad kBad[] = {
    {"unknown column", "units.csv", "Descripcion,Color\nh,red\nkm,blue\n",
     "units.csv, line 1, column Color: unknown column; the columns are Descripcion"},
    {"column without a name", "groups.csv", "Descripcion,\nMecánica,1\nLubricación,2\n",
     "groups.csv, line 1, column 2: unknown column; the columns are Descripcion, Orden_Lista"},
    {"missing column", "executors.csv", "Orden_En_Lista\n1\n",
     "executors.csv, line 1, column Descripcion: the column is missing"},
    {"column twice", "units.csv", "Descripcion,descripcion\nh,km\n",
     "units.csv, line 1, column descripcion: the column stands twice in the header"},
    {"empty file", "users.csv", "",
     "users.csv: the file is empty; its first line must name the columns: SC_Usuario, "
     "Ejecutor"},
    {"wrong number of cells", "users.csv", "SC_Usuario,Ejecutor\n100\n",
     "users.csv, line 2: 1 cells where the header has 2"},
    {"fault of the text", "users.csv", "SC_Usuario,Ejecutor\n100,Ta\"ller\n",
     "users.csv, line 2, column Ejecutor: a quote inside a cell without quotes; put the cell in quotes and double "
     "those inside it"},
    {"empty required cell", "users.csv", "SC_Usuario,Ejecutor\n,Taller\n",
     "users.csv, line 2, column SC_Usuario: the cell is empty"},
    {"no number", "users.csv", "SC_Usuario,Ejecutor\nten,Taller\n",
     "users.csv, line 2, column SC_Usuario: 'ten' is no whole number from -2147483648 to 2147483647"},
    {"same unit twice", "units.csv", "Descripcion\nh\nkm\nh\n",
     "units.csv, line 4, column Descripcion: there is already a reading unit 'h'"},
    {"same group twice", "groups.csv", "Descripcion\nMecánica\nLubricación\nMecánica\n",
     "groups.csv, line 4, column Descripcion: there is already a group 'Mecánica'"},
    {"same executor twice", "executors.csv", "Descripcion\nTaller\n Taller \n",
     "executors.csv, line 3, column Descripcion: there is already an executor 'Taller'"},
    {"unknown executor of a user", "users.csv", "SC_Usuario,Ejecutor\n100,taller\n",
     "users.csv, line 2, column Ejecutor: no executor 'taller' in executors.csv or in the database"},
    {"same process twice", "processes.csv", "Descripcion\nX\nX\n",
     "processes.csv, line 3, column Descripcion: there is already a process 'X'"},
    {"unknown group of a task", "tasks.csv",
     "Numero_Gama,Descripcion,Grupo,Ejecutor\n7,a,Frío,Taller\n8,b,Mecánica,Taller\n",
     "tasks.csv, line 2, column Grupo: no group 'Frío' in groups.csv or in the database"},
    {"unknown executor of a task", "tasks.csv",
     "Numero_Gama,Descripcion,Grupo,Ejecutor\n7,a,Mecánica,Nadie\n8,b,Mecánica,Taller\n",
     "tasks.csv, line 2, column Ejecutor: no executor 'Nadie' in executors.csv or in the database"},
    {"same task twice", "tasks.csv",
     "Numero_Gama,Descripcion,Grupo,Ejecutor\n7,a,Mecánica,Taller\n8,b,Mecánica,Taller\n7,c,Mecánica,Taller\n",
     "tasks.csv, line 4, column Numero_Gama: there is already a task '7'"},
    {"quote in the type of a task", "tasks.csv",
     "Numero_Gama,Descripcion,Grupo,Ejecutor,Tipo_Gama\n7,a,Mecánica,Taller,P'\n8,b,Mecánica,Taller,\n",
     "tasks.csv, line 2, column Tipo_Gama: a quote (') can't be stored in this column: P'"},
    {"quote in the time of a task", "tasks.csv",
     "Numero_Gama,Descripcion,Grupo,Ejecutor,Tiempo_Necesario\n7,a,Mecánica,Taller,90'\n8,b,Mecánica,Taller,\n",
     "tasks.csv, line 2, column Tiempo_Necesario: a quote (') can't be stored in this column: 90'"},
    {"quote in the specialist of a task", "tasks.csv",
     "Numero_Gama,Descripcion,Grupo,Ejecutor,Especialista\n7,a,Mecánica,Taller,O'Neill\n8,b,Mecánica,Taller,\n",
     "tasks.csv, line 2, column Especialista: a quote (') can't be stored in this column: O'Neill"},
    {"quote in a material", "materials.csv",
     "Numero_Gama,item,Descripcion,Costo_Unitario,Cantidad_Necesaria\n7,1,Tubo 1/2',3,1\n",
     "materials.csv, line 2, column Descripcion: a quote (') can't be stored in this column: Tubo 1/2'"},
    {"material of an unknown task", "materials.csv",
     "Numero_Gama,item,Descripcion,Costo_Unitario,Cantidad_Necesaria\n9,1,Tubo,3,1\n",
     "materials.csv, line 2, column Numero_Gama: no task '9' in tasks.csv or in the database"},
    {"decimal comma", "materials.csv",
     "Numero_Gama;item;Descripcion;Costo_Unitario;Cantidad_Necesaria\n7;1;Tubo;3,5;1\n",
     "materials.csv, line 2, column Costo_Unitario: '3,5' is no number; write decimals behind a point"},
    {"same asset twice", "assets.csv", "ID_Activo,Descripcion,Unidad\nA-1,a,h\nA-2,b,h\nB-1,c,\nA-1,d,\n",
     "assets.csv, line 5, column ID_Activo: there is already an asset 'A-1'"},
    {"quote in an asset", "assets.csv", "ID_Activo,Descripcion,Unidad\nA-1,a,h\nA-2,b,h\nB-1,c,\nX'1,d,\n",
     "assets.csv, line 5, column ID_Activo: a quote (') can't be stored in this column: X'1"},
    {"unknown unit of an asset", "assets.csv", "ID_Activo,Descripcion,Unidad\nA-1,a,h\nA-2,b,m3\nB-1,c,\n",
     "assets.csv, line 3, column Unidad: no reading unit 'm3' in units.csv or in the database"},
    {"equipment of an unknown asset", "equipment.csv",
     "ID_Equipo,Descripcion,Nivel,ID_Activo\nA-1,a,1,A-1\nZ,b,1,Z-9\n",
     "equipment.csv, line 3, column ID_Activo: no asset 'Z-9' in assets.csv or in the database"},
    {"equipment under an unknown item", "equipment.csv",
     "ID_Equipo,Descripcion,Nivel,Equipo_Padre,ID_Activo\nA-1,a,1,,A-1\nZ,b,2,Y,A-1\n",
     "equipment.csv, line 3, column Equipo_Padre: no item 'Y' in equipment.csv or in the database"},
    {"same item twice", "equipment.csv", "ID_Equipo,Descripcion,Nivel,ID_Activo\nA-1,a,1,A-1\nA-1,b,1,A-1\n",
     "equipment.csv, line 3, column ID_Equipo: there is already an item of equipment 'A-1'"},
    {"quote in a picture", "equipment.csv", "ID_Equipo,Descripcion,Nivel,ID_Activo,Foto\nA-1,a,1,A-1,it's.jpg\n",
     "equipment.csv, line 2, column Foto: a quote (') can't be stored in this column: it's.jpg"},
    {"document of an unknown item", "documents.csv", "ID_Equipo,Descripcion\nZ,Manual\n",
     "documents.csv, line 2, column ID_Equipo: no item 'Z' in equipment.csv or in the database"},
    {"quote in the place of a document", "documents.csv", "ID_Equipo,Descripcion,Localizacion\nA-1,Manual,l'armari\n",
     "documents.csv, line 2, column Localizacion: a quote (') can't be stored in this column: l'armari"},
    {"meter assignment of an unknown asset", "meter.csv",
     "ID_Activo,Numero_Gama,Lectura_Limite,Fecha_Inicio\nA-1,7,250,2026-01-01\nA-1,8,500,2026-01-01\n"
     "Z-1,7,250,2026-01-01\n",
     "meter.csv, line 4, column ID_Activo: no asset 'Z-1' in assets.csv or in the database"},
    {"meter assignment of an unknown task", "meter.csv",
     "ID_Activo,Numero_Gama,Lectura_Limite,Fecha_Inicio\nA-1,7,250,2026-01-01\nA-1,8,500,2026-01-01\n"
     "A-1,9,250,2026-01-01\n",
     "meter.csv, line 4, column Numero_Gama: no task '9' in tasks.csv or in the database"},
    {"same meter assignment twice", "meter.csv",
     "ID_Activo,Numero_Gama,Lectura_Limite,Fecha_Inicio\nA-1,7,250,2026-01-01\nA-1,8,500,2026-01-01\n"
     "A-1,7,300,2026-01-01\n",
     "meter.csv, line 4: asset 'A-1' already has task 7 by meter"},
    {"interval that is too large", "meter.csv",
     "ID_Activo,Numero_Gama,Lectura_Limite,Fecha_Inicio\nA-1,7,250,2026-01-01\nA-1,8,500,2026-01-01\n"
     "A-2,7,3000000000,2026-01-01\n",
     "meter.csv, line 4, column Lectura_Limite: '3000000000' is no whole number from -2147483648 to 2147483647"},
    {"parallel of nothing", "parallels.csv",
     "ID_Activo,Numero_Gama,ID_Activo_Paralela,Numero_Gama_Paralela\nA-1,8,A-2,8\n",
     "parallels.csv, line 2, column ID_Activo_Paralela: asset 'A-2' has no task 8 by meter in meter.csv or in the "
     "database"},
    {"reading of an unknown asset", "readings.csv", "Fecha,ID_Activo,Lectura\n2026-01-02,Z,5\n",
     "readings.csv, line 2, column ID_Activo: no asset 'Z' in assets.csv or in the database"},
    {"reading in an unknown unit", "readings.csv", "Fecha,ID_Activo,Lectura,Unidad\n2026-01-02,A-1,1005,bar\n",
     "readings.csv, line 2, column Unidad: no reading unit 'bar' in units.csv or in the database"},
    {"meter that runs backwards", "readings.csv", "Fecha,ID_Activo,Lectura\n2026-01-02,A-1,1005\n2026-01-03,A-1,1004\n",
     "readings.csv, line 3, column Lectura: the meter shows 1004 after 1005; if it was exchanged or turned over, say "
     "how much was added (column Valor_Real)"},
    {"day that isn't", "readings.csv", "Fecha,ID_Activo,Lectura\n31/02/2026,A-1,1005\n",
     "readings.csv, line 2, column Fecha: '31/02/2026' is no date; write yyyy-mm-dd or dd/mm/yyyy"},
};

TEST(ImportProblems, NamesFileLineColumnAndReasonAndWritesNothing) {
    for (const Bad& each : kBad) {
        SCOPED_TRACE(each.label);
        const Folder folder;
        host_test::WriteSmallPlant(folder);
        folder.Write(each.file, each.text);
        const std::string database = Empty(folder);
        const Ran ran = Import(folder, database);
        EXPECT_EQ(ran.status, 1);
        EXPECT_THAT(ran.err, HasSubstr(std::string("\n") + each.problem + "\n"));
        EXPECT_EQ(ran.out, "");
        EXPECT_EQ(RowsOf(database), 0);
    }
}

/// One line of calendar.csv and its problem.
const std::pair<const char*, const char*> kBadCalendar[] = {
    {"Z-1,7,1,Semanal,1,,2026-01-01,2025-12-29,,", "column ID_Activo: no asset 'Z-1' in assets.csv or in the database"},
    {"A-1,9,1,Semanal,1,,2026-01-01,2025-12-29,,", "column Numero_Gama: no task '9' in tasks.csv or in the database"},
    {"A-1,7,1,Weekly,1,,2026-01-01,2025-12-29,,",
     "column Frecuencia: 'Weekly' is none of Fecha, Diaria, Semanal, Quincenal, Mensual, Bimestral, Trimestral, "
     "Semestral and Anual"},
    {"A-1,7,1,Mensual,1,6,2026-01-01,2025-12-29,,", "column Programacion: '6' is no week of the month, 1 to 4"},
    {"A-1,7,0,Anual,12,15,2026-01-01,2025-12-29,,",
     "column Programacion: '15' is no day and month with a comma between, such as 15,3"},
    {"A-1,7,1,Semanal,40000,,2026-01-01,2025-12-29,,",
     "column Intervalo_Frecuencia: '40000' is no whole number from -32768 to 32767"},
    {"A-1,7,2,Semanal,1,,2026-01-01,2025-12-29,,", "column Es_Sincronizada: '2' is neither 0 nor 1"},
    {"A-1,7,1,Semanal,1,,2026-01-01,,,", "column Fecha_Ultimo_Lanzamiento: the cell is empty"},
    {"A-1,7,1,Semanal,1,,soon,2025-12-29,,", "column Fecha_Inicio: 'soon' is no date; write yyyy-mm-dd or dd/mm/yyyy"},
    {"A-1,7,1,Semanal,1,,2026-01-01,2025-12-29,d'abord,",
     "column Descripcion_Breve: a quote (') can't be stored in this column: d'abord"},
    {"A-1,7,1,Semanal,1,,2026-01-01,2025-12-29,,d'abord",
     "column Causa_Modificacion: a quote (') can't be stored in this column: d'abord"},
};

TEST(ImportProblems, RefusesCalendarAssignmentsThatALaunchCouldNotRead) {
    const std::string header =
        "ID_Activo,Numero_Gama,Es_Sincronizada,Frecuencia,Intervalo_Frecuencia,Programacion,"
        "Fecha_Inicio,Fecha_Ultimo_Lanzamiento,Descripcion_Breve,Causa_Modificacion\n";
    for (const auto& [line, problem] : kBadCalendar) {
        SCOPED_TRACE(line);
        const Folder folder;
        host_test::WriteSmallPlant(folder);
        folder.Write("calendar.csv", header + line + "\n");
        const std::string database = Empty(folder);
        const Ran ran = Import(folder, database);
        EXPECT_EQ(ran.status, 1);
        EXPECT_THAT(ran.err, HasSubstr(std::string("nothing was imported; there is one problem to mend:\n"
                                                   "calendar.csv, line 2, ") +
                                       problem + "\n"));
        EXPECT_EQ(RowsOf(database), 0);
    }
}

}  // namespace

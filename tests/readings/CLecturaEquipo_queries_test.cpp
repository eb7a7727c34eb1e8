#include "frame/invoke.h"
#include "readings/CLecturaEquipo.h"
#include "tests/catalogues/report_check.h"

namespace {

using namespace Zontara;
using namespace support;
using testing::ElementsAre;

const std::string kReportHead =
    "SELECT Activo.ID_Activo,Descripcion,SC_Lectura ,Fecha ,SC_Unidad_Lectura "
    ",numero_vale,valor_del_vale_salida,Valor_Real ,Lectura ,Nota,Lectura_Anterior,Combustible_Consumido ";
const std::string kMonthHead =
    "SELECT ID_Activo,Descripcion, strftime('%Y%m',Fecha) as mes ,0 as sc_lectura, sum(valor_del_vale_salida) as "
    "valor_del_vale_salida,sum(Valor_Real) as Valor_Real ,sum(Combustible_Consumido) as Combustible_Consumido";
const std::string kRange =
    " FROM Lectura_Equipo,activo WHERE activo.ID_Activo = Lectura_Equipo.ID_Equipo and  "
    "strftime('%Y%m%d',Lectura_Equipo.fecha)>='20260301'  and strftime('%Y%m%d',Lectura_Equipo.fecha) <='20260331' ";
const std::string kReportEnd = " order by Lectura_Equipo.ID_Equipo ";
const std::string kMonthEnd = " group by 1,2,3,4  order by Lectura_Equipo.ID_Equipo ";

class CLecturaEquipoQueriesTest : public testing::Test {
protected:
    CLecturaEquipoQueriesTest() {
        world.Run(
            "insert into Activo (ID_Activo, Descripcion, SC_Unidad_Lectura, id_localidad_fisica) values "
            "('A1', 'press', 1, 10), ('B1', 'lathe', 2, 20), ('1C', 'crane', 1, 10);"
            "insert into Unidad_Lectura (SC_Unidad_Lectura, Descripcion) values (1, 'km'), (2, 'h');");
    }
    void Plant(std::int32_t clave, const std::string& fecha, const std::string& activo, std::int32_t unidad = 1) {
        world.Run("insert into Lectura_Equipo values (" + std::to_string(clave) + ", '" + fecha + "', '" + activo +
                  "', " + std::to_string(unidad) + ", 2.5, 50, 47.5, 3, 'n', 'd', 1.5, 'v')");
    }
    std::string Keys(const Ref<Recordset>& rows) { return ColumnOf(rows, "SC_Lectura"); }

    World world;
    CLecturaEquipo lecturas;
    const Date from = World::Day("2026-03-01 09:00:00");
    const Date to = World::Day("2026-03-31 01:00:00");
};

TEST_F(CLecturaEquipoQueriesTest, StatementsAreLetterForLetter) {
    ExpectStatements(
        world,
        {{"Seleccionar", [&] { lecturas.Seleccionar("A1"); },
          "SELECT SC_Lectura ,Fecha ,SC_Unidad_Lectura ,Valor_Real ,Nota,Lectura ,Lectura_Anterior  FROM "
          "Lectura_Equipo WHERE ID_Equipo ='A1'"},
         {"Seleccionar with columns", [&] { lecturas.Seleccionar("A1", "Nota"); },
          "Select Nota FROM Lectura_Equipo WHERE ID_Equipo ='A1'"},
         {"Buscar", [&] { lecturas.Buscar(4); },
          "SELECT Activo.ID_Activo,Descripcion,SC_Lectura ,Numero_Vale,Fecha ,Lectura_Equipo.SC_Unidad_Lectura "
          ",Valor_Del_Vale_Salida,Valor_Real ,Nota,Lectura ,Lectura_Anterior,Combustible_Consumido, "
          "Departamento_A_Quien_Se_Carga  FROM Lectura_Equipo,Activo WHERE SC_Lectura =4 and Activo.ID_Activo = "
          "Lectura_Equipo.ID_Equipo "},
         {"Buscar with columns", [&] { lecturas.Buscar(4, "Nota"); },
          "Select Nota FROM Lectura_Equipo,Activo WHERE SC_Lectura =4 and Activo.ID_Activo = "
          "Lectura_Equipo.ID_Equipo "},
         {"SeleccionarTodos", [&] { lecturas.SeleccionarTodos(""); },
          "SELECT SC_Lectura ,Fecha ,Lectura_Equipo.SC_Unidad_Lectura ,Valor_Real ,Nota,Lectura "
          ",Lectura_Anterior,Combustible_Consumido  FROM Lectura_Equipo,Unidad_Lectura,Activo  Where  "
          "Lectura_Equipo.Sc_Unidad_Lectura = Unidad_Lectura.SC_Unidad_Lectura  and Lectura_Equipo.ID_Equipo = "
          "Activo.ID_Activo "},
         {"SeleccionarTodos with all", [&] { lecturas.SeleccionarTodos("Lectura>3", "Nota"); },
          "Select Nota FROM Lectura_Equipo,Unidad_Lectura,Activo  Where  Lectura_Equipo.Sc_Unidad_Lectura = "
          "Unidad_Lectura.SC_Unidad_Lectura  and Lectura_Equipo.ID_Equipo = Activo.ID_Activo  and Lectura>3"},
         {"Ultimas10Lecturas", [&] { lecturas.Ultimas10Lecturas("A1"); },
          kReportHead +
              " FROM Lectura_Equipo,Activo WHERE Activo.ID_Activo = Lectura_Equipo.ID_Equipo and  Activo.ID_Activo "
              "='A1' order by Lectura_Equipo.SC_lectura DESC limit 10"},
         {"Ultimas10Lecturas with columns", [&] { lecturas.Ultimas10Lecturas("A1", "Nota"); },
          "Select Nota FROM Lectura_Equipo,Activo WHERE Activo.ID_Activo = Lectura_Equipo.ID_Equipo and  "
          "Activo.ID_Activo ='A1' order by Lectura_Equipo.SC_lectura DESC limit 10"}});
}

TEST_F(CLecturaEquipoQueriesTest, ReportStatementsAreLetterForLetter) {
    struct Case {
        std::string label;
        std::string capitulo;
        std::int32_t localizacion;
        std::int32_t unidad;
        std::string activos;
        std::string filters;
    };
    const std::vector<Case> cases{
        {"no filter", "", 0, 0, "", ""},
        {"chapter 0", "0", 0, 0, "", ""},
        {"below 0", "", -1, -1, "", ""},
        {"chapter", "A1", 0, 0, "", " and ltrim(activo.ID_Activo,2)='A1'"},
        {"chapter of a letter of two bytes", "\xC3\x91", 0, 0, "", " and ltrim(activo.ID_Activo,1)='\xC3\x91'"},
        {"place", "", 10, 0, "", " and activo.id_localidad_fisica=10"},
        {"unit", "", 0, 2, "", " and activo.sc_unidad_lectura=2"},
        {"assets", "", 0, 0, "'A1','B1'", " and activo.ID_Activo in ('A1','B1')"},
        {"all", "A", 10, 2, "'A1'",
         " and ltrim(activo.ID_Activo,1)='A' and activo.id_localidad_fisica=10 and activo.sc_unidad_lectura=2 and "
         "activo.ID_Activo in ('A1')"}};
    for (const Case& c : cases) {
        ExpectStatements(
            world,
            {{c.label, [&] { lecturas.ObtenerLecturas(from, to, c.capitulo, c.localizacion, c.unidad, "", c.activos); },
              kReportHead + kRange + c.filters + kReportEnd},
             {c.label + ", with columns",
              [&] { lecturas.ObtenerLecturas(from, to, c.capitulo, c.localizacion, c.unidad, "Nota", c.activos); },
              "Select Nota" + kRange + c.filters + kReportEnd},
             {c.label + ", by month",
              [&] {
                  lecturas.ObtenerLecturasPorMes(from, to, c.capitulo, c.localizacion, c.unidad, "Nota", c.activos);
              },
              kMonthHead + kRange + c.filters + kMonthEnd}});
    }
}

TEST_F(CLecturaEquipoQueriesTest, ChapterZeroIsWrittenBackEmpty) {
    std::string capitulo = "0";
    lecturas.ObtenerLecturas(from, to, capitulo);
    EXPECT_EQ(capitulo, "");
    capitulo = "0";
    lecturas.ObtenerLecturasPorMes(from, to, capitulo);
    EXPECT_EQ(capitulo, "");
    capitulo = "A";
    lecturas.ObtenerLecturas(from, to, capitulo);
    EXPECT_EQ(capitulo, "A");
    for (const std::string_view member : {"ObtenerLecturas", "ObtenerLecturasPorMes"}) {
        const CallResult result = Invoke(lecturas, member, MemberKind::Method, {{from, to, "0"}, {}});
        ASSERT_EQ(result.changed.size(), 1U) << member;
        EXPECT_EQ(result.changed[0].first, "ID_Capitulo");
        EXPECT_EQ(result.changed[0].second, Value(""));
    }
}

TEST_F(CLecturaEquipoQueriesTest, TheRangeTakesWholeDaysAndBothBounds) {
    Plant(1, "2026-02-28", "A1");
    Plant(2, "2026-03-01", "A1");
    Plant(3, "2026-03-31", "A1");
    Plant(4, "2026-04-01", "A1");
    Plant(5, "", "A1");
    EXPECT_EQ(Keys(lecturas.ObtenerLecturas(from, to)), "2,3");
}

TEST_F(CLecturaEquipoQueriesTest, FiltersSelectByPlaceUnitOfTheAssetAndList) {
    Plant(1, "2026-03-05", "A1", 2);
    Plant(2, "2026-03-05", "B1", 1);
    Plant(3, "2026-03-05", "nowhere");
    EXPECT_EQ(Keys(lecturas.ObtenerLecturas(from, to)), "1,2");
    EXPECT_EQ(Keys(lecturas.ObtenerLecturas(from, to, "", 10)), "1");
    EXPECT_EQ(Keys(lecturas.ObtenerLecturas(from, to, "", 0, 2)), "2");
    EXPECT_EQ(Keys(lecturas.ObtenerLecturas(from, to, "", 0, 0, "", "'B1'")), "2");
    EXPECT_EQ(ColumnOf(lecturas.ObtenerLecturasPorMes(from, to, "", 10), "ID_Activo"), "A1");
}

TEST_F(CLecturaEquipoQueriesTest, TheChapterMeetsWhatIsLeftOfTheKeyWithoutItsLeadingDigits) {
    Plant(1, "2026-03-05", "A1");
    Plant(2, "2026-03-05", "1C");
    EXPECT_EQ(Keys(lecturas.ObtenerLecturas(from, to, "A")), "");
    EXPECT_EQ(Keys(lecturas.ObtenerLecturas(from, to, "A1")), "1");
    EXPECT_EQ(Keys(lecturas.ObtenerLecturas(from, to, "C")), "2");
}

TEST_F(CLecturaEquipoQueriesTest, MonthsAreSummedByAssetWhateverTheColumns) {
    Plant(1, "2026-03-05", "A1");
    Plant(2, "2026-03-06", "A1");
    Plant(3, "2026-02-05", "A1");
    Plant(4, "2026-03-05", "B1");
    const Date early = World::Day("2026-01-01");
    const Ref<Recordset> rows = lecturas.ObtenerLecturasPorMes(early, to);
    EXPECT_EQ(ColumnsOf(rows),
              "ID_Activo,Descripcion,mes,sc_lectura,valor_del_vale_salida,Valor_Real,Combustible_Consumido");
    EXPECT_EQ(ColumnOf(rows, "ID_Activo"), "A1,A1,B1");
    EXPECT_EQ(ColumnOf(rows, "mes"), "202602,202603,202603");
    EXPECT_EQ(ColumnOf(rows, "sc_lectura"), "0,0,0");
    EXPECT_EQ(ColumnOf(rows, "Valor_Real"), "2.5,5,2.5");
    EXPECT_EQ(ColumnOf(rows, "valor_del_vale_salida"), "1.5,3,1.5");
    EXPECT_EQ(ColumnOf(rows, "Combustible_Consumido"), "3,6,3");
    const Ref<Recordset> others = lecturas.ObtenerLecturasPorMes(early, to, "", 0, 0, "Nota");
    EXPECT_EQ(ColumnsOf(others), ColumnsOf(rows));
    EXPECT_EQ(ColumnOf(others, "mes"), ColumnOf(rows, "mes"));
}

TEST_F(CLecturaEquipoQueriesTest, Ultimas10LecturasGoesByEntryNotByDay) {
    for (std::int32_t clave = 1; clave <= 12; ++clave) {
        Plant(clave, clave == 12 ? "2001-01-01" : "2026-03-05", "A1", 1);
    }
    Plant(13, "2026-03-05", "B1");
    EXPECT_EQ(Keys(lecturas.Ultimas10Lecturas("A1")), "12,11,10,9,8,7,6,5,4,3");
}

TEST_F(CLecturaEquipoQueriesTest, DefaultColumnsRun) {
    Plant(1, "2026-03-05", "A1", 2);
    Plant(2, "2026-03-05", "nowhere");
    Plant(3, "2026-03-05", "A1", 99);
    EXPECT_EQ(ColumnsOf(lecturas.Seleccionar("A1")),
              "SC_Lectura,Fecha,SC_Unidad_Lectura,Valor_Real,Nota,Lectura,Lectura_Anterior");
    EXPECT_EQ(Keys(lecturas.Seleccionar("A1")), "1,3");
    EXPECT_EQ(ColumnsOf(lecturas.Buscar(1)),
              "ID_Activo,Descripcion,SC_Lectura,Numero_Vale,Fecha,SC_Unidad_Lectura,Valor_Del_Vale_Salida,Valor_Real,"
              "Nota,Lectura,Lectura_Anterior,Combustible_Consumido,Departamento_A_Quien_Se_Carga");
    EXPECT_EQ(ColumnOf(lecturas.Buscar(1), "Descripcion"), "press");
    EXPECT_EQ(lecturas.Buscar(2)->TotalRegistros(), 0);
    EXPECT_EQ(ColumnsOf(lecturas.SeleccionarTodos("")),
              "SC_Lectura,Fecha,SC_Unidad_Lectura,Valor_Real,Nota,Lectura,Lectura_Anterior,Combustible_Consumido");
    EXPECT_EQ(Keys(lecturas.SeleccionarTodos("")), "1");
    EXPECT_EQ(Keys(lecturas.SeleccionarTodos("Lectura>999")), "");
    const std::string report =
        "ID_Activo,Descripcion,SC_Lectura,Fecha,SC_Unidad_Lectura,Numero_Vale,Valor_Del_Vale_Salida,Valor_Real,"
        "Lectura,Nota,Lectura_Anterior,Combustible_Consumido";
    EXPECT_EQ(ColumnsOf(lecturas.Ultimas10Lecturas("A1")), report);
    EXPECT_EQ(ColumnOf(lecturas.Ultimas10Lecturas("A1"), "SC_Unidad_Lectura"), "99,2");
    EXPECT_EQ(ColumnsOf(lecturas.ObtenerLecturas(from, to)), report);
    EXPECT_EQ(ColumnOf(lecturas.ObtenerLecturas(from, to), "SC_Unidad_Lectura"), "2,99");
}

TEST_F(CLecturaEquipoQueriesTest, FailuresAreReportedWithTheirValues) {
    const std::string filters =
        "(DesdeFecha='01/03/2026 09:00:00', HastaFecha='31/03/2026 01:00:00', ID_Capitulo='', ID_Localizacion=1, "
        "id_Lectura=2, sColumnas='Nota', ListaActivos=''A1'')";
    ExpectRefused(
        world, "select * from Lectura_Equipo",
        {{"sql SELECT", [&] { lecturas.Seleccionar("A1"); },
          "CLecturaEquipo.Seleccionar(ID_Equipo='A1', sColumnas='')"},
         {"sql Select", [&] { lecturas.Buscar(4, "Nota"); }, "CLecturaEquipo.Buscar(SC_Lectura=4, sColumnas='Nota')"},
         {"sql SELECT", [&] { lecturas.SeleccionarTodos("1=1"); },
          "CLecturaEquipo.SeleccionarTodos(sCondicion='1=1', sColumnas='')"},
         {"sql SELECT", [&] { lecturas.Ultimas10Lecturas("A1"); },
          "CLecturaEquipo.Ultimas10Lecturas(ID_Equipo='A1', sColumnas='')"},
         {"sql Select", [&] { lecturas.ObtenerLecturas(from, to, "0", 1, 2, "Nota", "'A1'"); },
          "CLecturaEquipo.ObtenerLecturas" + filters},
         {"sql SELECT", [&] { lecturas.ObtenerLecturasPorMes(from, to, "0", 1, 2, "Nota", "'A1'"); },
          "CLecturaEquipo.ObtenerLecturasPorMes" + filters}});
}

TEST_F(CLecturaEquipoQueriesTest, AQuoteInAKeyOfAnAssetBreaksTheStatement) {
    EXPECT_EQ(ErrorOf([&] { lecturas.Seleccionar("A'1"); }).number, kSyntaxRefused);
    EXPECT_EQ(ErrorOf([&] { lecturas.Ultimas10Lecturas("A'1"); }).number, kSyntaxRefused);
    EXPECT_EQ(ErrorOf([&] { lecturas.ObtenerLecturas(from, to, "A'1"); }).number, kSyntaxRefused);
}

}  // namespace

#include "meter/CImputacionSistematica.h"
#include "tests/meter/meter_test.h"

using namespace Zontara;
using namespace support;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

class CImputacionSistematicaQueriesTest : public MeterTest {
protected:
    CImputacionSistematicaQueriesTest() {
        AddAsset("A1", "2500", "77.5");
        AddAsset("A12", "900");
        AddAsset("B1", "100");
        AddAssignment({7, "A1", 1000, 500, 900});
        AddAssignment({8, "A1", 4000, 0, 0, 0, 31});
        AddAssignment({9, "A1", 2000, 500, 3000, 1});
        AddAssignment({10, "A12", 900, 0, 0, 1});
        AddAssignment({11, "B1", 500, 0, 100});
    }
    static std::vector<std::string> Keys(const Ref<Recordset>& rs) { return Column(rs, "SC_Imputacion_Sistematica"); }

    const Date day = World::Day("2026-03-05 14:00:00");
};

TEST_F(CImputacionSistematicaQueriesTest, EverySelectionRunsItsStatementOnTheLiveSchema) {
    CImputacionSistematica& c = *imputaciones;
    const struct {
        const char* label;
        std::function<Ref<Recordset>()> select;
        std::string statement;
        int columns;
    } cases[] = {
        {"SeleccionarPorGama", [&] { return c.SeleccionarPorGama(30); },
         "SELECT Activo.ID_Activo,Activo.Equipo_Parado,SC_Imputacion_Sistematica ,SC_Gama ,Fecha_Imputacion ,Anulada "
         ",SC_Usuario ,Fecha_Inicio ,Fecha_Fin ,Acumulado_Lectura ,Unidad_Lectura.SC_Unidad_Lectura ,Ultima_Lectura "
         ",Lectura_Limite,Aproximacion_Lectura ,Fecha_Ultimo_Lanzamiento ,Fecha_Ultima_Modificacion "
         ",Causa_Modificacion FROM Imputacion_Sistematica ,Activo,Gama,Grupo_Gama,Ejecutor_Gama,Unidad_Lectura  WHERE  "
         "Imputacion_Sistematica.ID_Activo = Activo.ID_Activo  and Imputacion_Sistematica.SC_Gama = Gama.SC_Gama and  "
         "Activo.SC_Unidad_Lectura =  Unidad_Lectura.SC_Unidad_Lectura and  Grupo_Gama.SC_Grupo_Gama = "
         "Gama.SC_Grupo_Gama and  Ejecutor_Gama.SC_Ejecutor_Gama = Gama.SC_Ejecutor_Gama and  Gama.SC_Gama =30",
         17},
        {"SeleccionarPorEquipo of a prefix", [&] { return c.SeleccionarPorEquipo("A1"); },
         "SELECT Activo.ID_Activo,Activo.Equipo_Parado,SC_Imputacion_Sistematica ,Gama.SC_Gama ,Fecha_Imputacion "
         ",Anulada ,SC_Usuario ,Fecha_Inicio ,Fecha_Fin ,Acumulado_Lectura ,Unidad_Lectura.SC_Unidad_Lectura "
         ",Ultima_Lectura ,Lectura_Limite,Aproximacion_Lectura ,Fecha_Ultimo_Lanzamiento ,Fecha_Ultima_Modificacion "
         ",Causa_Modificacion,Ultimo_Acumulado FROM Imputacion_Sistematica ,Activo,Gama,Grupo_Gama,Unidad_Lectura  "
         "WHERE  Imputacion_Sistematica.ID_Activo = Activo.ID_Activo  and Imputacion_Sistematica.SC_Gama = "
         "Gama.SC_Gama and  Activo.SC_Unidad_Lectura =  Unidad_Lectura.SC_Unidad_Lectura and  Grupo_Gama.SC_Grupo_Gama "
         "= Gama.SC_Grupo_Gama     and Imputacion_Sistematica.ID_Activo like 'A1%'  order by "
         "Activo.ID_Activo,Imputacion_Sistematica.Lectura_Limite DESC",
         18},
        {"SeleccionarPorEquipo of all", [&] { return c.SeleccionarPorEquipo(""); },
         "SELECT Activo.ID_Activo,Activo.Equipo_Parado,SC_Imputacion_Sistematica ,Gama.SC_Gama ,Fecha_Imputacion "
         ",Anulada ,SC_Usuario ,Fecha_Inicio ,Fecha_Fin ,Acumulado_Lectura ,Unidad_Lectura.SC_Unidad_Lectura "
         ",Ultima_Lectura ,Lectura_Limite,Aproximacion_Lectura ,Fecha_Ultimo_Lanzamiento ,Fecha_Ultima_Modificacion "
         ",Causa_Modificacion,Ultimo_Acumulado FROM Imputacion_Sistematica ,Activo,Gama,Grupo_Gama,Unidad_Lectura  "
         "WHERE  Imputacion_Sistematica.ID_Activo = Activo.ID_Activo  and Imputacion_Sistematica.SC_Gama = "
         "Gama.SC_Gama and  Activo.SC_Unidad_Lectura =  Unidad_Lectura.SC_Unidad_Lectura and  Grupo_Gama.SC_Grupo_Gama "
         "= Gama.SC_Grupo_Gama     order by Activo.ID_Activo,Imputacion_Sistematica.Lectura_Limite DESC",
         18},
        {"ListarImputacionesVencidas", [&] { return c.ListarImputacionesVencidas("A1"); },
         "SELECT Activo.ID_Activo,Activo.Equipo_Parado,SC_Imputacion_Sistematica ,SC_Gama ,Fecha_Imputacion ,Anulada "
         ",SC_Usuario ,Fecha_Inicio ,Fecha_Fin ,Acumulado_Lectura ,Unidad_Lectura.SC_Unidad_Lectura ,Ultima_Lectura "
         ",Lectura_Limite,Aproximacion_Lectura ,Fecha_Ultimo_Lanzamiento ,Fecha_Ultima_Modificacion "
         ",Causa_Modificacion,Ultimo_Acumulado FROM Imputacion_Sistematica "
         ",Activo,Gama,Grupo_Gama,Ejecutor_Gama,Unidad_Lectura  WHERE  Imputacion_Sistematica.ID_Activo = "
         "Activo.ID_Activo  and Imputacion_Sistematica.SC_Gama = Gama.SC_Gama and  Activo.SC_Unidad_Lectura =  "
         "Unidad_Lectura.SC_Unidad_Lectura and  Grupo_Gama.SC_Grupo_Gama = Gama.SC_Grupo_Gama and  "
         "Ejecutor_Gama.SC_Ejecutor_Gama = Gama.SC_Ejecutor_Gama  and Imputacion_Sistematica.ID_Activo like 'A1%'  and "
         "(Acumulado_Lectura - Ultimo_Acumulado) >= Lectura_Limite  order by "
         "Activo.ID_Activo,Imputacion_Sistematica.Lectura_Limite DESC",
         18},
        {"SeleccionarAproximaciones", [&] { return c.SeleccionarAproximaciones(); },
         "SELECT Activo.ID_Activo,Activo.Equipo_Parado,SC_Imputacion_Sistematica ,SC_Gama ,Fecha_Imputacion ,Anulada "
         ",SC_Usuario ,Fecha_Inicio ,Fecha_Fin ,Acumulado_Lectura ,Unidad_Lectura.SC_Unidad_Lectura ,Ultima_Lectura "
         ",Lectura_Limite,Aproximacion_Lectura ,Fecha_Ultimo_Lanzamiento ,Fecha_Ultima_Modificacion "
         ",Causa_Modificacion FROM Imputacion_Sistematica ,Activo,Gama,Grupo_Gama,Ejecutor_Gama,Unidad_Lectura  WHERE  "
         "Imputacion_Sistematica.ID_Activo = Activo.ID_Activo  and Imputacion_Sistematica.SC_Gama = Gama.SC_Gama and  "
         "Activo.SC_Unidad_Lectura =  Unidad_Lectura.SC_Unidad_Lectura and  Grupo_Gama.SC_Grupo_Gama = "
         "Gama.SC_Grupo_Gama and  Ejecutor_Gama.SC_Ejecutor_Gama = Gama.SC_Ejecutor_Gama and  Activo.Acumulado_Lectura "
         ">= Imputacion_Sistematica.Aproximacion_Lectura and  Imputacion_Sistematica.Aproximacion_Lectura>0 ",
         17},
        {"SeleccionarTodos", [&] { return c.SeleccionarTodos(""); },
         "SELECT Activo.ID_Activo,Activo.Equipo_Parado,SC_Imputacion_Sistematica ,SC_Gama ,Fecha_Imputacion ,Anulada "
         ",SC_Usuario ,Fecha_Inicio ,Fecha_Fin ,Acumulado_Lectura ,Unidad_Lectura.SC_Unidad_Lectura ,Ultima_Lectura "
         ",Lectura_Limite,Aproximacion_Lectura ,Fecha_Ultimo_Lanzamiento ,Fecha_Ultima_Modificacion "
         ",Causa_Modificacion FROM Imputacion_Sistematica ,Activo,Gama,Grupo_Gama,Ejecutor_Gama,Unidad_Lectura  WHERE  "
         "Imputacion_Sistematica.ID_Activo = Activo.ID_Activo  and Imputacion_Sistematica.SC_Gama = Gama.SC_Gama and  "
         "Activo.SC_Unidad_Lectura =  Unidad_Lectura.SC_Unidad_Lectura and  Grupo_Gama.SC_Grupo_Gama = "
         "Gama.SC_Grupo_Gama and  Ejecutor_Gama.SC_Ejecutor_Gama = Gama.SC_Ejecutor_Gama  ",
         17},
        {"SeleccionarTodos with condition and group",
         [&] { return c.SeleccionarTodos("Lectura_Limite>500", "", true); },
         "SELECT Activo.ID_Activo,Activo.Equipo_Parado,SC_Imputacion_Sistematica ,SC_Gama ,Fecha_Imputacion ,Anulada "
         ",SC_Usuario ,Fecha_Inicio ,Fecha_Fin ,Acumulado_Lectura ,Unidad_Lectura.SC_Unidad_Lectura ,Ultima_Lectura "
         ",Lectura_Limite,Aproximacion_Lectura ,Fecha_Ultimo_Lanzamiento ,Fecha_Ultima_Modificacion "
         ",Causa_Modificacion FROM Imputacion_Sistematica ,Activo,Gama,Grupo_Gama,Ejecutor_Gama,Unidad_Lectura  WHERE  "
         "Imputacion_Sistematica.ID_Activo = Activo.ID_Activo  and Imputacion_Sistematica.SC_Gama = Gama.SC_Gama and  "
         "Activo.SC_Unidad_Lectura =  Unidad_Lectura.SC_Unidad_Lectura and  Grupo_Gama.SC_Grupo_Gama = "
         "Gama.SC_Grupo_Gama and  Ejecutor_Gama.SC_Ejecutor_Gama = Gama.SC_Ejecutor_Gama  and Lectura_Limite>500 group "
         "by Activo.ID_Activo",
         17},
        {"SeleccionarActivas", [&] { return c.SeleccionarActivas(day); },
         "SELECT  Activo.ID_Activo,Activo.Equipo_Parado,SC_Imputacion_Sistematica ,SC_Gama ,Fecha_Imputacion ,Anulada "
         ",SC_Usuario ,Fecha_Inicio ,Fecha_Fin ,Acumulado_Lectura ,Lectura_Limite,SC_Unidad_Lectura ,Ultima_Lectura "
         ",Aproximacion_Lectura ,Fecha_Ultimo_Lanzamiento ,Fecha_Ultima_Modificacion ,Causa_Modificacion  FROM "
         "Imputacion_Sistematica,Activo, Gama,Grupo_Gama  WHERE  Imputacion_Sistematica.ID_Activo = Activo.ID_Activo  "
         "and Gama.SC_Gama = Imputacion_Sistematica.SC_Gama and  Grupo_Gama.SC_Grupo_Gama = Gama.SC_Grupo_Gama and  "
         "Anulada = 0 and Fecha_Inicio <='2026-03-05'  ",
         17},
        {"SeleccionarActivas of a chapter", [&] { return c.SeleccionarActivas(day, "", "A"); },
         "SELECT  Activo.ID_Activo,Activo.Equipo_Parado,SC_Imputacion_Sistematica ,SC_Gama ,Fecha_Imputacion ,Anulada "
         ",SC_Usuario ,Fecha_Inicio ,Fecha_Fin ,Acumulado_Lectura ,Lectura_Limite,SC_Unidad_Lectura ,Ultima_Lectura "
         ",Aproximacion_Lectura ,Fecha_Ultimo_Lanzamiento ,Fecha_Ultima_Modificacion ,Causa_Modificacion  FROM "
         "Imputacion_Sistematica,Activo, Gama,Grupo_Gama  WHERE  Imputacion_Sistematica.ID_Activo = Activo.ID_Activo  "
         "and Gama.SC_Gama = Imputacion_Sistematica.SC_Gama and  Grupo_Gama.SC_Grupo_Gama = Gama.SC_Grupo_Gama and  "
         "Anulada = 0 and Fecha_Inicio <='2026-03-05'   and substring(Imputacion_Sistematica.ID_Activo,1,1) ='A' ",
         17},
        {"ListarImputacionesDeUnActivo", [&] { return c.ListarImputacionesDeUnActivo("A1"); },
         "SELECT  Activo.ID_Activo,Activo.Equipo_Parado,SC_Imputacion_Sistematica ,Gama.SC_Gama "
         ",Gama.Descripcion,Fecha_Imputacion ,Anulada ,SC_Usuario ,Fecha_Inicio ,Fecha_Fin ,Acumulado_Lectura "
         ",Lectura_Limite,Activo.SC_Unidad_Lectura ,Ultima_Lectura ,Aproximacion_Lectura ,Fecha_Ultimo_Lanzamiento "
         ",Fecha_Ultima_Modificacion ,Causa_Modificacion,Ultimo_Acumulado  FROM Imputacion_Sistematica,Activo, "
         "Gama,Grupo_Gama,Unidad_Lectura  WHERE  Imputacion_Sistematica.ID_Activo = Activo.ID_Activo  and "
         "Activo.sc_unidad_lectura = Unidad_Lectura.sc_unidad_lectura  and  Gama.SC_Gama = "
         "Imputacion_Sistematica.SC_Gama and    Grupo_Gama.SC_Grupo_Gama = Gama.SC_Grupo_Gama and  "
         "Imputacion_Sistematica.ID_Activo ='A1' and  Anulada = 0 order by Lectura_Limite desc",
         19},
    };
    for (const auto& test : cases) {
        SCOPED_TRACE(test.label);
        world.Forget();
        const Ref<Recordset> rs = test.select();
        EXPECT_THAT(world.Statements(), ElementsAre(test.statement));
        EXPECT_EQ(rs->TotalColumnas(), test.columns);
        EXPECT_GT(rs->TotalRegistros(), 0);
    }
}

TEST_F(CImputacionSistematicaQueriesTest, TheDefaultColumnsOfBuscarAreRefused) {
    const ErrorRecord error = ErrorOf([&] { imputaciones->Buscar(7); });
    EXPECT_THAT(
        world.Statements(),
        ElementsAre(
            "SELECT  Activo.ID_Activo,Activo.Equipo_Parado,SC_Imputacion_Sistematica ,Gama.SC_Gama "
            ",Gama.Numero_Gama,Fecha_Imputacion ,Ejecutor_Gama.Descripcion as "
            "Descripcion_Ejecutor,Grupo_Gama.Descripcion as Descripcion_Grupo, Activo.Descripcion as "
            "Descripcion_Equipo, Anulada ,SC_Usuario ,Fecha_Inicio ,Fecha_Fin ,Acumulado_Lectura "
            ",Lectura_Limite,Activo.SC_Unidad_Lectura ,Ultimo_Acumulado,Ultima_Lectura ,Aproximacion_Lectura "
            ",Fecha_Ultimo_Lanzamiento ,Fecha_Ultima_Modificacion ,Causa_Modificacion,Texto_Mantenimiento,Finaliza "
            "FROM Imputacion_Sistematica,Activo,Gama,Grupo_Gama  WHERE  Imputacion_Sistematica.ID_Activo = "
            "Activo.ID_Activo  and Gama.SC_Gama = Imputacion_Sistematica.SC_Gama and  Grupo_Gama.SC_Grupo_Gama = "
            "Gama.SC_Grupo_Gama and    Imputacion_Sistematica.SC_Imputacion_Sistematica=7"));
    EXPECT_EQ(error.number, Refused(1));
    EXPECT_THAT(error.description, ::testing::HasSubstr("Ejecutor_Gama"));
    EXPECT_THAT(CallsOf(error),
                ElementsAre("Libreria.AbrirRecordset(rs={Recordset}, strSQL={Text})",
                            "CImputacionSistematica.Buscar(SC_Imputacion_Sistematica=7, sColumnas='')"));
}

TEST_F(CImputacionSistematicaQueriesTest, BuscarTakesColumnsThatEndWithABlank) {
    EXPECT_THAT(Column(imputaciones->Buscar(7, " Lectura_Limite "), "Lectura_Limite"), ElementsAre("1000"));
    EXPECT_THAT(world.Statements(),
                ElementsAre("Select  Lectura_Limite FROM Imputacion_Sistematica,Activo,Gama,Grupo_Gama  WHERE  "
                            "Imputacion_Sistematica.ID_Activo = Activo.ID_Activo  and Gama.SC_Gama = "
                            "Imputacion_Sistematica.SC_Gama and  Grupo_Gama.SC_Grupo_Gama = Gama.SC_Grupo_Gama and    "
                            "Imputacion_Sistematica.SC_Imputacion_Sistematica=7"));
    EXPECT_EQ(imputaciones->Buscar(77, " Lectura_Limite ")->TotalRegistros(), 0);
}

TEST_F(CImputacionSistematicaQueriesTest, ColumnsRunIntoTheNextWordWhereTheTailBeginsWithFrom) {
    CImputacionSistematica& c = *imputaciones;
    const struct {
        const char* label;
        std::function<Ref<Recordset>(const std::string&)> select;
        bool needsBlank;
    } cases[] = {
        {"SeleccionarPorGama", [&](const std::string& columns) { return c.SeleccionarPorGama(30, columns); }, true},
        {"SeleccionarPorEquipo", [&](const std::string& columns) { return c.SeleccionarPorEquipo("A", columns); },
         true},
        {"ListarImputacionesVencidas",
         [&](const std::string& columns) { return c.ListarImputacionesVencidas("A", columns); }, true},
        {"SeleccionarAproximaciones", [&](const std::string& columns) { return c.SeleccionarAproximaciones(columns); },
         true},
        {"SeleccionarTodos", [&](const std::string& columns) { return c.SeleccionarTodos("", columns); }, true},
        {"Buscar", [&](const std::string& columns) { return c.Buscar(7, columns); }, true},
        {"SeleccionarActivas", [&](const std::string& columns) { return c.SeleccionarActivas(day, columns); }, false},
        {"ListarImputacionesDeUnActivo",
         [&](const std::string& columns) { return c.ListarImputacionesDeUnActivo("A1", columns); }, false},
    };
    for (const auto& test : cases) {
        SCOPED_TRACE(test.label);
        const Ref<Recordset> rs = test.select("Lectura_Limite ");
        EXPECT_EQ(rs->TotalColumnas(), 1);
        EXPECT_GT(rs->TotalRegistros(), 0);
        world.Forget();
        if (test.needsBlank) {
            EXPECT_EQ(ErrorOf([&] { test.select("Lectura_Limite"); }).number, Refused(1));
            EXPECT_THAT(world.Statements(), ElementsAre(::testing::StartsWith("Select Lectura_LimiteFROM Imput")));
        } else {
            EXPECT_EQ(test.select("Lectura_Limite")->TotalRegistros(), rs->TotalRegistros());
            EXPECT_THAT(world.Statements(), ElementsAre(::testing::StartsWith("Select Lectura_Limite FROM Imput")));
        }
    }
}

TEST_F(CImputacionSistematicaQueriesTest, EverySelectionHasItsOwnRowsAndOrder) {
    CImputacionSistematica& c = *imputaciones;
    const struct {
        const char* label;
        Ref<Recordset> rs;
        std::vector<std::string> keys;
    } cases[] = {
        {"all assets, each by largest interval", c.SeleccionarPorEquipo(""), {"8", "9", "7", "10", "11"}},
        {"assets under a prefix", c.SeleccionarPorEquipo("A1"), {"8", "9", "7", "10"}},
        {"one asset under a prefix", c.SeleccionarPorEquipo("A12"), {"10"}},
        {"no asset", c.SeleccionarPorEquipo("C"), {}},
        {"due, annulled ones too", c.ListarImputacionesVencidas(""), {"9", "7", "10"}},
        {"due under a prefix", c.ListarImputacionesVencidas("A12"), {"10"}},
        {"live of an exact asset", c.ListarImputacionesDeUnActivo("A1"), {"8", "7"}},
        {"live of an asset with none", c.ListarImputacionesDeUnActivo("A12"), {}},
    };
    for (const auto& test : cases) {
        SCOPED_TRACE(test.label);
        EXPECT_EQ(Keys(test.rs), test.keys);
    }
    EXPECT_THAT(Keys(c.SeleccionarPorGama(31)), ElementsAre("8"));
    EXPECT_THAT(Keys(c.SeleccionarPorGama(30)), ::testing::UnorderedElementsAre("7", "9", "10", "11"));
    EXPECT_THAT(Keys(c.SeleccionarTodos("")), ::testing::UnorderedElementsAre("7", "8", "9", "10", "11"));
    EXPECT_THAT(Keys(c.SeleccionarTodos("Lectura_Limite>=2000")), ::testing::UnorderedElementsAre("8", "9"));
    EXPECT_THAT(Column(c.SeleccionarTodos("", "", true), "ID_Activo"), ElementsAre("A1", "A12", "B1"));
}

TEST_F(CImputacionSistematicaQueriesTest, SeleccionarTodosEndsInABlankOrInItsGroup) {
    imputaciones->SeleccionarTodos("");
    imputaciones->SeleccionarTodos("", "", true);
    const std::vector<std::string> statements = world.Statements();
    EXPECT_THAT(statements[0], ::testing::EndsWith("Ejecutor_Gama.SC_Ejecutor_Gama = Gama.SC_Ejecutor_Gama  "));
    EXPECT_THAT(statements[1], ::testing::EndsWith("= Gama.SC_Ejecutor_Gama  group by Activo.ID_Activo"));
}

TEST_F(CImputacionSistematicaQueriesTest, SeleccionarActivasTakesLiveRowsThatHaveBegun) {
    world.Run(
        "UPDATE Imputacion_Sistematica SET Fecha_Inicio = '2026-03-05', Fecha_Fin = '2026-01-31' WHERE"
        " SC_Imputacion_Sistematica = 7;"
        "UPDATE Imputacion_Sistematica SET Fecha_Inicio = '2026-03-06' WHERE SC_Imputacion_Sistematica = 8");
    EXPECT_THAT(Keys(imputaciones->SeleccionarActivas(day)), ::testing::UnorderedElementsAre("7", "11"));
    EXPECT_THAT(Keys(imputaciones->SeleccionarActivas(day, "", "B")), ElementsAre("11"));
    EXPECT_THAT(Keys(imputaciones->SeleccionarActivas(day, "", "A1")), IsEmpty());
    EXPECT_THAT(Keys(imputaciones->SeleccionarActivas(World::Day("2026-03-04"), "", "A")), IsEmpty());
}

TEST_F(CImputacionSistematicaQueriesTest, SeleccionarAproximacionesComparesWithTheWholeReading) {
    // 7 has its level at 900 of 2500, 11 at 100 of 100; 9 waits for 3000, 8 and 10 have none.
    EXPECT_THAT(Keys(imputaciones->SeleccionarAproximaciones()), ::testing::UnorderedElementsAre("7", "11"));
    imputaciones->Anular(7);
    EXPECT_THAT(Keys(imputaciones->SeleccionarAproximaciones()), ::testing::UnorderedElementsAre("7", "11"));
}

TEST_F(CImputacionSistematicaQueriesTest, ABareReadingInASelectionIsTheAssets) {
    world.Run("UPDATE Imputacion_Sistematica SET Acumulado_Lectura = 1, SC_Unidad_Lectura = 2");
    const Ref<Recordset> rs = imputaciones->SeleccionarPorEquipo("A12");
    EXPECT_EQ(ToText(rs->Valor("Acumulado_Lectura")), "900");
    EXPECT_EQ(ToText(imputaciones->SeleccionarActivas(day, "", "B")->Valor("SC_Unidad_Lectura")), "1");
}

TEST_F(CImputacionSistematicaQueriesTest, ARecordsetBelongsToTheCallerAndStaysReadable) {
    const Ref<Recordset> rs = imputaciones->ListarImputacionesDeUnActivo("A1");
    world.Run("DELETE FROM Imputacion_Sistematica");
    EXPECT_THAT(Keys(rs), ElementsAre("8", "7"));
    EXPECT_NE(imputaciones->ListarImputacionesDeUnActivo("A1"), rs);
}

TEST_F(CImputacionSistematicaQueriesTest, UltimaLecturaIsTheAssetsWhateverTheUnit) {
    EXPECT_FLOAT_EQ(imputaciones->UltimaLectura("A1", 1), 77.5F);
    EXPECT_FLOAT_EQ(imputaciones->UltimaLectura("A1", 999), 77.5F);
    EXPECT_FLOAT_EQ(imputaciones->UltimaLectura("NONE", 1), -1.0F);
    EXPECT_EQ(world.Statements().front(), "SELECT   Ultima_Lectura  FROM activo  WHERE ID_Activo ='A1' ");
}

TEST_F(CImputacionSistematicaQueriesTest, IdGamaImputacionIsTheTaskOrZero) {
    EXPECT_EQ(imputaciones->IdGamaImputacion(7), 30);
    EXPECT_EQ(imputaciones->IdGamaImputacion(77), 0);
    EXPECT_EQ(world.Statements().front(),
              "SELECT SC_Gama  from Imputacion_Sistematica WHERE  Imputacion_Sistematica.SC_Imputacion_Sistematica=7");
}

TEST_F(CImputacionSistematicaQueriesTest, AValueThatIsNotKnownIsRefused) {
    world.Run("UPDATE Activo SET Ultima_Lectura = NULL; UPDATE Imputacion_Sistematica SET SC_Gama = NULL");
    EXPECT_EQ(ErrorOf([&] { imputaciones->UltimaLectura("A1", 1); }).number, 94);
    EXPECT_EQ(ErrorOf([&] { imputaciones->IdGamaImputacion(7); }).number, 94);
}

TEST_F(CImputacionSistematicaQueriesTest, ExisteFindsLiveAndAnnulledAssignments) {
    EXPECT_TRUE(imputaciones->Existe(3, 5, "A1"));
    EXPECT_EQ(world.Statements().front(),
              "SELECT SC_Imputacion_Sistematica  FROM Imputacion_Sistematica,Gama  WHERE  Gama.SC_Gama = "
              "Imputacion_Sistematica.SC_Gama and  Gama.Numero_Gama =3 and Gama.SC_Grupo_Gama =5 and "
              "Imputacion_Sistematica.ID_Activo ='A1'");
    EXPECT_TRUE(imputaciones->Existe(3, 5, "A12"));
    EXPECT_FALSE(imputaciones->Existe(8, 5, "A12"));
    EXPECT_FALSE(imputaciones->Existe(3, 6, "A1"));
    EXPECT_FALSE(imputaciones->Existe(3, 5, "A"));
}

}  // namespace

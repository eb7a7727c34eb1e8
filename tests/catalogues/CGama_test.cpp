#include "catalogues/CGama.h"

#include "frame/invoke.h"
#include "tests/catalogues/report_check.h"
#include "tests/catalogues/table_check.h"

namespace {

using namespace Zontara;
using namespace support;
using testing::ElementsAre;

/// A task whose texts a test can change one by one.
struct Task {
    std::string descripcion = "oil";
    std::string tipo = "P";
    std::string tiempo = "2.5";
    std::string coordinaciones = "c";
    std::string especialista = "e";

    std::int32_t WriteTo(CGama& gamas, std::int32_t grupo = 2, std::int32_t numero = 7) const {
        return gamas.Nuevo(descripcion, "t", 1, grupo, 3, numero, tipo, Money::FromNumber(10.5), tiempo, "q",
                           coordinaciones, "s", "m", 4, 6, especialista, "f");
    }
    void SaveTo(CGama& gamas, std::int32_t clave) const {
        gamas.Salvar(clave, descripcion, "t", 1, 2, 3, 7, tipo, Money::FromNumber(10.5), tiempo, "q", coordinaciones,
                     "s", "m", 4, 6, especialista, 9, "f");
    }
};

class CGamaTest : public testing::Test {
protected:
    World world;
    CGama gamas;
    const std::string all = "select * from Gama order by 1";
};

TEST_F(CGamaTest, TableFollowsTheInterface) {
    EXPECT_EQ(HeadOf(CGama::ClassMembers()), "CGama _CGama creatable");
    EXPECT_EQ(gamas.Table(), &CGama::ClassMembers());
    EXPECT_THAT(
        MembersOf(CGama::ClassMembers()),
        ElementsAre(
            "Nuevo(Descripcion text, Texto_Mantenimiento text, Equipo_Parado byte, SC_Grupo_Gama int32, "
            "SC_Ejecutor_Gama int32, NumeroGama int32, Tipo_Gama text, Costo_Actual money, Tiempo_Necesario text, "
            "Esquema text, Coordinaciones text&, Seguridades text, Materiales_Herramientas text, SC_Contratista "
            "int32, Hombres_Necesarios byte&, Especialista text, Frecuencia_Gama text): int32",
            "Borrar(SC_Gama int32): nothing",
            "Seleccionar(SC_Grupo_Gama int32, sColumnas text&=, Tipo_Gama text&=, sOrdenResultado text&=): Recordset",
            "Salvar(SC_Gama int32, Descripcion text, Texto_Mantenimiento text, Equipo_Parado byte, SC_Grupo_Gama "
            "int32, SC_Ejecutor_Gama int32, Numero_Gama int32, Tipo_Gama text, Costo_Actual money, Tiempo_Necesario "
            "text, Esquema text, Coordinaciones text&, Seguridades text, Materiales_Herramientas text, SC_Contratista "
            "int32, Hombres_Necesarios byte&, Especialista text, SC_Archivo_Digital int32, Frecuencia_Gama text): "
            "nothing",
            "Buscar(SC_Gama int32, sColumnas text&=): Recordset",
            "SeleccionarPorEjecutor(SC_Ejecutor_Gama int32, sColumnas text&=): Recordset",
            "ExisteNumero(NumeroGama byte, CodigoGrupoGama int32): bool", "ProximoNumeroGama(): int32",
            "get ListaDeTareasCambio(): ListaCambios"));
}

TEST_F(CGamaTest, WritingStatementsAreLetterForLetter) {
    ExpectStatements(
        world,
        {{"Nuevo",
          [&] {
              gamas.Nuevo("d'1", "t'2", 0, 5, 6, 300, "P", Money::FromNumber(12.345), "1 h", "e'3", "c'4", "s'5", "m'6",
                          8, 255, "esp", "f'7");
          },
          "  INSERT Into Gama (SC_Gama ,Descripcion ,Texto_Mantenimiento ,Equipo_Parado , SC_Grupo_Gama "
          ",SC_Ejecutor_Gama,Numero_Gama,Tipo_Gama,Costo_Actual,Tiempo_Necesario,Esquema, "
          "Coordinaciones,Seguridades,Materiales_Herramientas,SC_Contratista,Hombres_Necesarios,Especialista,"
          "Frecuencia_Gama ) VALUES (1,'d''1','t''2',0,5,6,300,'P',12.345,'1 "
          "h','e''3','c''4','s''5','m''6',8,255,'esp','f''7')"},
         {"Salvar",
          [&] {
              gamas.Salvar(1, "d'1", "t'2", 1, 5, 6, 300, "P", Money::FromNumber(-2), "1 h", "e'3", "c'4", "s'5", "m'6",
                           8, 2, "x'y", 33, "f'7");
          },
          "  UPDATE Gama SET SC_Ejecutor_Gama =6,Descripcion ='d''1' ,Texto_Mantenimiento ='t''2' ,Equipo_Parado "
          "=1,Frecuencia_Gama ='f''7',Numero_Gama =300,Tipo_Gama ='P',Tiempo_Necesario ='1 h',Esquema "
          "='e''3',Coordinaciones ='c''4',Especialista ='x''y',Seguridades ='s''5',Materiales_Herramientas "
          "='m''6',SC_Contratista =8,Hombres_Necesarios =2,Costo_Actual =-2,SC_Archivo_Digital =33,SC_Grupo_Gama =5 "
          "WHERE SC_Gama =1"},
         {"Borrar", [&] { gamas.Borrar(1); }, "  DELETE From Gama WHERE SC_Gama =1"}});
}

TEST_F(CGamaTest, ReadingStatementsAreLetterForLetter) {
    const std::string head =
        "SELECT SC_Gama ,Gama.Descripcion ,Texto_Mantenimiento ,Equipo_Parado "
        ",Gama.SC_Grupo_Gama,Numero_Gama,Tipo_Gama,Costo_Actual, Tiempo_Necesario,Esquema,Grupo_Gama.Descripcion as "
        "Grupo,Coordinaciones,Seguridades,Materiales_Herramientas,SC_Contratista,Hombres_Necesarios,Especialista,"
        "SC_Archivo_Digital,Frecuencia_Gama  FROM Gama,Grupo_Gama  WHERE  Gama.SC_Grupo_Gama = "
        "Grupo_Gama.SC_Grupo_Gama ";
    ExpectStatements(
        world,
        {{"Seleccionar all", [&] { gamas.Seleccionar(0); }, head},
         {"Seleccionar below 0", [&] { gamas.Seleccionar(-1); }, head},
         {"Seleccionar with all filters", [&] { gamas.Seleccionar(5, "", "P", "Numero_Gama"); },
          head + " and Gama.SC_Grupo_Gama =5 and Tipo_Gama ='P' Order by Numero_Gama"},
         {"Seleccionar with columns", [&] { gamas.Seleccionar(1, "SC_Gama"); },
          "Select SC_Gama FROM Gama,Grupo_Gama  WHERE  Gama.SC_Grupo_Gama = Grupo_Gama.SC_Grupo_Gama  and "
          "Gama.SC_Grupo_Gama =1"},
         {"Buscar", [&] { gamas.Buscar(4); },
          "SELECT Gama.SC_Ejecutor_Gama, SC_Gama ,Gama.Descripcion ,Texto_Mantenimiento ,Equipo_Parado "
          ",SC_Grupo_Gama,Numero_Gama,Costo_Actual,Tipo_Gama, "
          "Tiempo_Necesario,Esquema,Coordinaciones,Seguridades,Materiales_Herramientas,SC_Contratista,"
          "Hombres_Necesarios,Especialista,SC_Archivo_Digital,Frecuencia_Gama  FROM Gama  WHERE      SC_Gama =4"},
         {"Buscar with columns", [&] { gamas.Buscar(4, "Esquema"); },
          "Select Esquema FROM Gama  WHERE      SC_Gama =4"},
         {"SeleccionarPorEjecutor", [&] { gamas.SeleccionarPorEjecutor(3); },
          "SELECT SC_Ejecutor_Gama,SC_Gama ,Descripcion ,Texto_Mantenimiento ,Equipo_Parado "
          ",SC_Grupo_Gama,Numero_Gama,Costo_Actual,Tipo_Gama, "
          "Tiempo_Necesario,Esquema,Coordinaciones,Seguridades,Materiales_Herramientas,SC_Contratista,"
          "Hombres_Necesarios,Especialista,SC_Archivo_Digital,Frecuencia_Gama  FROM Gama WHERE SC_Ejecutor_Gama =3"},
         {"SeleccionarPorEjecutor with columns", [&] { gamas.SeleccionarPorEjecutor(3, "SC_Gama"); },
          "Select SC_Gama FROM Gama WHERE SC_Ejecutor_Gama =3"},
         {"ExisteNumero", [&] { gamas.ExisteNumero(7, 2); },
          "SELECT SC_Gama FROM Gama WHERE Numero_Gama =7 and SC_Grupo_Gama =2"},
         {"ProximoNumeroGama", [&] { gamas.ProximoNumeroGama(); },
          "SELECT MAX(Gama.numero_Gama) as proximo  FROM Gama "}});
}

TEST_F(CGamaTest, NuevoSendsItsNoticeAfterTheTransaction) {
    EXPECT_EQ(Task().WriteTo(gamas), 1);
    EXPECT_THAT(StepsOf(world), ElementsAre("begin", "key Gama", "sql", "commit", "notice"));
    EXPECT_THAT(world.Rows(all), ElementsAre("1|oil|t|1|2|3|7|P|10.5|2.5|q|c|s|m|4|6|e|NULL|f"));
}

TEST_F(CGamaTest, SalvarWritesEveryColumnEvenTheEmptyOnes) {
    const std::int32_t clave = Task().WriteTo(gamas);
    world.Forget();
    gamas.Salvar(clave, "", "", 0, 0, 0, 0, "", Money(), "", "", "", "", "", 0, 0, "", 0, "");
    EXPECT_THAT(StepsOf(world), ElementsAre("sql", "notice"));
    EXPECT_THAT(world.Rows(all), ElementsAre("1|||0|0|0|0||0||||||0|0||0|"));
}

TEST_F(CGamaTest, EachChangeSendsOneEmptyNotice) {
    const std::int32_t clave = Task().WriteTo(gamas);
    Task().SaveTo(gamas, clave);
    gamas.Borrar(clave);
    const Ref<ListaCambios> lista = gamas.ListaDeTareasCambio();
    ASSERT_EQ(lista->Total(), 3);
    for (std::int32_t i = 1; i <= 3; ++i)
        EXPECT_EQ(lista->Elemento(i), "");
    EXPECT_EQ(gamas.ListaDeTareasCambio(), lista);
}

TEST_F(CGamaTest, AnotherInstanceHasAnotherList) {
    CGama other;
    Task().WriteTo(gamas);
    EXPECT_EQ(other.ListaDeTareasCambio()->Total(), 0);
}

TEST_F(CGamaTest, AnUnknownKeyChangesNothingButIsToldOf) {
    Task().WriteTo(gamas);
    const std::vector<std::string> before = world.Rows(all);
    world.Forget();
    Task().SaveTo(gamas, 99);
    gamas.Borrar(99);
    EXPECT_EQ(world.Rows(all), before);
    EXPECT_THAT(StepsOf(world), ElementsAre("sql", "notice", "sql", "notice"));
}

TEST_F(CGamaTest, BorrarLeavesMaterialsAndAssignments) {
    Task().WriteTo(gamas);
    world.Run(
        "insert into materiales_gama (sc_materiales_gama, sc_gama) values (1, 1);"
        "insert into Imputacion_Preventiva (SC_Imputacion_Preventiva, SC_Gama) values (1, 1);");
    gamas.Borrar(1);
    EXPECT_THAT(world.Rows(all), ElementsAre());
    EXPECT_EQ(world.Scalar("select count(*) from materiales_gama"), "1");
    EXPECT_EQ(world.Scalar("select count(*) from Imputacion_Preventiva"), "1");
}

TEST_F(CGamaTest, ArgumentsByReferenceAreNotChanged) {
    const CallResult result = Invoke(gamas, "Nuevo", MemberKind::Method,
                                     {{"d", "t", 1, 2, 3, 7, "P", 10.5, "1", "q", "c", "s", "m", 4, 6, "e", "f"}, {}});
    EXPECT_EQ(result.value, Value(std::int32_t{1}));
    EXPECT_TRUE(result.changed.empty());
}

TEST_F(CGamaTest, QuotesBreakOnlyTheUnescapedTexts) {
    const std::int32_t clave = Task().WriteTo(gamas);
    struct Case {
        std::string label;
        Task task;
        bool breaksNuevo;
        bool breaksSalvar;
    };
    Task tipo, tiempo, especialista, coordinaciones;
    tipo.tipo = tiempo.tiempo = especialista.especialista = coordinaciones.coordinaciones = "a'b";
    for (const Case& c :
         {Case{"Tipo_Gama", tipo, true, true}, Case{"Tiempo_Necesario", tiempo, true, true},
          Case{"Especialista", especialista, true, false}, Case{"Coordinaciones", coordinaciones, false, false}}) {
        SCOPED_TRACE(c.label);
        const auto breaks = [&](bool expected, const std::function<void()>& call) {
            const std::vector<std::string> before = world.Rows(all);
            if (!expected) return call();
            EXPECT_EQ(ErrorOf(call).number, kSyntaxRefused);
            world.Abort();
            EXPECT_EQ(world.Rows(all), before);
        };
        breaks(c.breaksSalvar, [&] { c.task.SaveTo(gamas, clave); });
        breaks(c.breaksNuevo, [&] { c.task.WriteTo(gamas); });
    }
    EXPECT_EQ(world.Scalar("select Coordinaciones from Gama where SC_Gama = 1"), "a'b");
}

TEST_F(CGamaTest, SeleccionarFiltersByGroupAndTypeAndSorts) {
    world.Run("insert into Grupo_Gama (SC_Grupo_Gama, Descripcion) values (2, 'pumps'), (5, 'fans')");
    Task().WriteTo(gamas, 5, 9);
    Task().WriteTo(gamas, 5, 4);
    Task().WriteTo(gamas, 2, 1);
    Task().WriteTo(gamas, 77, 1);
    EXPECT_EQ(ColumnOf(gamas.Seleccionar(0, "", "", "SC_Gama"), "SC_Gama"), "1,2,3");
    EXPECT_EQ(ColumnOf(gamas.Seleccionar(-1, "", "", "SC_Gama"), "Grupo"), "fans,fans,pumps");
    EXPECT_EQ(ColumnOf(gamas.Seleccionar(5, "", "P", "Numero_Gama"), "SC_Gama"), "2,1");
    EXPECT_EQ(gamas.Seleccionar(5, "", "X")->TotalRegistros(), 0);
    EXPECT_EQ(gamas.Seleccionar(77)->TotalRegistros(), 0);
}

TEST_F(CGamaTest, DefaultColumnsRun) {
    world.Run("insert into Grupo_Gama (SC_Grupo_Gama, Descripcion) values (2, 'pumps')");
    Task().WriteTo(gamas);
    EXPECT_EQ(ColumnsOf(gamas.Seleccionar(2)),
              "SC_Gama,Descripcion,Texto_Mantenimiento,Equipo_Parado,SC_Grupo_Gama,Numero_Gama,Tipo_Gama,Costo_Actual,"
              "Tiempo_Necesario,Esquema,Grupo,Coordinaciones,Seguridades,Materiales_Herramientas,SC_Contratista,"
              "Hombres_Necesarios,Especialista,SC_Archivo_Digital,Frecuencia_Gama");
    const std::string rest =
        "Descripcion,Texto_Mantenimiento,Equipo_Parado,SC_Grupo_Gama,Numero_Gama,Costo_Actual,Tipo_Gama,"
        "Tiempo_Necesario,Esquema,Coordinaciones,Seguridades,Materiales_Herramientas,SC_Contratista,"
        "Hombres_Necesarios,Especialista,SC_Archivo_Digital,Frecuencia_Gama";
    EXPECT_EQ(ColumnsOf(gamas.Buscar(1)), "SC_Ejecutor_Gama,SC_Gama," + rest);
    EXPECT_EQ(ColumnsOf(gamas.SeleccionarPorEjecutor(3)), "SC_Ejecutor_Gama,SC_Gama," + rest);
    EXPECT_EQ(ColumnOf(gamas.SeleccionarPorEjecutor(3), "Descripcion"), "oil");
    EXPECT_EQ(gamas.SeleccionarPorEjecutor(9)->TotalRegistros(), 0);
    EXPECT_EQ(gamas.Buscar(9)->TotalRegistros(), 0);
}

TEST_F(CGamaTest, ExisteNumeroLooksInOneGroup) {
    Task().WriteTo(gamas, 2, 7);
    Task().WriteTo(gamas, 3, 8);
    EXPECT_TRUE(gamas.ExisteNumero(7, 2));
    EXPECT_FALSE(gamas.ExisteNumero(7, 3));
    EXPECT_FALSE(gamas.ExisteNumero(9, 2));
}

TEST_F(CGamaTest, ExisteNumeroCanNotBeAskedBeyondAByte) {
    EXPECT_EQ(ErrorOf([&] { Invoke(gamas, "ExisteNumero", MemberKind::Method, {{256, 2}, {}}); }).number, 6);
    EXPECT_THAT(StepsOf(world), ElementsAre());
}

TEST_F(CGamaTest, ProximoNumeroGamaIsOneMoreThanTheLargestOfAllGroups) {
    EXPECT_EQ(gamas.ProximoNumeroGama(), 1);
    world.Run("insert into Gama (SC_Gama, SC_Grupo_Gama, Numero_Gama) values (1, 1, null)");
    EXPECT_EQ(gamas.ProximoNumeroGama(), 1);
    Task().WriteTo(gamas, 2, 3);
    Task().WriteTo(gamas, 5, 7);
    EXPECT_EQ(gamas.ProximoNumeroGama(), 8);
    EXPECT_EQ(gamas.ProximoNumeroGama(), 8);
}

TEST_F(CGamaTest, ProximoNumeroGamaBehindTheLargestNumberOverflowsWithoutAReport) {
    Task().WriteTo(gamas, 2, 2147483647);
    const ErrorRecord error = ErrorOf([&] { gamas.ProximoNumeroGama(); });
    EXPECT_EQ(error.number, 6);
    EXPECT_NE(error.source, "HuntERR.ErrorIn");
    world.FailOn("sql SELECT MAX");
    EXPECT_THAT(CallsOf(ErrorOf([&] { gamas.ProximoNumeroGama(); })),
                ElementsAre("Libreria.AbrirRecordset(rs={Recordset}, strSQL={Text})"));
}

TEST_F(CGamaTest, FailuresAreReportedWithTheirValuesAndSendNoNotice) {
    world.Run("insert into Gama (SC_Gama, Numero_Gama) values (5, 1)");
    const std::string values =
        "Descripcion='oil', Texto_Mantenimiento='t', Equipo_Parado=1, SC_Grupo_Gama=2, SC_Ejecutor_Gama=3, ";
    const std::string more =
        "Tipo_Gama='P', Costo_Actual=10.5, Tiempo_Necesario='2.5', Esquema='q', Coordinaciones='c', Seguridades='s', "
        "Materiales_Herramientas='m', SC_Contratista=4, Hombres_Necesarios=6, Especialista='e', ";
    const std::string nuevo = "CGama.Nuevo(" + values + "NumeroGama=7, " + more + "Frecuencia_Gama='f')";
    ExpectRefused(
        world, all,
        {{"key Gama", [&] { Task().WriteTo(gamas); }, nuevo, 1},
         {"sql   INSERT", [&] { Task().WriteTo(gamas); }, nuevo, 1},
         {"commit", [&] { Task().WriteTo(gamas); }, nuevo, 1},
         {"sql   DELETE", [&] { gamas.Borrar(5); }, "CGama.Borrar(SC_Gama=5)"},
         {"sql SELECT", [&] { gamas.Seleccionar(5, "", "P", "x"); },
          "CGama.Seleccionar(SC_Grupo_Gama=5, sColumnas='', Tipo_Gama='P', sOrdenResultado='x')"},
         {"sql   UPDATE", [&] { Task().SaveTo(gamas, 5); },
          "CGama.Salvar(SC_Gama=5, " + values + "Numero_Gama=7, " + more +
              "SC_Archivo_Digital=9, Frecuencia_Gama='f')"},
         {"sql SELECT", [&] { gamas.Buscar(5); }, "CGama.Buscar(SC_Gama=5, sColumnas='')"},
         {"sql Select", [&] { gamas.SeleccionarPorEjecutor(3, "SC_Gama"); },
          "CGama.SeleccionarPorEjecutor(SC_Ejecutor_Gama=3, sColumnas='SC_Gama')"},
         {"sql SELECT", [&] { gamas.ExisteNumero(7, 2); }, "CGama.ExisteNumero(NumeroGama=7, CodigoGrupoGama=2)"}});
    EXPECT_EQ(gamas.ListaDeTareasCambio()->Total(), 0);
}

TEST_F(CGamaTest, AFailedNoticeLeavesTheChangeDone) {
    world.FailOn("notice");
    const ErrorRecord error = ErrorOf([&] { Task().WriteTo(gamas); });
    EXPECT_EQ(error.number, kConstraintRefused);
    ASSERT_EQ(CallsOf(error).size(), 1U);
    EXPECT_EQ(CallsOf(error).front().find("CGama.Nuevo(Descripcion='oil'"), 0U);
    EXPECT_EQ(world.Depth(), 0);
    EXPECT_EQ(world.Scalar("select count(*) from Gama"), "1");
    world.FailOn("notice");
    EXPECT_THAT(CallsOf(ErrorOf([&] { gamas.Borrar(1); })), ElementsAre("CGama.Borrar(SC_Gama=1)"));
    EXPECT_EQ(world.Scalar("select count(*) from Gama"), "0");
}

}  // namespace

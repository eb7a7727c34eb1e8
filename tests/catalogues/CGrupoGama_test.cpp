#include "catalogues/CGrupoGama.h"

#include "catalogues/CGama.h"
#include "tests/catalogues/report_check.h"
#include "tests/catalogues/table_check.h"

namespace {

using namespace Zontara;
using namespace support;
using testing::ElementsAre;

class CGrupoGamaTest : public testing::Test {
protected:
    World world;
    CGrupoGama grupos;
    const std::string all = "select * from Grupo_Gama order by 1";
};

TEST_F(CGrupoGamaTest, TableFollowsTheInterface) {
    EXPECT_EQ(HeadOf(CGrupoGama::ClassMembers()), "CGrupoGama _CGrupoGama creatable");
    EXPECT_EQ(grupos.Table(), &CGrupoGama::ClassMembers());
    EXPECT_THAT(MembersOf(CGrupoGama::ClassMembers()),
                ElementsAre("Nuevo(Descripcion text, Orden_Lista int32, ConIDCero bool&=False): int32",
                            "Borrar(SC_Grupo_Gama int32): nothing", "Seleccionar(): Recordset",
                            "Salvar(SC_Grupo_Gama int32, Descripcion text, Orden_Lista int32): nothing",
                            "Buscar(SC_Grupo_Gama int32): Recordset"));
}

TEST_F(CGrupoGamaTest, StatementsAreLetterForLetter) {
    ExpectStatements(world,
                     {{"Nuevo", [&] { grupos.Nuevo("d'agua", -5); },
                       "  INSERT Into Grupo_Gama (SC_Grupo_Gama ,Descripcion ,Orden_Lista ) VALUES (1,'d''agua',-5)"},
                      {"Nuevo with key 0", [&] { grupos.Nuevo("x", 2, true); },
                       "  INSERT Into Grupo_Gama (SC_Grupo_Gama ,Descripcion ,Orden_Lista ) VALUES (0,'x',2)"},
                      {"Borrar", [&] { grupos.Borrar(0); }, "  DELETE From Grupo_Gama WHERE SC_Grupo_Gama =0"},
                      {"Seleccionar", [&] { grupos.Seleccionar(); },
                       "SELECT SC_Grupo_Gama,Descripcion ,Orden_Lista FROM Grupo_Gama order by Orden_Lista "},
                      {"Salvar", [&] { grupos.Salvar(1, "l'aire", 7); },
                       "  UPDATE Grupo_Gama SET Descripcion ='l''aire' ,Orden_Lista =7 WHERE SC_Grupo_Gama =1"},
                      {"Buscar", [&] { grupos.Buscar(1); },
                       "SELECT SC_Grupo_Gama,Descripcion ,Orden_Lista FROM Grupo_Gama WHERE SC_Grupo_Gama =1"}});
}

TEST_F(CGrupoGamaTest, NuevoTakesTheKeyInsideItsTransaction) {
    EXPECT_EQ(grupos.Nuevo("a", 1), 1);
    EXPECT_THAT(StepsOf(world), ElementsAre("begin", "key Grupo_Gama", "sql", "commit"));
}

TEST_F(CGrupoGamaTest, NuevoWithKeyZeroSpendsAKey) {
    EXPECT_EQ(grupos.Nuevo("x", 1, true), 0);
    EXPECT_EQ(grupos.Nuevo("y", 2), 2);
    EXPECT_THAT(world.Rows(all), ElementsAre("0|x|1", "2|y|2"));
}

TEST_F(CGrupoGamaTest, SeleccionarGivesAnEmptyRecordsetForAnEmptyTable) {
    EXPECT_EQ(grupos.Seleccionar()->TotalRegistros(), 0);
}

TEST_F(CGrupoGamaTest, SeleccionarSortsByPlace) {
    grupos.Nuevo("last", 9);
    grupos.Nuevo("first", 1);
    EXPECT_EQ(ColumnOf(grupos.Seleccionar(), "Descripcion"), "first,last");
    EXPECT_EQ(ColumnsOf(grupos.Seleccionar()), "SC_Grupo_Gama,Descripcion,Orden_Lista");
    EXPECT_EQ(ColumnOf(grupos.Buscar(1), "Orden_Lista"), "9");
    EXPECT_EQ(grupos.Buscar(3)->TotalRegistros(), 0);
}

TEST_F(CGrupoGamaTest, SalvarAndBorrarTouchOneRow) {
    grupos.Nuevo("a", 1);
    grupos.Nuevo("b", 2);
    grupos.Salvar(2, "c'd", 3);
    grupos.Salvar(9, "nobody", 3);
    EXPECT_THAT(world.Rows(all), ElementsAre("1|a|1", "2|c'd|3"));
    grupos.Borrar(1);
    grupos.Borrar(9);
    EXPECT_THAT(world.Rows(all), ElementsAre("2|c'd|3"));
}

TEST_F(CGrupoGamaTest, TasksOfADeletedGroupStayButAreNoLongerListed) {
    grupos.Nuevo("a", 1);
    world.Run("insert into Gama (SC_Gama, SC_Grupo_Gama) values (4, 1)");
    CGama gamas;
    EXPECT_EQ(gamas.Seleccionar(0)->TotalRegistros(), 1);
    grupos.Borrar(1);
    EXPECT_EQ(gamas.Seleccionar(0)->TotalRegistros(), 0);
    EXPECT_EQ(world.Scalar("select SC_Grupo_Gama from Gama"), "1");
}

TEST_F(CGrupoGamaTest, FailuresAreReportedWithTheirValuesButNotTheKeyZero) {
    grupos.Nuevo("a", 1);
    ExpectRefused(
        world, all,
        {{"key Grupo_Gama", [&] { grupos.Nuevo("b", 2); }, "CGrupoGama.Nuevo(Descripcion='b', Orden_Lista=2)", 1},
         {"sql   INSERT", [&] { grupos.Nuevo("b", 2, true); }, "CGrupoGama.Nuevo(Descripcion='b', Orden_Lista=2)", 1},
         {"sql   DELETE", [&] { grupos.Borrar(1); }, "CGrupoGama.Borrar(SC_Grupo_Gama=1)"},
         {"sql SELECT", [&] { grupos.Seleccionar(); }, "CGrupoGama.Seleccionar()"},
         {"sql   UPDATE", [&] { grupos.Salvar(1, "b", 2); },
          "CGrupoGama.Salvar(SC_Grupo_Gama=1, Descripcion='b', Orden_Lista=2)"},
         {"sql SELECT", [&] { grupos.Buscar(1); }, "CGrupoGama.Buscar(SC_Grupo_Gama=1)"}});
}

}  // namespace

#include "catalogues/CUsuarioEjecutorGama.h"

#include "tests/catalogues/report_check.h"
#include "tests/catalogues/table_check.h"

namespace {

using namespace Zontara;
using namespace support;
using testing::ElementsAre;

class CUsuarioEjecutorGamaTest : public testing::Test {
protected:
    World world;
    CUsuarioEjecutorGama enlaces;
    const std::string all = "select * from Usuario_Ejecutor_Gama order by rowid";
};

TEST_F(CUsuarioEjecutorGamaTest, TableFollowsTheInterface) {
    EXPECT_EQ(HeadOf(CUsuarioEjecutorGama::ClassMembers()), "CUsuarioEjecutorGama _CUsuarioEjecutorGama creatable");
    EXPECT_EQ(enlaces.Table(), &CUsuarioEjecutorGama::ClassMembers());
    EXPECT_THAT(
        MembersOf(CUsuarioEjecutorGama::ClassMembers()),
        ElementsAre("Nuevo(SC_Usuario int32, SC_Ejecutor_Gama int32): int32",
                    "Borrar(SC_Usuario_Ejecutor_Gama int32): nothing", "Seleccionar(SC_Ejecutor_Gama int32): Recordset",
                    "Salvar(SC_Usuario_Ejecutor_Gama int32, SC_Usuario int32, SC_Ejecutor_Gama int32): nothing"));
}

TEST_F(CUsuarioEjecutorGamaTest, StatementsAreLetterForLetter) {
    ExpectStatements(
        world,
        {{"Nuevo", [&] { enlaces.Nuevo(7, -3); },
          "  INSERT Into Usuario_Ejecutor_Gama (SC_Usuario_Ejecutor_Gama ,SC_Usuario ,SC_Ejecutor_Gama ) VALUES "
          "(1,7,-3)"},
         {"Borrar", [&] { enlaces.Borrar(4); },
          "  DELETE From Usuario_Ejecutor_Gama WHERE SC_Usuario_Ejecutor_Gama =4"},
         {"Seleccionar", [&] { enlaces.Seleccionar(3); },
          "SELECT SC_Usuario_Ejecutor_Gama ,SC_Usuario FROM Usuario_Ejecutor_Gama WHERE SC_Ejecutor_Gama =3"},
         {"Salvar", [&] { enlaces.Salvar(5, 6, 7); },
          "  UPDATE Usuario_Ejecutor_Gama SET SC_Usuario_Ejecutor_Gama =5,SC_Usuario =6 WHERE SC_Ejecutor_Gama =7"}});
}

TEST_F(CUsuarioEjecutorGamaTest, NuevoTakesTheKeyInsideItsTransaction) {
    EXPECT_EQ(enlaces.Nuevo(7, 3), 1);
    EXPECT_THAT(StepsOf(world), ElementsAre("begin", "key Usuario_Ejecutor_Gama", "sql", "commit"));
}

TEST_F(CUsuarioEjecutorGamaTest, ThePairMayBeLinkedTwice) {
    enlaces.Nuevo(7, 3);
    enlaces.Nuevo(7, 3);
    EXPECT_THAT(world.Rows(all), ElementsAre("1|7|3", "2|7|3"));
}

TEST_F(CUsuarioEjecutorGamaTest, SeleccionarGivesTheUsersOfOneExecutor) {
    enlaces.Nuevo(7, 3);
    enlaces.Nuevo(8, 4);
    EXPECT_EQ(ColumnsOf(enlaces.Seleccionar(3)), "SC_Usuario_Ejecutor_Gama,SC_Usuario");
    EXPECT_EQ(ColumnOf(enlaces.Seleccionar(3), "SC_Usuario"), "7");
    EXPECT_EQ(enlaces.Seleccionar(5)->TotalRegistros(), 0);
}

TEST_F(CUsuarioEjecutorGamaTest, SalvarGivesEveryLinkOfTheExecutorOneKeyAndOneUser) {
    enlaces.Nuevo(7, 3);
    enlaces.Nuevo(8, 3);
    enlaces.Nuevo(9, 4);
    enlaces.Salvar(2, 50, 3);
    EXPECT_THAT(world.Rows(all), ElementsAre("2|50|3", "2|50|3", "3|9|4"));
    enlaces.Salvar(1, 1, 99);
    EXPECT_THAT(world.Rows(all), ElementsAre("2|50|3", "2|50|3", "3|9|4"));
}

TEST_F(CUsuarioEjecutorGamaTest, BorrarTakesTheKeyOfTheLink) {
    enlaces.Nuevo(7, 3);
    enlaces.Nuevo(8, 1);
    enlaces.Borrar(1);
    enlaces.Borrar(9);
    EXPECT_THAT(world.Rows(all), ElementsAre("2|8|1"));
}

TEST_F(CUsuarioEjecutorGamaTest, FailuresAreReportedWithTheirValues) {
    enlaces.Nuevo(7, 3);
    ExpectRefused(
        world, all,
        {{"key Usuario_Ejecutor_Gama", [&] { enlaces.Nuevo(8, 4); },
          "CUsuarioEjecutorGama.Nuevo(SC_Usuario=8, SC_Ejecutor_Gama=4)", 1},
         {"sql   INSERT", [&] { enlaces.Nuevo(8, 4); }, "CUsuarioEjecutorGama.Nuevo(SC_Usuario=8, SC_Ejecutor_Gama=4)",
          1},
         {"sql   DELETE", [&] { enlaces.Borrar(1); }, "CUsuarioEjecutorGama.Borrar(SC_Usuario_Ejecutor_Gama=1)"},
         {"sql SELECT", [&] { enlaces.Seleccionar(3); }, "CUsuarioEjecutorGama.Seleccionar(SC_Ejecutor_Gama=3)"},
         {"sql   UPDATE", [&] { enlaces.Salvar(1, 2, 3); },
          "CUsuarioEjecutorGama.Salvar(SC_Usuario_Ejecutor_Gama=1, SC_Usuario=2, SC_Ejecutor_Gama=3)"}});
}

}  // namespace

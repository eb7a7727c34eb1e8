#include "catalogues/CEjecutorGama.h"

#include "frame/invoke.h"
#include "tests/catalogues/report_check.h"
#include "tests/catalogues/table_check.h"

namespace {

using namespace Zontara;
using namespace support;
using testing::ElementsAre;

class CEjecutorGamaTest : public testing::Test {
protected:
    World world;
    CEjecutorGama ejecutores;
    const std::string all = "select * from Ejecutor_Gama order by 1";
};

TEST_F(CEjecutorGamaTest, TableFollowsTheInterface) {
    EXPECT_EQ(HeadOf(CEjecutorGama::ClassMembers()), "CEjecutorGama _CEjecutorGama creatable");
    EXPECT_EQ(ejecutores.Table(), &CEjecutorGama::ClassMembers());
    EXPECT_THAT(MembersOf(CEjecutorGama::ClassMembers()),
                ElementsAre("Nuevo(Descripcion text, Orden_En_Lista byte): int32",
                            "Borrar(SC_Ejecutor_Gama int32): nothing", "Seleccionar(sColumnas text&=): Recordset",
                            "Salvar(SC_Ejecutor_Gama int32, Descripcion text, Orden_En_Lista byte): nothing",
                            "Buscar(SC_Ejecutor_Gama int32, sColumnas text&=): Recordset"));
}

TEST_F(CEjecutorGamaTest, StatementsAreLetterForLetter) {
    ExpectStatements(
        world,
        {{"Nuevo", [&] { ejecutores.Nuevo("d'obra", 255); },
          "  INSERT Into Ejecutor_Gama (SC_Ejecutor_Gama ,Descripcion ,Orden_En_Lista ) VALUES (1,'d''obra',255)"},
         {"Borrar", [&] { ejecutores.Borrar(8); }, "  DELETE From Ejecutor_Gama WHERE SC_Ejecutor_Gama =8"},
         {"Seleccionar", [&] { ejecutores.Seleccionar(); },
          "SELECT SC_Ejecutor_Gama, Descripcion ,Orden_En_Lista  FROM Ejecutor_Gama "},
         {"Seleccionar with columns", [&] { ejecutores.Seleccionar("SC_Ejecutor_Gama"); },
          "Select SC_Ejecutor_Gama FROM Ejecutor_Gama "},
         {"Salvar", [&] { ejecutores.Salvar(1, "l'aire", 0); },
          "  UPDATE Ejecutor_Gama SET Descripcion ='l''aire' ,Orden_En_Lista =0 WHERE SC_Ejecutor_Gama =1"},
         {"Buscar", [&] { ejecutores.Buscar(1); },
          "SELECT SC_Ejecutor_Gama,Descripcion ,Orden_En_Lista  FROM Ejecutor_Gama WHERE SC_Ejecutor_Gama =1"},
         {"Buscar with columns", [&] { ejecutores.Buscar(1, "Descripcion"); },
          "Select Descripcion FROM Ejecutor_Gama WHERE SC_Ejecutor_Gama =1"}});
}

TEST_F(CEjecutorGamaTest, NuevoTakesTheKeyInsideItsTransaction) {
    EXPECT_EQ(ejecutores.Nuevo("a", 1), 1);
    EXPECT_THAT(StepsOf(world), ElementsAre("begin", "key Ejecutor_Gama", "sql", "commit"));
    EXPECT_THAT(world.Rows(all), ElementsAre("1|a|1"));
}

TEST_F(CEjecutorGamaTest, APlaceBeyondAByteNeverArrives) {
    for (const std::int32_t place : {-1, 256}) {
        SCOPED_TRACE(place);
        EXPECT_EQ(ErrorOf([&] { Invoke(ejecutores, "Nuevo", MemberKind::Method, {{"a", place}, {}}); }).number, 6);
    }
    EXPECT_THAT(StepsOf(world), ElementsAre());
    EXPECT_THAT(world.Rows(all), ElementsAre());
}

TEST_F(CEjecutorGamaTest, DefaultColumnsRun) {
    ejecutores.Nuevo("o'a", 3);
    EXPECT_EQ(ColumnsOf(ejecutores.Seleccionar()), "SC_Ejecutor_Gama,Descripcion,Orden_En_Lista");
    EXPECT_EQ(ColumnsOf(ejecutores.Buscar(1)), "SC_Ejecutor_Gama,Descripcion,Orden_En_Lista");
    EXPECT_EQ(ColumnOf(ejecutores.Buscar(1), "Descripcion"), "o'a");
    EXPECT_EQ(ColumnsOf(ejecutores.Buscar(1, "Descripcion")), "Descripcion");
    EXPECT_EQ(ejecutores.Buscar(2)->TotalRegistros(), 0);
}

TEST_F(CEjecutorGamaTest, SalvarAndBorrarTouchOneRow) {
    ejecutores.Nuevo("a", 1);
    ejecutores.Nuevo("b", 2);
    ejecutores.Salvar(2, "c'd", 3);
    ejecutores.Salvar(9, "nobody", 3);
    EXPECT_THAT(world.Rows(all), ElementsAre("1|a|1", "2|c'd|3"));
    ejecutores.Borrar(1);
    ejecutores.Borrar(9);
    EXPECT_THAT(world.Rows(all), ElementsAre("2|c'd|3"));
}

TEST_F(CEjecutorGamaTest, FailuresAreReportedWithTheirValues) {
    ejecutores.Nuevo("a", 1);
    ExpectRefused(world, all,
                  {{"key Ejecutor_Gama", [&] { ejecutores.Nuevo("b", 2); },
                    "CEjecutorGama.Nuevo(Descripcion='b', Orden_En_Lista=2)", 1},
                   {"sql   INSERT", [&] { ejecutores.Nuevo("b", 2); },
                    "CEjecutorGama.Nuevo(Descripcion='b', Orden_En_Lista=2)", 1},
                   {"sql   DELETE", [&] { ejecutores.Borrar(1); }, "CEjecutorGama.Borrar(SC_Ejecutor_Gama=1)"},
                   {"sql SELECT", [&] { ejecutores.Seleccionar(); }, "CEjecutorGama.Seleccionar(sColumnas='')"},
                   {"sql   UPDATE", [&] { ejecutores.Salvar(1, "b", 2); },
                    "CEjecutorGama.Salvar(SC_Ejecutor_Gama=1, Descripcion='b', Orden_En_Lista=2)"},
                   {"sql Select", [&] { ejecutores.Buscar(1, "Descripcion"); },
                    "CEjecutorGama.Buscar(SC_Ejecutor_Gama=1, sColumnas='Descripcion')"}});
}

}  // namespace

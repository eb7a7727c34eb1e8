#include "catalogues/CUnidadLectura.h"

#include "frame/Libreria.h"
#include "frame/invoke.h"
#include "tests/catalogues/report_check.h"
#include "tests/catalogues/table_check.h"

namespace {

using namespace Zontara;
using namespace support;
using testing::ElementsAre;

class CUnidadLecturaTest : public testing::Test {
protected:
    World world;
    CUnidadLectura unidades;
    const std::string all = "select * from Unidad_Lectura order by 1";
};

TEST_F(CUnidadLecturaTest, TableFollowsTheInterface) {
    EXPECT_EQ(HeadOf(CUnidadLectura::ClassMembers()), "CUnidadLectura _CUnidadLectura creatable");
    EXPECT_EQ(unidades.Table(), &CUnidadLectura::ClassMembers());
    EXPECT_THAT(MembersOf(CUnidadLectura::ClassMembers()),
                ElementsAre("Nuevo(Descripcion text, ConIDCero bool&=False): int32",  //
                            "Borrar(SC_Unidad_Lectura int32): nothing",               //
                            "Seleccionar(): Recordset",                               //
                            "Salvar(SC_Unidad_Lectura int32, Descripcion text): nothing",
                            "Buscar(SC_Unidad_Lectura int32): Recordset"));
}

TEST_F(CUnidadLecturaTest, StatementsAreLetterForLetter) {
    ExpectStatements(
        world, {{"Nuevo", [&] { unidades.Nuevo("km"); },
                 "  INSERT Into Unidad_Lectura (SC_Unidad_Lectura ,Descripcion ) VALUES (1,'km')"},
                {"Nuevo with quotes and key 0", [&] { unidades.Nuevo("d'h", true); },
                 "  INSERT Into Unidad_Lectura (SC_Unidad_Lectura ,Descripcion ) VALUES (0,'d''h')"},
                {"Seleccionar", [&] { unidades.Seleccionar(); }, "SELECT * FROM Unidad_Lectura "},
                {"Salvar", [&] { unidades.Salvar(1, "l'h"); },
                 "  UPDATE Unidad_Lectura SET Descripcion ='l''h'  WHERE SC_Unidad_Lectura =1"},
                {"Buscar", [&] { unidades.Buscar(-1); }, "SELECT * FROM Unidad_Lectura  Where SC_Unidad_Lectura =-1"},
                {"Borrar", [&] { unidades.Borrar(1); }, "  DELETE From Unidad_Lectura WHERE SC_Unidad_Lectura =1"}});
}

TEST_F(CUnidadLecturaTest, NuevoTakesTheKeyInsideItsTransaction) {
    EXPECT_EQ(unidades.Nuevo("km"), 1);
    EXPECT_THAT(StepsOf(world), ElementsAre("begin", "key Unidad_Lectura", "sql", "commit"));
    EXPECT_THAT(world.Rows(all), ElementsAre("1|km"));
    EXPECT_EQ(world.Depth(), 0);
}

TEST_F(CUnidadLecturaTest, NuevoWithKeyZeroSpendsAKey) {
    EXPECT_EQ(unidades.Nuevo("x", true), 0);
    EXPECT_EQ(unidades.Nuevo("y"), 2);
    EXPECT_THAT(world.Rows(all), ElementsAre("0|x", "2|y"));
}

TEST_F(CUnidadLecturaTest, NuevoLateBoundTakesFalseForAKeyZeroLeftOut) {
    EXPECT_EQ(Invoke(unidades, "Nuevo", MemberKind::Method, {{"km"}, {}}).value, Value(std::int32_t{1}));
    EXPECT_EQ(Invoke(unidades, "nuevo", MemberKind::Method, {{"h"}, {{"ConIDCero", true}}}).value,
              Value(std::int32_t{0}));
    EXPECT_THAT(world.Rows(all), ElementsAre("0|h", "1|km"));
}

TEST_F(CUnidadLecturaTest, NuevoInsideATransactionOfTheCallerCommitsNothing) {
    Libreria::IniciarTransaccion();
    unidades.Nuevo("km");
    EXPECT_TRUE(world.InTransaction());
    EXPECT_EQ(world.Depth(), 1);
    Libreria::AbortarTransaccion();
    EXPECT_THAT(world.Rows(all), ElementsAre());
}

TEST_F(CUnidadLecturaTest, QuotesAreStoredWhole) {
    const std::int32_t clave = unidades.Nuevo("a'b");
    EXPECT_EQ(ToText(unidades.Buscar(clave)->Valor("Descripcion")), "a'b");
    unidades.Salvar(clave, "'c'");
    EXPECT_EQ(ToText(unidades.Buscar(clave)->Valor("Descripcion")), "'c'");
}

TEST_F(CUnidadLecturaTest, AnUnknownKeyIsNoFailure) {
    unidades.Nuevo("km");
    unidades.Borrar(9);
    unidades.Salvar(9, "h");
    EXPECT_THAT(world.Rows(all), ElementsAre("1|km"));
    EXPECT_FALSE(Libreria::ExistenRegistros(unidades.Buscar(9)));
}

TEST_F(CUnidadLecturaTest, BorrarLeavesReadingsOfTheUnit) {
    world.Run("insert into Lectura_Equipo (SC_Lectura, SC_Unidad_Lectura) values (5, 1)");
    unidades.Nuevo("km");
    unidades.Borrar(1);
    EXPECT_THAT(world.Rows(all), ElementsAre());
    EXPECT_EQ(world.Scalar("select SC_Unidad_Lectura from Lectura_Equipo"), "1");
}

TEST_F(CUnidadLecturaTest, ReadsGiveAllColumns) {
    unidades.Nuevo("km");
    unidades.Nuevo("h");
    EXPECT_EQ(ColumnsOf(unidades.Seleccionar()), "SC_Unidad_Lectura,Descripcion");
    EXPECT_EQ(ColumnOf(unidades.Seleccionar(), "Descripcion"), "km,h");
    EXPECT_EQ(ColumnOf(unidades.Buscar(2), "Descripcion"), "h");
}

TEST_F(CUnidadLecturaTest, FailuresAreReportedWithTheirValues) {
    unidades.Nuevo("km");
    ExpectRefused(
        world, all,
        {{"begin", [&] { unidades.Nuevo("h"); }, "CUnidadLectura.Nuevo(Descripcion='h', ConIDCero=False)", 1},
         {"key Unidad_Lectura", [&] { unidades.Nuevo("h", true); },
          "CUnidadLectura.Nuevo(Descripcion='h', ConIDCero=True)", 1},
         {"sql   INSERT", [&] { unidades.Nuevo("h"); }, "CUnidadLectura.Nuevo(Descripcion='h', ConIDCero=False)", 1},
         {"commit", [&] { unidades.Nuevo("h"); }, "CUnidadLectura.Nuevo(Descripcion='h', ConIDCero=False)", 1},
         {"sql   DELETE", [&] { unidades.Borrar(1); }, "CUnidadLectura.Borrar(SC_Unidad_Lectura=1)"},
         {"sql SELECT", [&] { unidades.Seleccionar(); }, "CUnidadLectura.Seleccionar()"},
         {"sql   UPDATE", [&] { unidades.Salvar(1, "h"); },
          "CUnidadLectura.Salvar(SC_Unidad_Lectura=1, Descripcion='h')"},
         {"sql SELECT", [&] { unidades.Buscar(1); }, "CUnidadLectura.Buscar(SC_Unidad_Lectura=1)"}});
}

TEST_F(CUnidadLecturaTest, AFailedInsertLosesTheKeyAndLeavesTheTransactionOpen) {
    world.FailOn("sql   INSERT");
    const ErrorRecord error = ErrorOf([&] { unidades.Nuevo("km"); });
    EXPECT_THAT(CallsOf(error), ElementsAre("CUnidadLectura.Nuevo(Descripcion='km', ConIDCero=False)"));
    EXPECT_THAT(StepsOf(world), ElementsAre("begin", "key Unidad_Lectura", "sql"));
    EXPECT_EQ(world.Depth(), 1);
    EXPECT_TRUE(world.InTransaction());
    world.Abort();
    EXPECT_EQ(unidades.Nuevo("km"), 2);
}

}  // namespace

#include "meter/COrdenGenerada.h"

#include "frame/Libreria.h"
#include "frame/invoke.h"
#include "tests/meter/meter_test.h"

using namespace Zontara;
using namespace support;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

class COrdenGeneradaTest : public MeterTest {
protected:
    void AddOrders(const std::string& values) {
        world.Run(
            "INSERT INTO Orden_Generada (SC_Orden_Generada, SC_Orden_Trabajo, SC_Imputacion_Sistematica,"
            " Fecha_Generacion) VALUES " +
            values);
    }
    std::vector<std::string> Log() { return world.Rows("SELECT * FROM Orden_Generada ORDER BY 1"); }

    Ref<COrdenGenerada> ordenes = Create<COrdenGenerada>();
    const Date day = World::Day("2026-03-05");
};

TEST_F(COrdenGeneradaTest, NuevoWritesOneRowInOneTransactionAndGivesItsKey) {
    const std::int32_t key = ordenes->Nuevo(7, 12, day);

    EXPECT_EQ(key, 1);
    EXPECT_THAT(world.Story(), ElementsAre("begin", "key Orden_Generada",
                                           "sql   INSERT Into orden_generada (SC_Orden_Generada ,SC_Orden_Trabajo "
                                           ",SC_Imputacion_Sistematica,Fecha_Generacion ) VALUES (1,7,12,'2026-03-05')",
                                           "commit"));
    EXPECT_THAT(Log(), ElementsAre("1|7|12|2026-03-05|NULL"));
    EXPECT_EQ(world.Depth(), 0);
    EXPECT_EQ(ordenes->Nuevo(8, 99, day), 2);
}

TEST_F(COrdenGeneradaTest, NuevoKeepsTheDayAndDropsTheTime) {
    ordenes->Nuevo(7, 12, World::Day("2026-03-05 08:30:00"));
    EXPECT_THAT(Log(), ElementsAre("1|7|12|2026-03-05|NULL"));
}

TEST_F(COrdenGeneradaTest, NuevoInsideATransactionCommitsNothing) {
    Libreria::IniciarTransaccion();
    world.Forget();
    ordenes->Nuevo(7, 12, day);
    EXPECT_EQ(world.Depth(), 1);
    EXPECT_TRUE(world.InTransaction());
    EXPECT_THAT(world.Story(), ::testing::Not(::testing::Contains("commit")));
    Libreria::AbortarTransaccion();
    EXPECT_THAT(Log(), IsEmpty());
}

TEST_F(COrdenGeneradaTest, BorrarDeletesOneRow) {
    AddOrders("(4, 40, 12, '2026-03-05'), (5, 50, 12, '2026-03-05')");
    ordenes->Borrar(4);
    EXPECT_THAT(world.Story(), ElementsAre("sql   DELETE From Orden_Generada WHERE SC_Orden_Generada =4"));
    EXPECT_THAT(Log(), ElementsAre("5|50|12|2026-03-05|NULL"));
    ordenes->Borrar(77);
    EXPECT_THAT(Log(), ElementsAre("5|50|12|2026-03-05|NULL"));
}

TEST_F(COrdenGeneradaTest, SalvarWritesTheAssignmentIntoItsOwnColumn) {
    AddOrders("(4, 40, 11, '2026-03-01'), (5, 50, 11, '2026-03-01')");
    ordenes->Salvar(4, 7, 12, day);
    EXPECT_THAT(world.Story(),
                ElementsAre("sql   UPDATE Orden_Generada SET SC_Orden_Trabajo =7,SC_Imputacion =12,Fecha_Generacion "
                            "='2026-03-05' WHERE SC_Orden_Generada =4"));
    EXPECT_THAT(Log(), ElementsAre("4|7|11|2026-03-05|12", "5|50|11|2026-03-01|NULL"));
}

TEST_F(COrdenGeneradaTest, SalvarFallsWithTheColumnSC_Imputacion) {
    AddOrders("(4, 40, 11, '2026-03-01')");
    world.Run("ALTER TABLE Orden_Generada DROP COLUMN SC_Imputacion");
    const ErrorRecord error = ErrorOf([&] { ordenes->Salvar(4, 7, 12, day); });
    EXPECT_EQ(error.number, Refused(1));
    EXPECT_THAT(Log(), ElementsAre("4|40|11|2026-03-01"));
}

TEST_F(COrdenGeneradaTest, SeleccionarGivesAllOrdersOfAnAssignment) {
    AddOrders("(4, 40, 12, '2026-03-05'), (5, 50, 13, '2026-03-05'), (6, 60, 12, '2026-04-01')");
    const Ref<Recordset> rs = ordenes->Seleccionar(12);
    EXPECT_THAT(world.Statements(), ElementsAre("SELECT *  FROM Orden_Generada  WHERE SC_Imputacion_Sistematica =12"));
    EXPECT_EQ(rs->TotalColumnas(), 5);
    EXPECT_THAT(Column(rs, "SC_Orden_Trabajo"), ElementsAre("40", "60"));
    EXPECT_EQ(ordenes->Seleccionar(14)->TotalRegistros(), 0);
}

TEST_F(COrdenGeneradaTest, SeleccionarPorFechaComparesAsTheOperatorSays) {
    AddOrders(
        "(1, 10, 12, '2026-03-04'), (2, 20, 12, '2026-03-05'), (3, 30, 12, '2026-03-06'),"
        "(4, 40, 13, '2026-03-05')");
    const struct {
        const char* label;
        std::string operation;
        std::vector<std::string> orders;
    } cases[] = {
        {"on the day", "=", {"20"}},
        {"before it", "<", {"10"}},
        {"up to it", "<=", {"10", "20"}},
        {"from it on", ">=", {"20", "30"}},
        {"after it", ">", {"30"}},
        {"not on it", "<>", {"10", "30"}},
        {"blanks about it", " >= ", {"20", "30"}},
        {"of text", "like ", {"20"}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.label);
        EXPECT_EQ(Column(ordenes->SeleccionarPorFecha(12, day, c.operation), "SC_Orden_Trabajo"), c.orders);
    }
    world.Forget();
    ordenes->SeleccionarPorFecha(12, day, ">=");
    EXPECT_THAT(world.Statements(), ElementsAre("SELECT *  FROM Orden_Generada  WHERE SC_Imputacion_Sistematica =12 "
                                                "and Fecha_Generacion >='2026-03-05'"));
}

TEST_F(COrdenGeneradaTest, SeleccionarPorFechaAsksForTheDayItselfUnlessToldOtherwise) {
    const char* expected =
        "SELECT *  FROM Orden_Generada  WHERE SC_Imputacion_Sistematica =12 and Fecha_Generacion ='2026-03-05'";
    ordenes->SeleccionarPorFecha(12, day);
    Invoke(*ordenes, "SeleccionarPorFecha", MemberKind::Method, {{Value(12), Value(day)}, {}});
    EXPECT_THAT(world.Statements(), ElementsAre(expected, expected));
}

TEST_F(COrdenGeneradaTest, SeleccionarPorSemanaJoinsTheOrdersOfAWeekOfTwoDigits) {
    // 2026-03-09 is a Monday; the first Monday of the year is January 5, so that Monday begins week 10.
    AddOrders(
        "(1, 3, 12, '2026-03-04'), (2, 5, 99, '2026-03-09'), (3, 6, 12, '2026-03-10'),"
        "(4, 8, 12, '2025-03-10'), (5, 9, 12, '2026-03-02')");
    EXPECT_EQ(ordenes->SeleccionarPorSemana(10, 2026), "3,5");
    EXPECT_THAT(world.Statements(), ElementsAre("SELECT SC_Orden_Trabajo  FROM Orden_Generada  WHERE "
                                                "strftime('%W',Fecha_Generacion,'weekday 1') ='10' and  "
                                                "strftime('%Y',Fecha_Generacion) ='2026'"));
    EXPECT_EQ(ordenes->SeleccionarPorSemana(11, 2026), "6");
    EXPECT_EQ(ordenes->SeleccionarPorSemana(10, 2025), "8");
    EXPECT_EQ(ordenes->SeleccionarPorSemana(12, 2026), "");
}

TEST_F(COrdenGeneradaTest, SeleccionarPorSemanaFindsNoWeekOfOneDigit) {
    AddOrders("(1, 3, 12, '2026-02-16'), (2, 5, 12, '2026-01-05')");
    ASSERT_EQ(world.Scalar("SELECT strftime('%W', '2026-02-16', 'weekday 1')"), "07");
    for (std::int16_t week = 0; week < 10; ++week) {
        SCOPED_TRACE(week);
        EXPECT_EQ(ordenes->SeleccionarPorSemana(week, 2026), "");
    }
}

TEST_F(COrdenGeneradaTest, SeleccionarPorSemanaMissesTheLastDaysOfTheYear) {
    // The Monday after 2026-12-30 is 2027-01-04, of week 1 of 2027.
    AddOrders("(1, 3, 12, '2026-12-30'), (2, 5, 12, '2026-12-28')");
    EXPECT_EQ(ordenes->SeleccionarPorSemana(52, 2026), "5");
    EXPECT_EQ(ordenes->SeleccionarPorSemana(53, 2026), "");
}

TEST_F(COrdenGeneradaTest, SeleccionarPorSemanaLeavesThePlaceOfAMissingOrderEmpty) {
    AddOrders("(1, 3, 12, '2026-03-09'), (2, NULL, 12, '2026-03-09'), (3, 4, 12, '2026-03-09')");
    EXPECT_EQ(ordenes->SeleccionarPorSemana(10, 2026), "3,,4");
}

TEST_F(COrdenGeneradaTest, ADateOutsideTheCalendarIsRefusedAndNothingIsWritten) {
    AddOrders("(4, 40, 12, '2026-03-05')");
    const Date never{1e7};
    EXPECT_EQ(ErrorOf([&] { ordenes->Nuevo(7, 12, never); }).number, 6);
    EXPECT_EQ(world.Depth(), 1);
    world.Abort();
    EXPECT_EQ(ErrorOf([&] { ordenes->Salvar(4, 7, 12, never); }).number, 6);
    EXPECT_EQ(ErrorOf([&] { ordenes->SeleccionarPorFecha(12, never); }).number, 6);
    EXPECT_THAT(Log(), ElementsAre("4|40|12|2026-03-05|NULL"));
}

TEST_F(COrdenGeneradaTest, EveryFailureNamesTheOperationAndItsValues) {
    AddOrders("(4, 40, 12, '2026-03-05')");
    const std::string read = "Libreria.AbrirRecordset(rs={Recordset}, strSQL={Text})";
    const struct {
        const char* failing;
        std::function<void()> work;
        std::vector<std::string> calls;
        int depth;
    } cases[] = {
        {"begin",
         [&] { ordenes->Nuevo(7, 12, day); },
         {"Libreria.IniciarTransaccion()",
          "COrdenGenerada.Nuevo(SC_Orden_Trabajo=7, SC_Imputacion=12, Fecha_Generacion='05/03/2026')"},
         1},
        {"key Orden_Generada",
         [&] { ordenes->Nuevo(7, 12, day); },
         {"COrdenGenerada.Nuevo(SC_Orden_Trabajo=7, SC_Imputacion=12, Fecha_Generacion='05/03/2026')"},
         1},
        {"sql   INSERT Into orden_generada",
         [&] { ordenes->Nuevo(7, 12, day); },
         {"COrdenGenerada.Nuevo(SC_Orden_Trabajo=7, SC_Imputacion=12, Fecha_Generacion='05/03/2026')"},
         1},
        {"commit",
         [&] { ordenes->Nuevo(7, 12, day); },
         {"Libreria.TerminarTransaccion()",
          "COrdenGenerada.Nuevo(SC_Orden_Trabajo=7, SC_Imputacion=12, Fecha_Generacion='05/03/2026')"},
         1},
        {"sql   DELETE From Orden_Generada",
         [&] { ordenes->Borrar(4); },
         {"COrdenGenerada.Borrar(SC_Orden_Generada=4)"},
         0},
        {"sql SELECT",
         [&] { ordenes->Seleccionar(12); },
         {read, "COrdenGenerada.Seleccionar(SC_Imputacion_Sistematica=12)"},
         0},
        {"sql   UPDATE Orden_Generada",
         [&] { ordenes->Salvar(4, 7, 12, World::Day("2026-03-05 08:00:00")); },
         {"COrdenGenerada.Salvar(SC_Orden_Generada=4, SC_Orden_Trabajo=7, SC_Imputacion=12, "
          "Fecha_Generacion='05/03/2026 08:00:00')"},
         0},
        {"sql SELECT",
         [&] { ordenes->SeleccionarPorFecha(12, day, "<"); },
         {read,
          "COrdenGenerada.SeleccionarPorFecha(SC_Imputacion_Sistematica=12, Fecha_Generacion='05/03/2026', "
          "UnOperador='<')"},
         0},
        {"sql SELECT",
         [&] { ordenes->SeleccionarPorSemana(10, 2026); },
         {read, "COrdenGenerada.SeleccionarPorSemana(SemanaDelAno=10, Ano=2026)"},
         0},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.failing + (" in " + c.calls.back()));
        world.FailOn(c.failing);
        const ErrorRecord error = ErrorOf(c.work);
        EXPECT_EQ(error.number, Refused(19));
        EXPECT_EQ(error.source, "HuntERR.ErrorIn");
        EXPECT_EQ(CallsOf(error), c.calls);
        EXPECT_EQ(world.Depth(), c.depth);
        world.Abort();
        EXPECT_THAT(Log(), ElementsAre("4|40|12|2026-03-05|NULL"));
    }
}

}  // namespace

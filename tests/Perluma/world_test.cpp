#include "tests/support/world.h"

#include "frame/Libreria.h"
#include "frame/regional.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using support::Asked;
using support::ErrorOf;
using support::World;
using testing::ElementsAre;
using testing::IsEmpty;

class WorldTest : public testing::Test {
protected:
    World world;
};

TEST_F(WorldTest, TellsWhatTheComponentAskedForInOrder) {
    Zontara::Libreria::IniciarTransaccion();
    EXPECT_EQ(Zontara::Libreria::ProximaClave("Boletin"), 1);
    Zontara::Libreria::Ejecutar("DELETE FROM Boletin");
    Zontara::Libreria::TerminarTransaccion();
    EXPECT_THAT(world.Story(), ElementsAre("begin", "key Boletin", "sql DELETE FROM Boletin", "commit"));
    EXPECT_THAT(world.Statements(), ElementsAre("DELETE FROM Boletin"));
    EXPECT_EQ(world.Record()[1].result, Zontara::Value(1));
    world.Forget();
    EXPECT_THAT(world.Story(), IsEmpty());
}

TEST_F(WorldTest, ItsOwnQueriesAreNotRecorded) {
    world.Run("INSERT INTO Gama (SC_Gama, Costo_Actual) VALUES (1, 2.5), (2, NULL)");
    EXPECT_THAT(world.Rows("SELECT SC_Gama, Costo_Actual, Descripcion FROM Gama"),
                ElementsAre("1|2.5|NULL", "2|NULL|NULL"));
    EXPECT_EQ(world.Scalar("SELECT count(*) FROM Gama"), "2");
    EXPECT_EQ(world.Scalar("SELECT NULL"), "NULL");
    EXPECT_EQ(world.Scalar("SELECT 1 WHERE 0"), "");
    EXPECT_THAT(world.Record(), IsEmpty());
}

TEST_F(WorldTest, ARequestFailsOnceAndIsRecorded) {
    world.FailOn("DELETE", 1234, "no", 1);
    Zontara::Libreria::Ejecutar("DELETE FROM Gama");
    EXPECT_EQ(ErrorOf([&] { world.Session().LaConexion()->Ejecutar("DELETE FROM Boletin"); }).number, 1234);
    Zontara::Libreria::Ejecutar("DELETE FROM Equipo");
    EXPECT_THAT(world.Statements(), ElementsAre("DELETE FROM Gama", "DELETE FROM Boletin", "DELETE FROM Equipo"));
}

TEST_F(WorldTest, AFailingKeyOrServiceIsRecordedUnderItsName) {
    world.FailOn("key Boletin");
    EXPECT_EQ(ErrorOf([&] { world.Session().ElGeneradorClaves()->ProximaClave("Boletin"); }).number,
              Zontara::vbObjectError + 19);
    world.FailOn("OrdenTrabajo.CrearOrden");
    ErrorOf([&] { Zontara::Neighbours().Perluma().OrdenesTrabajo()->CrearOrden({}); });
    EXPECT_THAT(world.Story(), ElementsAre("key Boletin", "service OrdenTrabajo.CrearOrden"));
    EXPECT_EQ(world.Record()[0].what, Asked::What::Key);
    EXPECT_EQ(world.Record()[1].what, Asked::What::Service);
    EXPECT_EQ(world.Record()[1].text, "OrdenTrabajo.CrearOrden");
}

TEST_F(WorldTest, HealedNothingFails) {
    world.FailOn("DELETE");
    world.Heal();
    Zontara::Libreria::Ejecutar("DELETE FROM Gama");
    EXPECT_EQ(world.Statements().size(), 1U);
}

TEST_F(WorldTest, AbortLeavesNoTransactionAndNoRecord) {
    Zontara::Libreria::IniciarTransaccion();
    Zontara::Libreria::IniciarTransaccion();
    EXPECT_EQ(world.Depth(), 2);
    EXPECT_TRUE(world.InTransaction());
    world.Forget();
    world.Abort();
    EXPECT_EQ(world.Depth(), 0);
    EXPECT_FALSE(world.InTransaction());
    EXPECT_THAT(world.Story(), IsEmpty());
}

TEST_F(WorldTest, TheClockAndTheDateFormAreItsOwn) {
    EXPECT_EQ(Zontara::CurrentPlatform().Now(), World::Day("2026-03-05 08:00:00"));
    world.Platform().shortDate = "yyyy-mm-dd";
    EXPECT_EQ(Zontara::CurrentRegional().ToText(World::Day("2026-03-05")), "2026-03-05");
    EXPECT_EQ(world.Platform().computer, "PLANT-1");
}

TEST(WorldLife, WhatWasInPlaceBeforeComesBack) {
    const auto before = Zontara::InstalledProvider();
    const Zontara::Platform* const platform = &Zontara::CurrentPlatform();
    {
        World world;
        EXPECT_NE(Zontara::InstalledProvider(), before);
    }
    EXPECT_EQ(Zontara::InstalledProvider(), before);
    EXPECT_EQ(&Zontara::CurrentPlatform(), platform);
}

TEST(CallStackOf, GivesTheLinesWithoutTheirPadding) {
    EXPECT_THAT(support::CallStackOf("boom \r\n  Call Stack: A.B(x='-') " + std::string(40, '-') +
                                     "\r\n    Value Of x\r\n  Call Stack: C.D() ---\r\n"),
                ElementsAre("  Call Stack: A.B(x='-')", "  Call Stack: C.D()"));
}

}  // namespace

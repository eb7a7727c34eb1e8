#include "frame/Libreria.h"

#include "frame/raised_error.h"
#include "tests/support/world.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using namespace Zontara;
using support::CallStackOf;
using support::ErrorOf;
using testing::ElementsAre;

class LibreriaTest : public testing::Test {
protected:
    void Open(int levels) {
        for (int i = 0; i < levels; ++i)
            Libreria::IniciarTransaccion();
    }
    support::World world;
};

TEST_F(LibreriaTest, OnlyTheOutermostLevelReachesTheDatabase) {
    Open(2);
    EXPECT_EQ(world.Depth(), 2);
    Libreria::TerminarTransaccion();
    EXPECT_TRUE(world.InTransaction());
    EXPECT_THAT(world.Story(), ElementsAre("begin"));
    Libreria::TerminarTransaccion();
    EXPECT_THAT(world.Story(), ElementsAre("begin", "commit"));
    EXPECT_EQ(world.Depth(), 0);
}

TEST_F(LibreriaTest, AbortRollsBackOnceWhateverTheDepth) {
    Open(3);
    Libreria::Ejecutar("  INSERT Into Unidad_Lectura (SC_Unidad_Lectura ,Descripcion ) VALUES (1,'km')");
    Libreria::AbortarTransaccion();
    EXPECT_EQ(world.Depth(), 0);
    EXPECT_EQ(world.Story().back(), "rollback");
    EXPECT_EQ(world.Scalar("select count(*) from Unidad_Lectura"), "0");
    EXPECT_EQ(ErrorOf([] { Libreria::TerminarTransaccion(); }).number, 6);
}

TEST_F(LibreriaTest, AbortAtDepthZeroDoesNothing) {
    Libreria::AbortarTransaccion();
    EXPECT_THAT(world.Story(), ElementsAre());
    EXPECT_EQ(world.Depth(), 0);
}

TEST_F(LibreriaTest, EndAtDepthZeroOverflowsAndCommitsNothing) {
    const ErrorRecord error = ErrorOf([] { Libreria::TerminarTransaccion(); });
    EXPECT_EQ(error.number, 6);
    EXPECT_EQ(error.source, "HuntERR.ErrorIn");
    EXPECT_THAT(CallStackOf(error.description), ElementsAre("  Call Stack: Libreria.TerminarTransaccion()"));
    EXPECT_THAT(world.Story(), ElementsAre());
    EXPECT_EQ(world.Depth(), 0);
}

TEST_F(LibreriaTest, TheLevelBehindTheLastOverflows) {
    Open(255);
    const ErrorRecord error = ErrorOf([] { Libreria::IniciarTransaccion(); });
    EXPECT_EQ(error.number, 6);
    EXPECT_THAT(CallStackOf(error.description), ElementsAre("  Call Stack: Libreria.IniciarTransaccion()"));
    EXPECT_EQ(world.Depth(), 255);
    world.Abort();
}

TEST_F(LibreriaTest, ARefusedBeginLeavesTheDepthRaised) {
    world.FailOn("begin");
    EXPECT_EQ(ErrorOf([] { Libreria::IniciarTransaccion(); }).description.find("forced failure"), 0U);
    EXPECT_EQ(world.Depth(), 1);
    EXPECT_FALSE(world.InTransaction());
}

TEST_F(LibreriaTest, ABeginThatNeverReachedTheDatabaseCanBeAborted) {
    world.FailOn("begin");
    ErrorOf([] { Libreria::IniciarTransaccion(); });
    Libreria::AbortarTransaccion();
    EXPECT_EQ(world.Depth(), 0);
    Open(1);
    EXPECT_TRUE(world.InTransaction());
    Libreria::TerminarTransaccion();
}

TEST_F(LibreriaTest, ARefusedCommitLeavesTheDepthAtOne) {
    Open(1);
    world.FailOn("commit");
    EXPECT_EQ(ErrorOf([] { Libreria::TerminarTransaccion(); }).number, -2147221504 + 19);
    EXPECT_EQ(world.Depth(), 1);
}

TEST_F(LibreriaTest, ARefusedRollbackLeavesTheDepthAsItWas) {
    Open(2);
    world.FailOn("rollback");
    const ErrorRecord error = ErrorOf([] { Libreria::AbortarTransaccion(); });
    EXPECT_THAT(CallStackOf(error.description), ElementsAre("  Call Stack: Libreria.AbortarTransaccion()"));
    EXPECT_EQ(world.Depth(), 2);
}

TEST_F(LibreriaTest, RowsExistExactlyWhenThereAreSome) {
    EXPECT_FALSE(Libreria::ExistenRegistros(Libreria::Abierto("SELECT * FROM Unidad_Lectura ")));
    world.Run("insert into Unidad_Lectura values (1,'km'),(2,'h')");
    const Ref<Recordset> rs = Libreria::Abierto("SELECT * FROM Unidad_Lectura ");
    rs->MoverSiguiente();
    EXPECT_TRUE(Libreria::ExistenRegistros(rs));
    EXPECT_EQ(rs->Valor("Descripcion"), Value("h"));
}

TEST_F(LibreriaTest, RowsOfNoRecordsetAreAnError) {
    const ErrorRecord error = ErrorOf([] { Libreria::ExistenRegistros(nullptr); });
    EXPECT_EQ(error.number, 91);
    EXPECT_THAT(CallStackOf(error.description),
                ElementsAre("  Call Stack: Libreria.ExistenRegistros(rsTabla={Nothing})"));
}

TEST_F(LibreriaTest, AnOpenedRecordsetIsTheSameObjectAndNeedsNoConnection) {
    world.Run("insert into Unidad_Lectura values (1,'km')");
    const Ref<Recordset> rs = Neighbours().NewRecordset();
    EXPECT_EQ(Libreria::AbrirRecordset(rs, "SELECT * FROM Unidad_Lectura "), rs);
    Libreria::Ejecutar("  DELETE From Unidad_Lectura");
    EXPECT_EQ(rs->TotalRegistros(), 1);
    EXPECT_EQ(rs->Valor("descripcion"), Value("km"));
}

TEST_F(LibreriaTest, ARefusedReadShowsItsStatement) {
    const ErrorRecord error = ErrorOf([] { Libreria::Abierto("SELECT nada FROM x"); });
    EXPECT_EQ(error.number, -2147221504 + 1);
    EXPECT_THAT(CallStackOf(error.description),
                ElementsAre("  Call Stack: Libreria.AbrirRecordset(rs={Recordset}, strSQL='SELECT nada FROM x')"));
}

TEST(LibreriaWithoutSession, SaysWhatToDo) {
    InstallProvider(nullptr);
    try {
        Libreria::Ejecutar("  DELETE From Boletin");
        FAIL();
    } catch (const RaisedError& error) {
        EXPECT_EQ(error.Number(), 91);
        EXPECT_EQ(error.Description(),
                  "No session is open: open one, so that its provider is installed, before calling Zontara");
    }
}

}  // namespace

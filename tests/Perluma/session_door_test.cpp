#include "Perluma/session_door.h"

#include "Perluma/provider.h"
#include "catalogues/CUnidadLectura.h"
#include "dhRichClient3/connection.h"
#include "frame/CGlobalPreventivo.h"
#include "frame/provider.h"
#include "frame/raised_error.h"
#include "tests/support/world.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

namespace {

using Perluma::SessionDoor;
using support::ErrorOf;
using testing::ElementsAre;
using testing::HasSubstr;

constexpr std::int32_t kInvalidCall = 5;
constexpr std::int32_t kNotSet = 91;

/// Every test ends with no session open.
class SessionDoorTest : public testing::Test {
protected:
    ~SessionDoorTest() override { SessionDoor().Cerrar(); }

    std::vector<std::string> Traced() {
        std::vector<std::string> lines;
        const auto trace = door.Traza();
        for (std::int32_t i = 1; i <= trace->Total(); ++i)
            lines.push_back(trace->Elemento(i));
        return lines;
    }

    SessionDoor door;
};

TEST_F(SessionDoorTest, OpensTheSessionOfTheProcess) {
    EXPECT_FALSE(door.EstaAbierta());
    door.Abrir(":memory:", true, false);
    EXPECT_TRUE(SessionDoor().EstaAbierta());
    EXPECT_EQ(Zontara::CGlobalPreventivo().UnidadLectura()->Nuevo("h"), 1);
    EXPECT_EQ(SessionDoor().Consultar("SELECT Descripcion FROM Unidad_Lectura")->Valor("Descripcion"),
              Zontara::Value("h"));
}

TEST_F(SessionDoorTest, StaysOpenWhenTheDoorGoes) {
    SessionDoor().Abrir(":memory:", true, false);
    EXPECT_TRUE(door.EstaAbierta());
}

TEST_F(SessionDoorTest, OpensNoSecondSession) {
    door.Abrir(":memory:", true, false);
    EXPECT_EQ(ErrorOf([&] { door.Abrir(":memory:", true, false); }).number, kInvalidCall);
    EXPECT_TRUE(door.EstaAbierta());
}

TEST_F(SessionDoorTest, ClosesWhatIsOpenAndNothingElse) {
    door.Abrir(":memory:", true, false);
    door.Cerrar();
    EXPECT_FALSE(door.EstaAbierta());
    EXPECT_EQ(Zontara::InstalledProvider(), nullptr);
    EXPECT_NO_THROW(door.Cerrar());
}

TEST_F(SessionDoorTest, LeavesAnotherHostsProviderAlone) {
    const auto mine = Perluma::OpenSession(dhRichClient3::Connection::Open(":memory:"));
    door.Cerrar();
    EXPECT_EQ(Zontara::InstalledProvider(), mine);
    Zontara::InstallProvider(nullptr);
}

TEST_F(SessionDoorTest, RollsBackWhatIsOpenAtTheEnd) {
    const std::string path = testing::TempDir() + "session_door_test.db";
    std::filesystem::remove(path);
    door.Abrir(path, true, false);
    Zontara::CGlobalPreventivo facade;
    facade.IniciarTransaccion();
    facade.UnidadLectura()->Nuevo("h");
    EXPECT_EQ(door.ProfundidadTransaccion(), 1);
    door.Cerrar();
    door.Abrir(path, false, false);
    EXPECT_EQ(door.ProfundidadTransaccion(), 0);
    EXPECT_EQ(door.Consultar("SELECT * FROM Unidad_Lectura")->TotalRegistros(), 0);
    door.Cerrar();
    std::filesystem::remove(path);
}

TEST_F(SessionDoorTest, OpensNothingWhenTheFileIsMissing) {
    EXPECT_THAT(ErrorOf([&] { door.Abrir("/nowhere/plant.db", false, false); }).description,
                HasSubstr("/nowhere/plant.db"));
    EXPECT_FALSE(door.EstaAbierta());
}

TEST_F(SessionDoorTest, NeedsASessionForEverythingElse) {
    EXPECT_EQ(ErrorOf([&] { door.Consultar("SELECT 1"); }).number, kNotSet);
    EXPECT_EQ(ErrorOf([&] { door.Ejecutar("SELECT 1"); }).number, kNotSet);
    EXPECT_EQ(ErrorOf([&] { door.TextoParaSQL(""); }).number, kNotSet);
    EXPECT_EQ(ErrorOf([&] { door.Traza(); }).number, kNotSet);
    EXPECT_EQ(ErrorOf([&] { door.ProfundidadTransaccion(); }).number, kNotSet);
}

TEST_F(SessionDoorTest, RunsSeveralStatementsAtOnce) {
    door.Abrir(":memory:", true, false);
    door.Ejecutar("CREATE TABLE t (a); INSERT INTO t VALUES ('" + door.TextoParaSQL("it's") + "')");
    EXPECT_EQ(door.Consultar("SELECT a FROM t")->Valor("a"), Zontara::Value("it's"));
}

TEST_F(SessionDoorTest, TellsWhatTheComponentAsksForWhenItIsTraced) {
    door.Abrir(":memory:", true, true);
    Zontara::CGlobalPreventivo().UnidadLectura()->Nuevo("h");
    EXPECT_THAT(
        Traced(),
        ElementsAre("begin", "key Unidad_Lectura 1",
                    "sql   INSERT Into Unidad_Lectura (SC_Unidad_Lectura ,Descripcion ) VALUES (1,'h')", "commit"));
}

TEST_F(SessionDoorTest, HasNoTraceUnlessItIsAskedFor) {
    door.Abrir(":memory:", true, false);
    EXPECT_EQ(door.Traza(), nullptr);
}

TEST_F(SessionDoorTest, IsCalledByName) {
    const Zontara::Ref<Zontara::Object> object = SessionDoor::ClassMembers().create();
    EXPECT_EQ(object->TypeName(), "SesionGlobal");
    EXPECT_EQ(object->ReadMember("EstaAbierta"), Zontara::Value(false));
}

}  // namespace

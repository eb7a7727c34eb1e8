#include "frame/CGlobalPreventivo.h"

#include "bulletins/CBoletin.h"
#include "calendar/CImputacionPreventiva.h"
#include "catalogues/CGama.h"
#include "frame/creation.h"
#include "frame/invoke.h"
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
using testing::IsEmpty;

/// Notes what is made and let go of, and fails for the type that it is told.
struct Watcher : LifeWatcher {
    Watcher() { ReplaceLifeWatcher(this); }
    ~Watcher() override { ReplaceLifeWatcher(nullptr); }
    void Creating(std::string_view type) override {
        if (type == failing) Raise(RunTimeError::OutOfMemory);
    }
    void Releasing(std::string_view type) override {
        released.emplace_back(type);
        if (type == failing) Raise(RunTimeError::OutOfMemory);
    }
    std::string failing;
    std::vector<std::string> released;
};

const std::vector<std::string> kProperties{"MaterialGama",
                                           "EjecutorGama",
                                           "OrdenGenerada",
                                           "UsuarioEjecutorGama",
                                           "UnidadLectura",
                                           "LecturaEquipo",
                                           "Boletin",
                                           "Equipo",
                                           "DocumentoEquipo",
                                           "Gama",
                                           "GrupoGama",
                                           "ImputacionParalela",
                                           "ImputacionPreventiva",
                                           "ImputacionSistematica"};

class CGlobalPreventivoTest : public testing::Test {
protected:
    support::World world;
    Ref<CGlobalPreventivo> facade = std::make_shared<CGlobalPreventivo>();
};

TEST_F(CGlobalPreventivoTest, EachPropertyGivesOneObjectOfItsClassPerFacade) {
    const auto other = std::make_shared<CGlobalPreventivo>();
    for (const std::string& property : kProperties) {
        const Value first = facade->ReadMember(property);
        EXPECT_EQ(first.Get<Ref<Object>>()->TypeName(), "C" + property);
        EXPECT_EQ(first, facade->ReadMember(property));
        EXPECT_NE(first, other->ReadMember(property));
    }
}

TEST_F(CGlobalPreventivoTest, InterfaceStandsInOrder) {
    std::vector<std::string> names;
    for (const Member& member : CGlobalPreventivo::ClassMembers().members)
        names.emplace_back(member.name);
    std::vector<std::string> expected = kProperties;
    expected.insert(expected.end(), {"IniciarTransaccion", "AbortarTransaccion", "TerminarTransaccion",
                                     "ElActivoTieneMantenimientoVencido"});
    EXPECT_EQ(names, expected);
    const Member& question = CGlobalPreventivo::ClassMembers().members.back();
    EXPECT_TRUE(question.arguments[0].byRef);
    EXPECT_FALSE(question.arguments[0].optional);
    EXPECT_TRUE(question.arguments[1].byRef && question.arguments[1].optional);
    EXPECT_EQ(question.arguments[1].defaultValue, Value(""));
    EXPECT_EQ(question.result.word, TypeWord::Bool);
}

TEST_F(CGlobalPreventivoTest, AnObjectThatCannotBeMadeIsReportedByAllButTwoProperties) {
    Watcher watcher;
    for (const std::string& property : kProperties) {
        watcher.failing = "C" + property;
        const ErrorRecord error = ErrorOf([&] { facade->ReadMember(property); });
        EXPECT_EQ(error.number, 7) << property;
        if (property == "MaterialGama" || property == "UnidadLectura") {
            EXPECT_EQ(error.source, "Zontara") << property;
            EXPECT_EQ(error.description, "Out of memory") << property;
        } else {
            EXPECT_THAT(CallStackOf(error.description),
                        ElementsAre("  Call Stack: CGlobalPreventivo." + property + "()"));
        }
        watcher.failing.clear();
        EXPECT_NE(facade->ReadMember(property).Get<Ref<Object>>(), nullptr) << property;
    }
}

TEST_F(CGlobalPreventivoTest, TerminationLetsGoOfThirteenObjectsInItsOrder) {
    for (const std::string& property : kProperties)
        facade->ReadMember(property);
    Watcher watcher;
    facade.reset();
    EXPECT_THAT(watcher.released,
                ElementsAre("CBoletin", "CDocumentoEquipo", "CEquipo", "CGama", "CGrupoGama", "CImputacionParalela",
                            "CImputacionPreventiva", "CImputacionSistematica", "CLecturaEquipo", "COrdenGenerada",
                            "CUnidadLectura", "CUsuarioEjecutorGama", "CEjecutorGama"));
}

TEST_F(CGlobalPreventivoTest, AFailureWhileTerminatingIsReported) {
    facade->Boletin();
    facade->Gama();
    Watcher watcher;
    watcher.failing = "CGama";
    const ErrorRecord error = ErrorOf([&] { facade->Class_Terminate(); });
    EXPECT_EQ(error.number, 7);
    EXPECT_THAT(CallStackOf(error.description), ElementsAre("  Call Stack: CGlobalPreventivo.Class_Terminate()"));
    facade.reset();
}

TEST_F(CGlobalPreventivoTest, TransactionsGoThroughTheSharedDepth) {
    facade->IniciarTransaccion();
    std::make_shared<CGlobalPreventivo>()->IniciarTransaccion();
    EXPECT_EQ(world.Depth(), 2);
    facade->TerminarTransaccion();
    facade->AbortarTransaccion();
    EXPECT_THAT(world.Story(), ElementsAre("begin", "rollback"));
}

TEST_F(CGlobalPreventivoTest, EndingWithNoTransactionOpenIsReportedByTheHelper) {
    const ErrorRecord error = ErrorOf([&] { facade->TerminarTransaccion(); });
    EXPECT_EQ(error.number, 6);
    EXPECT_THAT(CallStackOf(error.description), ElementsAre("  Call Stack: Libreria.TerminarTransaccion()"));
}

/// An asset with one assignment of each kind, none of them due on the world's day.
class OverdueQuestion : public CGlobalPreventivoTest {
protected:
    OverdueQuestion() {
        world.Run(
            "insert into Activo (ID_Activo, Descripcion, estatus_actual, Acumulado_Lectura) values "
            "('A-1','Bomba',0,100);"
            "insert into Gama (SC_Gama, Descripcion, Numero_Gama) values (1,'Engrase',1);"
            "insert into Imputacion_Sistematica (SC_Imputacion_Sistematica, ID_Activo, SC_Gama, Anulada, "
            "Lectura_Limite,"
            " Ultimo_Acumulado) values (1,'A-1',1,0,500,0);"
            "insert into Imputacion_Preventiva (SC_Imputacion_Preventiva, ID_Activo, SC_Gama, Anulada, Frecuencia,"
            " Intervalo_Frecuencia, Fecha_Inicio, Fecha_Ultimo_Lanzamiento, Semana, Programacion, Es_Sincronizada)"
            " values (1,'A-1',1,0,'Semanal',1,'2026-01-01','2026-03-02',10,'1',1),"
            "        (2,'A-1',1,0,'Mensual',1,'2026-01-01','2026-03-01',9,'20',0)");
    }
    bool Ask(const std::string& asset, const std::string& day = "") {
        world.Forget();
        return facade->ElActivoTieneMantenimientoVencido(asset, day);
    }
    std::size_t Questions() const { return world.Statements().size(); }
};

TEST_F(OverdueQuestion, AsksAllThreeKindsBeforeItAnswersFalse) {
    EXPECT_FALSE(Ask("A-1"));
    EXPECT_EQ(Questions(), 3U);
}

TEST_F(OverdueQuestion, AMeterThatIsDueKeepsTheCalendarFromBeingAsked) {
    world.Run("update Activo set Acumulado_Lectura = 500");
    EXPECT_TRUE(Ask("A-1"));
    EXPECT_EQ(Questions(), 1U);
}

TEST_F(OverdueQuestion, ASynchronisedAssignmentComesBeforeTheConventionalOnes) {
    world.Run("update Imputacion_Preventiva set Semana = 9 where SC_Imputacion_Preventiva = 1");
    EXPECT_TRUE(Ask("A-1"));
    EXPECT_EQ(Questions(), 2U);
}

TEST_F(OverdueQuestion, AConventionalAssignmentIsAskedLast) {
    world.Run("update Imputacion_Preventiva set Fecha_Ultimo_Lanzamiento = '2026-01-01' where Es_Sincronizada = 0");
    EXPECT_TRUE(Ask("A-1"));
    EXPECT_EQ(Questions(), 3U);
}

TEST_F(OverdueQuestion, ASimulatedDayReachesBothCalendarTestsAndNotTheMeter) {
    EXPECT_TRUE(Ask("A-1", "12/03/2026"));
    const std::vector<std::string> asked = world.Statements();
    ASSERT_EQ(asked.size(), 2U);
    EXPECT_EQ(asked[0].find("2026-03-12"), std::string::npos);
    EXPECT_NE(asked[1].find("Fecha_Inicio <= '2026-03-12'"), std::string::npos);
    world.Run("delete from Imputacion_Preventiva where Es_Sincronizada = 1");
    EXPECT_TRUE(Ask("A-1", "20/04/2026"));
    EXPECT_NE(world.Statements().at(2).find("Fecha_Inicio <= '2026-04-20'"), std::string::npos);
}

TEST_F(OverdueQuestion, LeftOutItIsThePresentDay) {
    EXPECT_FALSE(Invoke(*facade, "ElActivoTieneMantenimientoVencido", MemberKind::Method, {{Value("A-1")}, {}})
                     .value.Get<bool>());
    EXPECT_NE(world.Statements().at(1).find("Fecha_Inicio <= '2026-03-05'"), std::string::npos);
}

TEST_F(OverdueQuestion, AnAssetWithoutAssignmentsOrUnknownAnswersFalse) { EXPECT_FALSE(Ask("A-2")); }

TEST_F(OverdueQuestion, WorksOnFreshObjectsAndLeavesTheFacadesAlone) {
    facade->ImputacionPreventiva()->OTPreventivaGenerada()->Agregar("mine");
    Ask("A-1");
    EXPECT_EQ(facade->ImputacionPreventiva()->OTPreventivaGenerada()->Total(), 1);
}

TEST_F(OverdueQuestion, AFailurePassesAsItCameFromTheTest) {
    world.FailOn("acumulado_lectura-ultimo_acumulado");
    const ErrorRecord error = ErrorOf([&] { Ask("A-1"); });
    EXPECT_THAT(CallStackOf(error.description),
                ElementsAre(testing::HasSubstr("Libreria.AbrirRecordset("),
                            "  Call Stack: CImputacionSistematica.ActivoNecesitaMantenimiento(ID_Activo='A-1')"));
    const ErrorRecord bad = ErrorOf([&] { Ask("A-1", "nunca"); });
    EXPECT_EQ(bad.number, 13);
    EXPECT_EQ(bad.source, "Zontara");
}

}  // namespace

#include "meter/CImputacionSistematica.h"
#include "tests/meter/meter_test.h"

using namespace Zontara;
using namespace support;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

class CImputacionSistematicaReprogrammingTest : public MeterTest {
protected:
    void AddThree(const std::string& accumulated, int reference = 100) {
        AddAsset("A1", accumulated);
        AddAssignment({7, "A1", 1000, reference});
        AddAssignment({8, "A1", 2000, reference});
        AddAssignment({9, "A1", 4000, reference});
    }
    std::vector<std::string> References() { return {Reference(7), Reference(8), Reference(9)}; }
    std::vector<bool> Due() {
        std::vector<bool> due;
        for (const int key : {7, 8, 9})
            due.push_back(imputaciones->ActivoNecesitaMantenimiento("A1", key));
        return due;
    }
    std::vector<std::string> Reprogrammed() {
        std::vector<std::string> assets;
        const Ref<ListaCambios> list = imputaciones->ActivoReprogramado();
        for (int i = 1; i <= list->Total(); ++i)
            assets.push_back(list->Elemento(i));
        return assets;
    }
};

TEST_F(CImputacionSistematicaReprogrammingTest, ReprogramarMakesTheChosenAndTheSmallerOnesDue) {
    const struct {
        const char* label;
        int chosen;
        std::string accumulated;
        std::vector<bool> due;
    } cases[] = {
        {"the largest", 9, "4000", {true, true, true}},
        {"the middle one", 8, "2000", {true, true, false}},
        {"the smallest", 7, "1000", {true, false, false}},
        {"an unknown key", 77, "0", {false, false, false}},
    };
    AddThree("2500");
    for (const auto& c : cases) {
        SCOPED_TRACE(c.label);
        world.Run("UPDATE Activo SET Acumulado_Lectura = 2500; UPDATE Imputacion_Sistematica SET Ultimo_Acumulado = 5");
        imputaciones->ReprogramarImputacionesDeunActivo("A1", c.chosen);
        EXPECT_EQ(Accumulated("A1"), c.accumulated);
        EXPECT_THAT(References(), ElementsAre("0", "0", "0"));
        EXPECT_EQ(Due(), c.due);
        EXPECT_EQ(world.Depth(), 0);
    }
    EXPECT_THAT(Reprogrammed(), ElementsAre("A1", "A1", "A1", "A1"));
}

TEST_F(CImputacionSistematicaReprogrammingTest, ReprogramarGoesRowByRowInOneTransaction) {
    AddThree("2500");
    imputaciones->ReprogramarImputacionesDeunActivo("A1", 8);
    std::vector<std::string> story = world.Story();
    ASSERT_EQ(story.size(), 9u);
    EXPECT_THAT(story[0], ::testing::StartsWith("sql SELECT  Activo.ID_Activo,"));
    story.erase(story.begin());
    const std::string update =
        "sql   UPDATE Imputacion_Sistematica SET Ultimo_Acumulado = 0 WHERE "
        "SC_Imputacion_Sistematica =";
    EXPECT_THAT(story, ElementsAre("begin", "service ServicioActivos.FijarAcumulado", update + "9", update + "8",
                                   "service ServicioActivos.FijarAcumulado", update + "7", "commit", "notice A1"));
    std::vector<std::vector<Value>> set;
    for (const Asked& asked : world.Record()) {
        if (asked.what == Asked::What::Service) set.push_back(asked.arguments);
    }
    EXPECT_THAT(set, ElementsAre(std::vector<Value>{"A1", 0}, std::vector<Value>{"A1", 2000}));
}

TEST_F(CImputacionSistematicaReprogrammingTest, ReprogramarWithoutLiveRowsChangesNothingAndStillSendsTheAsset) {
    AddAsset("A1", "2500");
    AddAssignment({7, "A1", 1000, 100, 0, 1});
    const std::vector<std::string> before = Stored();
    imputaciones->ReprogramarImputacionesDeunActivo("A1", 7);
    EXPECT_EQ(Stored(), before);
    EXPECT_THAT(world.Story(), ElementsAre(::testing::StartsWith("sql SELECT"), "notice A1"));
    EXPECT_EQ(Notices(), (std::vector<int>{1, 0, 0}));
}

TEST_F(CImputacionSistematicaReprogrammingTest, ReprogramarLeavesAnnulledRowsTheirReference) {
    AddThree("2500");
    imputaciones->Anular(8);
    imputaciones->ReprogramarImputacionesDeunActivo("A1", 8);
    EXPECT_THAT(References(), ElementsAre("0", "100", "0"));
    EXPECT_EQ(Accumulated("A1"), "0");
}

TEST_F(CImputacionSistematicaReprogrammingTest, AdelantarPullsTheChosenAndTheSmallerOnesBack) {
    const struct {
        const char* label;
        std::string accumulated;
        int chosen;
        std::vector<std::string> references;
    } cases[] = {
        {"the middle one", "2500", 8, {"1500", "500", "0"}},
        {"the largest", "2500", 9, {"1500", "500", "-1500"}},
        {"the smallest", "2500", 7, {"1500", "0", "0"}},
        {"below its interval", "300", 7, {"-700", "0", "0"}},
        {"a reading that rounds up", "2500.7", 7, {"1501", "0", "0"}},
        {"a reading halfway, to even", "2500.5", 7, {"1500", "0", "0"}},
    };
    AddThree("0", 0);
    for (const auto& c : cases) {
        SCOPED_TRACE(c.label);
        world.Run("UPDATE Activo SET Acumulado_Lectura = " + c.accumulated +
                  "; UPDATE Imputacion_Sistematica SET Ultimo_Acumulado = 0");
        imputaciones->AdelantarMantenimiento(c.chosen, "A1");
        EXPECT_EQ(References(), c.references);
        EXPECT_EQ(world.Scalar("SELECT printf('%.1f', Acumulado_Lectura) = printf('%.1f', " + c.accumulated +
                               ") FROM Activo"),
                  "1");
    }
    EXPECT_EQ(Reprogrammed().size(), std::size(cases));
}

TEST_F(CImputacionSistematicaReprogrammingTest, AdelantarMakesThemDueAndGoesRowByRowInOneTransaction) {
    AddThree("2500", 2400);
    imputaciones->AdelantarMantenimiento(8, "A1");
    const std::vector<std::string> story = world.Story();
    EXPECT_THAT(story,
                ElementsAre("service ServicioActivos.BuscarActivo",
                            ::testing::StartsWith("sql Select  Lectura_Limite FROM Imputacion_Sistematica,Activo,"),
                            ::testing::StartsWith("sql Select SC_Imputacion_Sistematica,Lectura_Limite,"
                                                  "Acumulado_Lectura FROM Imputacion_Sistematica,Activo, Gama,"),
                            "begin",
                            "sql   UPDATE Imputacion_Sistematica SET Ultimo_Acumulado = 500 WHERE "
                            "SC_Imputacion_Sistematica =8",
                            "sql   UPDATE Imputacion_Sistematica SET Ultimo_Acumulado = 1500 WHERE "
                            "SC_Imputacion_Sistematica =7",
                            "commit", "notice A1"));
    EXPECT_EQ(world.Record()[0].arguments, (std::vector<Value>{"A1", "Acumulado_Lectura"}));
    EXPECT_EQ(Due(), (std::vector<bool>{true, true, false}));
    EXPECT_THAT(References(), ElementsAre("1500", "500", "2400"));
}

TEST_F(CImputacionSistematicaReprogrammingTest, AdelantarGoesByTheIntervalAlone) {
    AddThree("2500", 2400);
    AddAsset("B1", "0");
    AddAssignment({20, "B1", 2000});
    AddAssignment({21, "A1", 2000, 2400});
    imputaciones->Anular(8);
    imputaciones->AdelantarMantenimiento(8, "A1");
    EXPECT_THAT(References(), ElementsAre("1500", "2400", "2400"));
    EXPECT_EQ(Reference(21), "500");

    imputaciones->AdelantarMantenimiento(20, "A1");
    EXPECT_THAT(References(), ElementsAre("1500", "2400", "2400"));
    EXPECT_EQ(Reference(20), "0");
}

TEST_F(CImputacionSistematicaReprogrammingTest, AdelantarTakesAllRowsOfTheChosenInterval) {
    AddThree("2500", 2400);
    AddAssignment({6, "A1", 2000, 2400});
    AddAssignment({10, "A1", 2000, 2400});
    imputaciones->AdelantarMantenimiento(8, "A1");
    EXPECT_EQ(Reference(6), "500");
    EXPECT_EQ(Reference(10), "500");
    EXPECT_THAT(References(), ElementsAre("1500", "500", "2400"));
}

TEST_F(CImputacionSistematicaReprogrammingTest, AdelantarWithoutLiveRowsOpensNoTransaction) {
    AddAsset("A1", "2500");
    AddAssignment({7, "A1", 1000, 100, 0, 1});
    const std::vector<std::string> before = Stored();
    imputaciones->AdelantarMantenimiento(7, "A1");
    EXPECT_EQ(Stored(), before);
    EXPECT_THAT(world.Story(), ::testing::Not(::testing::Contains("begin")));
    EXPECT_THAT(Reprogrammed(), ElementsAre("A1"));
}

TEST_F(CImputacionSistematicaReprogrammingTest, AdelantarPassesOverAnUnknownIntervalUntilTheChosenIsReached) {
    AddThree("2500", 2400);
    world.Run(
        "UPDATE Imputacion_Sistematica SET Lectura_Limite = NULL WHERE SC_Imputacion_Sistematica = 7;"
        "UPDATE Imputacion_Sistematica SET Anulada = 1 WHERE SC_Imputacion_Sistematica = 8");
    AddAsset("B1", "0");
    AddAssignment({20, "B1", 500});
    imputaciones->AdelantarMantenimiento(20, "A1");
    EXPECT_THAT(References(), ElementsAre("2400", "2400", "2400"));

    EXPECT_EQ(ErrorOf([&] { imputaciones->AdelantarMantenimiento(9, "A1"); }).number, 94);
    EXPECT_EQ(world.Depth(), 1);
    world.Abort();
    EXPECT_THAT(References(), ElementsAre("2400", "2400", "2400"));
}

TEST_F(CImputacionSistematicaReprogrammingTest, AdelantarRefusesWhatIsNotThereBeforeAnyChange) {
    AddThree("2500");
    AddAsset("A2", "NULL");
    const std::vector<std::string> before = Stored();
    const struct {
        const char* label;
        int chosen;
        const char* asset;
        std::int32_t number;
    } cases[] = {
        {"an unknown asset", 8, "NONE", 3021},
        {"an unknown assignment", 77, "A1", 3021},
        {"a reading that isn't known", 8, "A2", 94},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.label);
        const ErrorRecord error = ErrorOf([&] { imputaciones->AdelantarMantenimiento(c.chosen, c.asset); });
        EXPECT_EQ(error.number, c.number);
        EXPECT_THAT(CallsOf(error), ElementsAre("CImputacionSistematica.AdelantarMantenimiento(IDImputacion=" +
                                                std::to_string(c.chosen) + ", IDActivo='" + c.asset + "')"));
        EXPECT_EQ(world.Depth(), 0);
        EXPECT_EQ(Stored(), before);
    }
    EXPECT_THAT(Reprogrammed(), IsEmpty());
}

TEST_F(CImputacionSistematicaReprogrammingTest, AdelantarRefusesALevelThatDoesNotFit) {
    AddAsset("A1", "-2147483648");
    AddAssignment({7, "A1", 1, 5});
    EXPECT_EQ(ErrorOf([&] { imputaciones->AdelantarMantenimiento(7, "A1"); }).number, 6);
    EXPECT_EQ(world.Depth(), 1);
    world.Abort();
    EXPECT_EQ(Reference(7), "5");
    EXPECT_THAT(Reprogrammed(), IsEmpty());
}

TEST_F(CImputacionSistematicaReprogrammingTest, AFailureLeavesTheDepthRaisedAndSendsNothing) {
    AddThree("2500", 2400);
    const std::vector<std::string> before = Stored();
    const auto reprogram = [&] { imputaciones->ReprogramarImputacionesDeunActivo("A1", 8); };
    const auto advance = [&] { imputaciones->AdelantarMantenimiento(8, "A1"); };
    const std::string inReprogram =
        "CImputacionSistematica.ReprogramarImputacionesDeunActivo(IDActivo='A1', IdImputacionALanzar=8)";
    const std::string inAdvance = "CImputacionSistematica.AdelantarMantenimiento(IDImputacion=8, IDActivo='A1')";
    const auto reference = [](int key, const std::string& level) {
        return "CImputacionSistematica.ActualizarAcumuladoDeReferencia(SC_Imputacion_Sistematica=" +
               std::to_string(key) + ", Fecha_Lanzamiento='05/03/2026 08:00:00', NuevoAcumulado=" + level + ")";
    };
    const std::string read = "Libreria.AbrirRecordset(rs={Recordset}, strSQL={Text})";
    const struct {
        std::function<void()> work;
        const char* failing;
        int skip;
        std::vector<std::string> calls;
        int depth;
    } cases[] = {
        {reprogram,
         "sql SELECT",
         0,
         {read, "CImputacionSistematica.ListarImputacionesDeUnActivo(ID_Activo='A1', sColumnas='')", inReprogram},
         0},
        {reprogram, "begin", 0, {"Libreria.IniciarTransaccion()", inReprogram}, 1},
        {reprogram, "FijarAcumulado", 0, {inReprogram}, 1},
        {reprogram, "Ultimo_Acumulado = 0", 0, {reference(9, "0"), inReprogram}, 1},
        {reprogram, "Ultimo_Acumulado = 0", 2, {reference(7, "0"), inReprogram}, 1},
        {reprogram, "FijarAcumulado", 1, {inReprogram}, 1},
        {reprogram, "commit", 0, {"Libreria.TerminarTransaccion()", inReprogram}, 1},
        {advance, "BuscarActivo", 0, {inAdvance}, 0},
        {advance,
         "sql Select  Lectura_Limite ",
         0,
         {read, "CImputacionSistematica.Buscar(SC_Imputacion_Sistematica=8, sColumnas=' Lectura_Limite ')", inAdvance},
         0},
        {advance, "begin", 0, {"Libreria.IniciarTransaccion()", inAdvance}, 1},
        {advance, "Ultimo_Acumulado = 1500", 0, {reference(7, "1500"), inAdvance}, 1},
        {advance, "commit", 0, {"Libreria.TerminarTransaccion()", inAdvance}, 1},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.calls.back() + " at " + c.failing + ", " + std::to_string(c.skip) + " passed");
        world.FailOn(c.failing, Refused(19), "forced failure", c.skip);
        const ErrorRecord error = ErrorOf(c.work);
        EXPECT_EQ(error.number, Refused(19));
        EXPECT_EQ(CallsOf(error), c.calls);
        EXPECT_EQ(world.Depth(), c.depth);
        world.Abort();
        EXPECT_EQ(Stored(), before);
        EXPECT_THAT(Reprogrammed(), IsEmpty());
    }
}

}  // namespace

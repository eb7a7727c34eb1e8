#include "frame/Libreria.h"
#include "meter/CImputacionSistematica.h"
#include "tests/meter/generation_test.h"

#include <algorithm>

using namespace Zontara;
using namespace support;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

class GenerarOTSSistematicasTest : public GenerationTest {};

TEST_F(GenerarOTSSistematicasTest, WithoutAssetsNothingIsAskedAndNoNoticeGoesOut) {
    Generate();
    EXPECT_THAT(world.Story(), ElementsAre("service ServicioActivos.SeleccionarActivos"));
    EXPECT_THAT(CallsTo("ServicioActivos.SeleccionarActivos"), ElementsAre(std::vector<Value>{"", 0, 0, true, 0}));
    EXPECT_EQ(Notices(), (std::vector<int>{0, 0, 0}));
}

TEST_F(GenerarOTSSistematicasTest, AssetsWithoutLiveAssignmentsArePassedOverAndOneNoticeGoesOut) {
    AddAsset("A1", "2500");
    AddAsset("A2", "2500");
    AddAssignment({7, "A2", 1000, 0, 0, 1});
    Generate();
    EXPECT_THAT(Ordered(), IsEmpty());
    EXPECT_THAT(world.Story(), ElementsAre("service ServicioActivos.SeleccionarActivos",
                                           ::testing::StartsWith("sql Select SC_Imputacion_Sistematica,"),
                                           ::testing::StartsWith("sql Select SC_Imputacion_Sistematica,"), "notice "));
    EXPECT_EQ(Notices(), (std::vector<int>{0, 1, 0}));
}

TEST_F(GenerarOTSSistematicasTest, ListsTheAssignmentsOfEachAssetWithItsOwnColumns) {
    AddAsset("A1", "0");
    Generate();
    EXPECT_THAT(
        world.Statements(),
        ElementsAre(
            "Select SC_Imputacion_Sistematica,Fecha_Ultimo_Lanzamiento,Unidad_Lectura.descripcion as "
            "unidad,Anulada,Activo.SC_Unidad_Lectura , "
            "Acumulado_Lectura,Finaliza,Fecha_Inicio,Fecha_Fin,Lectura_Limite,Gama.SC_Gama,Activo.ID_Activo,Gama."
            "Numero_Gama ,Activo.Equipo_Parado,Grupo_Gama.Descripcion,Gama.SC_Ejecutor_Gama,Ultimo_Acumulado  FROM "
            "Imputacion_Sistematica,Activo, Gama,Grupo_Gama,Unidad_Lectura  WHERE  Imputacion_Sistematica.ID_Activo = "
            "Activo.ID_Activo  and Activo.sc_unidad_lectura = Unidad_Lectura.sc_unidad_lectura  and  Gama.SC_Gama = "
            "Imputacion_Sistematica.SC_Gama and    Grupo_Gama.SC_Grupo_Gama = Gama.SC_Grupo_Gama and  "
            "Imputacion_Sistematica.ID_Activo ='A1' and  Anulada = 0 order by Lectura_Limite desc"));
}

TEST_F(GenerarOTSSistematicasTest, GoesThroughTheStepsOfAnOrderInTheirOrder) {
    AddAsset("A1", "2500");
    AddMaterials();
    AddAssignment({8, "A1", 2000});
    Generate();
    using ::testing::StartsWith;
    EXPECT_THAT(
        world.Story(),
        ElementsAre(
            "service ServicioActivos.SeleccionarActivos", StartsWith("sql Select SC_Imputacion_Sistematica,"), "begin",
            "service ServicioProcesos.SeleccionarProcesos", "service OrdenTrabajo.CrearOrden", "key Orden_Generada",
            "sql   INSERT Into orden_generada (SC_Orden_Generada ,SC_Orden_Trabajo "
            ",SC_Imputacion_Sistematica,Fecha_Generacion ) VALUES (1,1,8,'2026-03-05')",
            "sql SELECT * FROM materiales_gama Where sc_gama =30", "service ServicioMaterialesOT.AgregarItemOT",
            "service ServicioMaterialesOT.AgregarItemOT", StartsWith("sql Select Hombres_Necesarios,Tiempo_Necesario"),
            "service OrdenTrabajo.AsignarManoObra",
            "sql   UPDATE Imputacion_Sistematica SET Ultimo_Acumulado = 2500 WHERE "
            "SC_Imputacion_Sistematica =8",
            "commit", "notice "));
    EXPECT_THAT(CallsTo("OrdenTrabajo.AsignarManoObra"), ElementsAre(std::vector<Value>{1, std::int16_t{2}, 1.5F}));
}

TEST_F(GenerarOTSSistematicasTest, MakesOrdersFromTheFirstDueRowOnInOneTransaction) {
    AddAsset("A1", "2500");
    AddAssignment({7, "A1", 1000});
    AddAssignment({8, "A1", 2000});
    AddAssignment({9, "A1", 4000});
    Generate();
    EXPECT_THAT(Ordered(), ElementsAre("8", "7"));
    EXPECT_EQ(Reference(7), "2500");
    EXPECT_EQ(Reference(8), "2500");
    EXPECT_EQ(Reference(9), "0");
    EXPECT_THAT(Log(), ElementsAre("1|1|8|2026-03-05|NULL", "2|2|7|2026-03-05|NULL"));
    const std::vector<std::string> story = world.Story();
    EXPECT_EQ(std::count(story.begin(), story.end(), "begin"), 1);
    EXPECT_EQ(std::count(story.begin(), story.end(), "commit"), 1);
    EXPECT_EQ(story[2], "begin");
    EXPECT_EQ(story[story.size() - 2], "commit");
    EXPECT_EQ(story.back(), "notice ");
    EXPECT_EQ(world.Depth(), 0);
}

TEST_F(GenerarOTSSistematicasTest, PassesOverARowThatIsNotDueBehindOneThatIs) {
    AddAsset("A1", "3500");
    AddAssignment({7, "A1", 1000});
    AddAssignment({8, "A1", 2000, 3000});
    AddAssignment({9, "A1", 3000});
    Generate();
    EXPECT_THAT(Ordered(), ElementsAre("9", "7"));
    EXPECT_EQ(Reference(8), "3000");
}

TEST_F(GenerarOTSSistematicasTest, ALargerIntervalThatIsNotDueComesFirstAndStaysOutside) {
    AddAsset("A1", "3500");
    AddAssignment({7, "A1", 1000});
    AddAssignment({8, "A1", 4000, 3000});
    Generate();
    EXPECT_THAT(Ordered(), ElementsAre("7"));
    EXPECT_EQ(Reference(7), "3500");
    EXPECT_EQ(Reference(8), "3000");
}

TEST_F(GenerarOTSSistematicasTest, EachAssetHasATransactionOfItsOwn) {
    for (const char* asset : {"A1", "A2", "A3"})
        AddAsset(asset, "1000");
    AddAssignment({7, "A3", 1000});
    AddAssignment({8, "A1", 1000});
    AddAssignment({9, "A2", 1001});
    Generate();
    EXPECT_THAT(Ordered(), ElementsAre("8", "7"));
    std::vector<std::string> marks;
    for (const std::string& line : world.Story()) {
        if (line == "begin" || line == "commit" || line == "notice ") marks.push_back(line);
    }
    EXPECT_THAT(marks, ElementsAre("begin", "commit", "begin", "commit", "notice "));
}

TEST_F(GenerarOTSSistematicasTest, GivesCrearOrdenItsFifteenArguments) {
    AddAsset("A1", "1520");
    AddAssignment({7, "A1", 500, 1000});
    Generate();
    EXPECT_THAT(
        CallsTo("OrdenTrabajo.CrearOrden"),
        ElementsAre(std::vector<Value>{0, "Motor", "05/03/2026", "05/03/2026", 1, 44,
                                       "Execute Task  Nº 3 of 500 km after been reached the accumulated 1520 km", 11,
                                       std::int16_t{3}, "A1", 9, 6, 0, 7, 0}));
    EXPECT_THAT(CallsTo("ServicioProcesos.SeleccionarProcesos"), ElementsAre(std::vector<Value>{1}));
}

TEST_F(GenerarOTSSistematicasTest, AnExternalExecutorGoesWhereTheInternalOneDoesNot) {
    AddAsset("A1", "1000");
    AddAssignment({7, "A1", 500});
    config->EsEjecutorExterno(true);
    Generate();
    EXPECT_EQ(world.Scalar("SELECT SC_Ejecutor_Interno || ',' || SC_Ejecutor_Externo FROM Orden_Trabajo"), "0,44");
}

TEST_F(GenerarOTSSistematicasTest, WithoutAProcessTheOrderIsMadeWithProcessZero) {
    AddAsset("A1", "1000");
    AddAssignment({7, "A1", 500});
    world.Run("DELETE FROM Proceso");
    Generate();
    EXPECT_EQ(world.Scalar("SELECT SC_Proceso FROM Orden_Trabajo"), "0");
}

TEST_F(GenerarOTSSistematicasTest, WritesTheDateInItsDefaultText) {
    AddAsset("A1", "1000");
    AddAssignment({7, "A1", 500});
    world.Platform().shortDate = "yyyy-mm-dd";
    imputaciones->GenerarOTSSistematicas(World::Day("2026-03-05 14:30:05"), config);
    const std::vector<Value> arguments = CallsTo("OrdenTrabajo.CrearOrden").at(0);
    EXPECT_EQ(arguments[2], Value("2026-03-05 14:30:05"));
    EXPECT_EQ(arguments[3], Value("2026-03-05 14:30:05"));
    EXPECT_THAT(Log(), ElementsAre("1|1|7|2026-03-05|NULL"));
}

TEST_F(GenerarOTSSistematicasTest, TheTextShowsTheRowsReadingAndTheReferenceTakesTheSelections) {
    AddAsset("A1", "1000.5");
    AddAssignment({7, "A1", 1000});
    Generate();
    EXPECT_THAT(ToText(CallsTo("OrdenTrabajo.CrearOrden").at(0)[6]),
                ::testing::EndsWith("after been reached the accumulated 1000.5 km"));
    EXPECT_EQ(Reference(7), "1000");
}

TEST_F(GenerarOTSSistematicasTest, TestsTheReadingRoundedToAWholeNumber) {
    const struct {
        const char* label;
        std::string accumulated;
        bool due;
    } cases[] = {
        {"half to even, up", "999.5", true},
        {"just under half", "999.49", false},
        {"a limit missed by half, to even", "998.5", false},
    };
    int key = 1;
    for (const auto& c : cases) {
        SCOPED_TRACE(c.label);
        const std::string asset = "A" + std::to_string(key);
        AddAsset(asset, c.accumulated);
        AddAssignment({key, asset, 1000});
        Generate();
        EXPECT_EQ(world.Scalar("SELECT COUNT(*) FROM Orden_Trabajo WHERE ID_Activo = '" + asset + "'"),
                  c.due ? "1" : "0");
        ++key;
    }
}

TEST_F(GenerarOTSSistematicasTest, CopiesMaterialsAndLabourOntoTheOrder) {
    AddAsset("A1", "1000");
    AddMaterials();
    AddAssignment({7, "A1", 500});
    Generate();
    EXPECT_THAT(world.Rows("SELECT SC_Orden_Trabajo, Linea, Descripcion, Costo_Unitario, Cantidad FROM Material_OT"),
                ElementsAre("1|2|Aceite|2.5|10", "1|2|Filtro|3|1"));
    EXPECT_EQ(world.Scalar("SELECT Hombres || ',' || Tiempo FROM Orden_Trabajo"), "2,1.5");
}

TEST_F(GenerarOTSSistematicasTest, ASecondRunMakesNothingButItsNotice) {
    AddAsset("A1", "2500");
    AddAssignment({7, "A1", 1000});
    Generate();
    const std::vector<std::string> before = Stored();
    Generate();
    EXPECT_EQ(Stored(), before);
    EXPECT_EQ(Notices(), (std::vector<int>{0, 2, 0}));
}

TEST_F(GenerarOTSSistematicasTest, AnIntervalOfZeroOrLessIsDueAtEveryRun) {
    AddAsset("A1", "0");
    AddAssignment({7, "A1", 0});
    AddAssignment({8, "A1", -5});
    Generate();
    Generate();
    EXPECT_THAT(Ordered(), ElementsAre("7", "8", "7", "8"));
}

TEST_F(GenerarOTSSistematicasTest, TakesAssetsInServiceOfAChapterAndAProject) {
    int key = 0;
    for (const char* asset : {"A1", "A2", "B1", "C1"}) {
        AddAsset(asset, "1000");
        AddAssignment({++key, asset, 1000});
    }
    world.Run(
        "UPDATE Activo SET estatus_actual = 4 WHERE ID_Activo = 'A2';"
        "UPDATE Activo SET sc_proyecto = 8 WHERE ID_Activo = 'C1'");
    imputaciones->GenerarOTSSistematicas(day, config, "A");
    EXPECT_THAT(Ordered(), ElementsAre("1"));
    imputaciones->GenerarOTSSistematicas(day, config, "", 0, 8);
    EXPECT_THAT(Ordered(), ElementsAre("1", "4"));
    EXPECT_THAT(CallsTo("ServicioActivos.SeleccionarActivos"),
                ElementsAre(std::vector<Value>{"A", 0, 0, true, 0}, std::vector<Value>{"", 0, 0, true, 8}));
}

TEST_F(GenerarOTSSistematicasTest, ALocationHasNoEffect) {
    AddAsset("A1", "1000");
    AddAssignment({7, "A1", 1000});
    imputaciones->GenerarOTSSistematicas(day, config, "", 555);
    EXPECT_THAT(CallsTo("ServicioActivos.SeleccionarActivos"), ElementsAre(std::vector<Value>{"", 0, 0, true, 0}));
    EXPECT_THAT(Ordered(), ElementsAre("7"));
}

TEST_F(GenerarOTSSistematicasTest, LooksAtNeitherDatesNorFlags) {
    AddAsset("A1", "1000");
    AddAssignment({7, "A1", 1000});
    world.Run(
        "UPDATE Imputacion_Sistematica SET Fecha_Inicio = '2027-01-01', Fecha_Fin = '2020-01-01', Finaliza = 1;"
        "UPDATE Activo SET Equipo_Parado = 1");
    Generate();
    EXPECT_THAT(Ordered(), ElementsAre("7"));
    EXPECT_EQ(world.Scalar("SELECT Fecha_Ultimo_Lanzamiento FROM Imputacion_Sistematica"), "NULL");
}

TEST_F(GenerarOTSSistematicasTest, LeavesParallelsAlone) {
    AddAsset("A1", "1000");
    AddAssignment({7, "A1", 1000});
    AddAssignment({8, "A1", 5000});
    world.Run("INSERT INTO Imputacion_Paralela VALUES (1, 7, 8)");
    Generate();
    EXPECT_EQ(Reference(8), "0");
    for (const std::string& statement : world.Statements()) {
        EXPECT_THAT(statement, ::testing::Not(::testing::HasSubstr("Imputacion_Paralela")));
    }
}

TEST_F(GenerarOTSSistematicasTest, InsideATransactionOfTheCallerCommitsNothing) {
    AddAsset("A1", "1000");
    AddAssignment({7, "A1", 1000});
    const std::vector<std::string> before = Stored();
    Libreria::IniciarTransaccion();
    Generate();
    EXPECT_EQ(world.Depth(), 1);
    EXPECT_THAT(Ordered(), ElementsAre("7"));
    world.Abort();
    EXPECT_EQ(Stored(), before);
}

TEST_F(GenerarOTSSistematicasTest, MakesItsHelpersOnceAndTheMaterialsOnlyForAnOrder) {
    struct Watcher : LifeWatcher {
        std::vector<std::string> lives;
        void Creating(std::string_view name) override { lives.push_back("+" + std::string(name)); }
        void Releasing(std::string_view name) override { lives.push_back("-" + std::string(name)); }
        int Made(const std::string& name) const {
            return static_cast<int>(std::count(lives.begin(), lives.end(), "+" + name));
        }
    } watcher;
    AddAsset("A1", "0");
    AddAsset("A2", "0");
    AddAssignment({7, "A1", 1000});
    AddAssignment({8, "A2", 1000});
    ReplaceLifeWatcher(&watcher);
    Generate();
    EXPECT_THAT(watcher.lives, ElementsAre("+COrdenGenerada", "-COrdenGenerada"));
    world.Run("UPDATE Activo SET Acumulado_Lectura = 1000");
    Generate();
    ReplaceLifeWatcher(nullptr);
    EXPECT_EQ(watcher.Made("COrdenGenerada"), 2);
    EXPECT_EQ(watcher.Made("CMaterialGama"), 1);
    EXPECT_THAT(Ordered(), ElementsAre("7", "8"));
}

TEST_F(GenerarOTSSistematicasTest, LanzarSistematicoLeavesEverythingAsItWas) {
    AddAsset("A1", "1000");
    AddAssignment({7, "A1", 1000});
    const std::vector<std::string> before = Stored();
    imputaciones->LanzarSistematico(day, 9, "A");
    imputaciones->LanzarSistematico({}, -1);
    EXPECT_EQ(Stored(), before);
    EXPECT_THAT(world.Story(), IsEmpty());
    EXPECT_EQ(Notices(), (std::vector<int>{0, 0, 0}));
}

}  // namespace

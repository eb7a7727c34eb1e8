#include "meter/CImputacionSistematica.h"
#include "tests/meter/generation_test.h"

using namespace Zontara;
using namespace support;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

constexpr const char* kRun =
    "CImputacionSistematica.GenerarOTSSistematicas(Fecha_Lanzamiento='05/03/2026', ConfigOT={CConfiguracionOTBoletin}, "
    "ID_Capitulo='', ID_Localizacion=0)";
constexpr const char* kNuevaOT =
    "CImputacionSistematica.NuevaOT(rs={Recordset}, Fecha_Lanzamiento='05/03/2026', "
    "ConfiguracionOT={CConfiguracionOTBoletin})";
constexpr const char* kRead = "Libreria.AbrirRecordset(rs={Recordset}, strSQL={Text})";

class GenerarOTSSistematicasFailureTest : public GenerationTest {
protected:
    GenerarOTSSistematicasFailureTest() {
        AddAsset("A1", "2500");
        AddAsset("A2", "2500");
        AddAsset("A3", "2500");
        AddMaterials();
        int key = 0;
        for (const char* asset : {"A1", "A2", "A3"}) {
            AddAssignment({++key, asset, 2000});
            AddAssignment({++key, asset, 1000});
        }
    }
    std::vector<std::string> References() {
        return world.Rows("SELECT Ultimo_Acumulado FROM Imputacion_Sistematica ORDER BY SC_Imputacion_Sistematica");
    }
};

/// Where a run over three assets of two orders each fails, always at work on the second.
struct Step {
    std::string failing;
    int skip;
    std::vector<std::string> calls;
    int depth;
};

std::vector<Step> StepsOfTheSecondAsset() {
    const std::string log = "COrdenGenerada.Nuevo(SC_Orden_Trabajo=3, SC_Imputacion=3, Fecha_Generacion='05/03/2026')";
    const std::string materials = "CMaterialGama.AgregarMaterialesAOT(numeroOT=3, NumeroGama=30)";
    const std::string labour = "CMaterialGama.AsignarManoObraAOT(numeroOT=3, NumeroGama=30)";
    const std::string second =
        "COrdenGenerada.Nuevo(SC_Orden_Trabajo=4, SC_Imputacion=4, Fecha_Generacion='05/03/2026')";
    return {
        {"sql Select SC_Imputacion_Sistematica,",
         1,
         {kRead, "CImputacionSistematica.ListarImputacionesDeUnActivo(ID_Activo='A2', sColumnas={Text})", kRun},
         0},
        {"begin", 1, {"Libreria.IniciarTransaccion()", kRun}, 1},
        {"ServicioProcesos.SeleccionarProcesos", 2, {kNuevaOT, kRun}, 1},
        {"OrdenTrabajo.CrearOrden", 2, {kNuevaOT, kRun}, 1},
        {"key Orden_Generada", 2, {log, kRun}, 2},
        {"sql   INSERT Into orden_generada", 2, {log, kRun}, 2},
        {"sql SELECT * FROM materiales_gama",
         2,
         {kRead, "CMaterialGama.ListarMaterialesDeUnaGama(NumeroGama=30)", materials, kRun},
         1},
        {"ServicioMaterialesOT.AgregarItemOT", 5, {materials, kRun}, 1},
        {"sql Select Hombres_Necesarios",
         2,
         {kRead, "CGama.Buscar(SC_Gama=30, sColumnas='Hombres_Necesarios,Tiempo_Necesario')", labour, kRun},
         1},
        {"OrdenTrabajo.AsignarManoObra", 2, {labour, kRun}, 1},
        {"SET Ultimo_Acumulado",
         2,
         {"CImputacionSistematica.ActualizarAcumuladoDeReferencia(SC_Imputacion_Sistematica=3, "
          "Fecha_Lanzamiento='05/03/2026', NuevoAcumulado=2500)",
          kRun},
         1},
        {"sql   INSERT Into orden_generada", 3, {second, kRun}, 2},
        {"commit", 1, {"Libreria.TerminarTransaccion()", kRun}, 1},
    };
}

class GenerarOTSSistematicasStepTest : public GenerarOTSSistematicasFailureTest,
                                       public ::testing::WithParamInterface<Step> {};

TEST_P(GenerarOTSSistematicasStepTest, AFailureKeepsTheAssetsBeforeAndUndoesTheOneAtWork) {
    const Step& step = GetParam();
    SCOPED_TRACE(step.failing + ", " + std::to_string(step.skip) + " passed");
    world.FailOn(step.failing, Refused(19), "forced failure", step.skip);
    const ErrorRecord error = ErrorOf([&] { Generate(); });
    EXPECT_EQ(error.number, Refused(19));
    EXPECT_EQ(error.source, "HuntERR.ErrorIn");
    EXPECT_EQ(CallsOf(error), step.calls);
    EXPECT_EQ(world.Depth(), step.depth);
    EXPECT_THAT(world.Story().back(), ::testing::HasSubstr(step.failing)) << "something ran after the failure";
    EXPECT_EQ(Notices(), (std::vector<int>{0, 0, 0}));

    world.Abort();
    EXPECT_THAT(Ordered(), ElementsAre("1", "2"));
    EXPECT_THAT(References(), ElementsAre("2500", "2500", "0", "0", "0", "0"));
    EXPECT_THAT(Log(), ElementsAre("1|1|1|2026-03-05|NULL", "2|2|2|2026-03-05|NULL"));
    EXPECT_EQ(world.Scalar("SELECT COUNT(*) FROM Material_OT"), "4");
}

INSTANTIATE_TEST_SUITE_P(OfTheSecondAsset, GenerarOTSSistematicasStepTest,
                         ::testing::ValuesIn(StepsOfTheSecondAsset()));

TEST_F(GenerarOTSSistematicasFailureTest, ARunAfterTheAbortTakesUpWhereTheFailedOneEnded) {
    world.FailOn("OrdenTrabajo.CrearOrden", Refused(19), "forced failure", 3);
    ErrorOf([&] { Generate(); });
    world.Abort();
    Generate();
    EXPECT_THAT(Ordered(), ElementsAre("1", "2", "3", "4", "5", "6"));
    EXPECT_THAT(References(), ElementsAre("2500", "2500", "2500", "2500", "2500", "2500"));
    EXPECT_EQ(imputaciones->OrdenesSistematicasGeneradas()->Total(), 1);
}

TEST_F(GenerarOTSSistematicasFailureTest, AFailedSelectionEndsTheRunBeforeAnyChange) {
    const std::vector<std::string> before = Stored();
    world.FailOn("SeleccionarActivos");
    EXPECT_THAT(CallsOf(ErrorOf([&] { Generate(); })), ElementsAre(kRun));
    EXPECT_EQ(Stored(), before);
    EXPECT_EQ(world.Depth(), 0);
    EXPECT_EQ(imputaciones->OrdenesSistematicasGeneradas()->Total(), 0);
}

TEST_F(GenerarOTSSistematicasFailureTest, TheReportShowsTheArgumentsButTheProject) {
    world.FailOn("SeleccionarActivos");
    const ErrorRecord error =
        ErrorOf([&] { imputaciones->GenerarOTSSistematicas(World::Day("2026-03-05 08:00:00"), nullptr, "A", 5, 8); });
    EXPECT_THAT(CallsOf(error),
                ElementsAre("CImputacionSistematica.GenerarOTSSistematicas(Fecha_Lanzamiento='05/03/2026 08:00:00', "
                            "ConfigOT={Nothing}, ID_Capitulo='A', ID_Localizacion=5)"));
}

TEST_F(GenerarOTSSistematicasFailureTest, WithoutAConfigurationTheFirstDueRowIsRefused) {
    const std::vector<std::string> before = Stored();
    const ErrorRecord error = ErrorOf([&] { imputaciones->GenerarOTSSistematicas(day, nullptr); });
    EXPECT_EQ(error.number, 91);
    EXPECT_THAT(CallsOf(error),
                ElementsAre("CImputacionSistematica.NuevaOT(rs={Recordset}, Fecha_Lanzamiento='05/03/2026', "
                            "ConfiguracionOT={Nothing})",
                            "CImputacionSistematica.GenerarOTSSistematicas(Fecha_Lanzamiento='05/03/2026', "
                            "ConfigOT={Nothing}, ID_Capitulo='', ID_Localizacion=0)"));
    EXPECT_EQ(world.Depth(), 1);
    world.Abort();
    EXPECT_EQ(Stored(), before);
}

TEST_F(GenerarOTSSistematicasFailureTest, WithoutAConfigurationNothingDueIsNoError) {
    world.Run("UPDATE Imputacion_Sistematica SET Ultimo_Acumulado = 2500");
    imputaciones->GenerarOTSSistematicas(day, nullptr);
    EXPECT_THAT(Ordered(), IsEmpty());
    EXPECT_EQ(imputaciones->OrdenesSistematicasGeneradas()->Total(), 1);
}

TEST_F(GenerarOTSSistematicasFailureTest, RefusesWhatDoesNotFitOrIsNotKnown) {
    const std::vector<std::string> before = Stored();
    const struct {
        const char* label;
        const char* change;
        std::int32_t priority;
        std::int32_t number;
        int depth;
    } cases[] = {
        {"a priority above 16 bits", "", 32768, 6, 1},
        {"a priority below 16 bits", "", -32769, 6, 1},
        {"a growth above 32 bits",
         "UPDATE Activo SET Acumulado_Lectura = 2147483647; UPDATE Imputacion_Sistematica SET Ultimo_Acumulado = -1", 3,
         6, 0},
        {"a reading above 32 bits", "UPDATE Activo SET Acumulado_Lectura = 2147483648", 3, 6, 0},
        {"a reading that isn't known", "UPDATE Activo SET Acumulado_Lectura = NULL", 3, 94, 0},
        {"an interval that isn't known", "UPDATE Imputacion_Sistematica SET Lectura_Limite = NULL", 3, 94, 0},
        {"a reference that isn't known", "UPDATE Imputacion_Sistematica SET Ultimo_Acumulado = NULL", 3, 94, 0},
        {"a group without description", "UPDATE Grupo_Gama SET Descripcion = NULL", 3, 94, 1},
        {"a process without status", "UPDATE Proceso SET Estatus_Valido = NULL", 3, 94, 1},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.label);
        world.Run(c.change);
        const std::vector<std::string> changed = Stored();
        config->PrioridadSolicitada(c.priority);
        const ErrorRecord error = ErrorOf([&] { Generate(); });
        EXPECT_EQ(error.number, c.number);
        EXPECT_THAT(CallsOf(error), ::testing::Contains(kRun));
        EXPECT_EQ(world.Depth(), c.depth);
        world.Abort();
        EXPECT_EQ(Stored(), changed);
        world.Run(
            "UPDATE Activo SET Acumulado_Lectura = 2500; UPDATE Proceso SET Estatus_Valido = 2;"
            "UPDATE Grupo_Gama SET Descripcion = 'Motor'; UPDATE Imputacion_Sistematica SET Ultimo_Acumulado = 0,"
            " Lectura_Limite = 2000 - 1000 * (SC_Imputacion_Sistematica % 2 = 0)");
        ASSERT_EQ(Stored(), before);
    }
}

TEST_F(GenerarOTSSistematicasFailureTest, TakesAPriorityOfSixteenBits) {
    config->PrioridadSolicitada(-32768);
    Generate();
    EXPECT_EQ(world.Scalar("SELECT DISTINCT Prioridad FROM Orden_Trabajo"), "-32768");
}

TEST_F(GenerarOTSSistematicasFailureTest, AUnitWithoutDescriptionLeavesItsPlaceInTheTextEmpty) {
    world.Run("UPDATE Unidad_Lectura SET Descripcion = NULL; UPDATE Gama SET Numero_Gama = NULL");
    Generate();
    EXPECT_EQ(ToText(CallsTo("OrdenTrabajo.CrearOrden").at(0)[6]),
              "Execute Task  Nº  of 2000  after been reached the accumulated 2500 ");
}

}  // namespace

#include "calendar/CImputacionPreventiva.h"

#include "bulletins/CConfiguracionOTBoletin.h"
#include "frame/convert.h"
#include "tests/calendar/plant.h"

namespace {

using support::Asked;
using support::World;
using testing::ElementsAre;
using testing::IsEmpty;
using Zontara::CConfiguracionOTBoletin;
using Zontara::Ref;
using Zontara::Value;

/// Arguments as the texts of their kinds and values: "int32 7", "text Oil".
std::vector<std::string> Told(const std::vector<Value>& arguments) {
    std::vector<std::string> told;
    for (const Value& value : arguments) {
        const bool isText = value.Is<std::string>();
        const char* kind = isText ? "text " : value.Is<std::int16_t>() ? "int16 " : "int32 ";
        told.push_back(kind + Zontara::ToText(value));
    }
    return told;
}

class LanzarPreventivoOrdersTest : public support::CalendarTest {
protected:
    LanzarPreventivoOrdersTest() {
        configuration->UsuarioDestino(41);
        configuration->CodigoEjecutorOT(42);
        configuration->PrioridadSolicitada(4);
        configuration->TipoIntervencion(43);
        world.Run(
            "INSERT INTO Proceso (SC_Proceso, Activo) VALUES (5, 1);"
            "INSERT INTO materiales_gama VALUES (1, 'Oil', 2.5, 4, 7, 1), (2, 'Filter', 10, 1, 7, 2)");
    }

    std::int32_t LaunchOrders(const std::string& day) {
        return preventive->LanzarPreventivo(World::Day(day), 3, "Breve", configuration);
    }
    /// Arguments of each `CrearOrden`.
    std::vector<std::vector<std::string>> Orders() {
        std::vector<std::vector<std::string>> orders;
        for (const Asked& asked : world.Record()) {
            if (asked.text == "OrdenTrabajo.CrearOrden") orders.push_back(Told(asked.arguments));
        }
        return orders;
    }

    Ref<CConfiguracionOTBoletin> configuration = Zontara::Create<CConfiguracionOTBoletin>();
};

TEST_F(LanzarPreventivoOrdersTest, ADueRowBecomesAnOrderWithLogMaterialsAndLabourAndNoBulletin) {
    Add({.key = 4, .frequency = "Mensual"});
    EXPECT_EQ(LaunchOrders("2026-03-05"), 1);
    const std::vector<std::string> story = world.Story();
    EXPECT_THAT(std::vector<std::string>(story.begin() + 1, story.end()),
                ElementsAre("event ImputacionesRecuperadas", "begin", "event ProcesandoImputacion",
                            "service ServicioProcesos.SeleccionarProcesos", "service OrdenTrabajo.CrearOrden",
                            "key Orden_Generada",
                            "sql   INSERT Into orden_generada (SC_Orden_Generada ,SC_Orden_Trabajo "
                            ",SC_Imputacion_Sistematica,Fecha_Generacion ) VALUES (1,1,99,'2026-03-05')",
                            "sql SELECT * FROM materiales_gama Where sc_gama =7",
                            "service ServicioMaterialesOT.AgregarItemOT", "service ServicioMaterialesOT.AgregarItemOT",
                            testing::StartsWith("sql Select Hombres_Necesarios,Tiempo_Necesario"),
                            "service OrdenTrabajo.AsignarManoObra",
                            "sql UPDATE Imputacion_Preventiva SET  Fecha_Ultimo_Lanzamiento ='2026-03-05' ,  Semana = "
                            "10 Where SC_Imputacion_Preventiva =4",
                            "commit", "notice "));
    EXPECT_THAT(Bulletins(), IsEmpty());
    EXPECT_EQ(State(4), "2026-03-05|10|0|0");
    EXPECT_THAT(world.Rows("SELECT SC_Orden_Trabajo, SC_Imputacion_Sistematica, Fecha_Generacion FROM Orden_Generada"),
                ElementsAre("1|99|2026-03-05"));
    EXPECT_THAT(world.Rows("SELECT Hombres, Tiempo FROM Orden_Trabajo"), ElementsAre("2|1.5"));
    EXPECT_EQ(world.Scalar("SELECT COUNT(*) FROM Material_OT"), "2");
}

TEST_F(LanzarPreventivoOrdersTest, CrearOrdenGetsItsFifteenArguments) {
    Add({.key = 4, .frequency = "Mensual"});
    LaunchOrders("2026-03-06");
    EXPECT_THAT(Orders(), ElementsAre(ElementsAre(
                              "int32 0", "text Oil change", "text 05/03/2026 08:00:00", "text 09/03/2026 08:00:00",
                              "int32 0", "int32 42", "text Execute Task --- Nº 12 ,Frequency Mensual", "int32 41",
                              "int16 4", "text A-1", "int32 43", "int32 5", "int32 0", "int32 0", "int32 7")));
}

TEST_F(LanzarPreventivoOrdersTest, AnExternalExecutorGoesIntoTheOtherArgument) {
    Add({.key = 4});
    configuration->EsEjecutorExterno(true);
    LaunchOrders("2026-03-05");
    ASSERT_EQ(Orders().size(), 1u);
    EXPECT_EQ(Orders()[0][5], "int32 0");
    EXPECT_EQ(Orders()[0][12], "int32 42");
}

TEST_F(LanzarPreventivoOrdersTest, BothExecutorsStayForTheRunOnceTheyWereSet) {
    Add({.key = 1});
    Add({.key = 2});
    preventive->Subscribe([&](std::string_view event, Value& argument) {
        if (event == "ProcesandoImputacion" && argument == Value(2)) configuration->EsEjecutorExterno(true);
    });
    EXPECT_EQ(LaunchOrders("2026-03-05"), 2);
    EXPECT_EQ(Orders()[1][5], "int32 42");
    EXPECT_EQ(Orders()[1][12], "int32 42");
}

TEST_F(LanzarPreventivoOrdersTest, WithoutAnyProcessTheOrderGetsProcessZero) {
    Add({.key = 4});
    world.Run("DELETE FROM Proceso");
    EXPECT_EQ(LaunchOrders("2026-03-05"), 1);
    EXPECT_EQ(Orders()[0][11], "int32 0");
}

TEST_F(LanzarPreventivoOrdersTest, TheProcessStaysFromRowToRowWhenALookUpFindsNone) {
    Add({.key = 1});
    Add({.key = 2});
    preventive->Subscribe([&](std::string_view event, Value& argument) {
        if (event == "ProcesandoImputacion" && argument == Value(2)) world.Run("DELETE FROM Proceso");
    });
    EXPECT_EQ(LaunchOrders("2026-03-05"), 2);
    EXPECT_EQ(Orders()[0][11], "int32 5");
    EXPECT_EQ(Orders()[1][11], "int32 5");
}

TEST_F(LanzarPreventivoOrdersTest, NoConfiguredValueAtAllIsInOrder) {
    Add({.key = 4});
    configuration = Zontara::Create<CConfiguracionOTBoletin>();
    EXPECT_EQ(LaunchOrders("2026-03-05"), 1);
    EXPECT_EQ(Orders()[0][3], "text 05/03/2026 08:00:00");
    EXPECT_EQ(Orders()[0][5], "int32 0");
    EXPECT_EQ(Orders()[0][8], "int16 0");
}

TEST_F(LanzarPreventivoOrdersTest, ANumberOfTheTaskThatIsNullIsLeftOutOfTheWorkText) {
    Add({.key = 4});
    world.Run("UPDATE Gama SET Numero_Gama = NULL");
    LaunchOrders("2026-03-05");
    EXPECT_EQ(Orders()[0][6], "text Execute Task --- Nº  ,Frequency Semanal");
}

TEST_F(LanzarPreventivoOrdersTest, TheLogCarriesTheBookedDayAndNotTheDayOfTheRun) {
    Add({.key = 4, .frequency = "Anual", .anchor = "3", .last = "2025-03-31"});
    EXPECT_EQ(LaunchOrders("2026-03-20"), 1);
    EXPECT_EQ(world.Scalar("SELECT Fecha_Generacion FROM Orden_Generada"), "2026-03-01");
    EXPECT_EQ(world.Scalar("SELECT Fecha_Solicitud FROM Orden_Trabajo"), "2026-03-05");
}

TEST_F(LanzarPreventivoOrdersTest, TheDaysFollowClockPriorityAndDateFormFromRowToRow) {
    for (const int key : {1, 2, 3, 4, 5})
        Add({.key = key});
    preventive->Subscribe([&](std::string_view event, Value& argument) {
        if (event != "ProcesandoImputacion") return;
        if (argument == Value(3)) world.Platform().now = World::Day("2026-03-05 08:00:01");
        if (argument == Value(4)) configuration->PrioridadSolicitada(1);
        if (argument == Value(5)) world.Platform().shortDate = "mm/dd/yyyy";
    });
    EXPECT_EQ(LaunchOrders("2026-03-05"), 5);
    const char* const asked[] = {"05/03/2026 08:00:00", "05/03/2026 08:00:00", "05/03/2026 08:00:01",
                                 "05/03/2026 08:00:01", "03/05/2026 08:00:01"};
    const char* const wanted[] = {"09/03/2026 08:00:00", "09/03/2026 08:00:00", "09/03/2026 08:00:01",
                                  "06/03/2026 08:00:01", "03/06/2026 08:00:01"};
    const auto orders = Orders();
    ASSERT_EQ(orders.size(), 5U);
    for (std::size_t i = 0; i < 5; ++i) {
        EXPECT_EQ(orders[i][2], std::string("text ") + asked[i]);
        EXPECT_EQ(orders[i][3], std::string("text ") + wanted[i]);
    }
}

TEST_F(LanzarPreventivoOrdersTest, APriorityBeyondSixteenBitsStopsTheRun) {
    Add({.key = 4});
    configuration->PrioridadSolicitada(32768);
    const std::vector<std::string> before = Stored();
    EXPECT_EQ(support::NumberOf([&] { LaunchOrders("2026-03-05"); }), 6);
    EXPECT_EQ(Stored(), before);
    EXPECT_EQ(world.Depth(), 0);
}

TEST_F(LanzarPreventivoOrdersTest, ATaskWithoutDescriptionStopsTheRun) {
    Add({.key = 4});
    world.Run("UPDATE Gama SET Descripcion = NULL");
    EXPECT_EQ(support::NumberOf([&] { LaunchOrders("2026-03-05"); }), 94);
    EXPECT_THAT(Orders(), IsEmpty());
    EXPECT_EQ(world.Depth(), 0);
}

TEST_F(LanzarPreventivoOrdersTest, AConventionalRowBecomesTheSameKindOfOrder) {
    AddConventional({.key = 4, .frequency = "Semanal", .anchor = "1", .last = "2026-02-01"});
    EXPECT_EQ(preventive->LanzarPreventivoConvensional(World::Day("2026-03-05"), 3, "Breve", configuration), 1);
    EXPECT_THAT(Orders(), ElementsAre(ElementsAre(
                              "int32 0", "text Oil change", "text 05/03/2026 08:00:00", "text 09/03/2026 08:00:00",
                              "int32 0", "int32 42", "text Execute Task --- Nº 12 ,Frequency Semanal", "int32 41",
                              "int16 4", "text A-1", "int32 43", "int32 5", "int32 0", "int32 0", "int32 7")));
    EXPECT_THAT(Bulletins(), IsEmpty());
    EXPECT_THAT(world.Rows("SELECT SC_Orden_Trabajo, SC_Imputacion_Sistematica, Fecha_Generacion FROM Orden_Generada"),
                ElementsAre("1|99|2026-03-02"));
    EXPECT_EQ(State(4), "2026-03-02|10|0|0");
}

}  // namespace

#include "Perluma/orders.h"

#include "tests/Perluma/session_fixture.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Zontara::Money;

class OrdersTest : public SessionTest {
protected:
    Zontara::GlobalPerluma& services = provider->Perluma();
};

const Zontara::DatosOrden kFull = {
    1, "grease d'oil", "05/03/2026 08:00:00", "never", 1, 11, "Execute Task", 12, 13, "A-1", 14, 15, 16, 17, 18};

TEST_F(OrdersTest, AnOrderKeepsWhatItWasGiven) {
    EXPECT_EQ(services.OrdenesTrabajo()->CrearOrden(kFull), 1);
    EXPECT_EQ(services.OrdenesTrabajo()->CrearOrden({}), 2);
    EXPECT_THAT(Rows("SELECT * FROM Orden_Trabajo ORDER BY 1"),
                ElementsAre("1|grease d'oil|2026-03-05|never|1|11|Execute Task|12|13|A-1|14|15|16|17|18|NULL|NULL",
                            "2||||0|0||0|0||0|0|0|0|0|NULL|NULL"));
}

TEST_F(OrdersTest, TheFirstArgumentOfAnOrderIsIgnored) {
    Zontara::DatosOrden other = kFull;
    other.Reservado = -7;
    services.OrdenesTrabajo()->CrearOrden(kFull);
    services.OrdenesTrabajo()->CrearOrden(other);
    EXPECT_THAT(Rows("SELECT count(*) FROM Orden_Trabajo"), ElementsAre("2"));
    EXPECT_THAT(Rows("SELECT count(*) FROM (SELECT DISTINCT Descripcion, Fecha_Solicitud, Fecha_Deseada, Origen,"
                     " SC_Ejecutor_Interno, Texto_Trabajo, SC_Usuario_Destino, Prioridad, ID_Activo,"
                     " SC_Tipo_Intervencion, SC_Proceso, SC_Ejecutor_Externo, SC_Imputacion_Sistematica, SC_Gama"
                     " FROM Orden_Trabajo)"),
                ElementsAre("1"));
}

TEST_F(OrdersTest, NoProcessAndNoExecutorAreInOrder) {
    Zontara::DatosOrden order = kFull;
    order.SC_Proceso = 0;
    order.EjecutorInterno = 0;
    order.EjecutorExterno = 0;
    const std::int32_t key = services.OrdenesTrabajo()->CrearOrden(order);
    EXPECT_THAT(
        Rows("SELECT SC_Orden_Trabajo, SC_Proceso, SC_Ejecutor_Interno, SC_Ejecutor_Externo FROM Orden_Trabajo"),
        ElementsAre(std::to_string(key) + "|0|0|0"));
}

TEST_F(OrdersTest, CrewAndTimeGoToTheirOrderAlone) {
    services.OrdenesTrabajo()->CrearOrden({});
    services.OrdenesTrabajo()->CrearOrden({});
    services.OrdenesTrabajo()->AsignarManoObra(2, 3, 2.1F);
    services.OrdenesTrabajo()->AsignarManoObra(99, 4, 9.0F);
    EXPECT_THAT(Rows("SELECT SC_Orden_Trabajo, Hombres, Tiempo FROM Orden_Trabajo"),
                ElementsAre("1|NULL|NULL", "2|3|2.1"));
}

TEST_F(OrdersTest, LinesOfMaterialKeepTheirNumberEvenIfSeveralShareIt) {
    const auto materials = services.MaterialesOT();
    materials->AgregarItemOT(3, "d'oil", Money::FromTenThousandths(105000), 2.1F, 7);
    materials->AgregarItemOT(3, "", Money::FromTenThousandths(0), 0.0F, 7);
    materials->AgregarItemOT(-1, "filter", Money::FromTenThousandths(-1), 1.0F, 0);
    EXPECT_THAT(Rows("SELECT * FROM Material_OT ORDER BY 1"),
                ElementsAre("1|7|3|d'oil|10.5|2.1", "2|7|3||0|0", "3|0|-1|filter|-0.0001|1"));
}

TEST_F(OrdersTest, WithNoProcessTheSelectionIsEmpty) {
    const auto processes = services.Procesos()->SeleccionarProcesos(1);
    EXPECT_EQ(processes->TotalRegistros(), 0);
    EXPECT_TRUE(processes->FinDeDatos());
    EXPECT_EQ(processes->NombreColumna(0), "SC_Proceso");
    EXPECT_EQ(processes->NombreColumna(1), "Estatus_Valido");
}

TEST_F(OrdersTest, OneAsksForTheActiveProcessesBySmallestKey) {
    Run("INSERT INTO Proceso (SC_Proceso, Estatus_Valido, Activo) VALUES (9, 90, 1), (4, 40, 0), (6, 60, 1)");
    const auto active = services.Procesos()->SeleccionarProcesos(1);
    EXPECT_EQ(active->TotalRegistros(), 2);
    EXPECT_EQ(active->Valor("SC_Proceso"), Zontara::Value(6));
    EXPECT_EQ(active->Valor("Estatus_Valido"), Zontara::Value(60));
    const auto all = services.Procesos()->SeleccionarProcesos(0);
    EXPECT_EQ(all->TotalRegistros(), 3);
    EXPECT_EQ(all->Valor("SC_Proceso"), Zontara::Value(4));
}

TEST_F(OrdersTest, TheCallersRollbackUndoesEverything) {
    Begin();
    const std::int32_t key = services.OrdenesTrabajo()->CrearOrden(kFull);
    services.OrdenesTrabajo()->AsignarManoObra(key, 3, 2.5F);
    services.MaterialesOT()->AgregarItemOT(1, "oil", Money::FromTenThousandths(1), 1.0F, key);
    EXPECT_TRUE(connection->InTransaction());
    Rollback();
    EXPECT_THAT(Rows("SELECT SC_Orden_Trabajo FROM Orden_Trabajo"), IsEmpty());
    EXPECT_THAT(Rows("SELECT SC_Material_OT FROM Material_OT"), IsEmpty());
}

TEST_F(OrdersTest, AFailureIsTheEnginesErrorAndWritesNothing) {
    Run("CREATE TRIGGER closed BEFORE INSERT ON Orden_Trabajo BEGIN SELECT RAISE(ABORT, 'closed'); END");
    const auto error = support::ErrorOf([&] { services.OrdenesTrabajo()->CrearOrden(kFull); });
    EXPECT_EQ(error.number, Zontara::vbObjectError + 19);
    EXPECT_EQ(error.source, "dhRichClient3");
    EXPECT_THAT(Rows("SELECT SC_Orden_Trabajo FROM Orden_Trabajo"), IsEmpty());
}

}  // namespace

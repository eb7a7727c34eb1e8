#include "calendar/CImputacionPreventiva.h"

#include "frame/Libreria.h"
#include "tests/calendar/plant.h"

namespace {

using support::ErrorOf;
using support::ExpectCallStack;
using support::kForced;
using support::kRefused;
using testing::ElementsAre;
using testing::IsEmpty;
using Zontara::CImputacionPreventiva;

class CImputacionPreventivaRecordsTest : public support::CalendarTest {
protected:
    std::int32_t NewMonthly(const std::string& cause = "moved", bool synchronised = true) {
        return preventive->Nuevo("A-1", 7, "15/01/2026", 0, 3, "Mensual", 1, 12, 4, "20/01/2026", "02/02/2026",
                                 "03/02/2026", cause, 6, 1, "2", synchronised, "Oil");
    }
    void SaveFirst(const std::string& asset = "B-2") {
        preventive->Salvar(1, asset, 8, "16/01/2026", 1, 4, "Anual", 2, 13, "21/01/2026", 0, 6, "04/02/2026");
    }
    std::string Row(const std::string& key) {
        return world.Rows("SELECT * FROM Imputacion_Preventiva WHERE SC_Imputacion_Preventiva = " + key).at(0);
    }
};

TEST_F(CImputacionPreventivaRecordsTest, NuevoWritesOneRowInOneTransactionAndThenTellsTheCatalogue) {
    EXPECT_EQ(NewMonthly(), 1);
    EXPECT_THAT(
        world.Story(),
        ElementsAre("begin", "key Imputacion_Preventiva",
                    "sql   INSERT Into Imputacion_Preventiva (SC_Imputacion_Preventiva ,ID_Activo ,SC_Gama "
                    ",Fecha_Imputacion ,Anulada ,SC_Usuario ,Frecuencia ,Intervalo_Frecuencia ,Numero_Repeticion_Ciclo "
                    ",Acumulado_Ciclo ,Fecha_Inicio ,Fecha_Ultimo_Lanzamiento ,Fecha_Ultima_Modificacion "
                    ",Causa_Modificacion ,Semana,Finaliza,Programacion,Es_Sincronizada,Descripcion_Breve ) VALUES "
                    "(1,'A-1',7,'2026-01-15',0,3,'Mensual',1,12,4,'2026-01-20','2026-02-02','2026-02-03','moved',6,1,'"
                    "2',1,'Oil')",
                    "commit", "notice "));
    EXPECT_EQ(Row("1"), "1|A-1|7|2026-01-15|0|3|Mensual|1|12|4|2026-01-20|2026-02-02|2026-02-03|moved|6|1|2|1|Oil");
    EXPECT_EQ(preventive->CatalogoModificado()->Total(), 1);
    EXPECT_EQ(preventive->CatalogoModificado()->Elemento(1), "");
    EXPECT_EQ(preventive->OTPreventivaGenerada()->Total(), 0);
}

TEST_F(CImputacionPreventivaRecordsTest, NuevoMarksAConventionalAssignmentWithZero) {
    NewMonthly("moved", false);
    EXPECT_EQ(world.Scalar("SELECT Es_Sincronizada FROM Imputacion_Preventiva"), "0");
}

TEST_F(CImputacionPreventivaRecordsTest, NuevoGivesAnotherKeyEachTime) {
    const std::int32_t first = NewMonthly();
    EXPECT_NE(NewMonthly(), first);
    EXPECT_EQ(world.Scalar("SELECT COUNT(*) FROM Imputacion_Preventiva"), "2");
}

TEST_F(CImputacionPreventivaRecordsTest, NuevoStoresADateTextThatIsNoDateAsItIs) {
    preventive->Nuevo("A-1", 7, "", 0, 3, "Semanal", 1, 0, 0, "soon", "2026-02-02", "", "", 6, 0, "", true, "");
    EXPECT_EQ(Row("1"), "1|A-1|7||0|3|Semanal|1|0|0|soon|2026-02-02|||6|0||1|");
}

TEST_F(CImputacionPreventivaRecordsTest, NuevoInsideATransactionOfTheCallerCommitsNothing) {
    Zontara::Libreria::IniciarTransaccion();
    NewMonthly();
    EXPECT_EQ(world.Depth(), 1);
    EXPECT_TRUE(world.InTransaction());
    Zontara::Libreria::AbortarTransaccion();
    EXPECT_EQ(world.Scalar("SELECT COUNT(*) FROM Imputacion_Preventiva"), "0");
}

TEST_F(CImputacionPreventivaRecordsTest, NuevoLetsARefusedInsertThroughAsItIsWithItsTransactionOpenAndNoNotice) {
    const Zontara::ErrorRecord error = ErrorOf([&] { NewMonthly("client's wish"); });
    EXPECT_EQ(error.number, kRefused);
    EXPECT_EQ(error.source, "dhRichClient3");
    EXPECT_THAT(support::CallStackOf(error.description), IsEmpty());
    EXPECT_EQ(world.Depth(), 1);
    EXPECT_TRUE(world.InTransaction());
    EXPECT_EQ(preventive->CatalogoModificado()->Total(), 0);
    world.Abort();
    EXPECT_EQ(world.Scalar("SELECT COUNT(*) FROM Imputacion_Preventiva"), "0");
}

TEST_F(CImputacionPreventivaRecordsTest, NuevoLetsAFailureOfTheKeyThroughAsItIs) {
    world.FailOn("key Imputacion_Preventiva");
    const Zontara::ErrorRecord error = ErrorOf([&] { NewMonthly(); });
    EXPECT_EQ(error.number, kForced);
    EXPECT_EQ(error.description, "forced failure");
    EXPECT_EQ(world.Depth(), 1);
    EXPECT_EQ(preventive->CatalogoModificado()->Total(), 0);
    world.Abort();
    EXPECT_EQ(world.Scalar("SELECT COUNT(*) FROM Imputacion_Preventiva"), "0");
}

TEST_F(CImputacionPreventivaRecordsTest, BorrarRemovesOneRowOutrightAndTellsTheCatalogue) {
    Add({.key = 1});
    Add({.key = 2});
    world.Run("INSERT INTO Boletin (SC_Boletin, SC_Imputacion_Preventiva) VALUES (9, 1)");
    preventive->Borrar(1);
    EXPECT_THAT(world.Story(),
                ElementsAre("sql   DELETE From Imputacion_Preventiva WHERE SC_Imputacion_Preventiva =1", "notice "));
    EXPECT_THAT(world.Rows("SELECT SC_Imputacion_Preventiva FROM Imputacion_Preventiva"), ElementsAre("2"));
    EXPECT_EQ(world.Scalar("SELECT COUNT(*) FROM Boletin"), "1");
    EXPECT_EQ(preventive->CatalogoModificado()->Total(), 1);
}

TEST_F(CImputacionPreventivaRecordsTest, SalvarRewritesARowInOneStatementAndTellsTheCatalogue) {
    NewMonthly();
    world.Forget();
    SaveFirst();
    EXPECT_THAT(
        world.Story(),
        ElementsAre("sql   UPDATE Imputacion_Preventiva SET ID_Activo ='B-2',SC_Gama =8,Fecha_Imputacion ='2026-01-16' "
                    ",Fecha_Ultimo_Lanzamiento ='2026-02-04' ,Anulada =1,SC_Usuario =4,Frecuencia ='Anual' ,Finaliza "
                    "=0 ,Programacion =6 ,Intervalo_Frecuencia =2,Numero_Repeticion_Ciclo =13,Fecha_Inicio "
                    "='2026-01-21'  WHERE SC_Imputacion_Preventiva =1",
                    "notice "));
}

TEST_F(CImputacionPreventivaRecordsTest, SalvarLeavesKindWeekCycleAndDescriptionsAlone) {
    NewMonthly();
    SaveFirst();
    EXPECT_EQ(Row("1"), "1|B-2|8|2026-01-16|1|4|Anual|2|13|4|2026-01-21|2026-02-04|2026-02-03|moved|6|0|6|1|Oil");
    EXPECT_EQ(preventive->CatalogoModificado()->Total(), 2);
}

TEST_F(CImputacionPreventivaRecordsTest, AnularCancelsOneRowAndTellsNobody) {
    Add({.key = 1});
    Add({.key = 2});
    preventive->Anular(2);
    EXPECT_THAT(world.Story(),
                ElementsAre("sql   UPDATE Imputacion_Preventiva SET Anulada =1  WHERE SC_Imputacion_Preventiva =2"));
    EXPECT_THAT(world.Rows("SELECT Anulada FROM Imputacion_Preventiva ORDER BY 1"), ElementsAre("0", "1"));
    EXPECT_EQ(preventive->CatalogoModificado()->Total(), 0);
}

TEST_F(CImputacionPreventivaRecordsTest, AnularPorEquipoCancelsBothKindsOfTheAssetAndTellsNobody) {
    AddAsset("A-10");
    Add({.key = 1});
    AddConventional({.key = 2});
    Add({.key = 3, .asset = "A-10"});
    preventive->AnularPorEquipo("A-1");
    EXPECT_THAT(world.Story(),
                ElementsAre("sql   UPDATE Imputacion_Preventiva SET Anulada =1  WHERE ID_Activo ='A-1'"));
    EXPECT_THAT(world.Rows("SELECT SC_Imputacion_Preventiva, Anulada FROM Imputacion_Preventiva"),
                ElementsAre("1|1", "2|1", "3|0"));
    EXPECT_EQ(preventive->CatalogoModificado()->Total(), 0);
}

TEST_F(CImputacionPreventivaRecordsTest, UnknownKeysChangeNothingAndReportNothing) {
    Add({.key = 5});
    const std::string before = Row("5");
    preventive->Borrar(1);
    preventive->Anular(1);
    SaveFirst();
    preventive->AnularPorEquipo("Z");
    EXPECT_EQ(Row("5"), before);
    EXPECT_EQ(world.Scalar("SELECT COUNT(*) FROM Imputacion_Preventiva"), "1");
}

TEST_F(CImputacionPreventivaRecordsTest, ChangesOpenNoTransactionAndJoinTheCallers) {
    Add({.key = 1});
    Zontara::Libreria::IniciarTransaccion();
    preventive->Anular(1);
    EXPECT_EQ(world.Depth(), 1);
    Zontara::Libreria::AbortarTransaccion();
    EXPECT_EQ(world.Scalar("SELECT Anulada FROM Imputacion_Preventiva"), "0");
}

TEST_F(CImputacionPreventivaRecordsTest, EachChangeReportsItselfWithItsArgumentsAndSendsNoNotice) {
    Add({.key = 1});
    const std::vector<std::string> before = Stored();
    const struct {
        const char* what;
        std::function<void()> change;
        const char* level;
    } cases[] = {
        {"Borrar", [&] { preventive->Borrar(1); }, "CImputacionPreventiva.Borrar(SC_Imputacion_Preventiva=1)"},
        {"Salvar", [&] { SaveFirst(); },
         "CImputacionPreventiva.Salvar(SC_Imputacion_Preventiva=1, ID_Activo='B-2', SC_Gama=8, "
         "Fecha_Imputacion='16/01/2026', Anulada=1, SC_Usuario=4, Frecuencia='Anual', Intervalo_Frecuencia=2, "
         "Numero_Repeticion_Ciclo=13, Fecha_Inicio='21/01/2026', Finaliza=0, Programacion=6, "
         "Fecha_Ultimo_Lanzamiento='04/02/2026')"},
        {"Anular", [&] { preventive->Anular(1); }, "CImputacionPreventiva.Anular(SC_Imputacion_Preventiva=1)"},
        {"AnularPorEquipo", [&] { preventive->AnularPorEquipo("A-1"); },
         "CImputacionPreventiva.AnularPorEquipo(ID_Activo='A-1')"},
    };
    for (const auto& each : cases) {
        SCOPED_TRACE(each.what);
        world.FailOn("sql ");
        const Zontara::ErrorRecord error = ErrorOf(each.change);
        EXPECT_EQ(error.number, kForced);
        ExpectCallStack(error, each.level);
        EXPECT_EQ(Stored(), before);
        EXPECT_EQ(world.Depth(), 0);
    }
    EXPECT_EQ(preventive->CatalogoModificado()->Total(), 0);
}

TEST_F(CImputacionPreventivaRecordsTest, AQuoteInAValueBreaksTheStatement) {
    Add({.key = 1});
    const std::vector<std::string> before = Stored();
    EXPECT_EQ(support::NumberOf([&] { SaveFirst("B'2"); }), kRefused);
    EXPECT_EQ(support::NumberOf([&] { preventive->AnularPorEquipo("A'1"); }), kRefused);
    EXPECT_EQ(Stored(), before);
}

TEST_F(CImputacionPreventivaRecordsTest, NoticeListsAreMadeOnceAndNotShared) {
    const auto catalogue = preventive->CatalogoModificado();
    const auto launches = preventive->OTPreventivaGenerada();
    ASSERT_TRUE(catalogue);
    EXPECT_EQ(preventive->CatalogoModificado(), catalogue);
    EXPECT_EQ(preventive->OTPreventivaGenerada(), launches);
    EXPECT_NE(catalogue, launches);
    EXPECT_NE(Zontara::Create<CImputacionPreventiva>()->CatalogoModificado(), catalogue);
}

TEST_F(CImputacionPreventivaRecordsTest, InstancesCanShareAListOfLaunches) {
    const auto other = Zontara::Create<CImputacionPreventiva>();
    preventive->OTPreventivaGenerada(other->OTPreventivaGenerada());
    EXPECT_EQ(preventive->OTPreventivaGenerada(), other->OTPreventivaGenerada());
    Add({.key = 1});
    Launch("2026-03-05");
    EXPECT_EQ(other->OTPreventivaGenerada()->Total(), 1);
    preventive->OTPreventivaGenerada(nullptr);
    EXPECT_NE(preventive->OTPreventivaGenerada(), other->OTPreventivaGenerada());
}

TEST_F(CImputacionPreventivaRecordsTest, AnInstanceThatEndsLetsGoOfItsListOfLaunches) {
    const std::weak_ptr<Zontara::ListaCambios> list = preventive->OTPreventivaGenerada();
    EXPECT_FALSE(list.expired());
    preventive.reset();
    EXPECT_TRUE(list.expired());
}

}  // namespace

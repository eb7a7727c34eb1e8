#include "calendar/CImputacionPreventiva.h"

#include "tests/calendar/plant.h"

namespace {

using support::ErrorOf;
using support::ExpectCallStack;
using support::kRefused;
using testing::ElementsAre;
using testing::IsEmpty;
using Zontara::Recordset;
using Zontara::Ref;

class CImputacionPreventivaSelectionsTest : public support::CalendarTest {
protected:
    CImputacionPreventivaSelectionsTest() : today(support::World::Day("2026-03-05")) {}

    /// Assignment keys of a selection, in its order.
    static std::vector<std::string> Keys(const Ref<Recordset>& rs) {
        std::vector<std::string> keys;
        for (; !rs->FinDeDatos(); rs->MoverSiguiente()) {
            keys.push_back(std::to_string(rs->Valor("SC_Imputacion_Preventiva").Get<std::int32_t>()));
        }
        return keys;
    }
    std::string Statement() { return world.Statements().back(); }

    Zontara::Date today;
    const std::string key = "SC_Imputacion_Preventiva ";
};

TEST_F(CImputacionPreventivaSelectionsTest, SeleccionarPorGamaJoinsAssetTaskGroupAndExecutor) {
    Add({.key = 4});
    EXPECT_THAT(Keys(preventive->SeleccionarPorGama(7, key)), ElementsAre("4"));
    EXPECT_EQ(Statement(),
              "Select SC_Imputacion_Preventiva FROM Imputacion_Preventiva ,Activo,Gama,Grupo_Gama,Ejecutor_Gama  WHERE "
              " Imputacion_Preventiva.ID_Activo = Activo.ID_Activo  and Imputacion_Preventiva.SC_Gama = Gama.SC_Gama "
              "and  Grupo_Gama.SC_Grupo_Gama = Gama.SC_Grupo_Gama and  Ejecutor_Gama.SC_Ejecutor_Gama = "
              "Gama.SC_Ejecutor_Gama and  Gama.SC_Gama =7");
    EXPECT_THAT(Keys(preventive->SeleccionarPorGama(8, key)), IsEmpty());
}

TEST_F(CImputacionPreventivaSelectionsTest, SeleccionarTodosAddsTheCallersCondition) {
    Add({.key = 4});
    Add({.key = 5, .frequency = "Anual"});
    EXPECT_THAT(Keys(preventive->SeleccionarTodos("", key)), ElementsAre("4", "5"));
    EXPECT_EQ(
        Statement(),
        "Select SC_Imputacion_Preventiva FROM Imputacion_Preventiva ,Activo,Gama,Grupo_Gama,Ejecutor_Gama  WHERE  "
        "Imputacion_Preventiva.ID_Activo = Activo.ID_Activo  and Imputacion_Preventiva.SC_Gama = Gama.SC_Gama and  "
        "Grupo_Gama.SC_Grupo_Gama = Gama.SC_Grupo_Gama and  Ejecutor_Gama.SC_Ejecutor_Gama = Gama.SC_Ejecutor_Gama ");
    EXPECT_THAT(Keys(preventive->SeleccionarTodos("Frecuencia='Anual'", key)), ElementsAre("5"));
    EXPECT_EQ(Statement(),
              "Select SC_Imputacion_Preventiva FROM Imputacion_Preventiva ,Activo,Gama,Grupo_Gama,Ejecutor_Gama  WHERE "
              " Imputacion_Preventiva.ID_Activo = Activo.ID_Activo  and Imputacion_Preventiva.SC_Gama = Gama.SC_Gama "
              "and  Grupo_Gama.SC_Grupo_Gama = Gama.SC_Grupo_Gama and  Ejecutor_Gama.SC_Ejecutor_Gama = "
              "Gama.SC_Ejecutor_Gama  and Frecuencia='Anual'");
}

TEST_F(CImputacionPreventivaSelectionsTest, WithoutColumnsSeleccionarPorGamaIsRefusedAndReported) {
    const Zontara::ErrorRecord error = ErrorOf([&] { preventive->SeleccionarPorGama(7); });
    EXPECT_EQ(Statement(),
              "Select FROM Imputacion_Preventiva ,Activo,Gama,Grupo_Gama,Ejecutor_Gama  WHERE  "
              "Imputacion_Preventiva.ID_Activo = Activo.ID_Activo  and Imputacion_Preventiva.SC_Gama = Gama.SC_Gama "
              "and  Grupo_Gama.SC_Grupo_Gama = Gama.SC_Grupo_Gama and  Ejecutor_Gama.SC_Ejecutor_Gama = "
              "Gama.SC_Ejecutor_Gama and  Gama.SC_Gama =7");
    EXPECT_EQ(error.number, kRefused);
    ExpectCallStack(error, "Libreria.AbrirRecordset(rs={Recordset}, strSQL={Text})",
                    "CImputacionPreventiva.SeleccionarPorGama(SC_Gama=7, sColumnas='')");
}

TEST_F(CImputacionPreventivaSelectionsTest, WithoutColumnsSeleccionarTodosIsRefusedAndReported) {
    const Zontara::ErrorRecord error = ErrorOf([&] { preventive->SeleccionarTodos("1=1"); });
    EXPECT_EQ(Statement(),
              "Select FROM Imputacion_Preventiva ,Activo,Gama,Grupo_Gama,Ejecutor_Gama  WHERE  "
              "Imputacion_Preventiva.ID_Activo = Activo.ID_Activo  and Imputacion_Preventiva.SC_Gama = Gama.SC_Gama "
              "and  Grupo_Gama.SC_Grupo_Gama = Gama.SC_Grupo_Gama and  Ejecutor_Gama.SC_Ejecutor_Gama = "
              "Gama.SC_Ejecutor_Gama  and 1=1");
    EXPECT_EQ(error.number, kRefused);
    ExpectCallStack(error, "Libreria.AbrirRecordset(rs={Recordset}, strSQL={Text})",
                    "CImputacionPreventiva.SeleccionarTodos(sCondicion='1=1', sColumnas='')");
}

TEST_F(CImputacionPreventivaSelectionsTest, SeleccionarPorEquipoFindsAllAssetsUnderAPrefix) {
    AddAsset("A-10");
    AddAsset("B-1");
    Add({.key = 1});
    Add({.key = 2, .asset = "A-10", .frequency = "Anual"});
    Add({.key = 3, .asset = "B-1"});
    EXPECT_THAT(Keys(preventive->SeleccionarPorEquipo("A-1")), ElementsAre("1", "2"));
    EXPECT_EQ(Statement(),
              "SELECT Activo.ID_Activo,Activo.Equipo_Parado,SC_Imputacion_Preventiva ,Gama.SC_Gama ,Fecha_Imputacion "
              ",Anulada ,SC_Usuario ,Fecha_Inicio ,Intervalo_Frecuencia ,Numero_Repeticion_Ciclo ,Acumulado_Ciclo "
              ",Imputacion_Preventiva.Fecha_Ultimo_Lanzamiento ,Fecha_Ultima_Modificacion "
              ",Causa_Modificacion,Frecuencia, Programacion,Semana,Es_Sincronizada,finaliza,Descripcion_Breve  FROM "
              "Imputacion_Preventiva ,Activo,Gama,Grupo_Gama  WHERE  Imputacion_Preventiva.ID_Activo = "
              "Activo.ID_Activo  and Imputacion_Preventiva.SC_Gama = Gama.SC_Gama and  Grupo_Gama.SC_Grupo_Gama = "
              "Gama.SC_Grupo_Gama    and Imputacion_Preventiva.ID_Activo like 'A-1%'");
}

TEST_F(CImputacionPreventivaSelectionsTest, SeleccionarPorEquipoWithAnEmptyAssetFindsAllOfAFrequency) {
    AddAsset("B-1");
    Add({.key = 1});
    Add({.key = 2, .frequency = "Anual"});
    Add({.key = 3, .asset = "B-1"});
    EXPECT_THAT(Keys(preventive->SeleccionarPorEquipo("", key, "Semanal")), ElementsAre("1", "3"));
    EXPECT_EQ(Statement(),
              "Select SC_Imputacion_Preventiva  FROM Imputacion_Preventiva ,Activo,Gama,Grupo_Gama  WHERE  "
              "Imputacion_Preventiva.ID_Activo = Activo.ID_Activo  and Imputacion_Preventiva.SC_Gama = Gama.SC_Gama "
              "and  Grupo_Gama.SC_Grupo_Gama = Gama.SC_Grupo_Gama    and Imputacion_Preventiva.frecuencia = 'Semanal'");
    EXPECT_THAT(Keys(preventive->SeleccionarPorEquipo("")), ElementsAre("1", "2", "3"));
}

TEST_F(CImputacionPreventivaSelectionsTest, BuscarReadsOneAssignmentWithItsDescriptions) {
    Add({.key = 4, .anchor = "2"});
    const Ref<Recordset> rs = preventive->Buscar(4);
    EXPECT_EQ(Statement(),
              "SELECT Activo.ID_Activo,Activo.Equipo_Parado,SC_Imputacion_Preventiva ,Gama.SC_Gama "
              ",Gama.Numero_Gama,Fecha_Imputacion ,Ejecutor_Gama.Descripcion as "
              "Descripcion_Ejecutor,Grupo_Gama.Descripcion as Descripcion_Grupo, Activo.Descripcion as "
              "Descripcion_Equipo, Anulada ,SC_Usuario ,Fecha_Inicio ,Frecuencia ,Intervalo_Frecuencia "
              ",Numero_Repeticion_Ciclo,Acumulado_Ciclo ,Imputacion_Preventiva.Fecha_Ultimo_Lanzamiento "
              ",Fecha_Ultima_Modificacion ,Causa_Modificacion,Texto_Mantenimiento,Finaliza,  Programacion ,semana FROM "
              "Imputacion_Preventiva,Activo,Gama,Grupo_Gama,Ejecutor_Gama  WHERE  Imputacion_Preventiva.ID_Activo = "
              "Activo.ID_Activo  and Gama.SC_Gama = Imputacion_Preventiva.SC_Gama and  Grupo_Gama.SC_Grupo_Gama = "
              "Gama.SC_Grupo_Gama and  Ejecutor_Gama.SC_Ejecutor_Gama = Gama.SC_Ejecutor_Gama and  "
              "Imputacion_Preventiva.SC_Imputacion_Preventiva =4");
    EXPECT_EQ(rs->TotalRegistros(), 1);
    EXPECT_EQ(rs->Valor("Descripcion_Ejecutor").Get<std::string>(), "Workshop");
    EXPECT_EQ(rs->Valor("Programacion").Get<std::string>(), "2");
    EXPECT_EQ(preventive->Buscar(5)->TotalRegistros(), 0);
}

TEST_F(CImputacionPreventivaSelectionsTest, BuscarTakesTheCallersColumnsIfTheyEndWithABlank) {
    Add({.key = 4});
    EXPECT_THAT(Keys(preventive->Buscar(4, key)), ElementsAre("4"));
    EXPECT_EQ(support::NumberOf([&] { preventive->Buscar(4, "SC_Imputacion_Preventiva"); }), kRefused);
}

TEST_F(CImputacionPreventivaSelectionsTest, SeleccionarActivasWithAllDefaultsTakesSynchronisedRowsOfAnyAsset) {
    AddAsset("A-2", 3);
    Add({.key = 1});
    Add({.key = 2, .asset = "A-2"});
    AddConventional({.key = 3});
    Add({.key = 4, .cancelled = 1});
    EXPECT_THAT(Keys(preventive->SeleccionarActivas(today)), ElementsAre("1", "2"));
    EXPECT_EQ(
        Statement(),
        "SELECT Activo.ID_Activo,SC_Imputacion_Preventiva ,Imputacion_Preventiva.SC_Imputacion_Preventiva as "
        "ID,Gama.SC_Gama ,Gama.Descripcion,Fecha_Imputacion ,Anulada ,SC_Usuario ,Frecuencia ,Intervalo_Frecuencia "
        ",Numero_Repeticion_Ciclo ,Acumulado_Ciclo ,Fecha_Inicio ,Numero_Gama,'---' "
        "EjecutorGama,Fecha_Ultima_Modificacion , Imputacion_Preventiva.Fecha_Ultimo_Lanzamiento,Causa_Modificacion "
        ",Semana,Finaliza, Programacion  FROM Imputacion_Preventiva, Activo,Gama  WHERE Anulada =0 and Fecha_Inicio <= "
        "'2026-03-05' and Gama.sc_gama =Imputacion_Preventiva.sc_gama and  Imputacion_Preventiva.id_activo "
        "=Activo.id_activo  and Es_Sincronizada=1   ");
}

TEST_F(CImputacionPreventivaSelectionsTest, SeleccionarActivasWithEveryFilter) {
    AddAsset("A-2", 0, 5);
    AddConventional({.key = 3, .asset = "A-2"});
    AddConventional({.key = 4, .asset = "A-2"});
    EXPECT_THAT(Keys(preventive->SeleccionarActivas(today, "SC_Imputacion_Preventiva", false, "A-2", true, 5, 4)),
                ElementsAre("4"));
    EXPECT_EQ(
        Statement(),
        "Select SC_Imputacion_Preventiva FROM Imputacion_Preventiva, Activo,Gama  WHERE Anulada =0 and Fecha_Inicio <= "
        "'2026-03-05' and Gama.sc_gama =Imputacion_Preventiva.sc_gama and  Imputacion_Preventiva.id_activo "
        "=Activo.id_activo  and activo.estatus_actual not in (3,4,5,7)  and Es_Sincronizada=0   and "
        "activo.sc_proyecto=5 and Activo.ID_Activo='A-2' and Imputacion_Preventiva.SC_Imputacion_Preventiva=4");
}

TEST_F(CImputacionPreventivaSelectionsTest, OnlyTrueLeavesOutAssetsOutOfService) {
    for (int status = 0; status <= 8; ++status) {
        const std::string asset = "S" + std::to_string(status);
        AddAsset(asset, status);
        Add({.key = 10 + status, .asset = asset});
    }
    EXPECT_EQ(preventive->SeleccionarActivas(today)->TotalRegistros(), 9);
    EXPECT_EQ(preventive->SeleccionarActivas(today, "", true, "", false)->TotalRegistros(), 9);
    EXPECT_THAT(Keys(preventive->SeleccionarActivas(today, "", true, "", true)),
                ElementsAre("10", "11", "12", "16", "18"));
}

TEST_F(CImputacionPreventivaSelectionsTest, TheKindDecidesWhichRowsAreSelected) {
    Add({.key = 1});
    AddConventional({.key = 2});
    EXPECT_THAT(Keys(preventive->SeleccionarActivas(today)), ElementsAre("1"));
    EXPECT_THAT(Keys(preventive->SeleccionarActivas(today, "", true)), ElementsAre("1"));
    EXPECT_THAT(Keys(preventive->SeleccionarActivas(today, "", false)), ElementsAre("2"));
}

TEST_F(CImputacionPreventivaSelectionsTest, AnAssignmentIsSelectedFromItsFirstDayOn) {
    Add({.key = 1, .start = "2026-03-05"});
    EXPECT_EQ(preventive->SeleccionarActivas(support::World::Day("2026-03-04 23:59:59"))->TotalRegistros(), 0);
    EXPECT_EQ(preventive->SeleccionarActivas(today)->TotalRegistros(), 1);
    EXPECT_EQ(preventive->SeleccionarActivas(support::World::Day("2027-01-01"))->TotalRegistros(), 1);
}

TEST_F(CImputacionPreventivaSelectionsTest, AProjectOfZeroOrBelowFiltersNothing) {
    AddAsset("A-2", 0, 5);
    Add({.key = 1});
    Add({.key = 2, .asset = "A-2"});
    EXPECT_THAT(Keys(preventive->SeleccionarActivas(today, "", true, "", false, 0)), ElementsAre("1", "2"));
    EXPECT_THAT(Keys(preventive->SeleccionarActivas(today, "", true, "", false, -5)), ElementsAre("1", "2"));
    EXPECT_THAT(Keys(preventive->SeleccionarActivas(today, "", true, "", false, 5)), ElementsAre("2"));
}

TEST_F(CImputacionPreventivaSelectionsTest, ExisteLooksByNumberAndGroupAndCountsCancelledRows) {
    Add({.key = 1, .cancelled = 1});
    EXPECT_TRUE(preventive->Existe(12, 1, "A-1"));
    EXPECT_EQ(Statement(),
              "SELECT SC_Imputacion_Preventiva  FROM Imputacion_Preventiva,Gama  WHERE  Gama.SC_Gama = "
              "Imputacion_Preventiva.SC_Gama and  Gama.Numero_Gama =12 and Gama.SC_Grupo_Gama =1 and "
              "Imputacion_Preventiva.ID_Activo ='A-1'");
    EXPECT_FALSE(preventive->Existe(7, 1, "A-1"));
    EXPECT_FALSE(preventive->Existe(12, 2, "A-1"));
    EXPECT_FALSE(preventive->Existe(12, 1, "A"));
}

TEST_F(CImputacionPreventivaSelectionsTest, ATaskWithoutExecutorIsMissingOnlyWhereTheExecutorIsJoined) {
    Add({.key = 1});
    world.Run("UPDATE Gama SET SC_Ejecutor_Gama = 99");
    EXPECT_THAT(Keys(preventive->SeleccionarPorGama(7, key)), IsEmpty());
    EXPECT_THAT(Keys(preventive->SeleccionarTodos("", key)), IsEmpty());
    EXPECT_THAT(Keys(preventive->Buscar(1)), IsEmpty());
    EXPECT_THAT(Keys(preventive->SeleccionarPorEquipo("A-1")), ElementsAre("1"));
    EXPECT_THAT(Keys(preventive->SeleccionarActivas(today)), ElementsAre("1"));
}

TEST_F(CImputacionPreventivaSelectionsTest, EachSelectionReportsItselfBehindTheReadThatFailed) {
    const struct {
        const char* what;
        std::function<void()> select;
        const char* level;
    } cases[] = {
        {"SeleccionarPorGama", [&] { preventive->SeleccionarPorGama(7, "x "); },
         "CImputacionPreventiva.SeleccionarPorGama(SC_Gama=7, sColumnas='x ')"},
        {"SeleccionarPorEquipo", [&] { preventive->SeleccionarPorEquipo("A'1", "x", "Anual"); },
         "CImputacionPreventiva.SeleccionarPorEquipo(ID_Activo='A'1', sColumnas='x')"},
        {"SeleccionarActivas", [&] { preventive->SeleccionarActivas(today, "x"); },
         "CImputacionPreventiva.SeleccionarActivas(Fecha_Lanzamiento='05/03/2026', sColumnas='x')"},
        {"Buscar", [&] { preventive->Buscar(4, "x "); },
         "CImputacionPreventiva.Buscar(SC_Imputacion_Preventiva=4, sColumnas='x ')"},
        {"Existe", [&] { preventive->Existe(12, 1, "A'1"); },
         "CImputacionPreventiva.Existe(NumeroGama=12, CodigoGrupo=1, IDEquipo='A'1')"},
        {"SeleccionarTodos", [&] { preventive->SeleccionarTodos("x=1", "x "); },
         "CImputacionPreventiva.SeleccionarTodos(sCondicion='x=1', sColumnas='x ')"},
    };
    for (const auto& each : cases) {
        SCOPED_TRACE(each.what);
        const Zontara::ErrorRecord error = ErrorOf(each.select);
        EXPECT_EQ(error.number, kRefused);
        ExpectCallStack(error, "Libreria.AbrirRecordset(rs={Recordset}, strSQL={Text})", each.level);
    }
}

}  // namespace

#include "bulletins/CBoletin.h"
#include "tests/catalogues/report_check.h"

namespace {

using namespace Zontara;
using namespace support;
using testing::ElementsAre;

class CBoletinFailuresTest : public testing::Test {
protected:
    CBoletinFailuresTest() {
        Nuevo();
        world.Forget();
    }
    std::int32_t Nuevo(const std::string& lunes = "a") {
        return boletines.Nuevo(5, "A1", "02/03/2026", "x", "", lunes, "b", "c", "d", "e", "f", "g", 10, 3);
    }
    void Salvar(const std::string& nota) {
        boletines.Salvar(1, "a", "b", "c", "d", "e", "f", "g", World::Day("2026-03-08"), nota, 1, 70);
    }
    World world;
    CBoletin boletines;
    const std::string all = "select * from Boletin order by 1";
};

TEST_F(CBoletinFailuresTest, AreReportedWithTheirValues) {
    const std::string nuevo =
        "CBoletin.Nuevo(SC_Imputacion_Preventiva=5, ID_Equipo='A1', Fecha_Lanzamiento='02/03/2026', "
        "Fecha_Entrega='x', Fecha_Real_Entrega='', Lunes='a', Martes='b', Miercoles='c', Jueves='d', Viernes='e', "
        "Sabado='f', Domingo='g', Semana_Del_Ano=10, SC_Usuario=3)";
    ExpectRefused(
        world, all,
        {{"begin", [&] { Nuevo(); }, nuevo, 1},
         {"key Boletin", [&] { Nuevo(); }, nuevo, 1},
         {"sql   INSERT", [&] { Nuevo(); }, nuevo, 1},
         {"commit", [&] { Nuevo(); }, nuevo, 1},
         {"sql   DELETE", [&] { boletines.Borrar(1); }, "CBoletin.Borrar(SC_Boletin=1)"},
         {"sql SELECT", [&] { boletines.Seleccionar("1=1", "", "Breve"); },
          "CBoletin.Seleccionar(sCondicion='1=1', sColumnas='', TipoFrecuencia='Breve')"},
         {"sql   UPDATE", [&] { Salvar("n"); },
          "CBoletin.Salvar(SC_Boletin=1, Lunes='a', Martes='b', Miercoles='c', Jueves='d', Viernes='e', Sabado='f', "
          "Domingo='g', Fecha_Real_Entrega='08/03/2026')"},
         {"sql Select", [&] { boletines.Buscar(1, "Nota"); }, "CBoletin.Buscar(SC_Boletin=1, sColumnas='Nota')"},
         {"sql SELECT", [&] { boletines.SeleccionarPorSemana(10, 2026); },
          "CBoletin.SeleccionarPorSemana(SemanaDelAno=10, Ano=2026)"},
         {"sql select", [&] { boletines.UltimaSemanaLanzada(2026); }, "CBoletin.UltimaSemanaLanzada(AnoActual=2026)"}});
}

TEST_F(CBoletinFailuresTest, OfOperationsWithoutATrapReachTheCallerRaw) {
    const std::vector<std::string> before = world.Rows(all);
    const std::vector<std::pair<std::string, std::function<void()>>> cases{
        {"MarcarBoletinEnEjecucion", [&] { boletines.MarcarBoletinEnEjecucion(1); }},
        {"MarcarBoletinEjecutado", [&] { boletines.MarcarBoletinEjecutado(1); }},
        {"AsignarOTAlBoletin", [&] { boletines.AsignarOTAlBoletin(1, "n", 1, 2); }}};
    for (const auto& [label, call] : cases) {
        SCOPED_TRACE(label);
        world.FailOn("sql   UPDATE");
        const ErrorRecord error = ErrorOf(call);
        EXPECT_EQ(error.number, kConstraintRefused);
        EXPECT_EQ(error.source, "dhRichClient3");
        EXPECT_EQ(error.description, "forced failure");
        EXPECT_EQ(world.Rows(all), before);
    }
}

TEST_F(CBoletinFailuresTest, OfReadsWithoutATrapAreReportedByTheOpeningAlone) {
    const std::vector<std::pair<std::string, std::function<void()>>> cases{
        {"ExistenBoletinesParaEditar", [&] { boletines.ExistenBoletinesParaEditar(10, 2026, "A1"); }},
        {"SeleccionarBoletines", [&] { boletines.SeleccionarBoletines(0); }}};
    for (const auto& [label, call] : cases) {
        SCOPED_TRACE(label);
        world.FailOn("sql SELECT");
        const ErrorRecord error = ErrorOf(call);
        EXPECT_EQ(error.number, kConstraintRefused);
        EXPECT_THAT(CallsOf(error), ElementsAre("Libreria.AbrirRecordset(rs={Recordset}, strSQL={Text})"));
    }
}

TEST_F(CBoletinFailuresTest, AQuoteInAnyTextBreaksTheStatement) {
    const std::vector<std::string> before = world.Rows(all);
    const std::vector<std::pair<std::string, std::function<void()>>> cases{
        {"weekday in Nuevo", [&] { Nuevo("o'clock"); }},
        {"note in Salvar", [&] { Salvar("it's done"); }},
        {"note in AsignarOTAlBoletin", [&] { boletines.AsignarOTAlBoletin(1, "it's", 1, 2); }},
        {"asset in ExistenBoletinesParaEditar", [&] { boletines.ExistenBoletinesParaEditar(10, 2026, "A'1"); }}};
    for (const auto& [label, call] : cases) {
        SCOPED_TRACE(label);
        EXPECT_EQ(ErrorOf(call).number, kSyntaxRefused);
        world.Abort();
        EXPECT_EQ(world.Rows(all), before);
    }
}

TEST_F(CBoletinFailuresTest, AFailedNuevoLeavesTheDepthRaisedForTheNextCreateToCommitNothing) {
    world.FailOn("sql   INSERT");
    ErrorOf([&] { Nuevo(); });
    EXPECT_EQ(world.Depth(), 1);
    EXPECT_TRUE(world.InTransaction());
    Nuevo();
    EXPECT_EQ(world.Depth(), 1);
    EXPECT_TRUE(world.InTransaction());
    world.Abort();
    EXPECT_EQ(world.Rows(all).size(), 1U);
}

}  // namespace

#include "meter/CImputacionSistematica.h"
#include "tests/meter/meter_test.h"

using namespace Zontara;
using namespace support;

namespace {

struct Case {
    std::string failing;
    std::function<void(CImputacionSistematica&)> work;
    /// The calls of the report, innermost first.
    std::vector<std::string> calls;
    int depth = 0;
};

const Date kDay = World::Day("2026-03-05");
const std::string kRead = "Libreria.AbrirRecordset(rs={Recordset}, strSQL={Text})";
const std::string kClass = "CImputacionSistematica.";

void MakeNew(CImputacionSistematica& c) {
    c.Nuevo("A1", 30, "2026-03-01", 1, 9, "2026-03-02", "2026-12-31", 111, 222, 900, "2026-02-01", "2026-03-03", "alta",
            200);
}
const std::string kNuevo =
    kClass +
    "Nuevo(ID_Activo='A1', SC_Gama=30, Fecha_Imputacion='2026-03-01', Anulada=1, SC_Usuario=9, "
    "Fecha_Inicio='2026-03-02', Fecha_Fin='2026-12-31', Acumulado_Lectura=111, Ultima_Lectura=222, "
    "Aproximacion_Lectura=900, Fecha_Ultimo_Lanzamiento='2026-02-01', "
    "Fecha_Ultima_Modificacion='2026-03-03', Causa_Modificacion='alta', Lectura_Limite=200)";

std::vector<Case> WritingCases() {
    using C = CImputacionSistematica;
    return {
        {"begin", MakeNew, {"Libreria.IniciarTransaccion()", kNuevo}, 1},
        {"key Imputacion_Sistematica", MakeNew, {kNuevo}, 1},
        {"AcumuladoActual", MakeNew, {kNuevo}, 1},
        {"sql   INSERT Into Imputacion_Sistematica", MakeNew, {kNuevo}, 1},
        {"commit", MakeNew, {"Libreria.TerminarTransaccion()", kNuevo}, 1},
        {"sql   DELETE", [](C& c) { c.Borrar(7); }, {kClass + "Borrar(SC_Imputacion_Sistematica=7)"}},
        {"sql   UPDATE",
         [](C& c) { c.Salvar(7, "A2", 31, "x", 1, 8, "y", "z", 900, 250); },
         {kClass + "Salvar(SC_Imputacion_Sistematica=7, ID_Activo='A2', SC_Gama=31, Fecha_Imputacion='x', Anulada=1, "
                   "SC_Usuario=8, Fecha_Inicio='y', Fecha_Fin='z', Aproximacion_Lectura=900, Lectura_Limite=250)"}},
        {"sql   UPDATE", [](C& c) { c.AnularPorEquipo("A1"); }, {kClass + "AnularPorEquipo(ID_Activo='A1')"}},
        {"sql   UPDATE", [](C& c) { c.Anular(7); }, {kClass + "Anular(SC_Imputacion_Sistematica=7)"}},
        {"sql   UPDATE",
         [](C& c) { c.Resetear(7, kDay); },
         {kClass + "Resetear(SC_Imputacion_Sistematica=7, Fecha_Lanzamiento='05/03/2026')"}},
        {"sql Update",
         [](C& c) { c.ActualizarAcumulado("A1", 2, kDay, 12.5F, -100); },
         {kClass + "ActualizarAcumulado(ID_Activo='A1', Unidad_Lectura=2, Fecha_Lectura='05/03/2026', "
                   "Valor_Real_Lectura=12.5, Valor_Lectura=-100)"}},
        {"sql   UPDATE",
         [](C& c) { c.ActualizarAcumuladoDeReferencia(7, kDay, -5); },
         {kClass + "ActualizarAcumuladoDeReferencia(SC_Imputacion_Sistematica=7, Fecha_Lanzamiento='05/03/2026', "
                   "NuevoAcumulado=-5)"}},
    };
}

std::vector<Case> ReadingCases() {
    using C = CImputacionSistematica;
    const std::string list = kClass + "ListarImputacionesDeUnActivo(ID_Activo='A1', sColumnas=' Lectura_Limite ')";
    return {
        {"sql",
         [](C& c) { c.SeleccionarPorGama(30, "x "); },
         {kRead, kClass + "SeleccionarPorGama(SC_Gama=30, sColumnas='x ')"}},
        {"sql",
         [](C& c) { c.SeleccionarPorEquipo("A", "x "); },
         {kRead, kClass + "SeleccionarPorEquipo(ID_Activo='A', sColumnas='x ')"}},
        {"sql",
         [](C& c) { c.ListarImputacionesVencidas("A", "x "); },
         {kRead, kClass + "ListarImputacionesVencidas(ID_Activo='A', sColumnas='x ')"}},
        {"sql",
         [](C& c) { c.UltimaLectura("A1", 2); },
         {kRead, kClass + "UltimaLectura(ID_Activo='A1', Unidad_Lectura=2)"}},
        {"sql",
         [](C& c) { c.SeleccionarActivas(kDay, "x", "B"); },
         {kRead, kClass + "SeleccionarActivas(Fecha_Lanzamiento='05/03/2026', sColumnas='x', ID_Capitulo='B')"}},
        {"sql",
         [](C& c) { c.Buscar(7, "x "); },
         {kRead, kClass + "Buscar(SC_Imputacion_Sistematica=7, sColumnas='x ')"}},
        {"sql",
         [](C& c) { c.Existe(3, 5, "A1"); },
         {kRead, kClass + "Existe(NumeroGama=3, CodigoGrupo=5, IDEquipo='A1')"}},
        {"sql",
         [](C& c) { c.SeleccionarAproximaciones("x "); },
         {kRead, kClass + "SeleccionarAproximaciones(sColumnas='x ')"}},
        {"sql",
         [](C& c) { c.SeleccionarTodos("1=1", "x ", true); },
         {kRead, kClass + "SeleccionarTodos(sCondicion='1=1', sColumnas='x ', AgrupadaPorActivo=True)"}},
        {"sql",
         [](C& c) { c.ListarImputacionesDeUnActivo("A1", "x"); },
         {kRead, kClass + "ListarImputacionesDeUnActivo(ID_Activo='A1', sColumnas='x')"}},
        {"sql",
         [](C& c) { c.EsProgramacionPrima(1000, "A1"); },
         {kRead, list, kClass + "EsProgramacionPrima(Programacion=1000, IDActivo='A1')"}},
        {"sql",
         [](C& c) { c.ActivoNecesitaMantenimiento("A1", 7); },
         {kRead, kClass + "ActivoNecesitaMantenimiento(ID_Activo='A1')"}},
        {"sql", [](C& c) { c.IdGamaImputacion(7); }, {kRead, kClass + "IdGamaImputacion(SC_Imputacion_Sistematica=7)"}},
        {"sql",
         [](C& c) { c.ElActivoTieneAproximacionesVencidas("A1"); },
         {kRead, kClass + "ElActivoTieneAproximacionesVencidas(IDActivo='A1')"}},
    };
}

class OperationFailuresTest : public MeterTest {
protected:
    OperationFailuresTest() {
        AddAsset("A1", "500");
        AddAssignment({7, "A1", 1000, 100});
    }
    void Check(const std::vector<Case>& cases) {
        const std::vector<std::string> before = Stored();
        for (const Case& c : cases) {
            SCOPED_TRACE(c.failing + " in " + c.calls.back());
            world.Forget();
            world.FailOn(c.failing);
            const ErrorRecord error = ErrorOf([&] { c.work(*imputaciones); });
            EXPECT_EQ(error.number, Refused(19));
            EXPECT_EQ(error.source, "HuntERR.ErrorIn");
            EXPECT_EQ(CallsOf(error), c.calls);
            EXPECT_EQ(world.Depth(), c.depth);
            EXPECT_THAT(world.Story().back(), ::testing::HasSubstr(c.failing)) << "something ran after the failure";
            world.Abort();
            EXPECT_EQ(Stored(), before);
            EXPECT_EQ(Notices(), (std::vector<int>{0, 0, 0}));
        }
    }
};

TEST_F(OperationFailuresTest, AFailedChangeIsReportedWithItsValuesAndStoresNothing) { Check(WritingCases()); }

TEST_F(OperationFailuresTest, AFailedReadIsReportedWithItsValues) { Check(ReadingCases()); }

TEST_F(OperationFailuresTest, AnOptionalArgumentLeftOutIsReportedWithItsDefault) {
    world.FailOn("sql");
    EXPECT_THAT(CallsOf(ErrorOf([&] { imputaciones->SeleccionarTodos(""); })),
                ::testing::ElementsAre(
                    kRead, kClass + "SeleccionarTodos(sCondicion='', sColumnas='', AgrupadaPorActivo=False)"));
}

}  // namespace

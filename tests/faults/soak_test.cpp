#include "tests/faults/effort.h"
#include "tests/faults/plant.h"
#include "tests/host/run.h"

#include "bulletins/CBoletin.h"
#include "calendar/CImputacionPreventiva.h"
#include "catalogues/CGama.h"
#include "frame/CGlobalPreventivo.h"
#include "frame/creation.h"
#include "frame/raised_error.h"
#include "meter/CImputacionSistematica.h"
#include "readings/CLecturaEquipo.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <unistd.h>
#include <chrono>
#include <fstream>

namespace faults {
namespace {

using std::chrono::steady_clock;
using support::World;

/// Memory of this process that is in use, in KiB.
long MemoryInUse() {
    std::ifstream file("/proc/self/statm");
    long all = 0;
    long resident = 0;
    file >> all >> resident;
    return resident * (sysconf(_SC_PAGESIZE) / 1024);
}

long OpenFiles() {
    const std::filesystem::directory_iterator files("/proc/self/fd");
    return static_cast<long>(std::distance(begin(files), end(files)));
}

/// One turn of mixed work: readings, launches, questions, lists, a failure. It leaves the plant as large as it was.
void Turn(Session& session, int turn) {
    const auto component = Zontara::Create<Zontara::CGlobalPreventivo>();
    for (int i = 1; i <= 5; ++i) {
        component->LecturaEquipo()->Nuevo("2026-03-02", "P-0000" + std::to_string(i), 1, 100, 100, 0, 0, "nota", "", {},
                                          "");
    }
    session.LaunchAll(turn % 2 == 0 ? Paper::Bulletins : Paper::Orders);
    component->ElActivoTieneMantenimientoVencido("P-00001", "2026-04-01");
    component->Boletin()->Seleccionar();
    component->ImputacionPreventiva()->SeleccionarActivas(World::Day("2026-03-02"));
    const auto task = component->Gama()->ProximoNumeroGama();
    EXPECT_GT(task, 0);
    // A text that is new each time, and one that the engine refuses.
    component->LecturaEquipo()->SeleccionarTodos("SC_Lectura > " + std::to_string(turn));
    EXPECT_THROW(component->LecturaEquipo()->SeleccionarTodos("nada" + std::to_string(turn)), Zontara::RaisedError);
    component->AbortarTransaccion();
    session.Database().RunScript(
        "DELETE FROM Lectura_Equipo; DELETE FROM Boletin; DELETE FROM Orden_Trabajo; DELETE FROM Material_OT;"
        "DELETE FROM Orden_Generada;"
        "UPDATE Activo SET Acumulado_Lectura = 1000; UPDATE Imputacion_Sistematica SET Ultimo_Acumulado = 0;"
        "UPDATE Imputacion_Preventiva SET Semana = 9, Anulada = 0, Acumulado_Ciclo = 0, Fecha_Ultimo_Lanzamiento ="
        " iif(Es_Sincronizada, '2026-02-23', '2026-01-05')");
}

class SoakTest : public testing::Test {
protected:
    SoakTest() { MakePlant(path_, 20); }

    host_test::Folder folder_;
    const std::string path_ = folder_ / "plant.db";
};

TEST_F(SoakTest, MemoryAndFilesStayAsTheyAreOnceWarm) {
#ifdef __SANITIZE_ADDRESS__
    // AddressSanitizer keeps freed memory aside, 256 MiB unless told otherwise, and looks for leaks by itself.
    constexpr long kMostGrowth = 2048 + 256 * 1024;
#else
    constexpr long kMostGrowth = 2048;
#endif
    const std::chrono::seconds time(Effort(4, 600));
    Session session(path_);
    const auto begun = steady_clock::now();
    int turn = 0;
    while (steady_clock::now() < begun + time / 4) {
        Turn(session, turn++);
        session.Forget();
    }
    const long memory = MemoryInUse();
    const long files = OpenFiles();
    const std::int64_t objects = Zontara::Object::Living();
    const int warm = turn;
    long most = memory;
    while (steady_clock::now() < begun + time) {
        Turn(session, turn++);
        most = std::max(most, MemoryInUse());
        session.Forget();
    }
    EXPECT_EQ(OpenFiles(), files);
    EXPECT_EQ(Zontara::Object::Living(), objects);
    EXPECT_LE(most - memory, kMostGrowth) << "in KiB, over " << turn - warm << " turns";
    Say("soak: " + std::to_string(time.count()) + " s, " + std::to_string(turn) + " turns, memory " +
        std::to_string(memory) + " KiB when warm, " + std::to_string(most) + " KiB at most, " + std::to_string(files) +
        " files open");
}

TEST_F(SoakTest, NoticesGrowByOneAnOperationUntilTheirListIsReplaced) {
    Session session(path_);
    const auto meters = Zontara::Create<Zontara::CImputacionSistematica>();
    for (int i = 0; i < 100; ++i)
        meters->Anular(1);
    EXPECT_EQ(meters->CatalogoModificado()->Total(), 100);
    meters->CatalogoModificado(nullptr);
    EXPECT_EQ(meters->CatalogoModificado()->Total(), 0);
}

}  // namespace
}  // namespace faults

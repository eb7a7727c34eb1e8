#include "calendar/CImputacionPreventiva.h"

#include "bulletins/CConfiguracionOTBoletin.h"
#include "frame/Libreria.h"
#include "tests/calendar/plant.h"

#include <algorithm>

namespace {

using support::ErrorOf;
using support::ExpectCallStack;
using support::kForced;
using support::kRefused;
using support::World;
using testing::ElementsAre;
using testing::IsEmpty;
using Zontara::CConfiguracionOTBoletin;
using Zontara::Ref;
using Zontara::Value;

constexpr const char* kLevel =
    "CImputacionPreventiva.LanzarPreventivo(Fecha_Lanzamiento='05/03/2026', SC_Usuario=3, TipoFrecuencia='Breve')";

class LanzarPreventivoFailuresTest : public support::CalendarTest {
protected:
    LanzarPreventivoFailuresTest() {
        world.Run(
            "INSERT INTO Proceso (SC_Proceso, Activo) VALUES (5, 1);"
            "INSERT INTO materiales_gama VALUES (1, 'Oil', 2.5, 4, 7, 1)");
    }
    /// Two due rows of each kind.
    void AddDueRows() {
        Add({.key = 1});
        Add({.key = 2, .frequency = "Mensual", .anchor = "1", .cycle = 1, .ends = 1});
        AddConventional({.key = 3, .frequency = "Diaria"});
        AddConventional({.key = 4, .frequency = "Mensual", .anchor = "5", .last = "2026-01-01"});
    }
    std::int32_t Run(bool conventional, bool orders) {
        const Ref<CConfiguracionOTBoletin> configuration =
            orders ? Zontara::Create<CConfiguracionOTBoletin>() : nullptr;
        const Zontara::Date day = World::Day("2026-03-05");
        return conventional ? preventive->LanzarPreventivoConvensional(day, 3, "Breve", configuration)
                            : preventive->LanzarPreventivo(day, 3, "Breve", configuration);
    }
};

/// Fails each request of a launch in turn, and looks at what is left behind.
class EachStepOfALaunch : public LanzarPreventivoFailuresTest,
                          public testing::WithParamInterface<std::tuple<bool, bool>> {
protected:
    std::int32_t RunAll() { return Run(std::get<0>(GetParam()), std::get<1>(GetParam())); }
};

TEST_P(EachStepOfALaunch, UndoesTheWholeRunAndTellsNobody) {
    AddDueRows();
    const std::vector<std::string> before = Stored();
    Zontara::Libreria::IniciarTransaccion();
    world.Forget();
    ASSERT_EQ(RunAll(), 2);
    std::vector<std::string> story = world.Story();
    Zontara::Libreria::AbortarTransaccion();
    ASSERT_EQ(story.back(), "notice ");
    story.pop_back();
    // The launch ran inside an outer transaction, so that it can be taken back: on its own it begins and commits.
    const auto firstRow = std::find(story.begin(), story.end(), "event ProcesandoImputacion");
    story.insert(firstRow, "begin");
    story.push_back("commit");
    const std::int32_t notices = preventive->OTPreventivaGenerada()->Total();

    for (std::size_t step = 0; step < story.size(); ++step) {
        SCOPED_TRACE("step " + std::to_string(step) + ": " + story[step]);
        // Keys are never handed out twice, so another run writes other values.
        const std::string part = story[step].substr(0, story[step].find(" VALUES ("));
        const auto holdsPart = [&](const std::string& line) { return line.find(part) != std::string::npos; };
        const auto skip = std::count_if(story.begin(), story.begin() + static_cast<std::ptrdiff_t>(step), holdsPart);
        world.FailOn(part, kForced, "forced failure", static_cast<int>(skip));
        const Zontara::ErrorRecord error = ErrorOf([&] { RunAll(); });
        ASSERT_EQ(error.number, kForced);
        EXPECT_THAT(error.description, testing::HasSubstr("forced failure"));
        EXPECT_EQ(support::CallStackOf(error.description).back(), std::string("  Call Stack: ") + kLevel);
        EXPECT_EQ(world.Depth(), 0);
        EXPECT_FALSE(world.InTransaction());
        EXPECT_EQ(Stored(), before);
        EXPECT_EQ(preventive->OTPreventivaGenerada()->Total(), notices);
        if (HasFailure()) return;
    }
    world.Heal();
    EXPECT_EQ(RunAll(), 2);
}

INSTANTIATE_TEST_SUITE_P(BothKindsAndBranches, EachStepOfALaunch, testing::Combine(testing::Bool(), testing::Bool()),
                         [](const auto& of) {
                             return std::string(std::get<0>(of.param) ? "Conventional" : "Synchronised") +
                                    (std::get<1>(of.param) ? "Orders" : "Bulletins");
                         });

TEST_F(LanzarPreventivoFailuresTest, ABeginThatTheDatabaseRefusesIsUndone) {
    AddDueRows();
    const std::vector<std::string> before = Stored();
    world.Platform().onYield = [&] {
        if (world.Depth() == 0) world.Run("BEGIN");
    };
    const Zontara::ErrorRecord error = ErrorOf([&] { Run(false, false); });
    ExpectCallStack(error, "Libreria.IniciarTransaccion()", kLevel);
    EXPECT_EQ(error.number, kRefused);
    EXPECT_EQ(world.Depth(), 0);
    EXPECT_FALSE(world.InTransaction());
    EXPECT_EQ(Stored(), before);
    world.Platform().onYield = nullptr;
    EXPECT_EQ(Run(false, false), 2);
}

TEST_F(LanzarPreventivoFailuresTest, AFailedBulletinReportsEveryLevel) {
    AddDueRows();
    world.FailOn("INSERT Into Boletin");
    ExpectCallStack(ErrorOf([&] { Run(false, false); }),
                    "CBoletin.Nuevo(SC_Imputacion_Preventiva=1, ID_Equipo='A-1', Fecha_Lanzamiento='05/03/2026', "
                    "Fecha_Entrega='12/03/2026', Fecha_Real_Entrega='05/03/2026', Lunes='', Martes='', Miercoles='', "
                    "Jueves='', Viernes='', Sabado='', Domingo='', Semana_Del_Ano=10, SC_Usuario=3)",
                    "CImputacionPreventiva.GeneroBoletin(rs={Recordset}, Fecha_Lanzamiento='05/03/2026', SC_Usuario=3, "
                    "Frecuencia='Semanal')",
                    kLevel);
}

TEST_F(LanzarPreventivoFailuresTest, AFailedSelectionReportsTheLaunchAndAbortsTheCallersTransaction) {
    AddDueRows();
    Zontara::Libreria::IniciarTransaccion();
    preventive->Anular(1);
    world.FailOn("sql SELECT Activo");
    ExpectCallStack(ErrorOf([&] { Run(false, false); }), "Libreria.AbrirRecordset(rs={Recordset}, strSQL={Text})",
                    "CImputacionPreventiva.SeleccionarActivas(Fecha_Lanzamiento='05/03/2026', sColumnas='')", kLevel);
    EXPECT_EQ(world.Depth(), 0);
    EXPECT_EQ(State(1), "2026-01-01|1|0|0");
}

TEST_F(LanzarPreventivoFailuresTest, TheConventionalLaunchReportsItselfUnderTheNameOfTheOther) {
    AddConventional({.key = 1, .frequency = "Semanal", .anchor = "Monday"});
    const Zontara::ErrorRecord error = ErrorOf([&] { Run(true, false); });
    EXPECT_EQ(error.number, 13);
    ExpectCallStack(error, kLevel);
}

TEST_F(LanzarPreventivoFailuresTest, AnErrorOfASubscriberOrOfTheYieldUndoesTheRun) {
    AddDueRows();
    const std::vector<std::string> before = Stored();
    const std::int32_t subscription = preventive->Subscribe([&](std::string_view, Value& argument) {
        if (argument == Value(2) && world.Depth() > 0) Zontara::RaiseError(1234, "planner", "stopped by the planner");
    });
    EXPECT_EQ(ErrorOf([&] { Run(false, false); }).number, 1234);
    EXPECT_EQ(Stored(), before);
    EXPECT_EQ(world.Depth(), 0);
    preventive->Unsubscribe(subscription);

    world.Platform().onYield = [&] {
        if (Bulletins().size() == 1) Zontara::RaiseError(1235, "planner", "stopped by the planner");
    };
    EXPECT_EQ(ErrorOf([&] { Run(false, false); }).number, 1235);
    EXPECT_EQ(Stored(), before);
    EXPECT_EQ(preventive->OTPreventivaGenerada()->Total(), 0);
}

TEST_F(LanzarPreventivoFailuresTest, BadRowsStopTheWholeRunEvenBehindDueOnes) {
    const struct {
        const char* label;
        support::Assignment row;
        std::int32_t number;
    } cases[] = {
        {"anchor no number", {.key = 9, .frequency = "Mensual", .anchor = "first"}, 13},
        {"anchor of a long row no number", {.key = 9, .frequency = "Anual", .anchor = ""}, 13},
        {"last launch no date", {.key = 9, .frequency = "Anual", .anchor = "3", .last = ""}, 13},
        {"interval beyond 16 bits", {.key = 9, .interval = 32768}, 6},
        {"interval below 16 bits", {.key = 9, .interval = -32769}, 6},
        {"conventional, long anchor without month",
         {.key = 9, .frequency = "Anual", .anchor = "3", .last = "2026-03-05", .synchronised = false},
         9},
        {"conventional, monthly anchor empty",
         {.key = 9, .frequency = "Mensual", .anchor = "", .last = "2026-03-05", .synchronised = false},
         9},
        {"conventional, a day that no calendar has",
         {.key = 9, .frequency = "Semanal", .anchor = "-1E10", .last = "2026-01-01", .synchronised = false},
         6},
    };
    AddDueRows();
    for (const auto& each : cases) {
        SCOPED_TRACE(each.label);
        Add(each.row);
        const std::vector<std::string> before = Stored();
        EXPECT_EQ(ErrorOf([&] { Run(!each.row.synchronised, false); }).number, each.number);
        EXPECT_EQ(Stored(), before);
        EXPECT_EQ(world.Depth(), 0);
        world.Run("DELETE FROM Imputacion_Preventiva WHERE SC_Imputacion_Preventiva = 9");
    }
    EXPECT_EQ(preventive->OTPreventivaGenerada()->Total(), 0);
}

TEST_F(LanzarPreventivoFailuresTest, ANullFrequencyIsAnInvalidUseOfNull) {
    Add({.key = 1});
    world.Run("UPDATE Imputacion_Preventiva SET Frecuencia = NULL");
    EXPECT_EQ(ErrorOf([&] { Run(false, false); }).number, 94);
}

TEST_F(LanzarPreventivoFailuresTest, AFailingRollbackDoesNotHideTheFirstFailure) {
    AddDueRows();
    const std::int32_t subscription = preventive->Subscribe([&](std::string_view event, Value&) {
        if (event != "ProcesandoImputacion") return;
        world.FailOn("rollback", kForced, "the rollback failed");
        Zontara::RaiseError(1234, "planner", "stopped by the planner");
    });
    const Zontara::ErrorRecord error = ErrorOf([&] { Run(false, false); });
    EXPECT_EQ(error.number, 1234);
    EXPECT_THAT(error.description, testing::HasSubstr("stopped by the planner"));
    EXPECT_THAT(error.description, testing::Not(testing::HasSubstr("the rollback failed")));
    ExpectCallStack(error, kLevel);
    EXPECT_EQ(world.Depth(), 1);
    world.Abort();
    preventive->Unsubscribe(subscription);
}

TEST_F(LanzarPreventivoFailuresTest, AFailingNoticeComesTooLateToUndoTheRun) {
    AddDueRows();
    world.FailOn("notice ");
    EXPECT_EQ(ErrorOf([&] { Run(false, false); }).number, kForced);
    EXPECT_EQ(world.Depth(), 0);
    EXPECT_EQ(Bulletins().size(), 2u);
}

TEST_F(LanzarPreventivoFailuresTest, AnErrorOfTheUserBandKeepsItsOwnText) {
    AddDueRows();
    world.FailOn("INSERT Into Boletin", Zontara::vbObjectError + 4200, "a user's error");
    const Zontara::ErrorRecord error = ErrorOf([&] { Run(false, false); });
    EXPECT_EQ(error.number, Zontara::vbObjectError + 4200);
    EXPECT_EQ(error.description, "a user's error");
    EXPECT_EQ(world.Depth(), 0);
    EXPECT_THAT(Bulletins(), IsEmpty());
}

TEST_F(LanzarPreventivoFailuresTest, AQuoteInAnAssetsKeyStopsTheRunAtItsBulletin) {
    AddAsset("A''9");
    Add({.key = 1});
    Add({.key = 2, .asset = "A''9"});
    const std::vector<std::string> before = Stored();
    EXPECT_EQ(ErrorOf([&] { Run(false, false); }).number, kRefused);
    EXPECT_EQ(Stored(), before);
}

/// Makes the component fail when it creates or lets go of an object of one type.
class Saboteur : public Zontara::LifeWatcher {
public:
    Saboteur() { Zontara::ReplaceLifeWatcher(this); }
    ~Saboteur() override { Zontara::ReplaceLifeWatcher(nullptr); }
    void Creating(std::string_view typeName) override { Note("+", typeName); }
    void Releasing(std::string_view typeName) override { Note("-", typeName); }

    std::string fails;
    std::vector<std::string> seen;

private:
    void Note(const char* sign, std::string_view typeName) {
        seen.push_back(sign + std::string(typeName));
        if (seen.back() == fails) Zontara::RaiseError(kForced, "test", "sabotage");
    }
};

TEST_F(LanzarPreventivoFailuresTest, MakesABulletinObjectForEachRowAndItsOtherHelpersOnce) {
    AddDueRows();
    Saboteur watcher;
    EXPECT_EQ(Run(false, false), 2);
    EXPECT_THAT(watcher.seen, ElementsAre("+CBoletin", "-CBoletin", "+CBoletin", "-CBoletin", "-Recordset"));
    watcher.seen.clear();
    EXPECT_EQ(Run(true, true), 2);
    EXPECT_EQ(std::count(watcher.seen.begin(), watcher.seen.end(), "+COrdenGenerada"), 1);
    EXPECT_EQ(std::count(watcher.seen.begin(), watcher.seen.end(), "-COrdenGenerada"), 1);
    EXPECT_EQ(std::count(watcher.seen.begin(), watcher.seen.end(), "+CMaterialGama"), 1);
    EXPECT_EQ(std::count(watcher.seen.begin(), watcher.seen.end(), "-CMaterialGama"), 1);
}

TEST_F(LanzarPreventivoFailuresTest, AHelperThatCannotBeMadeUndoesTheRun) {
    AddDueRows();
    const std::vector<std::string> before = Stored();
    Saboteur watcher;
    for (const char* type : {"+CBoletin", "-CBoletin", "+COrdenGenerada", "+CMaterialGama"}) {
        SCOPED_TRACE(type);
        watcher.fails = type;
        EXPECT_EQ(ErrorOf([&] { Run(false, std::string(type).find("Boletin") == std::string::npos); }).number, kForced);
        EXPECT_EQ(Stored(), before);
        EXPECT_EQ(world.Depth(), 0);
    }
}

}  // namespace

#include "host/program.h"

#include "tests/host/run.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <set>

namespace {

using host_test::Execute;
using host_test::Folder;
using host_test::Ran;
using host_test::Zontara;
using nlohmann::json;
using testing::HasSubstr;

/// The small plant with all that a plant needs, so that nothing is to be found in it.
std::string MakeSoundPlant(const Folder& folder) {
    const std::string database = host_test::MakeSmallPlant(folder);
    Execute(database,
            "INSERT INTO Equipo (ID_Equipo, ID_Activo) VALUES ('A-2', 'A-2'), ('B-1', 'B-1');"
            "INSERT INTO Lectura_Equipo (SC_Lectura, Fecha, ID_Equipo, Valor_Real, Lectura, Lectura_Anterior)"
            " VALUES (9, '2026-01-02', 'A-2', 5, 55, 50)");
    return database;
}

json Findings(const std::string& database, std::vector<std::string> more = {}) {
    std::vector<std::string> words = {"lint", database, "--on", "2026-01-06", "--json"};
    words.insert(words.end(), more.begin(), more.end());
    const Ran ran = Zontara(words);
    const json findings = json::parse(ran.out);
    EXPECT_EQ(ran.status, findings.empty() ? host::kDone : host::kFindings) << ran.err;
    return findings;
}

TEST(Lint, FindsNothingInASoundPlant) {
    const Folder folder;
    const std::string database = MakeSoundPlant(folder);
    EXPECT_EQ(Findings(database), json::array());
    const Ran ran = Zontara({"lint", database, "--on", "2026-01-06"});
    EXPECT_EQ(ran.status, host::kDone);
    EXPECT_EQ(ran.out, "Nothing found.\n");
}

/// A change that does harm, and the finding that tells it.
struct Harm {
    const char* label;
    const char* sql;
    const char* severity;
    const char* rule;
    const char* table;
    const char* key;
    const char* what;
};

class LintHarm : public testing::TestWithParam<Harm> {};

TEST_P(LintHarm, IsFoundAndNothingElse) {
    const Folder folder;
    const std::string database = MakeSoundPlant(folder);
    Execute(database, GetParam().sql);
    const json findings = Findings(database);
    ASSERT_EQ(findings.size(), 1u) << findings.dump(2);
    const json& finding = findings[0];
    EXPECT_EQ(finding["severity"], GetParam().severity);
    EXPECT_EQ(finding["rule"], GetParam().rule);
    EXPECT_EQ(finding["table"], GetParam().table);
    EXPECT_EQ(finding["key"], GetParam().key);
    EXPECT_THAT(finding["what"].get<std::string>(), HasSubstr(GetParam().what));
    EXPECT_NE(finding["advice"], "");
}

constexpr const char* kCalendar = "Imputacion_Preventiva";
constexpr const char* kMeter = "Imputacion_Sistematica";

const Harm kCalendarHarms[] = {
    {"AWeeklyRowOfTwo", "UPDATE Imputacion_Preventiva SET Intervalo_Frecuencia = 2 WHERE SC_Imputacion_Preventiva = 1",
     "error", "never-due", kCalendar, "1", "its frequency Semanal counts 1 at most, and its interval asks for 2."},
    {"AWordThatIsNoFrequency",
     "UPDATE Imputacion_Preventiva SET Frecuencia = 'semanal' WHERE SC_Imputacion_Preventiva = 1", "error", "never-due",
     kCalendar, "1", "'semanal' is no frequency."},
    {"ASynchronisedFixedDate",
     "UPDATE Imputacion_Preventiva SET Frecuencia = 'Fecha' WHERE SC_Imputacion_Preventiva = 1", "error", "never-due",
     kCalendar, "1", "the rule of its frequency holds on no day"},
    {"AMonthThatIsNone",
     "UPDATE Imputacion_Preventiva SET Frecuencia = 'Anual', Programacion = '13' WHERE SC_Imputacion_Preventiva = 1",
     "error", "never-due", kCalendar, "1", "Programacion '13'"},
    {"ALastLaunchFarAhead",
     "UPDATE Imputacion_Preventiva SET Fecha_Ultimo_Lanzamiento = '2062-01-05' WHERE SC_Imputacion_Preventiva = 2",
     "error", "never-due", kCalendar, "2", "Never comes due up to 2036-01-06"},
    {"AnIntervalOfZero", "UPDATE Imputacion_Preventiva SET Intervalo_Frecuencia = 0 WHERE SC_Imputacion_Preventiva = 1",
     "error", "always-due", kCalendar, "1", "its interval 0 is reached whatever the date"},
    {"ANegativeIntervalOfAConventionalRow",
     "UPDATE Imputacion_Preventiva SET Intervalo_Frecuencia = -1 WHERE SC_Imputacion_Preventiva = 2", "error",
     "always-due", kCalendar, "2", "its interval -1 is reached"},
    {"AWeekThatIsNoNumber", "UPDATE Imputacion_Preventiva SET Programacion = 'dos' WHERE SC_Imputacion_Preventiva = 3",
     "error", "stops-launch", kCalendar, "3", "Stops the whole synchronised launch of 2026-01-06"},
    {"ADayThatIsMissing", "UPDATE Imputacion_Preventiva SET Programacion = '' WHERE SC_Imputacion_Preventiva = 2",
     "error", "stops-launch", kCalendar, "2", "Stops the whole conventional launch of 2026-01-06"},
    {"ALongRowWithoutItsMonth",
     "UPDATE Imputacion_Preventiva SET Frecuencia = 'Anual', Programacion = '5' WHERE SC_Imputacion_Preventiva = 2",
     "error", "stops-launch", kCalendar, "2", "Subscript out of range"},
    {"AnEmptyLastDate",
     "UPDATE Imputacion_Preventiva SET Fecha_Ultimo_Lanzamiento = '' WHERE SC_Imputacion_Preventiva = 2", "error",
     "stops-launch", kCalendar, "2", "Fecha_Ultimo_Lanzamiento ''"},
    {"AnIntervalBeyondSixteenBits",
     "UPDATE Imputacion_Preventiva SET Intervalo_Frecuencia = 40000 WHERE SC_Imputacion_Preventiva = 1", "error",
     "stops-launch", kCalendar, "1", "Overflow"},
    {"ADailyConventionalRow",
     "UPDATE Imputacion_Preventiva SET Frecuencia = 'Diaria' WHERE SC_Imputacion_Preventiva = 2", "warning",
     "compares-texts", kCalendar, "2", "launched on 2027-01-31, it is due next on 2027-03-31"},
    {"AFixedDateThatComesEarly",
     "UPDATE Imputacion_Preventiva SET Frecuencia = 'Fecha', Programacion = '2026-03-07',"
     " Fecha_Ultimo_Lanzamiento = '2026-01-01' WHERE SC_Imputacion_Preventiva = 2",
     "warning", "compares-texts", kCalendar, "2", "Comes due on 2026-01-08, before its date 2026-03-07"},
    {"AFixedDateThatNeverComes",
     "UPDATE Imputacion_Preventiva SET Frecuencia = 'Fecha', Programacion = '2026-03-07',"
     " Fecha_Ultimo_Lanzamiento = '2025-12-31' WHERE SC_Imputacion_Preventiva = 2",
     "error", "never-due", kCalendar, "2", "the rule of its frequency holds on no day"},
    {"ADayThatShortMonthsLack",
     "UPDATE Imputacion_Preventiva SET Programacion = '30' WHERE SC_Imputacion_Preventiva = 2", "warning",
     "loses-short-months", kCalendar, "2", "not due on 2027-02-28 but on 2027-03-01, booked under 2027-03-30"},
    {"AQuarterlyRowOnDay31",
     "UPDATE Imputacion_Preventiva SET Frecuencia = 'Trimestral', Programacion = '31,2' WHERE SC_Imputacion_Preventiva "
     "= 2",
     "warning", "loses-short-months", kCalendar, "2", "Programacion '31,2'"},
    {"AnAssetThatIsGone", "UPDATE Imputacion_Preventiva SET ID_Activo = 'Z-9' WHERE SC_Imputacion_Preventiva = 1",
     "error", "never-selected", kCalendar, "1", "its asset isn't there"},
    {"ATaskThatIsGone", "UPDATE Imputacion_Preventiva SET SC_Gama = 99 WHERE SC_Imputacion_Preventiva = 1", "error",
     "never-selected", kCalendar, "1", "its task isn't there"},
    {"NoFirstDay", "UPDATE Imputacion_Preventiva SET Fecha_Inicio = NULL WHERE SC_Imputacion_Preventiva = 1", "error",
     "never-selected", kCalendar, "1", "it has no Fecha_Inicio"},
    {"NeitherKind", "UPDATE Imputacion_Preventiva SET Es_Sincronizada = 2 WHERE SC_Imputacion_Preventiva = 1", "error",
     "never-selected", kCalendar, "1", "it is neither synchronised nor conventional"},
    {"AFirstDayInAnotherForm",
     "UPDATE Imputacion_Preventiva SET Fecha_Inicio = '01/01/2026' WHERE SC_Imputacion_Preventiva = 1", "warning",
     "compares-texts", kCalendar, "1", "Begins by chance: Fecha_Inicio '01/01/2026'"},
    {"AnEndWithoutALength", "UPDATE Imputacion_Preventiva SET Finaliza = 1 WHERE SC_Imputacion_Preventiva = 1", "note",
     "never-ends", kCalendar, "1", "its cycle has no length"},
    {"TheSameTwice",
     "INSERT INTO Imputacion_Preventiva SELECT 9, ID_Activo, SC_Gama, Fecha_Imputacion, Anulada, SC_Usuario, "
     "Frecuencia,"
     " Intervalo_Frecuencia, Numero_Repeticion_Ciclo, Acumulado_Ciclo, Fecha_Inicio, Fecha_Ultimo_Lanzamiento,"
     " Fecha_Ultima_Modificacion, Causa_Modificacion, Semana, Finaliza, Programacion, Es_Sincronizada, "
     "Descripcion_Breve"
     " FROM Imputacion_Preventiva WHERE SC_Imputacion_Preventiva = 1",
     "note", "twice", kCalendar, "9", "two papers for one work"},
};

const Harm kMeterHarms[] = {
    {"AnInterval", "UPDATE Imputacion_Sistematica SET Lectura_Limite = 0 WHERE SC_Imputacion_Sistematica = 3", "error",
     "always-due", kMeter, "3", "An order at every meter launch"},
    {"NoReferenceLevel",
     "UPDATE Imputacion_Sistematica SET Ultimo_Acumulado = NULL WHERE SC_Imputacion_Sistematica = 3", "error",
     "stops-launch", kMeter, "3", "Stops the meter launch at this asset"},
    {"AMeterThatWasSetBack",
     "UPDATE Activo SET Acumulado_Lectura = 20 WHERE ID_Activo = 'A-2';"
     "UPDATE Imputacion_Sistematica SET Ultimo_Acumulado = 50 WHERE SC_Imputacion_Sistematica = 3",
     "warning", "meter-backwards", kMeter, "3", "stands at 20, behind the reference level 50"},
    {"AReadingThatRanBackwards", "UPDATE Lectura_Equipo SET Valor_Real = -7.5 WHERE SC_Lectura = 9", "warning",
     "meter-backwards", "Lectura_Equipo", "9", "set the accumulated reading back by 7.5"},
    {"AReadingOfNoAsset", "INSERT INTO Lectura_Equipo (SC_Lectura, Fecha, ID_Equipo) VALUES (10, '2026-01-03', 'Z-9')",
     "warning", "reading-of-no-asset", "Lectura_Equipo", "10", "counts nowhere"},
    {"AMeterThatNobodyReads", "DELETE FROM Lectura_Equipo WHERE ID_Equipo = 'A-2'", "note", "never-read", "Activo",
     "A-2", "Nobody has read its meter"},
    {"AnAssetWithoutUnit", "UPDATE Activo SET SC_Unidad_Lectura = NULL WHERE ID_Activo = 'A-2'", "error",
     "never-selected", kMeter, "3", "its asset has no reading unit"},
    {"AnEndThatNoLaunchReads",
     "UPDATE Imputacion_Sistematica SET Fecha_Fin = '2025-12-31' WHERE SC_Imputacion_Sistematica = 3", "warning",
     "ended", kMeter, "3", "after its end of 2025-12-31"},
    {"ABeginThatNoLaunchReads",
     "UPDATE Imputacion_Sistematica SET Fecha_Inicio = '2026-02-01' WHERE SC_Imputacion_Sistematica = 3", "warning",
     "not-begun", kMeter, "3", "before it begins on 2026-02-01"},
    {"AWarningThatStaysOn",
     "UPDATE Imputacion_Sistematica SET Aproximacion_Lectura = 700 WHERE SC_Imputacion_Sistematica = 1", "note",
     "warns-for-good", kMeter, "1", "the level 700"},
    {"IntervalsThatDontMesh",
     "UPDATE Imputacion_Sistematica SET Lectura_Limite = 300 WHERE SC_Imputacion_Sistematica = 1", "note",
     "intervals-dont-mesh", kMeter, "2", "500 and another interval"},
    {"TheSameMeterTwice",
     "INSERT INTO Imputacion_Sistematica (SC_Imputacion_Sistematica, ID_Activo, SC_Gama, Fecha_Inicio, Lectura_Limite,"
     " Ultimo_Acumulado) VALUES (9, 'A-2', 1, '2026-01-01', 100, 0)",
     "note", "twice", kMeter, "9", "two orders for one work"},
    {"AParallelThatIsGone", "UPDATE Imputacion_Paralela SET SC_Paralela = 99", "warning", "parallel-left-out",
     "Imputacion_Paralela", "1", "Meter assignment 99 isn't reset with assignment 2"},
};

const Harm kCatalogueHarms[] = {
    {"ATimeThatIsNoNumber", "UPDATE Gama SET Tiempo_Necesario = '2 h' WHERE SC_Gama = 1", "warning", "no-hours", "Gama",
     "1", "planned with 0 hours: the time '2 h' isn't a number"},
    {"NoCrew", "UPDATE Gama SET Hombres_Necesarios = NULL WHERE SC_Gama = 1", "error", "stops-launch", "Gama", "1",
     "its crew can't be read"},
    {"AMaterialWithoutCost", "UPDATE materiales_gama SET Costo_Unitario = NULL WHERE sc_materiales_gama = 2", "error",
     "stops-launch", "materiales_gama", "2", "the line of material can't be read"},
    {"AnAssetThatIsNoEquipment", "DELETE FROM Equipo WHERE ID_Equipo = 'A-2'", "warning", "left-out", "Activo", "A-2",
     "The list of bulletins leaves its bulletins out"},
    {"NoActiveProcess", "UPDATE Proceso SET Activo = 0", "note", "no-process", "Proceso", "", "none is active"},
    {"AQuoteInAnIdentifier",
     "INSERT INTO Activo (ID_Activo) VALUES ('X''1'); INSERT INTO Equipo (ID_Equipo) VALUES ('X''1');"
     "UPDATE Imputacion_Preventiva SET ID_Activo = 'X''1' WHERE SC_Imputacion_Preventiva = 1",
     "error", "stops-launch", "Activo", "X'1", "the quote in the identifier breaks the statements"},
};

std::string LabelOf(const testing::TestParamInfo<Harm>& info) { return info.param.label; }

INSTANTIATE_TEST_SUITE_P(Calendar, LintHarm, testing::ValuesIn(kCalendarHarms), LabelOf);
INSTANTIATE_TEST_SUITE_P(Meter, LintHarm, testing::ValuesIn(kMeterHarms), LabelOf);
INSTANTIATE_TEST_SUITE_P(Catalogue, LintHarm, testing::ValuesIn(kCatalogueHarms), LabelOf);

TEST(Lint, ATaskWithoutGroupOrExecutorIsLeftOutOfListsAndMeterLaunches) {
    const Folder folder;
    const std::string database = MakeSoundPlant(folder);
    Execute(database, "UPDATE Gama SET SC_Grupo_Gama = 99, SC_Ejecutor_Gama = NULL WHERE SC_Gama = 1");
    std::multiset<std::string> rules;
    for (const json& finding : Findings(database))
        rules.insert(finding["rule"].get<std::string>() + " " + finding["table"].get<std::string>() + " " +
                     finding["key"].get<std::string>());
    EXPECT_THAT(rules, testing::ElementsAre(
                           "left-out Gama 1", "left-out Gama 1", "never-selected Imputacion_Sistematica 1",
                           "never-selected Imputacion_Sistematica 3", "parallel-left-out Imputacion_Paralela 1"));
}

TEST(Lint, PassesOverWhatIsCancelledAndFixedDatesThatAreDone) {
    const Folder folder;
    const std::string database = MakeSoundPlant(folder);
    Execute(database,
            "UPDATE Imputacion_Preventiva SET Anulada = 1, Intervalo_Frecuencia = 0 WHERE SC_Imputacion_Preventiva = 1;"
            "UPDATE Imputacion_Preventiva SET Frecuencia = 'Fecha', Programacion = '2025-12-05'"
            " WHERE SC_Imputacion_Preventiva = 2;"
            "UPDATE Imputacion_Sistematica SET Anulada = 1, Lectura_Limite = 0 WHERE SC_Imputacion_Sistematica = 3");
    EXPECT_EQ(Findings(database), json::array());
}

TEST(Lint, TheWeekdayOfTheLaunchesShowsWhatTheyNeverMeet) {
    const Folder folder;
    const std::string database = MakeSoundPlant(folder);
    Execute(database,
            "UPDATE Imputacion_Preventiva SET Frecuencia = 'Semanal', Programacion = '3' WHERE "
            "SC_Imputacion_Preventiva = 2");
    EXPECT_EQ(Findings(database), json::array());
    EXPECT_EQ(Findings(database, {"--weekday", "friday"}), json::array());
    const json findings = Findings(database, {"--weekday", "monday"});
    ASSERT_EQ(findings.size(), 1u);
    EXPECT_EQ(findings[0]["rule"], "never-on-launch-day");
    EXPECT_EQ(findings[0]["key"], "2");
    EXPECT_THAT(findings[0]["what"].get<std::string>(), HasSubstr("next on 2026-01-07"));
}

TEST(Lint, TellsPeopleTheRowWhatHappensAndWhatToDo) {
    const Folder folder;
    const std::string database = MakeSoundPlant(folder);
    Execute(database, "UPDATE Imputacion_Preventiva SET Intervalo_Frecuencia = 2 WHERE SC_Imputacion_Preventiva = 1");
    const Ran ran = Zontara({"lint", database, "--on", "2026-01-06"});
    EXPECT_EQ(ran.status, host::kFindings);
    EXPECT_EQ(ran.out,
              "error [never-due] calendar assignment 1: A-1, task 7 Engrase\n"
              "    Never comes due: its frequency Semanal counts 1 at most, and its interval asks for 2.\n"
              "    Set Intervalo_Frecuencia to 1 or less, or choose a longer frequency.\n"
              "\n"
              "1 error, 0 warnings, 0 notes.\n");
}

}  // namespace

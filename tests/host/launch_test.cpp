#include "host/launching/launch.h"

#include "host/program.h"
#include "tests/host/run.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace {

using host_test::Execute;
using host_test::Folder;
using host_test::MakeSmallPlant;
using host_test::Ran;
using host_test::Rows;
using host_test::Scalar;
using host_test::Zontara;
using nlohmann::json;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

// Monday of week 2, in the first week of the month.
const char* const kMonday = "2026-01-05";

TEST(Launch, WritesABulletinForEachDueSynchronisedAssignmentAndShowsIt) {
    const Folder folder;
    const std::string database = MakeSmallPlant(folder);
    const Ran ran = Zontara({"launch", database, "--date", kMonday, "--user", "100"});
    EXPECT_EQ(ran.status, host::kDone) << ran.err;
    EXPECT_EQ(ran.out,
              "Launch of 2026-01-05 (week 2)\n"
              "\n"
              "Launch        Looked at  Launched\n"
              "------------  ---------  --------\n"
              "synchronised          2         2\n"
              "\n"
              "Bulletin  Asset  Asset name  Task  Task name  Frequency  Launched    Delivery\n"
              "--------  -----  ----------  ----  ---------  ---------  ----------  ----------\n"
              "       1  A-1    Bomba          7  Engrase    Semanal    2026-01-05  2026-01-12\n"
              "       2  A-2    Compresor      7  Engrase    Mensual    2026-01-05  2026-02-04\n");
    EXPECT_EQ(ran.err, "");
    EXPECT_THAT(Rows(database, "SELECT SC_Boletin, ID_Equipo, SC_Usuario FROM Boletin"),
                ElementsAre("1|A-1|100", "2|A-2|100"));
}

TEST(Launch, ASecondRunOfTheWeekLaunchesNothingAndEndsWithZero) {
    const Folder folder;
    const std::string database = MakeSmallPlant(folder);
    EXPECT_EQ(Zontara({"launch", database, "--date", kMonday}).status, host::kDone);
    const Ran again = Zontara({"launch", database, "--date", "08/01/2026"});
    EXPECT_EQ(again.status, host::kDone);
    EXPECT_THAT(again.out, HasSubstr("synchronised          2         0\n"));
    EXPECT_THAT(again.out, HasSubstr("Nothing was due.\n"));
    EXPECT_EQ(Scalar(database, "SELECT count(*) FROM Boletin"), "2");
}

TEST(Launch, AllKindsRunInOneTransactionEachOverItsOwn) {
    const Folder folder;
    const std::string database = MakeSmallPlant(folder);
    const Ran ran = Zontara({"launch", database, "--date", kMonday, "--kind", "all", "--json"});
    EXPECT_EQ(ran.status, host::kDone) << ran.err;
    const json launch = json::parse(ran.out);
    EXPECT_EQ(launch["date"], "2026-01-05");
    EXPECT_EQ(launch["launched"], 3);
    ASSERT_EQ(launch["runs"].size(), 3u);
    EXPECT_EQ(launch["runs"][0]["kind"], "synchronised");
    EXPECT_EQ(launch["runs"][0]["looked_at"], 2);
    EXPECT_EQ(launch["runs"][0]["by_frequency"], (json{{"Semanal", 1}, {"Mensual", 1}}));
    EXPECT_EQ(launch["runs"][1]["kind"], "conventional");
    EXPECT_EQ(launch["runs"][1]["launched"], 1);
    EXPECT_EQ(launch["runs"][2]["kind"], "meter");
    EXPECT_EQ(launch["runs"][2]["looked_at"], 3);
    EXPECT_EQ(launch["runs"][2]["launched"], 0);
}

TEST(Launch, JsonHoldsEveryFieldOfABulletin) {
    const Folder folder;
    const std::string database = MakeSmallPlant(folder);
    const json launch = json::parse(Zontara({"launch", database, "--date", kMonday, "--json"}).out);
    EXPECT_EQ(launch["runs"][0]["papers"][0], (json{{"type", "bulletin"},
                                                    {"key", 1},
                                                    {"assignment", 1},
                                                    {"asset", "A-1"},
                                                    {"asset_name", "Bomba"},
                                                    {"task", 7},
                                                    {"task_name", "Engrase"},
                                                    {"frequency", "Semanal"},
                                                    {"launched", "2026-01-05"},
                                                    {"delivery", "2026-01-12"}}));
}

TEST(Launch, OptionsMakeWorkOrdersWithMaterialsAndLabour) {
    const Folder folder;
    const std::string database = MakeSmallPlant(folder);
    const Ran ran = Zontara({"launch", database, "--date", kMonday, "--order-user", "100", "--order-executor", "3",
                             "--order-external", "--order-priority", "5", "--order-type", "2", "--json"});
    EXPECT_EQ(ran.status, host::kDone) << ran.err;
    EXPECT_EQ(Scalar(database, "SELECT count(*) FROM Boletin"), "0");
    EXPECT_THAT(Rows(database,
                     "SELECT SC_Orden_Trabajo, ID_Activo, Texto_Trabajo, SC_Usuario_Destino, Prioridad,"
                     " SC_Tipo_Intervencion, SC_Ejecutor_Interno, SC_Ejecutor_Externo, SC_Proceso, Hombres,"
                     " Tiempo FROM Orden_Trabajo"),
                ElementsAre("1|A-1|Execute Task --- Nº 7 ,Frequency Semanal|100|5|2|0|3|1|2|1.5",
                            "2|A-2|Execute Task --- Nº 7 ,Frequency Mensual|100|5|2|0|3|1|2|1.5"));
    EXPECT_EQ(Scalar(database, "SELECT count(*) FROM Material_OT"), "4");
    json order = json::parse(ran.out)["runs"][0]["papers"][0];
    order.erase("requested");
    order.erase("wanted");
    EXPECT_EQ(order, (json{{"type", "order"},
                           {"key", 1},
                           {"assignment", 0},
                           {"asset", "A-1"},
                           {"asset_name", "Bomba"},
                           {"task", 7},
                           {"task_name", "Engrase"},
                           {"frequency", "Semanal"},
                           {"text", "Execute Task --- Nº 7 ,Frequency Semanal"},
                           {"materials", 2},
                           {"cost", 5.9},
                           {"crew", 2},
                           {"hours", 1.5}}));
}

TEST(Launch, AFileMakesWorkOrdersAndOptionsGoBeforeIt) {
    const Folder folder;
    const std::string database = MakeSmallPlant(folder);
    folder.Write("orders.json", R"({"UsuarioDestino": 7, "CodigoEjecutorOT": 3, "EsEjecutorExterno": false,
                                    "PrioridadSolicitada": 4, "TipoIntervencion": 1})");
    const Ran ran =
        Zontara({"launch", database, "--date", kMonday, "--orders", folder / "orders.json", "--order-user", "8"});
    EXPECT_EQ(ran.status, host::kDone) << ran.err;
    EXPECT_THAT(ran.out, HasSubstr("Order  Asset  Asset name"));
    EXPECT_EQ(Scalar(database,
                     "SELECT DISTINCT SC_Usuario_Destino, SC_Ejecutor_Interno, Prioridad,"
                     " SC_Tipo_Intervencion FROM Orden_Trabajo"),
              "8|3|4|1");
}

TEST(Launch, AnOrdersFileThatIsWrongIsRefusedBeforeAnythingIsLaunched) {
    const Folder folder;
    const std::string database = MakeSmallPlant(folder);
    const std::pair<const char*, const char*> cases[] = {
        {"{", "holds no JSON object, such as {\"CodigoEjecutorOT\": 3}."},
        {"[1]", "holds no JSON object"},
        {R"({"Executor": 3})",
         "unknown member Executor; the members are UsuarioDestino, EstatusFinalBoletin, "
         "CodigoEjecutorOT, EsEjecutorExterno, PrioridadSolicitada, TipoIntervencion, "
         "TotalBoletinesSeleccionados."},
        {R"({"CodigoEjecutorOT": "3"})", "the value of CodigoEjecutorOT must be a whole number, true or false."},
        {R"({"CodigoEjecutorOT": 1.5})", "the value of CodigoEjecutorOT must be a whole number, true or false."},
        {R"({"CodigoEjecutorOT": 3000000000})", "the value of CodigoEjecutorOT doesn't fit: Overflow."},
    };
    for (const auto& [text, said] : cases) {
        SCOPED_TRACE(text);
        folder.Write("orders.json", text);
        const Ran ran = Zontara({"launch", database, "--date", kMonday, "--orders", folder / "orders.json"});
        EXPECT_EQ(ran.status, host::kFailed);
        EXPECT_THAT(ran.err, HasSubstr("orders.json"));
        EXPECT_THAT(ran.err, HasSubstr(said));
    }
    const Ran missing = Zontara({"launch", database, "--date", kMonday, "--orders", folder / "none.json"});
    EXPECT_EQ(missing.status, host::kFailed);
    EXPECT_THAT(missing.err, HasSubstr("none.json can't be read."));
    EXPECT_EQ(Scalar(database, "SELECT count(*) FROM Boletin"), "0");
    EXPECT_EQ(Scalar(database, "SELECT count(*) FROM Orden_Trabajo"), "0");
}

TEST(Launch, TheMeterLaunchMakesOrdersWithoutAnyOption) {
    const Folder folder;
    const std::string database = MakeSmallPlant(folder);
    EXPECT_EQ(Zontara({"reading", database, "A-1", "1055", "--date", kMonday}).status, host::kDone);
    EXPECT_EQ(Zontara({"reading", database, "A-2", "150", "--date", kMonday}).status, host::kDone);
    const Ran ran = Zontara({"launch", database, "--date", kMonday, "--kind", "meter", "--json"});
    EXPECT_EQ(ran.status, host::kDone) << ran.err;
    const json run = json::parse(ran.out)["runs"][0];
    EXPECT_EQ(run["launched"], 2);
    EXPECT_EQ(run["papers"][0]["assignment"], 1);
    EXPECT_EQ(run["papers"][0]["frequency"], "250 h");
    EXPECT_EQ(run["papers"][0]["task"], 7);
    EXPECT_EQ(run["papers"][0]["wanted"], kMonday);
    EXPECT_EQ(Scalar(database,
                     "SELECT Ultimo_Acumulado FROM Imputacion_Sistematica"
                     " WHERE SC_Imputacion_Sistematica = 1"),
              "1055");
}

TEST(Launch, ChapterAndProjectLimitTheLaunchesThatKnowThem) {
    const Folder folder;
    const std::string database = MakeSmallPlant(folder);
    Execute(database,
            "UPDATE Imputacion_Sistematica SET Ultimo_Acumulado = 0;"
            "UPDATE Activo SET Acumulado_Lectura = 5000");
    const Ran chapter = Zontara({"launch", database, "--date", kMonday, "--kind", "meter", "--chapter", "B"});
    EXPECT_EQ(chapter.status, host::kDone);
    EXPECT_THAT(chapter.out, HasSubstr("meter           0         0\n"));
    const Ran project = Zontara({"launch", database, "--date", kMonday, "--kind", "meter", "--project", "2", "--json"});
    EXPECT_EQ(json::parse(project.out)["runs"][0]["looked_at"], 1);
    EXPECT_EQ(json::parse(project.out)["runs"][0]["launched"], 1);
    const Ran conventional =
        Zontara({"launch", database, "--date", kMonday, "--kind", "conventional", "--project", "2"});
    EXPECT_THAT(conventional.out, HasSubstr("conventional          0         0\n"));
}

TEST(Launch, LimitsThatActOnSomeOfAllKindsAreNoted) {
    const Folder folder;
    const std::string database = MakeSmallPlant(folder);
    const Ran ran =
        Zontara({"launch", database, "--date", kMonday, "--kind", "all", "--project", "1", "--chapter", "A", "--json"});
    EXPECT_EQ(ran.status, host::kDone);
    EXPECT_EQ(ran.err,
              "Note: the synchronised launch takes all projects; --project limits the other two.\n"
              "Note: the calendar launches take all chapters; --chapter limits the meter launch.\n");
    EXPECT_FALSE(json::parse(ran.out).empty());
}

TEST(Launch, AFailureUndoesAllKindsAndShowsTheReport) {
    const Folder folder;
    const std::string database = MakeSmallPlant(folder);
    // The synchronised launch goes well before the conventional one comes upon a day that is no number.
    Execute(database, "UPDATE Imputacion_Preventiva SET Programacion = 'x' WHERE Es_Sincronizada = 0");
    const Ran ran = Zontara({"launch", database, "--date", kMonday, "--kind", "all"});
    EXPECT_EQ(ran.status, host::kFailed);
    EXPECT_EQ(ran.out, "");
    EXPECT_THAT(ran.err, testing::StartsWith("zontara launch: Type mismatch\n"));
    EXPECT_THAT(ran.err, HasSubstr("Nothing was launched.\n"));
    EXPECT_THAT(ran.err, HasSubstr("\nError report:\n"));
    EXPECT_THAT(ran.err, HasSubstr("Call Stack: CImputacionPreventiva.LanzarPreventivo(Fecha_Lanzamiento="));
    EXPECT_THAT(ran.err, Not(HasSubstr("\r")));
    EXPECT_EQ(Scalar(database, "SELECT count(*) FROM Boletin"), "0");
    EXPECT_EQ(Scalar(database, "SELECT Semana FROM Imputacion_Preventiva WHERE SC_Imputacion_Preventiva = 1"), "53");
}

TEST(Launch, AFailureAtTheLastStepUndoesEverything) {
    const Folder folder;
    const std::string database = MakeSmallPlant(folder);
    for (const char* table : {"Boletin", "Orden_Trabajo", "Orden_Generada", "Material_OT", "Clave"}) {
        SCOPED_TRACE(table);
        Execute(database, std::string("CREATE TRIGGER no BEFORE INSERT ON ") + table +
                              " BEGIN SELECT raise(ABORT, 'disk trouble'); END");
        std::vector<std::string> words = {"launch", database, "--date", kMonday};
        if (table != std::string("Boletin")) words.push_back("--order-external");
        const Ran ran = Zontara(words);
        EXPECT_EQ(ran.status, host::kFailed);
        EXPECT_THAT(ran.err, HasSubstr("zontara launch: disk trouble"));
        Execute(database, "DROP TRIGGER no");
        EXPECT_EQ(Scalar(database,
                         "SELECT (SELECT count(*) FROM Boletin) + (SELECT count(*) FROM Orden_Trabajo) +"
                         " (SELECT count(*) FROM Orden_Generada) + (SELECT count(*) FROM Material_OT)"),
                  "0");
        EXPECT_EQ(Scalar(database, "SELECT Semana FROM Imputacion_Preventiva WHERE SC_Imputacion_Preventiva = 1"),
                  "53");
    }
}

TEST(Launch, ATerminalSeesABarAndAPipeDoesNot) {
    const Folder folder;
    const std::string database = MakeSmallPlant(folder);
    const Ran piped = Zontara({"launch", database, "--date", kMonday});
    EXPECT_EQ(piped.err, "");
    const Ran seen = Zontara({"launch", database, "--date", "2026-01-12"}, true);
    EXPECT_EQ(seen.err,
              "\rsynchronised [..............................]   0 %  0 of 2"
              "\rsynchronised [###############...............]  50 %  1 of 2"
              "\rsynchronised [##############################] 100 %  2 of 2"
              "\r\x1b[K");
}

}  // namespace

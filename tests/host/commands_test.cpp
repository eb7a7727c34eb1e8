#include "host/program.h"

#include "tests/host/run.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using host_test::Folder;
using host_test::MakeSmallPlant;
using host_test::Ran;
using host_test::Rows;
using host_test::Scalar;
using host_test::Zontara;
using testing::ElementsAre;
using testing::HasSubstr;

TEST(Program, HelpOfTheProgramAndOfEachCommandEndsWithZeroAndAnExample) {
    const Ran all = Zontara({"--help"});
    EXPECT_EQ(all.status, host::kDone);
    EXPECT_EQ(all.err, "");
    ASSERT_FALSE(host_test::Commands().empty());
    for (const std::string& command : host_test::Commands()) {
        SCOPED_TRACE(command);
        const Ran one = Zontara({command, "--help"});
        EXPECT_EQ(one.status, host::kDone);
        EXPECT_THAT(one.out, HasSubstr("\nExit status: 0 done, "));
        EXPECT_THAT(one.out, HasSubstr("\nExample:\n  "));
        EXPECT_THAT(one.out, testing::ContainsRegex(std::string("Example:\n  .*zontara ") + command));
    }
}

struct Wrong {
    std::vector<std::string> words;
    const char* said;
};

TEST(Program, AWrongCallEndsWithTwoAndSaysWhy) {
    const Wrong cases[] = {
        {{}, "A subcommand is required"},
        {{"lunch"},
         "there is no command lunch. The commands are init, import, launch, explain, forecast, reading, overdue, "
         "advance, reprogram, status, sheet, lint, export, demo, rpc, idl, completion and manual."},
        {{"init"}, "DB is required"},
        {{"import", "plant.db"}, "DIR is required"},
        {{"launch"}, "DB is required"},
        {{"launch", "x.db", "--kind", "weekly"}, "--kind"},
        {{"launch", "x.db", "--date", "today"}, "--date: 'today' is no date; write yyyy-mm-dd or dd/mm/yyyy."},
        {{"launch", "x.db", "--project", "a"}, "--project"},
        {{"launch", "x.db", "--project", "2"}, "--project: the synchronised launch always takes all projects."},
        {{"launch", "x.db", "--chapter", "A"}, "--chapter: only the meter launch goes by chapter."},
        {{"launch", "x.db", "--kind", "meter", "--chapter", "'"}, "--chapter: a chapter holds no quote."},
        {{"launch", "x.db", "--order-user", "9999999999"}, "--order-user"},
        {{"launch", "x.db", "--colour"}, "--colour"},
        {{"reading", "x.db", "A-1"}, "VALUE is required"},
        {{"reading", "x.db", "A-1", "12,5"}, "VALUE: '12,5' is no number; write decimals behind a point."},
        {{"reading", "x.db", "A-1", "5", "--added", "x"}, "--added: 'x' is no number."},
        {{"reading", "x.db", "A-1", "5", "--voucher-value", "x"}, "--voucher-value: 'x' is no number."},
        {{"overdue", "x.db", "--on", "31/02/2026"}, "--on: '31/02/2026' is no date"},
        {{"status", "x.db", "--on", "x"}, "--on: 'x' is no date"},
        {{"lint", "x.db", "--weekday", "someday"}, "--weekday"},
        {{"sheet", "x.db", "--week", "two"}, "--week"},
        {{"export", "x.db", "all"}, "DIR is required"},
        {{"advance", "x.db", "one", "A-1"}, "KEY"},
        {{"reprogram", "x.db", "1"}, "ASSET is required"},
    };
    for (const Wrong& each : cases) {
        SCOPED_TRACE(testing::PrintToString(each.words));
        const Ran ran = Zontara(each.words);
        EXPECT_EQ(ran.status, host::kUsage);
        EXPECT_THAT(ran.err, HasSubstr(each.said));
        EXPECT_EQ(ran.out, "");
    }
}

TEST(Init, MakesADatabaseOfTheWholeSchemaWithoutRows) {
    const Folder folder;
    const std::string database = folder / "plant.db";
    const Ran ran = Zontara({"init", database});
    EXPECT_EQ(ran.status, host::kDone);
    EXPECT_EQ(ran.out, "Made " + database + ". Fill it with `zontara import " + database + " DIR`.\n");
    EXPECT_EQ(Scalar(database, "SELECT count(*) FROM Imputacion_Preventiva"), "0");
}

TEST(Init, FillsAFileThatIsThereButEmpty) {
    const Folder folder;
    folder.Write("plant.db", "");
    EXPECT_EQ(Zontara({"init", folder / "plant.db"}).status, host::kDone);
    EXPECT_EQ(Scalar(folder / "plant.db", "SELECT count(*) FROM Boletin"), "0");
}

TEST(Init, RefusesAFileThatHoldsAPlant) {
    const Folder folder;
    const std::string database = MakeSmallPlant(folder);
    const Ran ran = Zontara({"init", database});
    EXPECT_EQ(ran.status, host::kFailed);
    EXPECT_EQ(ran.err,
              "zontara init: " + database + " already holds a plant. Name another file, or remove this one first.\n");
    EXPECT_EQ(Scalar(database, "SELECT count(*) FROM Activo"), "3");
}

TEST(Init, RefusesADatabaseOfSomethingElse) {
    const Folder folder;
    folder.Write("other.db", "");
    host_test::Execute(folder / "other.db", "CREATE TABLE Song (Title TEXT)");
    const Ran ran = Zontara({"init", folder / "other.db"});
    EXPECT_EQ(ran.status, host::kFailed);
    EXPECT_THAT(ran.err, HasSubstr("is a database of something else. Name another file."));
    EXPECT_THAT(Rows(folder / "other.db", "SELECT name FROM sqlite_master"), ElementsAre("Song"));
}

TEST(Init, RefusesAFileThatIsNoDatabaseAndLeavesItAlone) {
    const Folder folder;
    const std::string text(5000, 'x');
    folder.Write("notes.txt", text);
    const Ran ran = Zontara({"init", folder / "notes.txt"});
    EXPECT_EQ(ran.status, host::kFailed);
    EXPECT_THAT(ran.err, HasSubstr("zontara init: "));
    EXPECT_THAT(ran.err, HasSubstr("is no SQLite database. Check the path, or restore the file from a copy.\n"));
    EXPECT_EQ(folder.Read("notes.txt"), text);
}

TEST(Init, RefusesAFolderAndAMissingFolder) {
    const Folder folder;
    EXPECT_THAT(Zontara({"init", folder.Path().string()}).err, HasSubstr("is a folder. Name a file inside it."));
    const Ran missing = Zontara({"init", folder / "nowhere/plant.db"});
    EXPECT_EQ(missing.status, host::kFailed);
    EXPECT_THAT(missing.err, HasSubstr("zontara init: "));
    EXPECT_FALSE(std::filesystem::exists(folder / "nowhere"));
}

TEST(Reading, AddsWhatTheMeterGrewAndShowsWhatIsDue) {
    const Folder folder;
    const std::string database = MakeSmallPlant(folder);
    const Ran ran =
        Zontara({"reading", database, "A-1", "1055.5", "--date", "2026-01-09", "--note", "l'eix fa soroll", "--fuel",
                 "3.5", "--department", "Reparto", "--voucher", "V-2", "--voucher-value", "7.25"});
    EXPECT_EQ(ran.status, host::kDone) << ran.err;
    EXPECT_EQ(ran.out,
              "Reading 3 of asset A-1 on 2026-01-09: the meter shows 1055.5, accumulated 1055.5 (before "
              "1040.5).\n\n"
              "Key  Task  Task name           Interval  Reference  Growth  Due\n"
              "---  ----  ------------------  --------  ---------  ------  ---\n"
              "  2     8  Revisión d'en Pere       500       1000    55.5\n"
              "  1     7  Engrase                  250        800   255.5  due\n");
    EXPECT_EQ(Scalar(database,
                     "SELECT Fecha, SC_Unidad_Lectura, Valor_Real, Lectura, Lectura_Anterior, Nota,"
                     " Combustible_Consumido, Departamento_A_Quien_Se_Carga, Numero_Vale,"
                     " Valor_Del_Vale_Salida FROM Lectura_Equipo WHERE SC_Lectura = 3"),
              "2026-01-09|1|15.0|1055.5|1040.5|l'eix fa soroll|3.5|Reparto|V-2|7.25");
}

TEST(Reading, TakesWhatIsGivenInPlaceOfTheAssets) {
    const Folder folder;
    const std::string database = MakeSmallPlant(folder);
    const Ran ran = Zontara({"reading", database, "A-1", "12", "--date", "2026-01-09", "--added", "20", "--previous",
                             "1060", "--unit", "2"});
    EXPECT_EQ(ran.status, host::kDone) << ran.err;
    EXPECT_EQ(Scalar(database,
                     "SELECT SC_Unidad_Lectura, Valor_Real, Lectura, Lectura_Anterior FROM Lectura_Equipo"
                     " WHERE SC_Lectura = 3"),
              "2|20.0|12.0|1060.0");
    EXPECT_EQ(Scalar(database, "SELECT Acumulado_Lectura, Ultima_Lectura FROM Activo WHERE ID_Activo = 'A-1'"),
              "1060.5|12.0");
}

TEST(Reading, RefusesAnUnknownAssetAndAMeterThatRunsBackwards) {
    const Folder folder;
    const std::string database = MakeSmallPlant(folder);
    const Ran unknown = Zontara({"reading", database, "a-1", "12"});
    EXPECT_EQ(unknown.status, host::kFailed);
    EXPECT_EQ(unknown.err, "zontara reading: there is no asset 'a-1'. Check the identifier; case counts.\n");
    const Ran backwards = Zontara({"reading", database, "A-1", "1000"});
    EXPECT_EQ(backwards.status, host::kFailed);
    EXPECT_EQ(backwards.err,
              "zontara reading: the meter shows 1000 after 1040.5; if it was exchanged or turned over, "
              "say how much was added.\n");
    EXPECT_EQ(Scalar(database, "SELECT count(*) FROM Lectura_Equipo"), "2");
}

TEST(Reading, AnIdentifierWithAQuoteIsRefusedBeforeItReachesAStatement) {
    const Folder folder;
    const std::string database = MakeSmallPlant(folder);
    host_test::Execute(database, "INSERT INTO Activo (ID_Activo, Ultima_Lectura) VALUES ('X''1', 0)");
    for (const char* command : {"reading", "overdue"}) {
        SCOPED_TRACE(command);
        std::vector<std::string> words = {command, database, "X'1"};
        if (words[0] == "reading") words.push_back("5");
        const Ran ran = Zontara(words);
        EXPECT_EQ(ran.status, host::kFailed);
        EXPECT_THAT(ran.err, HasSubstr("the identifier X'1 holds a quote, which no statement can take."));
    }
}

TEST(Advance, BringsTheAssignmentAndSmallerOnesDue) {
    const Folder folder;
    const std::string database = MakeSmallPlant(folder);
    const Ran ran = Zontara({"advance", database, "2", "A-1"});
    EXPECT_EQ(ran.status, host::kDone) << ran.err;
    EXPECT_THAT(ran.out, HasSubstr("Asset A-1 stands at 1040.5."));
    EXPECT_THAT(Rows(database, "SELECT SC_Imputacion_Sistematica, Ultimo_Acumulado FROM Imputacion_Sistematica"),
                ElementsAre("1|790", "2|540", "3|0"));
}

TEST(Reprogram, StartsTheAssetAnewWithTheAssignmentDue) {
    const Folder folder;
    const std::string database = MakeSmallPlant(folder);
    const Ran ran = Zontara({"reprogram", database, "1", "A-1"});
    EXPECT_EQ(ran.status, host::kDone) << ran.err;
    EXPECT_THAT(ran.out, HasSubstr("Asset A-1 stands at 250."));
    EXPECT_EQ(Scalar(database, "SELECT Acumulado_Lectura FROM Activo WHERE ID_Activo = 'A-1'"), "250.0");
    EXPECT_THAT(Rows(database, "SELECT SC_Imputacion_Sistematica, Ultimo_Acumulado FROM Imputacion_Sistematica"),
                ElementsAre("1|0", "2|0", "3|0"));
}

TEST(MeterCommands, RefuseAKeyThatIsNotOfTheAsset) {
    const Folder folder;
    const std::string database = MakeSmallPlant(folder);
    host_test::Execute(database, "UPDATE Imputacion_Sistematica SET Anulada = 1 WHERE SC_Imputacion_Sistematica = 2");
    const std::string state = "SELECT ID_Activo, Ultimo_Acumulado FROM Imputacion_Sistematica";
    const std::vector<std::string> before = Rows(database, state);
    const std::pair<std::vector<std::string>, const char*> cases[] = {
        {{"9", "A-1"}, "there is no meter assignment 9.\n"},
        {{"3", "A-1"}, "meter assignment 3 belongs to asset A-2, not to A-1.\n"},
        {{"2", "A-1"}, "meter assignment 2 is cancelled.\n"},
        {{"1", "Z"}, "there is no asset 'Z'. Check the identifier; case counts.\n"},
    };
    for (const char* command : {"advance", "reprogram"}) {
        for (const auto& [words, said] : cases) {
            SCOPED_TRACE(std::string(command) + " " + words[0] + " " + words[1]);
            const Ran ran = Zontara({command, database, words[0], words[1]});
            EXPECT_EQ(ran.status, host::kFailed);
            EXPECT_EQ(ran.err, std::string("zontara ") + command + ": " + said);
            EXPECT_EQ(Rows(database, state), before);
        }
    }
}

}  // namespace

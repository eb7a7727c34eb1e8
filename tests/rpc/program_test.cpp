#include "tests/rpc/program.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace support;
using ::testing::HasSubstr;

namespace {

constexpr const char* kCreate = R"({"jsonrpc":"2.0","id":1,"method":"create","params":{"class":"CUnidadLectura"}})"
                                "\n";
constexpr const char* kNew =
    R"({"jsonrpc":"2.0","id":2,"method":"invoke","params":{"object":"CUnidadLectura#1","member":"Nuevo","args":["km"]}})"
    "\n";
constexpr const char* kCount =
    R"({"jsonrpc":"2.0","id":3,"method":"query","params":{"sql":"SELECT count(*) AS n FROM Unidad_Lectura"}})"
    "\n";

TEST(RpcProgram, AnswersOnItsOutputAndEndsWithTheInput) {
    const Ran ran = RunZontara("rpc :memory: --create", std::string(kCreate) + kNew);
    EXPECT_EQ(ran.out,
              "{\"jsonrpc\":\"2.0\",\"id\":1,\"result\":{\"object\":\"CUnidadLectura#1\"}}\n"
              "{\"jsonrpc\":\"2.0\",\"id\":2,\"result\":{\"value\":1,\"byref\":{}}}\n");
    EXPECT_EQ(ran.err, "");
    EXPECT_EQ(ran.status, 0);
}

TEST(RpcProgram, EndsAtOnceWithoutInput) {
    const Ran ran = RunZontara("rpc :memory:");
    EXPECT_EQ(ran.status, 0);
    EXPECT_EQ(ran.out + ran.err, "");
}

TEST(RpcProgram, TurnsAMissingDatabaseDownUnlessItMayCreateIt) {
    const Folder folder;
    const Ran missing = RunZontara("rpc " + folder / "plant.db", kCount);
    EXPECT_NE(missing.status, 0);
    EXPECT_EQ(missing.out, "");
    EXPECT_THAT(missing.err, HasSubstr("plant.db"));
    EXPECT_EQ(RunCommand("test -e " + folder / "plant.db").status, 1);

    EXPECT_EQ(RunZontara("rpc --create " + folder / "plant.db", std::string(kCreate) + kNew).status, 0);
    EXPECT_THAT(RunZontara("rpc " + folder / "plant.db", kCount).out, HasSubstr("\"rows\":[[1]]"));
    // What is there already is left alone.
    EXPECT_THAT(RunZontara("rpc --create " + folder / "plant.db", kCount).out, HasSubstr("\"rows\":[[1]]"));
}

TEST(RpcProgram, TurnsDownAFileThatIsNoDatabase) {
    const Folder folder;
    WriteFile(folder / "notes.txt", std::string(5000, 'n'));
    const Ran ran = RunZontara("rpc --create " + folder / "notes.txt", kCount);
    EXPECT_NE(ran.status, 0);
    EXPECT_EQ(ran.out, "");
    EXPECT_EQ(ReadFile(folder / "notes.txt"), std::string(5000, 'n'));
}

TEST(RpcProgram, RollsBackWhatIsOpenAtItsEnd) {
    const Folder folder;
    const std::string begin =
        R"({"jsonrpc":"2.0","id":1,"method":"create","params":{"class":"CGlobalPreventivo"}})"
        "\n"
        R"({"jsonrpc":"2.0","id":1,"method":"invoke","params":{"object":"CGlobalPreventivo#1","member":"IniciarTransaccion"}})"
        "\n";
    const Ran ran = RunZontara("rpc --create " + folder / "plant.db", begin + kCreate + kNew + kCount);
    EXPECT_EQ(ran.status, 0);
    EXPECT_THAT(ran.out, HasSubstr("\"rows\":[[1]]"));
    EXPECT_THAT(RunZontara("rpc " + folder / "plant.db", kCount).out, HasSubstr("\"rows\":[[0]]"));
}

TEST(RpcProgram, TracesWithTheClockAndTheFormThatItWasGiven) {
    const std::string overdue =
        R"({"jsonrpc":"2.0","id":1,"method":"create","params":{"class":"CImputacionPreventiva"}})"
        "\n"
        R"({"jsonrpc":"2.0","id":2,"method":"invoke","params":{"object":"CImputacionPreventiva#1","member":"ActivoTieneMantenimientoVencido","args":["A"]}})"
        "\n"
        R"({"jsonrpc":"2.0","id":3,"method":"invoke","params":{"object":"CImputacionPreventiva#1","member":"ActivoTieneMantenimientoVencido","args":["A",0,"04/05/2026"]}})"
        "\n";
    const Ran ran =
        RunZontara("rpc :memory: --create --trace --now 2027-01-31T10:00:00 --short-date mm/dd/yyyy", overdue);
    EXPECT_EQ(ran.status, 0);
    EXPECT_THAT(ran.out, HasSubstr("Fecha_Inicio <= '2027-01-31' and"));
    EXPECT_THAT(ran.out, HasSubstr("Fecha_Inicio <= '2026-04-05' and"));
}

TEST(RpcProgram, TurnsWrongOptionsDown) {
    for (const char* words : {"rpc", "rpc :memory: --now yesterday", "rpc :memory: --now 2026-02-30",
                              "rpc :memory: --short-date dd/mm", "rpc :memory: --nothing", "rpc :memory: more"}) {
        const Ran ran = RunZontara(words, kCreate);
        EXPECT_EQ(ran.status, 2) << words;
        EXPECT_EQ(ran.out, "") << words;
        EXPECT_NE(ran.err, "") << words;
    }
}

TEST(RpcProgram, EndsCleanlyWhenNobodyReadsOn) {
    const std::string many = [] {
        std::string text;
        for (int i = 0; i < 20000; ++i)
            text += R"({"jsonrpc":"2.0","id":1,"method":"session"})"
                    "\n";
        return text;
    }();
    const Folder folder;
    RunCommand("('" ZONTARA_PROGRAM "' rpc :memory:; echo $? > " + folder / "status" + ") | head -n 1", many);
    EXPECT_THAT(ReadFile(folder / "status"), ::testing::AnyOf("0\n", "1\n"));
}

}  // namespace

#include "tests/host/run.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <sys/wait.h>
#include <array>
#include <cstdio>
#include <memory>

namespace {

using host_test::Folder;
using host_test::Rows;
using host_test::Scalar;
using nlohmann::json;

constexpr int kProcesses = 4;
constexpr int kAssets = 300;

/// A running process of the program and its standard output.
class Process {
public:
    /// `before` is what the shell does first.
    explicit Process(const std::string& words, const std::string& before = "")
        : pipe_(popen((before + "'" ZONTARA_PROGRAM "' " + words + " 2>&1").c_str(), "r")) {}
    ~Process() {
        if (pipe_ != nullptr) pclose(pipe_);
    }
    Process(const Process&) = delete;
    Process& operator=(const Process&) = delete;

    /// Waits for its end. Gives its output, and sets its status.
    std::string Finish(int& status) {
        std::string output;
        std::array<char, 4096> buffer{};
        for (std::size_t n = 0; (n = fread(buffer.data(), 1, buffer.size(), pipe_)) > 0;)
            output.append(buffer.data(), n);
        const int ended = pclose(pipe_);
        pipe_ = nullptr;
        status = WIFEXITED(ended) ? WEXITSTATUS(ended) : -1;
        return output;
    }

private:
    FILE* pipe_;
};

/// A plant with so many assets, each with a weekly synchronised, a monthly conventional and a meter assignment, all
/// due.
std::string MakeBusyPlant(const Folder& folder) {
    std::string assets = "ID_Activo,Descripcion,Unidad,Acumulado_Lectura\n";
    std::string calendar =
        "ID_Activo,Numero_Gama,Es_Sincronizada,Frecuencia,Intervalo_Frecuencia,Programacion,"
        "Fecha_Inicio,Fecha_Ultimo_Lanzamiento\n";
    std::string meter = "ID_Activo,Numero_Gama,Lectura_Limite,Fecha_Inicio,Ultimo_Acumulado\n";
    for (int i = 0; i < kAssets; ++i) {
        const std::string asset = "A-" + std::to_string(i);
        assets += asset + ",Bomba,h,1000\n";
        calendar +=
            asset + ",7,1,Semanal,1,,2026-01-01,2025-12-29\n" + asset + ",7,0,Mensual,1,1,2026-01-01,2025-12-01\n";
        meter += asset + ",7,500,2026-01-01,0\n";
    }
    host_test::WriteSmallPlant(folder);
    for (const char* file : {"equipment.csv", "documents.csv", "parallels.csv", "readings.csv"}) {
        std::filesystem::remove(folder / file);
    }
    folder.Write("assets.csv", assets);
    folder.Write("calendar.csv", calendar);
    folder.Write("meter.csv", meter);
    const std::string database = folder / "plant.db";
    EXPECT_EQ(host_test::Zontara({"init", database}).status, 0);
    EXPECT_EQ(host_test::Zontara({"import", database, folder.Path().string()}).status, 0);
    return database;
}

TEST(Processes, FourLaunchesAtOnceLaunchEachAssignmentOnce) {
    const Folder folder;
    const std::string database = MakeBusyPlant(folder);
    std::vector<std::unique_ptr<Process>> processes;
    for (int i = 0; i < kProcesses; ++i) {
        processes.push_back(std::make_unique<Process>("launch '" + database + "' --date 2026-01-05 --kind all --json"));
    }
    int launched = 0;
    int idle = 0;
    for (const auto& process : processes) {
        int status = -1;
        const std::string output = process->Finish(status);
        ASSERT_EQ(status, 0) << output;
        const int own = json::parse(output)["launched"].get<int>();
        launched += own;
        if (own == 0) ++idle;
    }
    EXPECT_EQ(launched, 3 * kAssets);
    EXPECT_EQ(idle, kProcesses - 1);
    EXPECT_EQ(Scalar(database, "SELECT count(*), count(DISTINCT SC_Imputacion_Preventiva) FROM Boletin"),
              std::to_string(2 * kAssets) + "|" + std::to_string(2 * kAssets));
    EXPECT_EQ(Scalar(database, "SELECT count(*), count(DISTINCT SC_Imputacion_Sistematica) FROM Orden_Trabajo"),
              std::to_string(kAssets) + "|" + std::to_string(kAssets));
}

TEST(Processes, FourReadingsAtOnceAllCount) {
    const Folder folder;
    const std::string database = MakeBusyPlant(folder);
    std::vector<std::unique_ptr<Process>> processes;
    for (int i = 0; i < kProcesses; ++i) {
        processes.push_back(std::make_unique<Process>("reading '" + database + "' A-1 5 --added 5 --date 2026-01-05"));
    }
    for (const auto& process : processes) {
        int status = -1;
        const std::string output = process->Finish(status);
        EXPECT_EQ(status, 0) << output;
    }
    EXPECT_EQ(Scalar(database, "SELECT count(*), count(DISTINCT SC_Lectura), sum(Valor_Real) FROM Lectura_Equipo"),
              "4|4|20.0");
    EXPECT_EQ(Scalar(database, "SELECT Acumulado_Lectura FROM Activo WHERE ID_Activo = 'A-1'"), "1020.0");
}

TEST(Processes, AFileThatCannotGrowFailsAndLeavesTheDatabaseWhole) {
    const Folder folder;
    const std::string database = MakeBusyPlant(folder);
    for (const char* kind : {"synchronised", "conventional", "meter", "all"}) {
        SCOPED_TRACE(kind);
        int status = -1;
        const std::string output =
            Process("launch '" + database + "' --date 2026-01-05 --kind " + kind, "trap '' XFSZ; ulimit -f 64; ")
                .Finish(status);
        EXPECT_EQ(status, 1);
        EXPECT_THAT(output, testing::HasSubstr("Nothing was launched."));
        EXPECT_EQ(Scalar(database, "PRAGMA integrity_check"), "ok");
        EXPECT_EQ(Scalar(database, "SELECT (SELECT count(*) FROM Boletin) + (SELECT count(*) FROM Orden_Trabajo)"),
                  "0");
    }
    int status = -1;
    Process("launch '" + database + "' --date 2026-01-05 --kind all").Finish(status);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(Scalar(database, "SELECT count(*) FROM Boletin"), std::to_string(2 * kAssets));
}

TEST(Processes, TheProgramEndsWithTheStatusOfItsCommand) {
    const Folder folder;
    const std::pair<std::string, int> cases[] = {
        {"--help", 0},
        {"init '" + (folder / "plant.db") + "'", 0},
        {"init '" + (folder / "plant.db") + "'", 1},
        {"launch '" + (folder / "none.db") + "'", 1},
        {"launch", 2},
        {"", 2},
    };
    for (const auto& [words, wanted] : cases) {
        SCOPED_TRACE(words);
        int status = -1;
        Process(words).Finish(status);
        EXPECT_EQ(status, wanted);
    }
}

TEST(Processes, OutputThatCannotBeWrittenIsAFailure) {
    if (!std::filesystem::exists("/dev/full")) GTEST_SKIP() << "this system has no full device";
    int status = -1;
    const std::string output = Process("--help > /dev/full").Finish(status);
    EXPECT_EQ(status, 1);
}

}  // namespace

#include "meter/CImputacionSistematica.h"
#include "tests/meter/generation_test.h"

#include <algorithm>
#include <cmath>
#include <random>

using namespace Zontara;
using namespace support;

namespace {

/// The rule told a second time, over plain numbers: what a planner would reckon on paper.
struct Row {
    int key;
    std::string asset;
    double accumulated;
    int limit;
    int reference;
    int approximation;
    bool annulled;

    bool UsedUp() const { return accumulated - reference >= limit; }
    bool LaunchedAt(long whole) const { return !annulled && whole - reference >= limit; }
    bool Near() const { return approximation > 0 && accumulated >= approximation; }
};

class DueDecisionsTest : public GenerationTest {
protected:
    void Plant(unsigned seed) {
        std::mt19937 dice(seed);
        const auto roll = [&](int from, int to) { return static_cast<int>(dice() % unsigned(to - from + 1)) + from; };
        int key = 0;
        for (int i = 0; i < 40; ++i) {
            const std::string asset = "A" + std::to_string(100 + i);
            const double accumulated = roll(0, 8000) / 4.0;
            AddAsset(asset, std::to_string(accumulated));
            int limit = roll(1500, 2500);
            for (int rows = roll(0, 5); rows > 0; --rows) {
                limit -= roll(1, 900);
                // One in three stands right on the edge, where a wrong comparison shows.
                const int reference =
                    roll(0, 2) == 0 ? static_cast<int>(accumulated) - limit + roll(-1, 1) : roll(-500, 2000);
                plant.push_back(
                    {++key, asset, accumulated, limit, reference, roll(-1, 1) * roll(0, 2000), roll(0, 4) == 0});
                const Row& row = plant.back();
                AddAssignment({row.key, row.asset, row.limit, row.reference, row.approximation, row.annulled ? 1 : 0});
            }
        }
    }
    static long Whole(const Row& row) { return std::lrint(row.accumulated); }

    std::vector<Row> plant;
};

TEST_F(DueDecisionsTest, QuestionsAnswerAsReckonedOnPaper) {
    for (unsigned seed = 1; seed <= 5; ++seed) {
        SCOPED_TRACE(seed);
        world.Run("DELETE FROM Activo; DELETE FROM Imputacion_Sistematica");
        plant.clear();
        Plant(seed);
        std::vector<std::string> due;
        for (const Row& row : plant) {
            SCOPED_TRACE(row.key);
            EXPECT_EQ(imputaciones->ActivoNecesitaMantenimiento(row.asset, row.key), row.UsedUp());
            if (row.UsedUp()) due.push_back(std::to_string(row.key));
            const auto sameAsset = [&](const Row& other) { return other.asset == row.asset; };
            EXPECT_EQ(imputaciones->ActivoNecesitaMantenimiento(row.asset),
                      std::any_of(plant.begin(), plant.end(),
                                  [&](const Row& other) { return sameAsset(other) && other.UsedUp(); }));
            EXPECT_EQ(imputaciones->ElActivoTieneAproximacionesVencidas(row.asset),
                      std::any_of(plant.begin(), plant.end(),
                                  [&](const Row& other) { return sameAsset(other) && other.Near(); }));
        }
        EXPECT_EQ(Column(imputaciones->ListarImputacionesVencidas(""), "SC_Imputacion_Sistematica"), due);
    }
}

TEST_F(DueDecisionsTest, AGenerationLaunchesEachDueRowOnceAndNoOther) {
    for (unsigned seed = 11; seed <= 15; ++seed) {
        SCOPED_TRACE(seed);
        world.Run("DELETE FROM Activo; DELETE FROM Imputacion_Sistematica; DELETE FROM Orden_Trabajo");
        plant.clear();
        Plant(seed);
        Generate();

        std::vector<std::string> launched;
        std::vector<std::string> again;
        for (Row& row : plant) {
            const long whole = Whole(row);
            if (row.LaunchedAt(whole)) {
                launched.push_back(std::to_string(row.key));
                row.reference = static_cast<int>(whole);
            }
            EXPECT_EQ(Reference(row.key), std::to_string(row.reference)) << row.key;
            if (row.LaunchedAt(whole)) again.push_back(std::to_string(row.key));
        }
        EXPECT_GT(launched.size(), 10u);
        EXPECT_EQ(Ordered(), launched);

        world.Run("DELETE FROM Orden_Trabajo");
        Generate();
        EXPECT_EQ(Ordered(), again);
    }
}

}  // namespace

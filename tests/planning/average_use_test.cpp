#include "planning/average_use.h"

#include "tests/planning/plant.h"

namespace {

using planning::AverageUse;
using planning::AverageUses;
using support::World;

struct AverageUseTest : support::PlanningTest {
    AverageUse Of(const std::string& asset, const std::string& on = "2026-03-05") {
        const auto uses = AverageUses(component, World::Day(on));
        const auto found = uses.find(asset);
        return found == uses.end() ? AverageUse() : found->second;
    }
};

TEST_F(AverageUseTest, IsTheGrowthAfterTheFirstReadingOverTheDaysBetween) {
    AddReading("A-1", "2026-02-01", 1000, 1000);
    AddReading("A-1", "2026-02-11", 30, 1030);
    AddReading("A-1", "2026-02-21", 70, 1100);
    const AverageUse use = Of("A-1");
    EXPECT_TRUE(use.Known());
    EXPECT_DOUBLE_EQ(use.perDay, 5);
    EXPECT_EQ(use.readings, 3);
    EXPECT_EQ(use.first, World::Day("2026-02-01"));
    EXPECT_EQ(use.last, World::Day("2026-02-21"));
    EXPECT_DOUBLE_EQ(use.shown, 1100);
}

TEST_F(AverageUseTest, DoesNotDependOnTheOrderOfEntry) {
    AddReading("A-1", "2026-02-21", 70, 1100);
    AddReading("A-1", "2026-02-01", 1000, 1000);
    AddReading("A-1", "2026-02-01", 5, 1005);
    AddReading("A-1", "2026-02-11", 30, 1030);
    EXPECT_DOUBLE_EQ(Of("A-1").perDay, 5) << "both readings of the first day are the level that growth counts from";
}

TEST_F(AverageUseTest, NeedsReadingsOfTwoDays) {
    EXPECT_FALSE(Of("A-1").Known());
    AddReading("A-1", "2026-02-01", 10);
    AddReading("A-1", "2026-02-01", 20);
    const AverageUse use = Of("A-1");
    EXPECT_FALSE(use.Known());
    EXPECT_EQ(use.perDay, 0);
    EXPECT_EQ(use.readings, 2);
}

TEST_F(AverageUseTest, CountsTheYearUpToTheDay) {
    AddReading("A-1", "2025-03-04", 9999);
    AddReading("A-1", "2025-03-05", 100);
    AddReading("A-1", "2026-03-05", 730);
    AddReading("A-1", "2026-03-06", 9999);
    const AverageUse use = Of("A-1");
    EXPECT_EQ(use.readings, 2);
    EXPECT_DOUBLE_EQ(use.perDay, 2);
}

TEST_F(AverageUseTest, AMeterThatWentBackwardsStandsStill) {
    AddReading("A-1", "2026-02-01", 10);
    AddReading("A-1", "2026-02-11", -30);
    EXPECT_TRUE(Of("A-1").Known());
    EXPECT_EQ(Of("A-1").perDay, 0);
}

TEST_F(AverageUseTest, IsOfEachAssetByItself) {
    AddAsset("A-2");
    for (const char* asset : {"A-1", "A-2", "gone"}) {
        AddReading(asset, "2026-02-01", 0);
        AddReading(asset, "2026-02-11", asset == std::string("A-1") ? 10 : 20);
    }
    EXPECT_DOUBLE_EQ(Of("A-1").perDay, 1);
    EXPECT_DOUBLE_EQ(Of("A-2").perDay, 2);
    EXPECT_EQ(AverageUses(component, World::Day("2026-03-05")).size(), 2u) << "an asset that is gone has no meter";
    EXPECT_EQ(AverageUses(component, World::Day("2026-03-05"), "A-2").size(), 1u);
}

TEST_F(AverageUseTest, GrowthCountsFromTheLastReading) {
    UseFiveADay("A-1");
    const AverageUse use = Of("A-1");
    EXPECT_DOUBLE_EQ(use.GrowthUntil(World::Day("2026-03-11")), 50);
    EXPECT_DOUBLE_EQ(use.GrowthUntil(World::Day("2026-03-01")), 0);
    EXPECT_DOUBLE_EQ(use.GrowthUntil(World::Day("2026-02-01")), 0);
}

}  // namespace

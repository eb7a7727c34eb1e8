#pragma once

#include "bench/database.h"

#include <string>
#include <vector>

/// The statement streams of the component's operations, bound by hand: what they cost with nothing around them. Rows of
/// a selection are held in plain structures.
namespace bench {

/// The columns that a launch reads, and its conditions.
extern const char* const kSelectActive;
/// Books a launch: its day, its week, the assignment.
extern const char* const kBooking;

struct ActiveRow {
    int key;
    std::string asset;
    std::string frequency;
    int week;
    int interval;
    int task;
    std::string description;
    int number;

    bool Due() const { return frequency == "Semanal" && week != 10 && interval <= 1; }
};
std::vector<ActiveRow> ActiveRows(const Database& database);

/// A launch of all weekly assignments into bulletins; gives their number.
int LaunchBulletins(const Database& database, Keys::Way way);

/// What an order wants to know of its task, and which process there is: asked for each order, or once a task and run.
enum class Questions { EachTime, Once };

/// The same into work orders with their materials and labour, keys counted in memory.
int LaunchOrders(const Database& database, Questions questions);

/// Work orders of all meter assignments, a transaction an asset, keys counted in memory; gives their number.
int GenerateMeterOrders(const Database& database, Questions questions);

/// So many readings of a plant's assets in turn, in one transaction, keys counted in memory.
void EnterReadings(const Database& database, int readings, const std::vector<std::string>& assets);

}  // namespace bench

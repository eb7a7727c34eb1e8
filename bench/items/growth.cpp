#include "bench/items/compared.h"
#include "bench/items/items.h"

#include <functional>
#include <string>

namespace bench {

namespace {

/// How much more the time of a row grows from the smaller number of rows to the larger one than the limit's does.
void MeasureOne(const std::string& what, const std::function<Times(int)>& compare, const Scale& scale, Table& table) {
    Progress("growth: " + what);
    const int small = scale.Rows(10'000);
    const int large = scale.Rows(1'000'000);
    const Times few = compare(small);
    const Times many = compare(large);
    table.Add({"6", what + ", from " + std::to_string(small) + " rows to " + std::to_string(large), "", "",
               Ratio(many.ours, many.bound) / Ratio(few.ours, few.bound), 1.1});
}

}  // namespace

void MeasureGrowth(const Scale& scale, Table& table) {
    constexpr auto kFile = Component::Where::OnFile;
    const int rounds = scale.rounds;
    MeasureOne(
        "bulletins", [&](int rows) { return CompareBulletins(kFile, rows, rounds); }, scale, table);
    MeasureOne(
        "orders", [&](int rows) { return CompareOrders(kFile, rows, rounds); }, scale, table);
    MeasureOne(
        "rows walked by name", [&](int rows) { return CompareRows(rows, rounds); }, scale, table);
    MeasureOne(
        "readings", [&](int rows) { return CompareReadings(kFile, rows, rounds); }, scale, table);
}

}  // namespace bench

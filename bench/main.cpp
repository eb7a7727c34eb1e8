// Measures the component side by side with the engine's own interface, in alternated rounds of one run, and prints one
// table: figure, target, met or not.
#include "bench/database.h"
#include "bench/items/items.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <exception>
#include <string>
#include <vector>

namespace {

const std::vector<bench::Item> kItems = {
    {"bulletins", bench::MeasureBulletins}, {"orders", bench::MeasureOrders},     {"rows", bench::MeasureRows},
    {"overdue", bench::MeasureOverdue},     {"readings", bench::MeasureReadings}, {"growth", bench::MeasureGrowth},
    {"start", bench::MeasureColdStart},     {"traps", bench::MeasureTraps},       {"settings", bench::MeasureSettings},
    {"command", bench::MeasureCommand},
};

}  // namespace

int main(int argc, char** argv) {
    CLI::App app("Measures the component beside the engine's own interface.");
    bench::Scale scale;
    bool quick = false;
    std::vector<std::string> only;
    std::string names;
    for (const auto& item : kItems)
        names += (names.empty() ? "" : ", ") + item.name;
    app.add_flag("--quick", quick, "A tenth of the rows and three rounds: figures are rough");
    app.add_option("--rounds", scale.rounds, "Rounds of each measurement")->check(CLI::PositiveNumber);
    app.add_option("--divisor", scale.divisor, "Divides the numbers of rows")->check(CLI::PositiveNumber);
    app.add_option("--only", only, "Only these: " + names)->delimiter(',');
    CLI11_PARSE(app, argc, argv);
    if (quick) {
        if (app.count("--divisor") == 0) scale.divisor = 10;
        if (app.count("--rounds") == 0) scale.rounds = 3;
    }

    try {
        bench::Table table;
        table.Head(bench::EngineName());
        for (const auto& item : kItems) {
            if (only.empty() || std::find(only.begin(), only.end(), item.name) != only.end())
                item.measure(scale, table);
        }
        return table.AllMet() ? 0 : 3;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
}

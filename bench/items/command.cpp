#include "bench/items/items.h"
#include "bench/plant.h"
#include "bench/process.h"
#include "bench/scaled_demo.h"

#include <fmt/format.h>

#include <filesystem>
#include <string>
#include <vector>

namespace bench {

namespace {

constexpr int kAssetsOfTheDemo = 190;

/// A folder that goes with the object.
struct Folder {
    explicit Folder(std::filesystem::path where) : path(std::move(where)) {}
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;
    ~Folder() { std::filesystem::remove_all(path); }
    std::filesystem::path path;
};

void Tell(Table& table, const std::string& what, const Spent& spent) {
    table.Add({"command", what + ", seconds on the clock", fmt::format("{:.1f} s cpu", spent.processorSeconds),
               fmt::format("{:.0f} MB", static_cast<double>(spent.peakBytes) / 1e6), spent.wallSeconds});
}

}  // namespace

void MeasureCommand(const Scale& scale, Table& table) {
    const int times = scale.Rows(100'000) / kAssetsOfTheDemo + 1;
    const Plant plant("command");
    const Folder folder(plant.Path() + "-csv");
    const std::string assets = std::to_string(WriteScaledDemo(folder.path, times)) + " assets";
    Progress("zontara import and launch, the sample plant of " + assets);
    Tell(table, "zontara import, " + assets,
         RunProgram({ZONTARA_PROGRAM, "import", plant.Path(), folder.path.string()}));
    Tell(table, "zontara launch of a week, " + assets,
         RunProgram({ZONTARA_PROGRAM, "launch", plant.Path(), "--date", "2026-01-05"}));
    Tell(table, "zontara launch --kind all of the next, " + assets,
         RunProgram({ZONTARA_PROGRAM, "launch", plant.Path(), "--date", "2026-01-12", "--kind", "all", "--order-user",
                     "7", "--order-executor", "2", "--order-priority", "3", "--order-type", "1"}));
}

}  // namespace bench

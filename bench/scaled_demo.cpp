#include "bench/scaled_demo.h"

#include <algorithm>
#include <fstream>
#include <string>
#include <string_view>
#include <vector>

namespace bench {

namespace {

/// The columns that hold the key of an asset or of an item of its equipment.
constexpr std::string_view kKeys[] = {"ID_Activo", "ID_Equipo", "Equipo_Padre", "ID_Activo_Paralela"};
constexpr const char* kMultiplied[] = {"assets.csv",    "calendar.csv", "equipment.csv",
                                       "documents.csv", "meter.csv",    "parallels.csv"};
constexpr const char* kShared[] = {"units.csv",     "groups.csv", "executors.csv", "users.csv",
                                   "materials.csv", "tasks.csv",  "processes.csv"};

/// The cells of a line as they stand, quotes included.
std::vector<std::string> CellsOf(const std::string& line) {
    std::vector<std::string> cells(1);
    bool quoted = false;
    for (const char c : line) {
        if (c == '"') quoted = !quoted;
        if (c == ',' && !quoted) {
            cells.emplace_back();
        } else {
            cells.back() += c;
        }
    }
    return cells;
}

/// Writes a file's lines so many times over, with a number behind each key; gives the number of lines.
int Multiply(const std::filesystem::path& from, const std::filesystem::path& to, int times) {
    std::ifstream in(from);
    std::ofstream out(to);
    std::string line;
    std::getline(in, line);
    out << line << '\n';
    const std::vector<std::string> columns = CellsOf(line);
    std::vector<std::vector<std::string>> rows;
    while (std::getline(in, line))
        rows.push_back(CellsOf(line));
    for (int copy = 0; copy < times; ++copy) {
        const std::string number = "-" + std::to_string(copy);
        for (const auto& row : rows) {
            for (std::size_t i = 0; i < row.size(); ++i) {
                const bool key = i < columns.size() && !row[i].empty() &&
                                 std::find(std::begin(kKeys), std::end(kKeys), columns[i]) != std::end(kKeys);
                out << (i > 0 ? "," : "") << row[i] << (key ? number : "");
            }
            out << '\n';
        }
    }
    return static_cast<int>(rows.size()) * times;
}

}  // namespace

int WriteScaledDemo(const std::filesystem::path& folder, int times) {
    const std::filesystem::path demo = ZONTARA_DEMO;
    std::filesystem::create_directories(folder);
    for (const char* const name : kShared)
        std::filesystem::copy_file(demo / name, folder / name, std::filesystem::copy_options::overwrite_existing);
    int assets = 0;
    for (const char* const name : kMultiplied) {
        const int lines = Multiply(demo / name, folder / name, times);
        if (name == kMultiplied[0]) assets = lines;
    }
    return assets;
}

}  // namespace bench

#include "host/load/importer.h"

#include "host/failure.h"
#include "host/load/table.h"

#include <fmt/format.h>
#include <algorithm>

namespace host::load {

namespace {

namespace fs = std::filesystem;

std::vector<std::string> FileNames() {
    std::vector<std::string> names;
    for (const Table& table : Tables())
        names.emplace_back(table.file);
    return names;
}

/// The CSV files of a folder. A `Failure` when it can't be read, holds none, or one that no table has.
std::vector<std::string> FilesIn(const fs::path& folder) {
    std::vector<std::string> found;
    const std::vector<std::string> known = FileNames();
    std::error_code error;
    fs::directory_iterator entry(folder, error);
    if (error) {
        throw Failure(fmt::format("the folder {} can't be read: {}. Check its path and rights.", folder.string(),
                                  error.message()));
    }
    for (; entry != fs::directory_iterator(); entry.increment(error)) {
        const std::string name = entry->path().filename().string();
        if (entry->path().extension() != ".csv") continue;
        if (std::find(known.begin(), known.end(), name) == known.end()) {
            throw Failure(fmt::format("{} is the file of no table. The files are {}.", entry->path().string(),
                                      fmt::join(known, ", ")));
        }
        found.push_back(name);
    }
    if (found.empty()) {
        throw Failure(fmt::format("{} holds none of the files of an import. The files are {}.", folder.string(),
                                  fmt::join(known, ", ")));
    }
    return found;
}

struct Loaded {
    const Table* table;
    Sheet sheet;
};

std::vector<Loaded> ReadAll(const fs::path& folder, Problems& problems) {
    const std::vector<std::string> found = FilesIn(folder);
    std::vector<Loaded> loaded;
    for (const Table& table : Tables()) {
        if (std::find(found.begin(), found.end(), table.file) == found.end()) continue;
        loaded.push_back({&table, ReadSheet(folder, table.file, table.columns, problems)});
    }
    return loaded;
}

void Walk(const std::vector<Loaded>& loaded, Known& known, Problems& problems, void (*Table::*step)(const Line&)) {
    for (const auto& [table, sheet] : loaded) {
        if (table->*step == nullptr) continue;
        for (const Row& row : sheet.rows)
            (table->*step)({known, sheet.file, table->columns, row, problems});
    }
}

/// Writes a row. What the database refuses names its line, and keeps its number and report.
void Write(Plant& plant, Known& known, const Loaded& loaded, const Row& row) {
    try {
        loaded.table->write(plant, known, row);
    } catch (const Zontara::RaisedError& error) {
        Zontara::ErrorRecord record = error.Record();
        record.description = fmt::format("{}, line {}: {}", loaded.sheet.file, row.Line(), record.description);
        throw Zontara::RaisedError(record);
    } catch (const Failure& failure) {
        throw Failure(fmt::format("{}, line {}: {}", loaded.sheet.file, row.Line(), failure.what()));
    }
}

}  // namespace

Imported Import(Plant& plant, const fs::path& folder) {
    Problems problems;
    const std::vector<Loaded> loaded = ReadAll(folder, problems);
    Known known = ReadKnown(plant.Database());
    Walk(loaded, known, problems, &Table::tell);
    Walk(loaded, known, problems, &Table::check);
    if (!problems.Empty()) {
        problems.Sort(FileNames());
        const std::size_t count = problems.All().size();
        throw Failure(fmt::format("nothing was imported; there {} to mend:\n{}",
                                  count == 1 ? "is one problem" : fmt::format("are {} problems", count),
                                  problems.Text()));
    }
    Imported imported;
    for (const Loaded& each : loaded) {
        for (const Row& row : each.sheet.rows)
            Write(plant, known, each, row);
        imported.emplace_back(each.sheet.file, each.sheet.rows.size());
    }
    return imported;
}

}  // namespace host::load

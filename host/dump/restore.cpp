#include "host/csv/reader.h"
#include "host/dump/cell.h"
#include "host/dump/tables.h"
#include "host/failure.h"
#include "host/load/problems.h"
#include "host/load/sheet.h"
#include "schema/create.h"

#include <fmt/format.h>
#include <fmt/ranges.h>
#include <algorithm>

namespace host::dump {

namespace {

namespace fs = std::filesystem;
using dhRichClient3::Connection;

/// The rows of one file, their cells in the order of the table's columns.
struct Rows {
    std::string table;
    std::string file;
    std::vector<std::string> columns;
    std::vector<std::size_t> lines;
    std::vector<std::vector<Stored>> rows;
};

/// The schema's tables in the order in which they are filled. The assets come last: a new meter assignment takes over
/// the unit of its asset when it has none, and here it is to stay as the file has it.
std::vector<std::string> Order() {
    std::vector<std::string> tables = schema::Tables();
    std::stable_partition(tables.begin(), tables.end(), [](const std::string& table) { return table != "Activo"; });
    return tables;
}

void CheckEmpty(Connection& database) {
    for (const std::string& table : schema::Tables()) {
        if (!database.Prepare(fmt::format("SELECT 1 FROM \"{}\" LIMIT 1", table)).Step()) continue;
        throw Failure(fmt::format(
            "the database isn't empty: {} has rows. Restore into a new one, made by `zontara init`.", table));
    }
}

/// The tables that have a file in the folder. A `Failure` for a file of no table, and for no file at all.
std::vector<std::string> TablesIn(const fs::path& folder) {
    std::error_code error;
    fs::directory_iterator entry(folder, error);
    if (error) {
        throw Failure(fmt::format("the folder {} can't be read: {}. Check its path and rights.", folder.string(),
                                  error.message()));
    }
    const std::vector<std::string> tables = Order();
    std::vector<std::string> found;
    for (; entry != fs::directory_iterator(); entry.increment(error)) {
        if (entry->path().extension() != ".csv") continue;
        const std::string table = entry->path().stem().string();
        if (std::find(tables.begin(), tables.end(), table) == tables.end()) {
            throw Failure(fmt::format("{} is the export of no table. The tables are {}.", entry->path().string(),
                                      fmt::join(tables, ", ")));
        }
        found.push_back(table);
    }
    if (found.empty()) {
        throw Failure(fmt::format("{} holds no export. Make one with `zontara export DB all DIR`.", folder.string()));
    }
    std::vector<std::string> ordered;
    std::copy_if(tables.begin(), tables.end(), std::back_inserter(ordered),
                 [&](const std::string& table) { return std::find(found.begin(), found.end(), table) != found.end(); });
    return ordered;
}

/// For each column of the file its name in the table; a problem when the file hasn't exactly the table's columns.
void CheckColumns(const csv::Document& document, const std::vector<std::string>& columns, const std::string& file,
                  load::Problems& problems) {
    std::vector<std::string> expected = columns;
    std::vector<std::string> there = document.header;
    std::sort(expected.begin(), expected.end());
    std::sort(there.begin(), there.end());
    if (expected != there) {
        problems.Add(
            {file, 1, "", fmt::format("the header must name the table's columns: {}", fmt::join(columns, ","))});
    }
}

Rows Read(Connection& database, const fs::path& folder, const std::string& table, load::Problems& problems) {
    Rows rows{table, table + ".csv", {}, {}, {}};
    const csv::Document document = csv::Read(load::ReadText(folder / rows.file), csv::Blank::NoCharacter);
    for (const csv::Fault& fault : document.faults)
        problems.Add({rows.file, fault.line, fault.cell > 0 ? fmt::format("{}", fault.cell) : "", fault.reason});
    CheckColumns(document, ColumnsOf(database, table), rows.file, problems);
    rows.columns = document.header;
    for (const csv::Record& record : document.records) {
        std::vector<Stored> values;
        for (std::size_t i = 0; i < record.cells.size(); ++i) {
            std::optional<Stored> value = FromCsv(record.cells[i], record.quoted[i]);
            if (!value) {
                problems.Add({rows.file, record.line, document.header[i],
                              fmt::format("'{}' is no number; put texts in quotes", record.cells[i])});
            }
            values.push_back(value.value_or(Stored()));
        }
        rows.lines.push_back(record.line);
        rows.rows.push_back(std::move(values));
    }
    return rows;
}

/// The statement for a row. Bytes stand in it as they are: nothing else tells the engine that they are no text.
std::string Insert(const Rows& rows, const std::vector<Stored>& values) {
    std::vector<std::string> marks;
    for (std::size_t i = 0; i < values.size(); ++i) {
        const bool bytes = std::holds_alternative<Bytes>(values[i]);
        marks.push_back(bytes ? ToCsv(values[i]) : fmt::format("?{}", i + 1));
    }
    return fmt::format("INSERT INTO \"{}\" (\"{}\") VALUES ({})", rows.table, fmt::join(rows.columns, "\", \""),
                       fmt::join(marks, ", "));
}

void Bind(dhRichClient3::Statement& insert, const std::vector<Stored>& values) {
    for (std::size_t i = 0; i < values.size(); ++i) {
        const int parameter = static_cast<int>(i) + 1;
        if (const auto* whole = std::get_if<std::int64_t>(&values[i])) insert.Bind(parameter, *whole);
        if (const auto* real = std::get_if<double>(&values[i])) insert.Bind(parameter, *real);
        if (const auto* text = std::get_if<std::string>(&values[i])) insert.Bind(parameter, std::string_view(*text));
        if (std::holds_alternative<std::monostate>(values[i])) insert.Bind(parameter, nullptr);
    }
}

void Write(Connection& database, const Rows& rows) {
    for (std::size_t i = 0; i < rows.rows.size(); ++i) {
        try {
            auto insert = database.Prepare(Insert(rows, rows.rows[i]));
            Bind(insert, rows.rows[i]);
            insert.Run();
        } catch (const Zontara::RaisedError& error) {
            Zontara::ErrorRecord record = error.Record();
            record.description = fmt::format("{}, line {}: {}", rows.file, rows.lines[i], record.description);
            throw Zontara::RaisedError(record);
        }
    }
}

}  // namespace

Files Restore(Plant& plant, const fs::path& folder) {
    CheckEmpty(plant.Database());
    load::Problems problems;
    std::vector<Rows> all;
    for (const std::string& table : TablesIn(folder))
        all.push_back(Read(plant.Database(), folder, table, problems));
    if (!problems.Empty()) {
        const std::size_t count = problems.All().size();
        throw Failure(fmt::format("nothing was restored; there {} to mend:\n{}",
                                  count == 1 ? "is one problem" : fmt::format("are {} problems", count),
                                  problems.Text()));
    }
    Files files;
    for (const Rows& rows : all) {
        Write(plant.Database(), rows);
        files.emplace_back(rows.file, rows.rows.size());
    }
    return files;
}

}  // namespace host::dump

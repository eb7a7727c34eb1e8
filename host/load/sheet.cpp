#include "host/load/sheet.h"

#include "host/csv/reader.h"
#include "host/failure.h"
#include "host/load/cells.h"

#include "frame/member_table.h"

#include <fmt/format.h>
#include <algorithm>
#include <fstream>
#include <iterator>
#include <limits>

namespace host::load {

namespace {

constexpr std::size_t kNotThere = std::numeric_limits<std::size_t>::max();

std::string Names(const std::vector<Column>& columns) {
    std::string names;
    for (const Column& column : columns) {
        if (!names.empty()) names += ", ";
        names += column.name;
    }
    return names;
}

/// For each column of the table its place in the file.
std::vector<std::size_t> Places(const csv::Document& document, std::string_view file,
                                const std::vector<Column>& columns, Problems& problems) {
    const auto fail = [&](std::string column, std::string reason) {
        problems.Add({std::string(file), 1, std::move(column), std::move(reason)});
    };
    std::vector<std::size_t> places(columns.size(), kNotThere);
    for (std::size_t at = 0; at < document.header.size(); ++at) {
        const std::string& name = document.header[at];
        const auto column = std::find_if(columns.begin(), columns.end(),
                                         [&](const Column& each) { return Zontara::SameName(each.name, name); });
        if (column == columns.end()) {
            fail(name.empty() ? fmt::format("{}", at + 1) : name,
                 fmt::format("unknown column; the columns are {}", Names(columns)));
            continue;
        }
        std::size_t& place = places[static_cast<std::size_t>(column - columns.begin())];
        if (place != kNotThere) fail(name, "the column stands twice in the header");
        place = at;
    }
    for (std::size_t i = 0; i < columns.size(); ++i) {
        if (columns[i].required && places[i] == kNotThere) fail(std::string(columns[i].name), "the column is missing");
    }
    return places;
}

/// The cells of a record in the table's order; empty when one of them has a problem.
std::vector<Zontara::Value> Cells(const csv::Record& record, const std::vector<std::size_t>& places,
                                  std::string_view file, const std::vector<Column>& columns, Problems& problems) {
    std::vector<Zontara::Value> cells;
    cells.reserve(columns.size());
    bool whole = true;
    for (std::size_t i = 0; i < columns.size(); ++i) {
        std::string reason;
        const std::string_view text = places[i] == kNotThere ? std::string_view() : record.cells[places[i]];
        std::optional<Zontara::Value> cell = Cell(text, columns[i].kind, reason);
        if (cell && columns[i].required && cell->Is<Zontara::Empty>()) {
            cell.reset();
            reason = "the cell is empty";
        }
        if (!cell) {
            problems.Add({std::string(file), record.line, std::string(columns[i].name), reason});
            whole = false;
        }
        cells.push_back(cell.value_or(Zontara::Value()));
    }
    if (!whole) cells.clear();
    return cells;
}

}  // namespace

std::string Row::Text(std::size_t column) const {
    return Has(column) ? cells_[column].Get<std::string>() : std::string();
}
std::int32_t Row::Int32(std::size_t column, std::int32_t fallback) const {
    return Has(column) ? cells_[column].Get<std::int32_t>() : fallback;
}
std::int16_t Row::Int16(std::size_t column, std::int16_t fallback) const {
    return Has(column) ? cells_[column].Get<std::int16_t>() : fallback;
}
std::uint8_t Row::Byte(std::size_t column, std::uint8_t fallback) const {
    return Has(column) ? cells_[column].Get<std::uint8_t>() : fallback;
}
float Row::Real(std::size_t column, float fallback) const {
    return Has(column) ? cells_[column].Get<float>() : fallback;
}
Zontara::Money Row::Money(std::size_t column) const {
    return Has(column) ? cells_[column].Get<Zontara::Money>() : Zontara::Money();
}

std::string ReadText(const std::filesystem::path& path) {
    std::error_code ignored;
    std::ifstream file(path, std::ios::binary);
    if (!file || std::filesystem::is_directory(path, ignored)) {
        throw Failure(fmt::format("{} can't be read. Check that it is a file that you may read.", path.string()));
    }
    std::string text{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    if (file.bad()) throw Failure(fmt::format("{} can't be read to its end. Check the disk.", path.string()));
    return text;
}

Sheet ReadSheet(const std::filesystem::path& folder, std::string_view file, const std::vector<Column>& columns,
                Problems& problems) {
    Sheet sheet{std::string(file), {}};
    csv::Document document = csv::Read(ReadText(folder / file));
    if (document.header.empty()) {
        problems.Add({sheet.file, 0, "",
                      fmt::format("the file is empty; its first line must name the columns: {}", Names(columns))});
        return sheet;
    }
    for (const csv::Fault& fault : document.faults) {
        const bool named = fault.cell > 0 && fault.cell <= document.header.size();
        std::string column = named ? document.header[fault.cell - 1] : "";
        if (fault.cell > 0 && column.empty()) column = fmt::format("{}", fault.cell);
        problems.Add({sheet.file, fault.line, std::move(column), fault.reason});
    }
    const std::size_t before = problems.All().size();
    const std::vector<std::size_t> places = Places(document, file, columns, problems);
    if (problems.All().size() != before) return sheet;

    sheet.rows.reserve(document.records.size());
    for (csv::Record& record : document.records) {
        std::vector<Zontara::Value> cells = Cells(record, places, file, columns, problems);
        if (!cells.empty()) sheet.rows.emplace_back(record.line, std::move(cells));
        // A large file isn't held twice.
        record = {};
    }
    return sheet;
}

}  // namespace host::load

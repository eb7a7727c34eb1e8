#include "host/dump/cell.h"
#include "host/dump/tables.h"
#include "host/failure.h"

#include <fmt/format.h>
#include <fmt/ranges.h>
#include <fstream>

namespace host::dump {

namespace {

namespace fs = std::filesystem;
using dhRichClient3::Connection;

/// The rows of one moment, whatever others write while they are read.
class Moment {
public:
    explicit Moment(Connection& database) : database_(database) { database_.RunScript("BEGIN"); }
    ~Moment() {
        try {
            database_.RunScript("ROLLBACK");
        } catch (const std::exception&) {
            // The connection goes with the plant, and what it reads with it.
        }
    }
    Moment(const Moment&) = delete;
    Moment& operator=(const Moment&) = delete;

private:
    Connection& database_;
};

/// For each column its type and its value; bytes as hexadecimal digits.
std::string Query(const std::string& table, const std::vector<std::string>& columns) {
    std::string query = "SELECT ";
    for (const std::string& column : columns) {
        query += fmt::format("{0}typeof(\"{1}\"), CASE typeof(\"{1}\") WHEN 'blob' THEN hex(\"{1}\") ELSE \"{1}\" END",
                             &column == &columns.front() ? "" : ", ", column);
    }
    return query + fmt::format(" FROM \"{}\" ORDER BY rowid", table);
}

std::string CellIn(const dhRichClient3::Statement& row, int column) {
    const std::string type = row.Text(column);
    if (type == "integer") return ToCsv(row.Int64(column + 1));
    if (type == "real") return ToCsv(row.Real(column + 1));
    if (type == "text") return ToCsv(row.Text(column + 1));
    if (type == "null") return ToCsv({});
    std::string digits = row.Text(column + 1);
    for (char& c : digits)
        c = c >= 'A' ? static_cast<char>(c - 'A' + 'a') : c;
    return "x'" + digits + "'";
}

std::size_t Write(Connection& database, const std::string& table, std::ostream& out) {
    const std::vector<std::string> columns = ColumnsOf(database, table);
    out << fmt::format("{}\n", fmt::join(columns, ","));
    auto row = database.Prepare(Query(table, columns));
    std::size_t rows = 0;
    for (; row.Step(); ++rows) {
        for (std::size_t i = 0; i < columns.size(); ++i)
            out << (i > 0 ? "," : "") << CellIn(row, static_cast<int>(2 * i));
        out << '\n';
    }
    return rows;
}

}  // namespace

Files Export(Plant& plant, const std::vector<std::string>& tables, const fs::path& folder) {
    std::error_code error;
    fs::create_directories(folder, error);
    if (error) {
        throw Failure(fmt::format("the folder {} can't be made: {}. Check its path and rights.", folder.string(),
                                  error.message()));
    }
    const Moment moment(plant.Database());
    Files files;
    for (const std::string& table : tables) {
        const fs::path path = folder / (table + ".csv");
        const fs::path draft = folder / (table + ".csv.part");
        std::ofstream out(draft, std::ios::binary);
        const std::size_t rows = Write(plant.Database(), table, out);
        out.close();
        if (out) fs::rename(draft, path, error);
        if (!out || error) {
            fs::remove(draft, error);
            throw Failure(
                fmt::format("{} can't be written. Check the folder, its rights and the disk.", path.string()));
        }
        files.emplace_back(path.filename().string(), rows);
    }
    return files;
}

}  // namespace host::dump

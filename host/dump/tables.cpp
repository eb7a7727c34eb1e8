#include "host/dump/tables.h"

#include "frame/member_table.h"
#include "host/failure.h"
#include "schema/create.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

namespace host::dump {

std::vector<std::string> TablesNamed(const std::string& name) {
    std::vector<std::string> tables = schema::Tables();
    if (name == "all") return tables;
    for (const std::string& table : tables) {
        if (Zontara::SameName(table, name)) return {table};
    }
    throw UsageFailure(fmt::format("there is no table {}. The tables are {}; `all` means all of them.", name,
                                   fmt::join(tables, ", ")));
}

std::vector<std::string> ColumnsOf(dhRichClient3::Connection& database, const std::string& table) {
    auto row = database.Prepare("SELECT name FROM pragma_table_info(?1) ORDER BY cid");
    row.Bind(1, std::string_view(table));
    std::vector<std::string> columns;
    while (row.Step())
        columns.push_back(row.Text(0));
    return columns;
}

}  // namespace host::dump

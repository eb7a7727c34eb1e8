#include "schema/create.h"

#include "frame/raised_error.h"

#include <string_view>

namespace schema {

namespace detail {
extern const char* const componentSql;
extern const char* const productSql;
}  // namespace detail

namespace {

using dhRichClient3::Connection;

constexpr std::string_view kCreateTable = "\nCREATE TABLE ";

/// Adds the names of the tables that a DDL text creates.
void CollectTables(std::string_view ddl, std::vector<std::string>& tables) {
    for (auto at = ddl.find(kCreateTable); at != std::string_view::npos; at = ddl.find(kCreateTable, at)) {
        at += kCreateTable.size();
        tables.emplace_back(ddl.substr(at, ddl.find(' ', at) - at));
    }
}

bool HasTable(Connection& connection, const std::string& table) {
    auto find = connection.Prepare("SELECT 1 FROM sqlite_master WHERE type = 'table' AND name = ?1 COLLATE NOCASE");
    return find.Bind(1, table).Step();
}

void RunScripts(Connection& connection) {
    for (const std::string& table : Tables()) {
        if (HasTable(connection, table))
            Zontara::RaiseError(Zontara::vbObjectError + 1, "schema", "table " + table + " already exists");
    }
    // The trigger of the component's tables names a table of the product's.
    connection.RunScript(detail::productSql);
    connection.RunScript(detail::componentSql);
}

}  // namespace

void Create(Connection& connection) {
    if (connection.TransactionMeant()) {
        RunScripts(connection);
        return;
    }
    connection.IniciarTrans("");
    try {
        RunScripts(connection);
        connection.ConfirmarTrans("");
    } catch (...) {
        connection.RevertirTrans("", 0);
        throw;
    }
}

std::vector<std::string> Tables() {
    std::vector<std::string> tables;
    CollectTables(detail::productSql, tables);
    CollectTables(detail::componentSql, tables);
    return tables;
}

std::vector<std::string> MissingTables(Connection& connection) {
    std::vector<std::string> missing;
    for (std::string& table : Tables()) {
        if (!HasTable(connection, table)) missing.push_back(std::move(table));
    }
    return missing;
}

bool Exists(Connection& connection) { return MissingTables(connection).empty(); }

bool IsEmpty(Connection& connection) {
    auto count = connection.Prepare("SELECT count(*) FROM sqlite_master WHERE type IN ('table', 'view')");
    return count.Step() && count.Int(0) == 0;
}

}  // namespace schema

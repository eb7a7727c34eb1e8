#include "schema/create.h"

#include "frame/raised_error.h"

#include <set>
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

std::string InSmallLetters(std::string name) {
    for (char& letter : name) {
        if (letter >= 'A' && letter <= 'Z') letter = static_cast<char>(letter - 'A' + 'a');
    }
    return name;
}

/// The tables that are there, in small letters.
std::set<std::string> StoredTables(Connection& connection) {
    std::set<std::string> stored;
    auto names = connection.Prepare("SELECT name FROM sqlite_master WHERE type = 'table'");
    while (names.Step())
        stored.insert(InSmallLetters(names.Text(0)));
    return stored;
}

void RunScripts(Connection& connection) {
    const std::set<std::string> stored = StoredTables(connection);
    for (const std::string& table : Tables()) {
        if (stored.count(InSmallLetters(table)) > 0)
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
    const std::set<std::string> stored = StoredTables(connection);
    std::vector<std::string> missing;
    for (std::string& table : Tables()) {
        if (stored.count(InSmallLetters(table)) == 0) missing.push_back(std::move(table));
    }
    return missing;
}

bool Exists(Connection& connection) { return MissingTables(connection).empty(); }

bool IsEmpty(Connection& connection) {
    auto count = connection.Prepare("SELECT count(*) FROM sqlite_master WHERE type IN ('table', 'view')");
    return count.Step() && count.Int(0) == 0;
}

}  // namespace schema

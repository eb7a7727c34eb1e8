#pragma once

#include "dhRichClient3/connection.h"
#include "dhRichClient3/dialect/door.h"
#include "dhRichClient3/dialect/tokens.h"
#include "frame/raised_error.h"
#include "tests/fuzz/check.h"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace fuzz {

/// A database with columns that tables share, one of them for qualified names only.
inline Zontara::Ref<dhRichClient3::Connection> OpenTables() {
    dhRichClient3::Options options;
    options.stepLimit = 20'000;
    options.rowBytesLimit = 1 << 20;
    auto connection = dhRichClient3::Connection::Open(":memory:", options);
    connection->RunScript(
        "CREATE TABLE Activo (ID_Activo TEXT PRIMARY KEY, Descripcion TEXT, Lectura REAL);"
        "CREATE TABLE Gama (SC_Gama INTEGER PRIMARY KEY, Descripcion TEXT, Numero INTEGER);"
        "CREATE TABLE Tarea (ID_Activo TEXT, SC_Gama INTEGER, Lectura REAL QUALIFIED_ONLY, Descripcion TEXT);"
        "INSERT INTO Activo VALUES ('A', 'uno', 1.5), ('B', 'dos', 2); INSERT INTO Gama VALUES (1, 'x', 7);"
        "INSERT INTO Tarea VALUES ('A', 1, 0, 'y')");
    return connection;
}

/// Everything that the database knows of its tables.
inline std::string SchemaOf(dhRichClient3::Connection& connection) {
    auto all = connection.Prepare(
        "SELECT group_concat(sql) || (SELECT count(*) FROM pragma_database_list) FROM "
        "(SELECT sql FROM sqlite_schema UNION ALL SELECT sql FROM sqlite_temp_schema)");
    all.Step();
    return all.Text(0);
}

/// All rows of the tables.
inline std::string RowsOf(dhRichClient3::Connection& connection) {
    auto all = connection.Prepare(
        "SELECT group_concat(r) FROM (SELECT quote(ID_Activo) || quote(Descripcion) || quote(Lectura) r FROM Activo"
        " UNION ALL SELECT quote(SC_Gama) || quote(Descripcion) || quote(Numero) FROM Gama UNION ALL"
        " SELECT quote(ID_Activo) || quote(SC_Gama) || quote(Lectura) || quote(Descripcion) FROM Tarea)");
    all.Step();
    return all.Text(0);
}

/// Runs some work in a transaction that is rolled back: its error's number, 0 for none, and the rows that it left.
template <class Work> std::pair<std::int32_t, std::string> Tried(dhRichClient3::Connection& connection, Work work) {
    std::pair<std::int32_t, std::string> outcome;
    connection.IniciarTrans("");
    try {
        work();
    } catch (const Zontara::RaisedError& error) {
        outcome.first = error.Number();
        Require(error.Number() > Zontara::vbObjectError, "an error without the engine's number");
    }
    Require(connection.TransactionMeant(), "the transaction is gone");
    if (connection.InTransaction()) outcome.second = RowsOf(connection);
    connection.RevertirTrans("", 0);
    return outcome;
}

/// What the connection says of a text; its tokens lie in the text in order.
inline dhRichClient3::dialect::Verdict Judged(std::string_view text) {
    std::vector<dhRichClient3::dialect::Token> tokens;
    dhRichClient3::dialect::Tokenize(text, tokens);
    const char* end = text.data();
    for (const auto& token : tokens) {
        Require(!token.text.empty() && token.text.data() >= end, "a token out of order");
        end = token.text.data() + token.text.size();
    }
    Require(end <= text.data() + text.size(), "a token beyond the text");
    return dhRichClient3::dialect::Judge(text, tokens);
}

/// An input of the connection's target: any text, run as a read and as a change. It gives rows or an error, and neither
/// the schema nor the transaction changes. A change that is compiled by its shape does what its text does.
inline void FeedStatement(std::string_view input) {
    static const auto connection = OpenTables();
    static const std::string schema = SchemaOf(*connection);
    constexpr std::int32_t kRefusedByDoor = Zontara::vbObjectError + 23;
    const dhRichClient3::dialect::Verdict verdict = Judged(input);
    const std::string text(input);
    // The third time the rows may come from memory.
    Tried(*connection, [&] {
        for (int i = 0; i < 3; ++i)
            connection->Fetch(text);
    });
    const auto byConnection = Tried(*connection, [&] { connection->Ejecutar(text); });
    Require(verdict.Accepted() || byConnection.first == kRefusedByDoor, "a text was run that the door refuses");
    if (verdict.reusable && byConnection.first != kRefusedByDoor) {
        const auto byEngine = Tried(*connection, [&] { connection->Prepare(text).Run(); });
        Require(byConnection == byEngine, "a shape does something else than its text");
    }
    Require(SchemaOf(*connection) == schema, "the schema was changed");
}

}  // namespace fuzz

#pragma once

#include "dhRichClient3/connection.h"
#include "dhRichClient3/dialect/door.h"
#include "dhRichClient3/dialect/shape.h"
#include "dhRichClient3/dialect/tokens.h"
#include "dhRichClient3/row_store.h"
#include "frame/raised_error.h"
#include "tests/fuzz/check.h"

#include <string>
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

/// Tokens lie in the text in order, and a shape has as many as its text.
inline void CheckTokens(std::string_view text) {
    std::vector<dhRichClient3::dialect::Token> tokens;
    dhRichClient3::dialect::Tokenize(text, tokens);
    const char* end = text.data();
    for (const auto& token : tokens) {
        Require(!token.text.empty() && token.text.data() >= end, "a token out of order");
        end = token.text.data() + token.text.size();
    }
    Require(end <= text.data() + text.size(), "a token beyond the text");
    if (!dhRichClient3::dialect::Judge(text, tokens).Accepted()) return;
    std::string shape;
    dhRichClient3::dialect::ShapeOf(text, tokens, shape);
    std::vector<dhRichClient3::dialect::Token> again;
    dhRichClient3::dialect::Tokenize(shape, again);
    Require(again.size() == tokens.size(), "a shape of other tokens than its text");
}

/// An input of the connection's target: any text, run as a change and as a read. It gives rows or an error, and neither
/// the schema nor the transaction changes.
inline void FeedStatement(std::string_view input) {
    static const auto connection = OpenTables();
    static const std::string schema = SchemaOf(*connection);
    CheckTokens(input);
    const std::string text(input);
    connection->IniciarTrans("");
    dhRichClient3::RowStore rows;
    for (const bool reads : {true, false}) {
        try {
            reads ? connection->Fetch(text, rows) : connection->Ejecutar(text);
        } catch (const Zontara::RaisedError& error) {
            Require(error.Number() > Zontara::vbObjectError, "an error without the engine's number");
        }
    }
    Require(connection->TransactionMeant(), "the transaction is gone");
    connection->RevertirTrans("", 0);
    Require(SchemaOf(*connection) == schema, "the schema was changed");
}

}  // namespace fuzz

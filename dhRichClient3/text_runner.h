#pragma once

#include "dhRichClient3/dialect/catalogue.h"
#include "dhRichClient3/dialect/tokens.h"
#include "dhRichClient3/sqlite/compiled.h"
#include "dhRichClient3/statement_cache.h"

#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

namespace dhRichClient3 {

class Engine;
class RowStore;

/// Runs the texts that come through the closed door: judges them, finds what their bare names mean, and keeps what was
/// compiled. A change whose literals make no difference is compiled once for all texts of its shape; any other
/// statement is kept under its exact text.
class TextRunner {
public:
    explicit TextRunner(Engine& engine);

    void Execute(const std::string& sql);
    RowStore Fetch(const std::string& sql);

    /// Reads columns and marks again and forgets what was kept.
    void ReadSchema();

private:
    struct Ready {
        std::unique_ptr<Compiled> statement;
        StatementCache<Compiled>* home;
    };

    Ready Prepare(const std::string& sql);
    std::unique_ptr<Compiled> Reused(const std::string& sql);
    std::unique_ptr<Compiled> CompileSelect(const std::string& sql);
    void AddColumns(const std::string& table);

    Engine& engine_;
    StatementCache<Compiled> byText_;
    StatementCache<Compiled> byShape_;
    dialect::Catalogue catalogue_;
    /// Bare names that SQLite calls ambiguous, by the shape of the text.
    std::unordered_map<std::string, std::vector<std::string>> ambiguous_;
    /// Room that is used again for each text.
    std::vector<dialect::Token> tokens_;
    std::string shape_;
};

}  // namespace dhRichClient3

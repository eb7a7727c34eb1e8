#pragma once

#include "dhRichClient3/dialect/catalogue.h"
#include "dhRichClient3/dialect/tokens.h"
#include "dhRichClient3/remembered_rows.h"
#include "dhRichClient3/shape_cache.h"
#include "dhRichClient3/sqlite/compiled.h"

#include <cstdint>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

namespace dhRichClient3 {

class Engine;
class RowStore;

/// Runs the texts that come through the closed door: judges them, finds what their bare names mean, and keeps what was
/// compiled. Texts that differ only in literals which make no difference to how they are run are compiled once; any
/// other statement is kept under its exact text. A text of a shape that is kept needs no judgement: the door decides on
/// what is left of it without these literals.
class TextRunner {
public:
    explicit TextRunner(Engine& engine);

    void Execute(const std::string& sql);
    /// All rows of a statement. Inside a transaction they may be those that were read for the same text before.
    std::shared_ptr<const RowStore> Fetch(const std::string& sql);
    /// How often they were.
    std::int64_t Remembered() const { return remembered_; }

    /// Forgets what was kept and read of the schema, and sees whether there are partial indexes. Columns and marks of a
    /// table are read when a bare name may be one of its columns.
    void ReadSchema();

private:
    /// A statement with its parameters set, for one run: one that is kept, or one of the run's own.
    struct Ready {
        Compiled* statement;
        std::unique_ptr<Compiled> own;
    };

    Ready Prepare(const std::string& sql);
    Compiled* Kept(const std::string& sql);
    Compiled* Lifted(const std::string& sql, bool selects);
    std::unique_ptr<Compiled> TryCompileSelect(const std::string& sql);
    std::vector<dialect::Catalogue::Column> ColumnsOf(std::string_view table);

    Engine& engine_;
    ShapeCache kept_;
    RememberedRows answers_;
    std::int64_t remembered_ = 0;
    dialect::Catalogue catalogue_;
    bool partialIndexes_ = false;
    /// Bare names that SQLite calls ambiguous, by the shape of the text.
    std::unordered_map<std::string, std::vector<std::string>> ambiguous_;
    /// Room that is used again for each text.
    std::vector<dialect::Token> tokens_;
    std::vector<dialect::Token> lifted_;
    std::vector<dialect::Literal> literals_;
    std::string shape_;
};

}  // namespace dhRichClient3

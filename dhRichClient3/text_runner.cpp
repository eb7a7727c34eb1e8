#include "dhRichClient3/text_runner.h"

#include "dhRichClient3/dialect/bare_names.h"
#include "dhRichClient3/dialect/door.h"
#include "dhRichClient3/dialect/lifting.h"
#include "dhRichClient3/dialect/shape.h"
#include "dhRichClient3/row_store.h"
#include "dhRichClient3/sqlite/engine.h"
#include "frame/raised_error.h"

#include <algorithm>
#include <utility>

namespace dhRichClient3 {
namespace {

/// The engine's primary code for what the door refuses.
constexpr int kRefusedByDoor = 23;
/// Its answer to a statement that can't be run on the tables as they are.
constexpr std::int32_t kWrongStatement = Zontara::vbObjectError + 1;
constexpr std::size_t kMostShapes = 1000;
/// A longer text is compiled for itself and not kept.
constexpr std::size_t kLongestKept = 100'000;

}  // namespace

TextRunner::TextRunner(Engine& engine)
    : engine_(engine),
      answers_(engine.Changes()),
      catalogue_([this](std::string_view table) { return ColumnsOf(table); }) {
    ReadSchema();
}

void TextRunner::Execute(const std::string& sql) {
    engine_.RequireTransaction();
    const Engine::ClosedDoor closed(engine_);
    const Ready ready = Prepare(sql);
    engine_.StartRun();
    if (engine_.Step(*ready.statement)) Engine::Reset(*ready.statement);
}

std::shared_ptr<const RowStore> TextRunner::Fetch(const std::string& sql) {
    engine_.RequireTransaction();
    const bool alone = engine_.IsAlone();
    if (alone) {
        if (auto rows = answers_.Find(sql)) {
            ++remembered_;
            return rows;
        }
    }
    const Engine::ClosedDoor closed(engine_);
    const Ready ready = Prepare(sql);
    engine_.StartRun();
    auto rows = std::make_shared<const RowStore>(engine_.FetchAll(*ready.statement));
    const Reach& reach = ready.statement->reach;
    if (alone && reach.writes == 0 && !reach.asksTime) answers_.Keep(sql, reach.reads, rows);
    return rows;
}

TextRunner::Ready TextRunner::Prepare(const std::string& sql) {
    if (Compiled* const kept = Kept(sql)) return {kept, nullptr};
    dialect::Tokenize(sql, tokens_);
    const auto verdict = dialect::Judge(sql, tokens_);
    if (!verdict.Accepted()) Engine::RaiseCode(kRefusedByDoor, verdict.refusal);
    const bool mayKeep = sql.size() <= kLongestKept;
    if (mayKeep) {
        dialect::Lift(tokens_, verdict, partialIndexes_, lifted_);
        if (!lifted_.empty()) {
            if (Compiled* const lifted = Lifted(sql, verdict.selects)) return {lifted, nullptr};
            dialect::Tokenize(sql, tokens_);
        }
    }
    auto statement = verdict.selects ? TryCompileSelect(sql) : engine_.TryCompile(sql, {});
    if (!statement) engine_.RaiseLast();
    if (mayKeep) return {kept_.Keep(dialect::Shape(sql, {}), std::move(statement)).statement.get(), nullptr};
    Compiled* const own = statement.get();
    return {own, std::move(statement)};
}

/// The statement that is kept for the text's shape, with the text's literals for parameters; none if there is none.
Compiled* TextRunner::Kept(const std::string& sql) {
    if (sql.size() > kLongestKept || sql.find('\0') != std::string::npos) return nullptr;
    ShapeCache::Kept* const kept = kept_.Find(sql, literals_);
    if (!kept) return nullptr;
    // The parameters refer to the text. It goes after the run, but the engine looks at them in a run alone, and each
    // run begins here.
    engine_.Bind(*kept->statement, literals_.data(), kept->shape.LiftedCount());
    return kept->statement.get();
}

/// The same for a text of a new shape, `lifted_` being the literals that may differ. None when the shape doesn't
/// compile, as when a string stands for a name: then the text itself has to say what is wrong.
Compiled* TextRunner::Lifted(const std::string& sql, bool selects) {
    dialect::Shape shape(sql, lifted_, selects);
    const std::string text = shape.Text();
    if (selects) dialect::Tokenize(text, tokens_);
    auto statement = selects ? TryCompileSelect(text) : engine_.TryCompile(text, {});
    if (!statement || Engine::ParameterCount(*statement) != static_cast<int>(shape.LiftedCount())) return nullptr;
    kept_.Keep(std::move(shape), std::move(statement));
    return Kept(sql);
}

/// The compiled text, bare names that the engine calls ambiguous qualified; none when the engine refuses it. `tokens_`
/// are the text's.
std::unique_ptr<Compiled> TextRunner::TryCompileSelect(const std::string& sql) {
    std::vector<std::string> names;
    if (!ambiguous_.empty()) {
        dialect::ShapeOf(sql, tokens_, shape_);
        const auto known = ambiguous_.find(shape_);
        if (known != ambiguous_.end()) names = known->second;
    }
    const std::size_t known = names.size();
    std::string meant = sql;
    if (known > 0) meant = dialect::QualifyBareNames(sql, tokens_, names, catalogue_).value_or(sql);
    for (;;) {
        if (auto statement = engine_.TryCompile(meant, {})) {
            if (names.size() > known) {
                dialect::ShapeOf(sql, tokens_, shape_);
                if (ambiguous_.size() >= kMostShapes) ambiguous_.clear();
                ambiguous_[shape_] = std::move(names);
            }
            return statement;
        }
        auto name = dialect::AmbiguousName(engine_.LastMessage());
        const auto same = [&](const auto& tried) { return dialect::SameName(tried, *name); };
        if (!name || std::any_of(names.begin(), names.end(), same)) return nullptr;
        names.push_back(std::move(*name));
        auto qualified = dialect::QualifyBareNames(sql, tokens_, names, catalogue_);
        if (!qualified) {
            // Once more, since reading columns has hidden the refusal.
            engine_.TryCompile(meant, {});
            return nullptr;
        }
        meant = std::move(*qualified);
    }
}

void TextRunner::ReadSchema() {
    kept_.Clear();
    ambiguous_.clear();
    catalogue_.Clear();
    // A partial index serves a statement only if the engine sees the values of its condition in the text.
    const auto partial =
        engine_.Compile("SELECT 1 FROM sqlite_schema WHERE type = 'index' AND sql LIKE '%where%' LIMIT 1");
    engine_.StartRun();
    partialIndexes_ = engine_.FetchAll(*partial).Rows() > 0;
}

std::vector<dialect::Catalogue::Column> TextRunner::ColumnsOf(std::string_view table) {
    const Engine::OpenedDoor opened(engine_);
    std::vector<dialect::Catalogue::Column> columns;
    const auto statement = engine_.Compile("SELECT name, type FROM pragma_table_info(?1)");
    engine_.Bind(*statement, 1, table, true);
    engine_.StartRun();
    try {
        const RowStore rows = engine_.FetchAll(*statement);
        for (std::size_t row = 0; row < rows.Rows(); ++row)
            columns.push_back({rows.At(row, 0).Get<std::string>(), rows.At(row, 1).Get<std::string>()});
    } catch (const Zontara::RaisedError& refusal) {
        // A view of a table that is gone has no columns. An interrupt or a failing disk says nothing of them.
        if (refusal.Number() != kWrongStatement) throw;
    }
    return columns;
}

}  // namespace dhRichClient3

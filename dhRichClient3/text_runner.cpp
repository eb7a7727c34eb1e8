#include "dhRichClient3/text_runner.h"

#include "dhRichClient3/dialect/bare_names.h"
#include "dhRichClient3/dialect/door.h"
#include "dhRichClient3/dialect/shape.h"
#include "dhRichClient3/row_store.h"
#include "dhRichClient3/sqlite/engine.h"
#include "frame/raised_error.h"

#include <algorithm>
#include <charconv>

namespace dhRichClient3 {
namespace {

/// The engine's primary code for what the door refuses.
constexpr int kRefusedByDoor = 23;
constexpr std::size_t kMostShapes = 1000;

}  // namespace

TextRunner::TextRunner(Engine& engine) : engine_(engine) { ReadSchema(); }

void TextRunner::Execute(const std::string& sql) {
    engine_.RequireTransaction();
    const Engine::ClosedDoor closed(engine_);
    Ready ready = Prepare(sql);
    engine_.StartRun();
    if (engine_.Step(*ready.statement)) Engine::Reset(*ready.statement);
    Engine::ClearParameters(*ready.statement);
    ready.home->Put(std::move(ready.statement));
}

RowStore TextRunner::Fetch(const std::string& sql) {
    engine_.RequireTransaction();
    const Engine::ClosedDoor closed(engine_);
    Ready ready = Prepare(sql);
    engine_.StartRun();
    RowStore rows = engine_.FetchAll(*ready.statement);
    Engine::ClearParameters(*ready.statement);
    ready.home->Put(std::move(ready.statement));
    return rows;
}

TextRunner::Ready TextRunner::Prepare(const std::string& sql) {
    if (auto kept = byText_.Take(sql)) return {std::move(kept), &byText_};
    dialect::Tokenize(sql, tokens_);
    const auto verdict = dialect::Judge(sql, tokens_);
    if (!verdict.Accepted()) Engine::RaiseCode(kRefusedByDoor, verdict.refusal);
    if (verdict.reusable) {
        if (auto reused = Reused(sql)) return {std::move(reused), &byShape_};
    }
    return {verdict.selects ? CompileSelect(sql) : engine_.Compile(sql), &byText_};
}

/// The statement of the text's shape with the text's literals for parameters; none when the shape doesn't compile, as
/// when a string stands for a name: then the text itself has to say what is wrong.
std::unique_ptr<Compiled> TextRunner::Reused(const std::string& sql) {
    dialect::ShapeOf(sql, tokens_, shape_);
    auto statement = byShape_.Take(shape_);
    if (!statement) {
        statement = engine_.TryCompile(shape_, shape_);
        if (!statement) return nullptr;
    }
    int parameter = 0;
    for (const dialect::Token& token : tokens_) {
        if (!token.IsLiteral()) continue;
        if (++parameter > Engine::ParameterCount(*statement)) return nullptr;
        if (token.kind == dialect::TokenKind::Integer) {
            std::int64_t number = 0;
            std::from_chars(token.text.data(), token.text.data() + token.text.size(), number);
            engine_.Bind(*statement, parameter, number);
        } else {
            const auto inside = token.text.substr(1, token.text.size() - 2);
            const bool plain = inside.find('\'') == std::string_view::npos;
            if (plain) {
                engine_.Bind(*statement, parameter, inside, true);
            } else {
                engine_.Bind(*statement, parameter, dialect::Unquoted(token), false);
            }
        }
    }
    return statement;
}

std::unique_ptr<Compiled> TextRunner::CompileSelect(const std::string& sql) {
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
        if (auto statement = engine_.TryCompile(meant, sql)) {
            if (names.size() > known) {
                dialect::ShapeOf(sql, tokens_, shape_);
                if (ambiguous_.size() >= kMostShapes) ambiguous_.clear();
                ambiguous_[shape_] = std::move(names);
            }
            return statement;
        }
        auto name = dialect::AmbiguousName(engine_.LastMessage());
        const auto same = [&](const auto& tried) { return dialect::SameName(tried, *name); };
        if (!name || std::any_of(names.begin(), names.end(), same)) engine_.RaiseLast();
        names.push_back(std::move(*name));
        auto qualified = dialect::QualifyBareNames(sql, tokens_, names, catalogue_);
        if (!qualified) engine_.RaiseLast();
        meant = std::move(*qualified);
    }
}

void TextRunner::ReadSchema() {
    byText_.Clear();
    byShape_.Clear();
    ambiguous_.clear();
    catalogue_.Clear();
    const auto tables = engine_.Compile(
        "SELECT name FROM sqlite_schema WHERE type IN ('table','view') UNION "
        "SELECT name FROM sqlite_temp_schema WHERE type IN ('table','view')");
    engine_.StartRun();
    const RowStore names = engine_.FetchAll(*tables);
    for (std::size_t row = 0; row < names.Rows(); ++row)
        AddColumns(names.At(row, 0).Get<std::string>());
}

void TextRunner::AddColumns(const std::string& table) {
    const auto statement = engine_.Compile("SELECT name, type FROM pragma_table_info(?1)");
    engine_.Bind(*statement, 1, table, true);
    engine_.StartRun();
    try {
        const RowStore columns = engine_.FetchAll(*statement);
        for (std::size_t row = 0; row < columns.Rows(); ++row) {
            catalogue_.Add(table, columns.At(row, 0).Get<std::string>(), columns.At(row, 1).Get<std::string>());
        }
    } catch (const Zontara::RaisedError&) {
        // A view of a table that is gone has no columns, and is no reason to do without the rest.
    }
}

}  // namespace dhRichClient3

#include "dhRichClient3/text_runner.h"

#include "dhRichClient3/dialect/bare_names.h"
#include "dhRichClient3/dialect/door.h"
#include "dhRichClient3/dialect/lifting.h"
#include "dhRichClient3/dialect/shape.h"
#include "dhRichClient3/row_store.h"
#include "dhRichClient3/sqlite/engine.h"
#include "frame/raised_error.h"

#include <algorithm>
#include <charconv>
#include <utility>

namespace dhRichClient3 {
namespace {

/// The engine's primary code for what the door refuses.
constexpr int kRefusedByDoor = 23;
constexpr std::size_t kMostShapes = 1000;
/// A longer text is compiled for itself and not kept.
constexpr std::size_t kLongestKept = 100'000;

}  // namespace

class TextRunner::Ready {
public:
    explicit Ready(Compiled& kept) : statement_(&kept) {}
    explicit Ready(std::unique_ptr<Compiled> own) : own_(std::move(own)), statement_(own_.get()) {}
    Ready(Ready&& other) noexcept : own_(std::move(other.own_)), statement_(std::exchange(other.statement_, nullptr)) {}
    Ready& operator=(Ready&&) = delete;
    /// The parameters refer to the text, which goes.
    ~Ready() {
        if (statement_) Engine::ClearParameters(*statement_);
    }
    explicit operator bool() const { return statement_ != nullptr; }
    Compiled& operator*() const { return *statement_; }

private:
    std::unique_ptr<Compiled> own_;
    Compiled* statement_;
};

TextRunner::TextRunner(Engine& engine) : engine_(engine) { ReadSchema(); }

void TextRunner::Execute(const std::string& sql) {
    engine_.RequireTransaction();
    const Engine::ClosedDoor closed(engine_);
    const Ready ready = Prepare(sql);
    engine_.StartRun();
    if (engine_.Step(*ready)) Engine::Reset(*ready);
}

RowStore TextRunner::Fetch(const std::string& sql) {
    engine_.RequireTransaction();
    const Engine::ClosedDoor closed(engine_);
    const Ready ready = Prepare(sql);
    engine_.StartRun();
    return engine_.FetchAll(*ready);
}

TextRunner::Ready TextRunner::Prepare(const std::string& sql) {
    if (Compiled* const kept = Kept(sql)) {
        Ready ready(*kept);
        BindLiterals(*ready);
        return ready;
    }
    dialect::Tokenize(sql, tokens_);
    const auto verdict = dialect::Judge(sql, tokens_);
    if (!verdict.Accepted()) Engine::RaiseCode(kRefusedByDoor, verdict.refusal);
    dialect::Lift(tokens_, verdict, partialIndexes_, literals_);
    const bool mayKeep = sql.size() <= kLongestKept;
    if (mayKeep && !literals_.empty()) {
        if (Ready lifted = Lifted(sql, verdict.selects)) return lifted;
        dialect::Tokenize(sql, tokens_);
    }
    auto statement = verdict.selects ? TryCompileSelect(sql) : engine_.TryCompile(sql, {});
    if (!statement) engine_.RaiseLast();
    if (!mayKeep) return Ready(std::move(statement));
    return Ready(kept_.Keep(dialect::Shape(sql, {}), std::move(statement)));
}

/// A statement that is kept, with the text's literals in `literals_`.
Compiled* TextRunner::Kept(const std::string& sql) {
    if (sql.size() > kLongestKept || sql.find('\0') != std::string::npos) return nullptr;
    return kept_.Find(sql, literals_);
}

/// The statement of the text's shape, with the lifted literals for parameters; none when the shape doesn't compile, as
/// when a string stands for a name: then the text itself has to say what is wrong.
TextRunner::Ready TextRunner::Lifted(const std::string& sql, bool selects) {
    dialect::Shape shape(sql, literals_, selects);
    const std::string text = shape.Text();
    if (selects) dialect::Tokenize(text, tokens_);
    auto statement = selects ? TryCompileSelect(text) : engine_.TryCompile(text, {});
    if (!statement || Engine::ParameterCount(*statement) != static_cast<int>(shape.LiftedCount())) {
        return Ready(std::unique_ptr<Compiled>());
    }
    Ready ready(kept_.Keep(std::move(shape), std::move(statement)));
    BindLiterals(*ready);
    return ready;
}

void TextRunner::BindLiterals(Compiled& statement) {
    int parameter = 0;
    for (const dialect::Token& literal : literals_) {
        ++parameter;
        if (literal.kind == dialect::TokenKind::Integer) {
            std::int64_t number = 0;
            std::from_chars(literal.text.data(), literal.text.data() + literal.text.size(), number);
            engine_.Bind(statement, parameter, number);
        } else if (literal.kind == dialect::TokenKind::Decimal) {
            engine_.Bind(statement, parameter, literal.text, true);
        } else {
            const auto inside = literal.text.substr(1, literal.text.size() - 2);
            const bool plain = inside.find('\'') == std::string_view::npos;
            if (plain) {
                engine_.Bind(statement, parameter, inside, true);
            } else {
                engine_.Bind(statement, parameter, dialect::Unquoted(literal), false);
            }
        }
    }
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
        if (!qualified) return nullptr;
        meant = std::move(*qualified);
    }
}

void TextRunner::ReadSchema() {
    kept_.Clear();
    ambiguous_.clear();
    catalogue_.Clear();
    const auto tables = engine_.Compile(
        "SELECT name FROM sqlite_schema WHERE type IN ('table','view') UNION "
        "SELECT name FROM sqlite_temp_schema WHERE type IN ('table','view')");
    engine_.StartRun();
    const RowStore names = engine_.FetchAll(*tables);
    for (std::size_t row = 0; row < names.Rows(); ++row)
        AddColumns(names.At(row, 0).Get<std::string>());
    ReadIndexes();
}

/// A partial index serves a statement only if the engine sees the values of its condition in the text.
void TextRunner::ReadIndexes() {
    const auto statement = engine_.Compile("SELECT sql FROM sqlite_schema WHERE type = 'index' AND sql LIKE '%where%'");
    engine_.StartRun();
    partialIndexes_ = engine_.FetchAll(*statement).Rows() > 0;
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

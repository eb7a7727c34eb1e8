#include "dhRichClient3/connection.h"

#include "dhRichClient3/dialect/tokens.h"
#include "dhRichClient3/row_store.h"
#include "dhRichClient3/sqlite/engine.h"
#include "dhRichClient3/text_runner.h"

#include <algorithm>
#include <utility>

namespace dhRichClient3 {
namespace {

/// Whether a script may change which tables and columns there are.
bool ChangesSchema(std::string_view script) {
    constexpr std::string_view kWords[] = {"CREATE", "DROP", "ALTER", "ATTACH", "DETACH", "ROLLBACK"};
    std::vector<dialect::Token> tokens;
    dialect::Tokenize(script, tokens);
    return std::any_of(tokens.begin(), tokens.end(), [&](const dialect::Token& token) {
        return std::any_of(std::begin(kWords), std::end(kWords), [&](auto word) { return token.IsWord(word); });
    });
}

}  // namespace

struct Connection::Parts {
    explicit Parts(std::shared_ptr<Engine> opened) : engine(std::move(opened)), texts(*engine) {}

    std::shared_ptr<Engine> engine;
    TextRunner texts;
    std::function<void()> beforeCommit;
    std::function<void()> afterEnd;
    /// A script changed the schema inside the open transaction, so that a rollback changes it back.
    bool schemaChanged = false;
};

Connection::Connection(std::shared_ptr<Engine> engine) : parts_(std::make_unique<Parts>(std::move(engine))) {}

Connection::~Connection() = default;

Zontara::Ref<Connection> Connection::Open(const std::string& path, const Options& options) {
    return Zontara::Ref<Connection>(new Connection(Engine::Open(path, options)));
}

Zontara::Ref<Connection> Connection::Copy() const {
    return Zontara::Ref<Connection>(new Connection(parts_->engine->Copy()));
}

void Connection::IniciarTrans(const std::string&) { parts_->engine->Begin(); }

void Connection::ConfirmarTrans(const std::string&) {
    parts_->engine->RequireTransaction();
    if (parts_->beforeCommit && parts_->engine->InTransaction()) parts_->beforeCommit();
    parts_->engine->Commit();
    parts_->schemaChanged = false;
    if (parts_->afterEnd) parts_->afterEnd();
}

void Connection::RevertirTrans(const std::string&, std::int32_t) {
    parts_->engine->Rollback();
    if (parts_->schemaChanged) parts_->texts.ReadSchema();
    parts_->schemaChanged = false;
    if (parts_->afterEnd) parts_->afterEnd();
}

void Connection::Ejecutar(const std::string& sql) { parts_->texts.Execute(sql); }

std::shared_ptr<const RowStore> Connection::Fetch(const std::string& sql) { return parts_->texts.Fetch(sql); }

void Connection::RunScript(std::string_view sql) {
    const bool changes = ChangesSchema(sql);
    const auto readAgain = [&] {
        if (!changes) return;
        parts_->texts.ReadSchema();
        parts_->schemaChanged = InTransaction();
    };
    try {
        parts_->engine->RunScript(sql);
    } catch (...) {
        readAgain();
        throw;
    }
    readAgain();
}

Statement Connection::Prepare(std::string_view sql) { return parts_->engine->Lend(sql); }

bool Connection::InTransaction() const { return parts_->engine->InTransaction(); }

bool Connection::TransactionMeant() const { return parts_->engine->TransactionMeant(); }

std::int64_t Connection::RowsChanged() const { return parts_->engine->RowsChanged(); }

void Connection::WatchCommit(std::function<void()> beforeCommit, std::function<void()> afterEnd) {
    parts_->beforeCommit = std::move(beforeCommit);
    parts_->afterEnd = std::move(afterEnd);
}

std::int64_t Connection::Compilations() const { return parts_->engine->Compilations(); }

std::int64_t Connection::Remembered() const { return parts_->texts.Remembered(); }

}  // namespace dhRichClient3

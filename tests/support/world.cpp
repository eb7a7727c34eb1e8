#include "tests/support/world.h"

#include "Perluma/provider.h"
#include "Perluma/tracing_provider.h"
#include "dhRichClient3/connection.h"
#include "frame/convert.h"
#include "frame/raised_error.h"
#include "schema/create.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <charconv>
#include <utility>

namespace support {

using Zontara::Ref;
using Zontara::Value;

namespace {

constexpr std::string_view kCallStack = "  Call Stack: ";

/// A request that is to fail: the first whose line holds `part`, after `skip` others.
struct Fault {
    bool armed = false;
    std::string part;
    std::int32_t number = 0;
    std::string description;
    int skip = 0;
};

/// The word that begins the line of a request, and what kind of request it is.
struct Word {
    std::string_view word;
    Asked::What what;
};
constexpr Word kWords[] = {{"begin", Asked::What::Begin},       {"commit", Asked::What::Commit},
                           {"rollback", Asked::What::Rollback}, {"key", Asked::What::Key},
                           {"sql", Asked::What::Sql},           {"service", Asked::What::Service},
                           {"event", Asked::What::Event},       {"notice", Asked::What::Notice}};

Asked ParseLine(const std::string& line) {
    const std::size_t end = line.find(' ');
    const std::string_view word = std::string_view(line).substr(0, end);
    Asked asked{Asked::What::Sql, end == std::string::npos ? "" : line.substr(end + 1), {}, {}};
    for (const Word& known : kWords) {
        if (known.word == word) asked.what = known.what;
    }
    return asked;
}

std::string LineOf(const Asked& asked) {
    for (const Word& known : kWords) {
        if (known.what != asked.what) continue;
        const bool alone = asked.what == Asked::What::Begin || asked.what == Asked::What::Commit ||
                           asked.what == Asked::What::Rollback;
        return alone ? std::string(known.word) : std::string(known.word) + " " + asked.text;
    }
    return asked.text;
}

/// Keeps the record, and makes requests fail.
class Recorder : public Perluma::TraceSink {
public:
    std::vector<Asked> record;
    Fault fault;
    std::function<void(const std::string& line)> hook;

    void Before(const std::string& line) override {
        if (hook) hook(line);
        if (!fault.armed || line.find(fault.part) == std::string::npos) return;
        if (fault.skip-- > 0) return;
        fault.armed = false;
        record.push_back(ParseLine(line));
        Zontara::RaiseError(fault.number, "dhRichClient3", fault.description);
    }
    void Sql(const std::string& text) override { record.push_back({Asked::What::Sql, text, {}, {}}); }
    void Transaction(std::string_view what) override { record.push_back(ParseLine(std::string(what))); }
    void Key(const std::string& table, std::int32_t value) override {
        record.push_back({Asked::What::Key, table, {}, value});
    }
    void Service(std::string_view name, const std::vector<Value>& arguments, const Value& result) override {
        record.push_back({Asked::What::Service, std::string(name), arguments, result});
    }
    void Event(std::string_view name, const Value& argument) override {
        record.push_back({Asked::What::Event, std::string(name), {argument}, {}});
    }
    void Notice(const std::string& text) override { record.push_back({Asked::What::Notice, text, {}, {}}); }
};

std::string FieldText(const Value& value) { return value.IsNull() ? "NULL" : Zontara::ToText(value); }

std::int32_t NumberAt(std::string_view text, std::size_t at, std::size_t length) {
    std::int32_t number = 0;
    const std::string_view digits = text.substr(at, length);
    std::from_chars(digits.data(), digits.data() + digits.size(), number);
    return number;
}

}  // namespace

TestPlatform::TestPlatform() : now(World::Day("2026-03-05 08:00:00")) {}

void TestPlatform::Yield() const {
    ++yields;
    if (onYield) onYield();
}

struct World::Parts {
    explicit Parts(const Ref<dhRichClient3::Connection>& opened) : connection(opened) {}

    Ref<dhRichClient3::Connection> connection;
    std::shared_ptr<Recorder> recorder = std::make_shared<Recorder>();
    std::shared_ptr<TestPlatform> platform = std::make_shared<TestPlatform>();
    std::shared_ptr<Zontara::Provider> sibling;
    std::shared_ptr<Zontara::Provider> providerBefore;
    std::shared_ptr<const Zontara::Platform> platformBefore;
};

namespace {

Ref<dhRichClient3::Connection> NewDatabase() {
    auto connection = dhRichClient3::Connection::Open(":memory:");
    schema::Create(*connection);
    return connection;
}

}  // namespace

World::World() : World(NewDatabase()) {}

World::World(const Ref<dhRichClient3::Connection>& connection) : parts_(std::make_unique<Parts>(connection)) {
    parts_->sibling = std::make_shared<Perluma::Provider>(parts_->connection);
    parts_->providerBefore =
        Zontara::InstallProvider(std::make_shared<Perluma::TracingProvider>(parts_->sibling, parts_->recorder));
    parts_->platformBefore = Zontara::ReplacePlatform(parts_->platform);
}

World::~World() {
    Zontara::ReplacePlatform(parts_->platformBefore);
    Zontara::InstallProvider(parts_->providerBefore);
}

void World::Run(std::string_view sql) { parts_->connection->RunScript(sql); }

std::vector<std::string> World::Rows(const std::string& sql) {
    std::vector<std::string> rows;
    auto query = parts_->connection->Prepare(sql);
    while (query.Step()) {
        std::string row;
        for (int column = 0; column < query.ColumnCount(); ++column) {
            if (column > 0) row += '|';
            row += FieldText(query.Value(column));
        }
        rows.push_back(std::move(row));
    }
    return rows;
}

std::string World::Scalar(const std::string& sql) {
    const std::vector<std::string> rows = Rows(sql);
    return rows.empty() ? "" : rows.front();
}

const std::vector<Asked>& World::Record() const { return parts_->recorder->record; }

std::vector<std::string> World::Statements() const {
    std::vector<std::string> statements;
    for (const Asked& asked : Record()) {
        if (asked.what == Asked::What::Sql) statements.push_back(asked.text);
    }
    return statements;
}

std::vector<std::string> World::Story() const {
    std::vector<std::string> story;
    for (const Asked& asked : Record())
        story.push_back(LineOf(asked));
    return story;
}

void World::Forget() { parts_->recorder->record.clear(); }

void World::FailOn(std::string part, std::int32_t number, std::string description, int skip) {
    parts_->recorder->fault = {true, std::move(part), number, std::move(description), skip};
}

void World::Heal() { parts_->recorder->fault = {}; }

void World::OnRequest(std::function<void(const std::string& line)> hook) { parts_->recorder->hook = std::move(hook); }

int World::Depth() const { return parts_->sibling->Session().ProfundidadTransaccion(); }

bool World::InTransaction() const { return parts_->connection->InTransaction(); }

void World::Abort() {
    if (parts_->connection->TransactionMeant()) parts_->connection->RevertirTrans("", 0);
    parts_->sibling->Session().ProfundidadTransaccion(0);
}

TestPlatform& World::Platform() { return *parts_->platform; }

Zontara::SesionGlobal& World::Session() { return Zontara::Session(); }

dhRichClient3::Connection& World::Database() { return *parts_->connection; }

Zontara::Date World::Day(std::string_view iso) {
    const Zontara::Date day = Zontara::DateOf(NumberAt(iso, 0, 4), NumberAt(iso, 5, 2), NumberAt(iso, 8, 2));
    if (iso.size() < 19) return day;
    return Zontara::WithTime(day, {NumberAt(iso, 11, 2), NumberAt(iso, 14, 2), NumberAt(iso, 17, 2)});
}

Zontara::ErrorRecord ErrorOf(const std::function<void()>& work) {
    try {
        work();
    } catch (const Zontara::RaisedError& error) {
        return error.Record();
    }
    ADD_FAILURE() << "nothing was raised";
    return {};
}

std::vector<std::string> CallStackOf(const std::string& report) {
    std::vector<std::string> lines;
    std::size_t at = 0;
    while (at < report.size()) {
        const std::size_t end = std::min(report.find("\r\n", at), report.size());
        std::string line = report.substr(at, end - at);
        at = end + 2;
        if (line.compare(0, kCallStack.size(), kCallStack) != 0) continue;
        line.erase(line.find_last_not_of('-') + 1);
        line.erase(line.find_last_not_of(' ') + 1);
        lines.push_back(std::move(line));
    }
    return lines;
}

}  // namespace support

#include "Perluma/keys.h"

#include "frame/raised_error.h"

#include <limits>
#include <memory>
#include <string_view>
#include <utility>

namespace Perluma {

namespace {

using dhRichClient3::Connection;
using Zontara::Ref;

/// The engine's answer to a statement that can't be run on the tables as they are.
constexpr std::int32_t kWrongStatement = Zontara::vbObjectError + 1;
/// The largest key of a table that is missing or can't be read, as an SQL expression.
constexpr const char* kNoKeys = "0";
constexpr std::int64_t kLargestKey = std::numeric_limits<std::int32_t>::max();

std::string InSmallLetters(std::string text) {
    for (char& letter : text) {
        if (letter >= 'A' && letter <= 'Z') letter = static_cast<char>(letter - 'A' + 'a');
    }
    return text;
}

std::string QuotedName(std::string_view name) {
    std::string quoted = "\"";
    for (const char letter : name) {
        quoted += letter;
        if (letter == '"') quoted += letter;
    }
    return quoted + '"';
}

}  // namespace

GeneradorClaves::GeneradorClaves(Ref<Connection> connection) : connection_(std::move(connection)) {}

Ref<GeneradorClaves> GeneradorClaves::On(Ref<Connection> connection) {
    Ref<GeneradorClaves> generator(new GeneradorClaves(std::move(connection)));
    // Weak, since the generator holds the connection.
    const std::weak_ptr<GeneradorClaves> weak = generator;
    generator->connection_->WatchCommit(
        [weak] {
            if (const auto held = weak.lock()) held->SaveCounters();
        },
        [weak] {
            if (const auto held = weak.lock()) held->ForgetTransaction();
        });
    return generator;
}

std::int32_t GeneradorClaves::ProximaClave(const std::string& tabla) {
    Counter& counter = CounterOf(tabla);
    if (connection_->TransactionMeant()) {
        const std::int64_t key = NextInTransaction(tabla, counter);
        counter.inTransaction = key;
        counter.handedOut = key;
    } else {
        counter.handedOut = NextAtOnce(tabla, counter);
    }
    return static_cast<std::int32_t>(counter.handedOut);
}

GeneradorClaves::Counter& GeneradorClaves::CounterOf(const std::string& tabla) {
    if (asked_ == nullptr || asked_->first != tabla) {
        asked_ = &*spelled_.try_emplace(tabla, nullptr).first;
        if (asked_->second == nullptr) asked_->second = &counters_[InSmallLetters(tabla)];
    }
    return *asked_->second;
}

std::int64_t GeneradorClaves::NextInTransaction(const std::string& tabla, Counter& counter) {
    const std::int64_t last = counter.inTransaction == 0 ? LastStored(tabla, counter) : counter.inTransaction;
    if (last >= kLargestKey) Zontara::Raise(Zontara::RunTimeError::Overflow);
    return last + 1;
}

std::int64_t GeneradorClaves::LastStored(const std::string& tabla, Counter& counter) {
    if (!counter.read.empty()) {
        try {
            return LastStored(tabla, counter, counter.read);
        } catch (const Zontara::RaisedError& refusal) {
            if (refusal.Number() != kWrongStatement) throw;
            // The table may have changed since: look at it anew.
            counter.read.clear();
        }
    }
    const std::string largest = LargestKeyOf(tabla);
    const std::string read = "SELECT max(?2, " + largest +
                             ", ifnull((SELECT CAST(Ultima_Clave AS INTEGER) FROM Clave WHERE Tabla = ?1), 0))";
    const std::int64_t last = LastStored(tabla, counter, read);
    if (largest != kNoKeys) counter.read = read;
    return last;
}

std::int64_t GeneradorClaves::LastStored(const std::string& tabla, const Counter& counter, const std::string& read) {
    auto stored = connection_->Prepare(read);
    stored.BindKept(1, tabla).Bind(2, counter.handedOut).Step();
    return stored.Int64(0);
}

std::int64_t GeneradorClaves::NextAtOnce(const std::string& tabla, const Counter& counter) {
    auto next = connection_->Prepare(
        "INSERT INTO Clave (Tabla, Ultima_Clave)"
        " SELECT ?1, largest + 1 FROM (SELECT max(?2, " +
        LargestKeyOf(tabla) +
        ") AS largest) WHERE largest < ?3"
        " ON CONFLICT (Tabla) DO UPDATE"
        " SET Ultima_Clave = max(CAST(Clave.Ultima_Clave AS INTEGER) + 1, excluded.Ultima_Clave)"
        " WHERE CAST(Clave.Ultima_Clave AS INTEGER) < ?3"
        " RETURNING Ultima_Clave");
    next.Bind(1, std::string_view(tabla)).Bind(2, counter.handedOut).Bind(3, kLargestKey);
    if (!next.Step()) Zontara::Raise(Zontara::RunTimeError::Overflow);
    const std::int64_t key = next.Int64(0);
    // The statement commits at its end: run there, where a failure is still heard.
    while (next.Step()) {
    }
    return key;
}

/// An SQL expression for the largest key in a table, "0" for a table that is missing or unreadable. Its key is the
/// primary key, or the first column where there is none.
std::string GeneradorClaves::LargestKeyOf(const std::string& tabla) {
    try {
        auto column = connection_->Prepare("SELECT name FROM pragma_table_info(?1) ORDER BY pk <> 1, cid LIMIT 1");
        if (!column.Bind(1, std::string_view(tabla)).Step()) return kNoKeys;
        std::string largest = "CAST(ifnull((SELECT max(" + QuotedName(column.Text(0)) + ") FROM " + QuotedName(tabla) +
                              "), 0) AS INTEGER)";
        connection_->Prepare("SELECT " + largest).Step();
        return largest;
    } catch (const Zontara::RaisedError& refusal) {
        // An interrupt, a full memory or a failing disk says nothing of the table: a key of an empty one would be
        // taken.
        if (refusal.Number() != kWrongStatement) throw;
        return kNoKeys;
    }
}

void GeneradorClaves::SaveCounters() {
    for (const auto& [table, counter] : counters_) {
        if (counter.inTransaction == 0) continue;
        auto save = connection_->Prepare(
            "INSERT INTO Clave (Tabla, Ultima_Clave) VALUES (?1, ?2)"
            " ON CONFLICT (Tabla) DO UPDATE"
            " SET Ultima_Clave = max(CAST(Clave.Ultima_Clave AS INTEGER), excluded.Ultima_Clave)");
        save.BindKept(1, table).Bind(2, counter.inTransaction).Run();
    }
}

void GeneradorClaves::ForgetTransaction() {
    for (auto& [table, counter] : counters_)
        counter.inTransaction = 0;
}

}  // namespace Perluma

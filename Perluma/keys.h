#pragma once

#include "dhRichClient3/connection.h"
#include "frame/neighbours.h"

#include <cstdint>
#include <map>
#include <string>
#include <unordered_map>
#include <utility>

namespace Perluma {

/// Hands out the keys of all tables from the counters in the table `Clave`: one counter a table name, whatever the case
/// of its letters.
///
/// A key is one more than the largest of the stored counter, the largest key in the table, and the last key that this
/// generator gave. So no key comes twice from one generator, even after a rollback, and what others stored is never
/// met. A table that is missing or can't be read for what it is counts as empty; one that the engine fails to read just
/// now, for an interrupt or a failing disk, is an error.
///
/// In a transaction nobody else can store a row, so keys are counted in memory (a key costs a map look-up) and each
/// counter is written once, just before the commit. Outside one, each key is one statement that moves the counter on.
class GeneradorClaves : public Zontara::GeneradorClaves {
public:
    /// A generator on a connection. It takes the connection's place for hearing of commits.
    static Zontara::Ref<GeneradorClaves> On(Zontara::Ref<dhRichClient3::Connection> connection);

    /// The next key, from 1. Error 6 when it would not fit an int32; nothing is changed then. The engine's errors when
    /// the counters can't be read or written, such as 5 for a database that another process keeps locked.
    std::int32_t ProximaClave(const std::string& tabla) override;

private:
    struct Counter {
        /// Last key that was handed out, whatever became of it.
        std::int64_t handedOut = 0;
        /// Last key of the open transaction; 0 when the transaction has asked for none yet.
        std::int64_t inTransaction = 0;
        /// Reads where a transaction counts on, kept once the table could be read.
        std::string read;
    };

    explicit GeneradorClaves(Zontara::Ref<dhRichClient3::Connection> connection);
    Counter& CounterOf(const std::string& tabla);
    std::int64_t NextInTransaction(const std::string& tabla, Counter& counter);
    std::int64_t LastStored(const std::string& tabla, const Counter& counter, const std::string& read);
    std::int64_t LastStored(const std::string& tabla, Counter& counter);
    std::int64_t NextAtOnce(const std::string& tabla, const Counter& counter);
    std::string LargestKeyOf(const std::string& tabla);
    void SaveCounters();
    void ForgetTransaction();

    Zontara::Ref<dhRichClient3::Connection> connection_;
    /// By table name in small letters.
    std::map<std::string, Counter> counters_;
    /// By table name as it was asked for.
    std::unordered_map<std::string, Counter*> spelled_;
    /// The one that was asked for last; an order's lines ask for one table again and again.
    std::pair<const std::string, Counter*>* asked_ = nullptr;
};

}  // namespace Perluma

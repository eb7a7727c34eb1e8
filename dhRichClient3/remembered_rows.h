#pragma once

#include "dhRichClient3/sqlite/table_changes.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace dhRichClient3 {

class RowStore;

/// Rows that a question was answered with, by its text, so that a launch which asks the same thing of a task for each
/// asset reads it once. They are good for as long as no table that the question looks at was changed; who asks sees to
/// it that nobody else can have changed one. A question is remembered from the second time on, and only with a small
/// answer; of those that fall on one set, the one that was asked longest ago gives way.
class RememberedRows {
public:
    explicit RememberedRows(const TableChanges& changes) : changes_(changes) {}

    /// The rows of a text that are still good; none if there are none.
    std::shared_ptr<const RowStore> Find(std::string_view text);
    /// Takes note of rows that were read just now.
    void Keep(std::string_view text, TableSet reads, const std::shared_ptr<const RowStore>& rows);

private:
    struct Slot {
        std::size_t hash = 0;
        /// Empty until the question is asked a second time.
        std::string text;
        std::shared_ptr<const RowStore> rows;
        TableSet reads = 0;
        /// When the rows were read, on the clock of the tables.
        std::uint64_t read = 0;
        /// When the question was asked last, on a clock of the slots' own.
        std::uint64_t asked = 0;
    };
    Slot* SetOf(std::size_t hash) { return &slots_[hash % kSets * kSlotsOfSet]; }

    static constexpr std::size_t kSets = 512;
    static constexpr std::size_t kSlotsOfSet = 4;

    const TableChanges& changes_;
    /// Made when there is something to remember.
    std::vector<Slot> slots_;
    std::uint64_t questions_ = 0;
};

}  // namespace dhRichClient3

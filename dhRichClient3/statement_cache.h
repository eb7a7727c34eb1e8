#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string_view>

namespace dhRichClient3 {

/// Compiled statements that wait for the next one who needs the same text. One is taken out for as long as it is used
/// and put back afterwards, so none is ever used twice at once. Of texts that fall on one set, the one that was put
/// back longest ago gives way. Neither taking nor putting allocates.
template <class T> class StatementCache {
public:
    /// The statement of a text, out of the cache; none if there is none.
    std::unique_ptr<T> Take(std::string_view text) {
        for (Slot& slot : SetOf(text)) {
            if (slot.held && slot.held->text == text) return std::move(slot.held);
        }
        return nullptr;
    }

    /// Puts a statement (back) under its `text`, in the place of one of the same text if there is one.
    void Put(std::unique_ptr<T> statement) {
        Set& set = SetOf(statement->text);
        auto slot = std::find_if(set.begin(), set.end(),
                                 [&](const Slot& known) { return known.held && known.held->text == statement->text; });
        if (slot == set.end()) slot = std::min_element(set.begin(), set.end(), Older);
        slot->stamp = ++clock_;
        slot->held = std::move(statement);
    }

    void Clear() {
        for (Set& set : sets_)
            set = Set{};
    }

private:
    struct Slot {
        std::unique_ptr<T> held;
        std::uint64_t stamp = 0;
    };
    using Set = std::array<Slot, 4>;

    static bool Older(const Slot& left, const Slot& right) {
        return (left.held ? left.stamp : 0) < (right.held ? right.stamp : 0);
    }
    Set& SetOf(std::string_view text) { return sets_[std::hash<std::string_view>()(text) % sets_.size()]; }

    std::array<Set, 64> sets_;
    std::uint64_t clock_ = 0;
};

}  // namespace dhRichClient3

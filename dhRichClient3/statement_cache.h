#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
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
    /// By the length and sixteen letters, half of them in the middle, half at the end: texts are compared whole anyway,
    /// and hashing one whole takes longer than that.
    Set& SetOf(std::string_view text) {
        const auto letters = [&](std::size_t at) {
            std::uint64_t word = 0;
            std::memcpy(&word, text.data() + at, std::min(sizeof word, text.size() - at));
            return word;
        };
        constexpr std::uint64_t kMix = 0x9E3779B97F4A7C15;
        const std::size_t size = text.size();
        const std::uint64_t hash =
            (letters(size / 2) * kMix ^ letters(size - std::min<std::size_t>(size, 8)) ^ size) * kMix;
        return sets_[hash >> (64 - kSetBits)];
    }

    static constexpr int kSetBits = 6;
    std::array<Set, 1 << kSetBits> sets_;
    std::uint64_t clock_ = 0;
};

}  // namespace dhRichClient3

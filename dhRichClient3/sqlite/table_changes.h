#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string_view>

namespace dhRichClient3 {

/// Tables as bits. All tables beyond the first 63 that are heard of share the last bit.
using TableSet = std::uint64_t;

/// What a compiled statement has to do with tables, triggers and views seen through.
struct Reach {
    TableSet reads = 0;
    TableSet writes = 0;
    /// It asks the clock, so that it may answer something else with all tables as they were.
    bool asksTime = false;

    void Add(const Reach& more) {
        reads |= more.reads;
        writes |= more.writes;
        asksTime = asksTime || more.asksTime;
    }
};

/// When tables were last changed through one connection: a count that each change moves on. What is said of others'
/// changes is that everything may have changed.
class TableChanges {
public:
    /// The bit of a table's name as the schema spells it. Doesn't allocate: the engine asks from within.
    TableSet Bit(std::string_view table) noexcept {
        const std::size_t name = std::hash<std::string_view>()(table);
        const auto end = names_.begin() + static_cast<std::ptrdiff_t>(known_);
        const auto place = static_cast<std::size_t>(std::find(names_.begin(), end, name) - names_.begin());
        if (place == known_ && place < kLast) names_[known_++] = name;
        return TableSet{1} << place;
    }

    void Changed(TableSet tables) {
        ++now_;
        ForEach(tables, [this](std::size_t place) { changed_[place] = now_; });
    }
    void ChangedAll() { allChanged_ = ++now_; }

    std::uint64_t Now() const { return now_; }
    bool Same(TableSet tables, std::uint64_t since) const {
        bool same = allChanged_ <= since;
        ForEach(tables, [&](std::size_t place) { same = same && changed_[place] <= since; });
        return same;
    }

private:
    static constexpr std::size_t kLast = 63;

    template <class Do> static void ForEach(TableSet tables, Do act) {
        for (; tables != 0; tables &= tables - 1)
            act(static_cast<std::size_t>(std::countr_zero(tables)));
    }

    /// Hashes of the names that have a bit of their own.
    std::array<std::size_t, kLast> names_{};
    std::size_t known_ = 0;
    std::array<std::uint64_t, kLast + 1> changed_{};
    std::uint64_t allChanged_ = 0;
    std::uint64_t now_ = 0;
};

}  // namespace dhRichClient3

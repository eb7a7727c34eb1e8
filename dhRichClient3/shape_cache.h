#pragma once

#include "dhRichClient3/dialect/shape.h"
#include "dhRichClient3/sqlite/compiled.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>
#include <utility>
#include <vector>

namespace dhRichClient3 {

/// Compiled statements by the shape of the texts that they run; the one that wasn't used for longest gives way. What
/// followed a statement the last time is tried first, so that a run of like rows, each of the same few statements,
/// finds each by one comparison and no allocation.
class ShapeCache {
public:
    struct Kept {
        dialect::Shape shape;
        std::unique_ptr<Compiled> statement;
        /// The one that was used after this one, and when this one was used last.
        Kept* next = nullptr;
        std::uint64_t used = 0;
    };

    /// The statement of a text's shape, with the text's lifted literals at the head of `literals`; none if there is
    /// none.
    Kept* Find(std::string_view text, std::vector<dialect::Literal>& literals) {
        Kept* kept = last_ != nullptr ? last_->next : nullptr;
        if (kept == nullptr || !kept->shape.Matches(text, literals)) {
            const auto found = std::find_if(kept_.begin(), kept_.end(), [&](const auto& each) {
                return each.get() != kept && each->shape.Matches(text, literals);
            });
            if (found == kept_.end()) return nullptr;
            std::rotate(kept_.begin(), found, found + 1);
            kept = kept_.front().get();
            if (last_ != nullptr) last_->next = kept;
        }
        return Used(*kept);
    }

    /// Keeps a statement whose shape isn't there yet.
    Kept& Keep(dialect::Shape shape, std::unique_ptr<Compiled> statement) {
        auto kept = std::make_unique<Kept>(Kept{std::move(shape), std::move(statement)});
        if (kept_.size() == kMost) GiveUpOne();
        kept_.insert(kept_.begin(), std::move(kept));
        return *Used(*kept_.front());
    }

    void Clear() {
        last_ = nullptr;
        kept_.clear();
    }

private:
    static constexpr std::size_t kMost = 200;
    Kept* Used(Kept& kept) {
        kept.used = ++uses_;
        last_ = &kept;
        return &kept;
    }

    void GiveUpOne() {
        const auto oldest = std::min_element(
            kept_.begin(), kept_.end(), [](const auto& left, const auto& right) { return left->used < right->used; });
        const Kept* const gone = oldest->get();
        for (const auto& kept : kept_) {
            if (kept->next == gone) kept->next = nullptr;
        }
        if (last_ == gone) last_ = nullptr;
        kept_.erase(oldest);
    }

    /// Those that were looked for of late in front.
    std::vector<std::unique_ptr<Kept>> kept_;
    Kept* last_ = nullptr;
    std::uint64_t uses_ = 0;
};

}  // namespace dhRichClient3

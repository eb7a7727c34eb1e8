#pragma once

#include "dhRichClient3/dialect/shape.h"
#include "dhRichClient3/sqlite/compiled.h"

#include <algorithm>
#include <cstddef>
#include <memory>
#include <string_view>
#include <utility>
#include <vector>

namespace dhRichClient3 {

/// Compiled statements by the shape of the texts that they run, the one that was used last in front; the one that
/// wasn't used for longest gives way. A run of like statements finds each after a few comparisons and no allocation.
class ShapeCache {
public:
    /// The statement of a text's shape, and the text's lifted literals; none if there is none.
    Compiled* Find(std::string_view text, std::vector<dialect::Literal>& literals) {
        const auto found = std::find_if(kept_.begin(), kept_.end(),
                                        [&](const auto& kept) { return kept->shape.Matches(text, literals); });
        if (found == kept_.end()) return nullptr;
        if (found != kept_.begin()) std::rotate(kept_.begin(), found, found + 1);
        return kept_.front()->statement.get();
    }

    /// Keeps a statement whose shape isn't there yet.
    Compiled& Keep(dialect::Shape shape, std::unique_ptr<Compiled> statement) {
        if (kept_.size() == kMost) kept_.pop_back();
        kept_.insert(kept_.begin(), std::make_unique<Kept>(Kept{std::move(shape), std::move(statement)}));
        return *kept_.front()->statement;
    }

    void Clear() { kept_.clear(); }

private:
    static constexpr std::size_t kMost = 200;
    struct Kept {
        dialect::Shape shape;
        std::unique_ptr<Compiled> statement;
    };

    std::vector<std::unique_ptr<Kept>> kept_;
};

}  // namespace dhRichClient3

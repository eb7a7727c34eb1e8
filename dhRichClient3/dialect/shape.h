#pragma once

#include "dhRichClient3/dialect/literal.h"
#include "dhRichClient3/dialect/tokens.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace dhRichClient3::dialect {

/// What the texts of one statement have in common: a text cut at those of its literals that may be parameters. A text
/// is of the shape if it agrees with it byte for byte but for these literals, each being of the same kind; then it
/// consists of the same tokens but for them.
class Shape {
public:
    /// The shape of a text, `lifted` being the tokens of it that may differ, in order: strings, short whole numbers and
    /// decimal numbers. With `flagsDiffer` a text that holds a 0 or a 1 in the place of one is of another shape.
    Shape(std::string_view text, const std::vector<Token>& lifted, bool flagsDiffer = false);

    /// Whether a text is of this shape; `literals` then begins with what stands in the places of the lifted ones,
    /// `LiftedCount` in all. Costs little more than a comparison of both, and doesn't allocate once `literals` has
    /// room.
    bool Matches(std::string_view text, std::vector<Literal>& literals) const;

    /// The text with a parameter for each lifted literal.
    std::string Text() const;
    std::size_t LiftedCount() const { return cuts_.size(); }

private:
    struct Cut {
        /// Where the literal stands in `rest_`.
        std::size_t at;
        TokenKind kind;
    };

    /// The text without the lifted literals.
    std::string rest_;
    std::vector<Cut> cuts_;
    bool flagsDiffer_;
};

/// The text with a `?` for each of its strings and short whole numbers, all else as it stands.
void ShapeOf(std::string_view text, const std::vector<Token>& tokens, std::string& shape);

}  // namespace dhRichClient3::dialect

#pragma once

#include "dhRichClient3/dialect/tokens.h"

#include <string>
#include <string_view>
#include <vector>

namespace dhRichClient3::dialect {

/// The text with a `?` for each of its literals (strings and short whole numbers), all else as it stands: what texts
/// of one statement have in common. The literals are the tokens that answer `IsLiteral`, in order.
void ShapeOf(std::string_view text, const std::vector<Token>& tokens, std::string& shape);

}  // namespace dhRichClient3::dialect

#include "dhRichClient3/dialect/shape.h"

namespace dhRichClient3::dialect {

void ShapeOf(std::string_view text, const std::vector<Token>& tokens, std::string& shape) {
    shape.clear();
    std::size_t done = 0;
    for (const Token& token : tokens) {
        if (!token.IsLiteral()) continue;
        const auto begin = static_cast<std::size_t>(token.text.data() - text.data());
        shape.append(text, done, begin - done).append(1, '?');
        done = begin + token.text.size();
    }
    shape.append(text, done);
}

}  // namespace dhRichClient3::dialect

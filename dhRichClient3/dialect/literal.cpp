#include "dhRichClient3/dialect/literal.h"

namespace dhRichClient3::dialect {

std::string WithSingleQuotes(std::string_view inside) {
    std::string text;
    text.reserve(inside.size());
    for (std::size_t at = 0; at < inside.size(); ++at) {
        text += inside[at];
        if (inside[at] == '\'') ++at;
    }
    return text;
}

}  // namespace dhRichClient3::dialect

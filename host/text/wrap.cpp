#include "host/text/wrap.h"

#include "host/text/grid.h"

namespace host::text {

std::string Wrapped(std::string_view text, std::size_t width, std::size_t indent) {
    std::string lines;
    std::size_t used = 0;
    while (!text.empty()) {
        const std::size_t from = text.find_first_not_of(" \n");
        if (from == std::string_view::npos) break;
        text.remove_prefix(from);
        const std::string_view word = text.substr(0, text.find_first_of(" \n"));
        const std::size_t length = Length(word);
        if (used > 0 && used + 1 + length > width) {
            lines += '\n';
            used = 0;
        }
        lines += used > 0 ? std::string(1, ' ') : std::string(indent, ' ');
        used += used > 0 ? length + 1 : indent + length;
        lines += word;
        text.remove_prefix(word.size());
    }
    if (used > 0) lines += '\n';
    return lines;
}

}  // namespace host::text

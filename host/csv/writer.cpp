#include "host/csv/writer.h"

namespace host::csv {

std::string Quoted(std::string_view text) {
    std::string quoted = "\"";
    for (const char c : text) {
        if (c == '"') quoted += c;
        quoted += c;
    }
    quoted += '"';
    return quoted;
}

std::string Cell(std::string_view text) {
    const bool bare = text.find_first_of(",;\"\r\n") == std::string_view::npos;
    return bare ? std::string(text) : Quoted(text);
}

void WriteLine(std::ostream& out, const std::vector<std::string>& texts) {
    for (std::size_t i = 0; i < texts.size(); ++i)
        out << (i > 0 ? "," : "") << Cell(texts[i]);
    out << '\n';
}

}  // namespace host::csv

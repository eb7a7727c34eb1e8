#include "host/text/html.h"

namespace host::text {

std::string Html(std::string_view text) {
    std::string escaped;
    escaped.reserve(text.size());
    for (const char c : text) {
        switch (c) {
            case '&':
                escaped += "&amp;";
                break;
            case '<':
                escaped += "&lt;";
                break;
            case '>':
                escaped += "&gt;";
                break;
            case '"':
                escaped += "&quot;";
                break;
            case '\'':
                escaped += "&#39;";
                break;
            default:
                escaped += c;
        }
    }
    return escaped;
}

std::string HtmlLines(std::string_view text) {
    std::string lines;
    for (const char c : Html(text)) {
        if (c == '\r') continue;
        if (c == '\n') lines += "<br>";
        lines += c;
    }
    return lines;
}

}  // namespace host::text

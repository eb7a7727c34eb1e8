#include "host/rpc/json.h"

#include <cctype>
#include <cmath>
#include <cstdlib>

namespace host::rpc {

namespace {

/// An argument that is an object is the deepest that a request holds: request, params, args, argument.
constexpr int kDeepest = 16;

Input Parsed(std::string_view text) {
    const auto keep = [](int depth, Input::parse_event_t event, Input& /*parsed*/) {
        const bool opens = event == Input::parse_event_t::object_start || event == Input::parse_event_t::array_start;
        return !opens || depth < kDeepest;
    };
    return Input::parse(text.begin(), text.end(), keep);
}

bool IsNumberPart(char c) {
    return std::isdigit(static_cast<unsigned char>(c)) != 0 || c == '-' || c == '+' || c == '.' || c == 'e' || c == 'E';
}

/// The text with each number that is beyond a float64 replaced by one that is beyond all other types.
std::string WithinRange(std::string_view text) {
    std::string result;
    bool quoted = false;
    for (std::size_t at = 0; at < text.size();) {
        const char c = text[at];
        const bool number = !quoted && (c == '-' || std::isdigit(static_cast<unsigned char>(c)) != 0);
        std::size_t end = at + 1;
        if (number) {
            while (end < text.size() && IsNumberPart(text[end]))
                ++end;
        } else if (quoted && c == '\\' && end < text.size()) {
            ++end;
        } else if (c == '"') {
            quoted = !quoted;
        }
        const std::string token(text.substr(at, end - at));
        result += number && std::isinf(std::strtod(token.c_str(), nullptr)) ? "1e308" : token;
        at = end;
    }
    return result;
}

}  // namespace

std::optional<Line> ReadLine(std::string_view text) {
    try {
        try {
            return Line{Parsed(text), false};
        } catch (const Input::out_of_range&) {
            return Line{Parsed(WithinRange(text)), true};
        }
    } catch (const Input::exception&) {
        return std::nullopt;
    }
}

std::string WriteLine(const Json& json) { return json.dump(-1, ' ', false, Json::error_handler_t::replace); }

}  // namespace host::rpc

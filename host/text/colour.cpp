#include "host/text/colour.h"

namespace host::text {

namespace {

/// Each stream keeps its own answer, in a place that the standard library reserves for users of streams.
long& Allowed(std::ostream& out) {
    static const int place = std::ios_base::xalloc();
    return out.iword(place);
}

std::string_view CodeOf(Tone tone) {
    switch (tone) {
        case Tone::Strong:
            return "1";
        case Tone::Faint:
            return "2";
        case Tone::Good:
            return "32";
        case Tone::Warning:
            return "33";
        case Tone::Bad:
            return "31";
        case Tone::Plain:
            break;
    }
    return {};
}

}  // namespace

bool IsDumb(const char* term) { return term == nullptr || *term == '\0' || std::string_view(term) == "dumb"; }

bool WantsColour(bool terminal, const char* noColour, const char* term) {
    const bool switchedOff = noColour != nullptr && *noColour != '\0';
    return terminal && !switchedOff && !IsDumb(term);
}

void AllowColour(std::ostream& out, bool allow) { Allowed(out) = allow ? 1 : 0; }

bool AllowsColour(std::ostream& out) { return Allowed(out) != 0; }

std::string Paint(std::ostream& out, Tone tone, std::string_view text) {
    const std::string_view code = CodeOf(tone);
    if (code.empty() || text.empty() || !AllowsColour(out)) return std::string(text);
    std::string painted = "\x1b[";
    painted.append(code).append("m").append(text).append("\x1b[0m");
    return painted;
}

}  // namespace host::text

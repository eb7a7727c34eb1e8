#include "host/text/colour.h"

#include <gtest/gtest.h>

#include <sstream>

namespace {

using host::text::AllowColour;
using host::text::AllowsColour;
using host::text::Paint;
using host::text::Tone;
using host::text::WantsColour;

struct Case {
    const char* label;
    bool terminal;
    const char* noColour;
    const char* term;
    bool wanted;
};

TEST(Colour, IsForTerminalsThatHaveItAndUsersWhoDontRefuseIt) {
    const Case cases[] = {
        {"a terminal", true, nullptr, "xterm", true},
        {"a pipe", false, nullptr, "xterm", false},
        {"refused", true, "1", "xterm", false},
        {"refused with any word", true, "false", "xterm", false},
        {"set to nothing", true, "", "xterm", true},
        {"a dumb terminal", true, nullptr, "dumb", false},
        {"an unknown terminal", true, nullptr, nullptr, false},
        {"a terminal without a name", true, nullptr, "", false},
    };
    for (const Case& each : cases) {
        EXPECT_EQ(WantsColour(each.terminal, each.noColour, each.term), each.wanted) << each.label;
    }
}

TEST(Colour, AStreamIsPlainUntilItIsAllowed) {
    std::ostringstream out;
    EXPECT_FALSE(AllowsColour(out));
    EXPECT_EQ(Paint(out, Tone::Warning, "no"), "no");
    AllowColour(out);
    EXPECT_EQ(Paint(out, Tone::Warning, "no"), "\x1b[33mno\x1b[0m");
    EXPECT_EQ(Paint(out, Tone::Plain, "no"), "no");
    EXPECT_EQ(Paint(out, Tone::Bad, ""), "");
    AllowColour(out, false);
    EXPECT_EQ(Paint(out, Tone::Warning, "no"), "no");
}

}  // namespace

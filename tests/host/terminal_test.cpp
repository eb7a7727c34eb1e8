#include "tests/host/run.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>
#include <array>
#include <string>

namespace {

using host_test::Folder;
using host_test::MakeSmallPlant;
using testing::HasSubstr;
using testing::Not;

/// What the program writes to a terminal of its own when a shell runs it with these settings.
std::string OnATerminal(const std::string& settings, const std::string& words) {
    const std::string line = "env -u NO_COLOR TERM=xterm " + settings + " '" ZONTARA_PROGRAM "' " + words;
    int terminal = -1;
    const pid_t child = forkpty(&terminal, nullptr, nullptr, nullptr);
    if (child == 0) {
        execl("/bin/sh", "sh", "-c", line.c_str(), nullptr);
        _exit(127);
    }
    std::string written;
    std::array<char, 4096> buffer{};
    for (ssize_t n = 0; (n = read(terminal, buffer.data(), buffer.size())) > 0;)
        written.append(buffer.data(), static_cast<std::size_t>(n));
    close(terminal);
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_EQ(WEXITSTATUS(status), 0) << written;
    return written;
}

TEST(Terminal, TablesAreColouredUnlessTheUserOrTheTerminalDoesWithout) {
    const Folder folder;
    const std::string words = "overdue '" + MakeSmallPlant(folder) + "' --on 2026-01-06";
    EXPECT_THAT(OnATerminal("", words), HasSubstr("\x1b[1mAsset\x1b[0m"));
    for (const char* settings : {"NO_COLOR=1", "TERM=dumb", "TERM="}) {
        const std::string written = OnATerminal(settings, words);
        EXPECT_THAT(written, HasSubstr("Asset")) << settings;
        EXPECT_THAT(written, Not(HasSubstr("\x1b"))) << settings;
    }
    EXPECT_THAT(OnATerminal("", words + " --json"), Not(HasSubstr("\x1b")));
    EXPECT_THAT(OnATerminal("", words + " | cat"), Not(HasSubstr("\x1b")));
}

TEST(Terminal, ADumbOneGetsNoProgressBar) {
    const Folder folder;
    const std::string words = "launch '" + MakeSmallPlant(folder) + "' --date 2026-01-05 --kind all";
    EXPECT_THAT(OnATerminal("TERM=dumb", words), Not(HasSubstr("\x1b")));
}

}  // namespace

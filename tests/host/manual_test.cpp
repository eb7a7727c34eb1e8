#include "host/program.h"

#include "tests/host/run.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <regex>

namespace {

using host_test::Commands;
using host_test::Folder;
using host_test::Zontara;
using testing::HasSubstr;

std::string InSource(const std::string& file) {
    std::ifstream in(ZONTARA_SOURCE_DIR "/" + file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

/// The options that a command's help lists.
std::vector<std::string> OptionsOf(const std::string& command) {
    const std::string help = Zontara({command, "--help"}).out;
    const std::regex option("\n  (?:-[a-z],)?(--[a-z-]+)");
    std::vector<std::string> options;
    for (std::sregex_iterator at(help.begin(), help.end(), option), end; at != end; ++at)
        options.push_back((*at)[1]);
    return options;
}

/// The manual page's text on one command.
std::string SectionOf(const std::string& page, const std::string& command) {
    const std::size_t from = page.find("\n.SS zontara " + command + " ");
    if (from == std::string::npos) return {};
    return page.substr(from, page.find("\n.S", from + 1) - from);
}

/// What bash completes the last of these words with.
std::string Completed(const Folder& folder, const std::string& words) {
    folder.Write("zontara.bash", Zontara({"completion"}).out);
    folder.Write("try.bash", "source '" + folder / "zontara.bash" + "'\nCOMP_WORDS=(zontara " + words +
                                 ")\nCOMP_CWORD=$((${#COMP_WORDS[@]} - 1))\n_zontara\necho \"${COMPREPLY[@]}\" >'" +
                                 folder / "completed" + "'\n");
    EXPECT_EQ(std::system(("bash '" + folder / "try.bash" + "'").c_str()), 0);
    return folder.Read("completed");
}

TEST(Manual, ThePageAndTheCompletionThatAreInstalledAreTheProgramsOwn) {
    EXPECT_EQ(InSource("docs/zontara.1"), Zontara({"manual"}).out) << "write it anew with `zontara manual`";
    EXPECT_EQ(InSource("host/manual/zontara.bash"), Zontara({"completion"}).out)
        << "write it anew with `zontara completion`";
}

TEST(Manual, HoldsEachCommandAndOptionOfTheHelp) {
    const std::string page = Zontara({"manual"}).out;
    ASSERT_GT(Commands().size(), 15u);
    for (const std::string& command : Commands()) {
        const std::string section = SectionOf(page, command);
        ASSERT_NE(section, "") << command;
        EXPECT_THAT(section, HasSubstr("zontara " + command)) << command;
        const std::vector<std::string> options = OptionsOf(command);
        EXPECT_FALSE(options.empty()) << command;
        for (const std::string& option : options) {
            const std::string escaped = std::regex_replace(option, std::regex("-"), "\\-");
            EXPECT_THAT(section, HasSubstr(escaped)) << command;
        }
    }
}

TEST(Manual, IsFormattedWithoutAWarning) {
    if (std::system("command -v man >/dev/null 2>&1 && command -v groff >/dev/null 2>&1") != 0)
        GTEST_SKIP() << "no man is installed, so the page isn't formatted";
    const Folder folder;
    folder.Write("zontara.1", Zontara({"manual"}).out);
    EXPECT_EQ(std::system(("LC_ALL=C.UTF-8 MANWIDTH=80 man --warnings=all -l '" + folder / "zontara.1" + "' >'" +
                           folder / "page" + "' 2>'" + folder / "warnings" + "'")
                              .c_str()),
              0);
    EXPECT_EQ(folder.Read("warnings"), "");
    EXPECT_THAT(folder.Read("page"), HasSubstr("NO_COLOR"));
}

TEST(Completion, KnowsCommandsOptionsAndChoices) {
    const Folder folder;
    EXPECT_EQ(Completed(folder, "la"), "launch\n");
    EXPECT_EQ(Completed(folder, "over"), "overdue\n");
    EXPECT_EQ(Completed(folder, "lint plant.db --w"), "--weekday\n");
    EXPECT_EQ(Completed(folder, "launch plant.db --kind m"), "meter\n");
    EXPECT_EQ(Completed(folder, "sheet plant.db --lang ''"), "es en\n");
    EXPECT_EQ(Completed(folder, "lint pl"), "\n") << "a file is bash's own affair";
}

}  // namespace

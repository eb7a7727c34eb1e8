#include "host/program.h"
#include "host/story/story.h"

#include "tests/host/run.h"

#include <gtest/gtest.h>

#include <sys/wait.h>
#include <cstdlib>
#include <filesystem>
#include <set>
#include <sstream>

namespace {

using host_test::Commands;
using host_test::Folder;
using host_test::Zontara;

/// The lines below "Example:" in a command's help.
std::vector<std::string> ExamplesOf(const std::string& command) {
    std::istringstream help(Zontara({command, "--help"}).out);
    std::vector<std::string> examples;
    bool below = false;
    for (std::string line; std::getline(help, line);) {
        if (below && line.rfind("  ", 0) == 0) examples.push_back(line.substr(2));
        below = below || line == "Example:";
    }
    return examples;
}

/// A folder in which the examples run as they stand: with the program in reach and the sample plant's files.
class Examples : public testing::Test {
protected:
    Examples() {
        std::filesystem::create_directory(folder_ / "bin");
        std::filesystem::create_symlink(ZONTARA_PROGRAM, folder_ / "bin/zontara");
        std::filesystem::create_directory(folder_ / "my-plant");
        for (const auto& file : std::filesystem::directory_iterator(host::story::PlantFolder())) {
            if (file.path().extension() == ".csv")
                std::filesystem::copy_file(file.path(), folder_.Path() / "my-plant" / file.path().filename());
        }
    }

    /// Runs a line in bash; its exit status.
    int Run(const std::string& line) {
        folder_.Write("example.bash", "cd '" + folder_.Path().string() + "' && PATH='" + folder_ / "bin" +
                                          "':$PATH\nset -o pipefail\n" + line + "\n");
        const int ended = std::system(
            ("bash '" + folder_ / "example.bash" + "' >'" + folder_ / "said" + "' 2>&1 </dev/null").c_str());
        return WIFEXITED(ended) ? WEXITSTATUS(ended) : -1;
    }

    Folder folder_;
};

TEST_F(Examples, OfEachCommandRunAsTheyStand) {
    for (const std::string& command : Commands()) {
        // A year of launches is a test of its own.
        if (command == "demo") continue;
        const std::vector<std::string> examples = ExamplesOf(command);
        EXPECT_FALSE(examples.empty()) << command;
        for (const std::string& example : examples) {
            const int expected = command == "lint" ? host::kFindings : host::kDone;
            EXPECT_EQ(Run(example), expected) << example << '\n' << folder_.Read("said");
        }
    }
}

using ExamplesLong = Examples;

TEST_F(ExamplesLong, OfTheDemoRunAsTheyStand) {
    ASSERT_EQ(ExamplesOf("demo").size(), 1u);
    EXPECT_EQ(Run(ExamplesOf("demo").front()), host::kDone) << folder_.Read("said");
}

}  // namespace

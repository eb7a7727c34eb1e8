#include "tests/rpc/program.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

using namespace support;

namespace {

/// The first block of the scripting guide in a language.
std::string BlockOf(const std::string& language) {
    const std::string guide = ReadFile(std::string(ZONTARA_SOURCE_DIR) + "/docs/scripting.md");
    const std::string fence = "```" + language + "\n";
    const std::size_t begin = guide.find(fence);
    EXPECT_NE(begin, std::string::npos) << language;
    const std::size_t end = guide.find("```\n", begin + fence.size());
    return guide.substr(begin + fence.size(), end - begin - fence.size());
}

/// Runs a block as a reader would, with the program on the path.
void ExpectPrintsWhatTheGuideSays(const std::string& language, const std::string& interpreter) {
    if (!HasProgram(interpreter)) GTEST_SKIP() << "there is no " << interpreter << " here";
    const Folder folder;
    WriteFile(folder / "session", BlockOf(language));
    const std::string programs = std::filesystem::path(ZONTARA_PROGRAM).parent_path().string();
    const Ran ran = RunCommand("PATH='" + programs + "':\"$PATH\" " + interpreter + " " + folder / "session");
    EXPECT_EQ(ran.status, 0) << ran.err;
    EXPECT_EQ(ran.out, BlockOf("text"));
}

TEST(ScriptingGuide, PythonSessionPrintsWhatTheGuideSays) { ExpectPrintsWhatTheGuideSays("python", "python3"); }

TEST(ScriptingGuide, NodeSessionPrintsWhatTheGuideSays) { ExpectPrintsWhatTheGuideSays("javascript", "node"); }

}  // namespace

#include "tests/fuzz/rpc_lines.h"
#include "tests/rpc/program.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

namespace {

TEST(FuzzCorpus, IsAnsweredWithoutAFinding) {
    std::vector<std::string> paths;
    for (const auto& entry :
         std::filesystem::directory_iterator(std::string(ZONTARA_SOURCE_DIR) + "/tests/fuzz/corpus/rpc")) {
        paths.push_back(entry.path().string());
    }
    std::sort(paths.begin(), paths.end());
    ASSERT_GE(paths.size(), 20U);
    for (const std::string& path : paths) {
        SCOPED_TRACE(path);
        fuzz::Feed(support::ReadFile(path));
    }
}

TEST(FuzzInput, ReachesThePlant) {
    EXPECT_FALSE(fuzz::OpensTheDoor(R"({"jsonrpc":"2.0","method":"query","params":{"sql":"execute"}})"));
    EXPECT_TRUE(fuzz::OpensTheDoor(R"({"method":"exe\u0063ute"})"));
}

}  // namespace

#include "tests/fuzz/csv_text.h"
#include "tests/fuzz/date_text.h"
#include "tests/fuzz/report_text.h"
#include "tests/fuzz/statement_text.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace faults {
namespace {

struct Target {
    const char* name;
    void (*feed)(std::string_view input);
};

class CorpusTest : public testing::TestWithParam<Target> {};

TEST_P(CorpusTest, IsFedWithoutAFinding) {
    std::vector<std::filesystem::path> inputs;
    for (const auto& entry : std::filesystem::directory_iterator(std::string(ZONTARA_SOURCE_DIR) +
                                                                 "/tests/fuzz/corpus/" + GetParam().name)) {
        inputs.push_back(entry.path());
    }
    std::sort(inputs.begin(), inputs.end());
    ASSERT_GE(inputs.size(), 7U);
    for (const auto& path : inputs) {
        std::ifstream file(path, std::ios::binary);
        const std::string input{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
        SCOPED_TRACE(path.string());
        GetParam().feed(input);
    }
}

INSTANTIATE_TEST_SUITE_P(Targets, CorpusTest,
                         testing::Values(Target{"date", fuzz::FeedDate}, Target{"csv", fuzz::FeedCsv},
                                         Target{"statement", fuzz::FeedStatement}, Target{"report", fuzz::FeedReport}),
                         [](const auto& parameter) { return std::string(parameter.param.name); });

}  // namespace
}  // namespace faults

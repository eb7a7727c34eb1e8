#include "catalogues/CMaterialGama.h"
#include "errors/HuntERR31.h"
#include "frame/raised_error.h"
#include "tests/support/world.h"

#include <gtest/gtest.h>

#include <fstream>
#include <regex>
#include <sstream>
#include <string>

namespace errors_test {
namespace {

using namespace Zontara;

std::string ContentOf(const std::string& path) {
    std::ifstream file(ZONTARA_SOURCE_DIR "/" + path, std::ios::binary);
    std::ostringstream content;
    content << file.rdbuf();
    EXPECT_FALSE(content.str().empty()) << path;
    return content.str();
}

/// The lines between the first pair of fences of a page.
std::string FencedBlock(const std::string& page) {
    const std::string fence = "```text\n";
    const std::size_t start = page.find(fence) + fence.size();
    return page.substr(start, page.find("```", start) - start);
}

/// A report as a page shows it: plain line breaks, and no blanks at the ends of lines.
std::string AsShown(const std::string& report) { return std::regex_replace(report, std::regex(" *\r\n"), "\n"); }

TEST(ReadingAnErrorReport, ShowsTheReportThatTheComponentWrites) {
    support::World world;
    world.Run("ALTER TABLE Gama DROP COLUMN Tiempo_Necesario");
    const ErrorRecord raised =
        support::ErrorOf([] { std::make_shared<CMaterialGama>()->AsignarManoObraAOT(4711, 12); });
    EXPECT_EQ(raised.number, vbObjectError + 1);
    EXPECT_EQ(FencedBlock(ContentOf("docs/reading-an-error-report.md")), AsShown(raised.description));
}

TEST(ErrorNumbersPage, HasARowForEveryRunTimeError) {
    const std::string page = ContentOf("docs/error-numbers.md");
    const std::string header = ContentOf("3DataAccess_Preventivo/frame/raised_error.h");
    const std::size_t start = header.find("enum class RunTimeError");
    const std::string numbers = header.substr(start, header.find("};", start) - start);
    const std::regex row("[A-Za-z]+ = ([0-9]+),");
    int count = 0;
    for (std::sregex_iterator it(numbers.begin(), numbers.end(), row), end; it != end; ++it, ++count) {
        const auto number = static_cast<RunTimeError>(std::stoi((*it)[1]));
        EXPECT_NE(page.find("\n| " + (*it)[1].str() + " | " + TextOf(number) + " |"), std::string::npos) << (*it)[0];
    }
    EXPECT_GE(count, 14);
}

TEST(ErrorNumbersPage, HasARowForEveryCodeOfTheEngine) {
    const std::string page = ContentOf("docs/error-numbers.md");
    for (int code = 1; code <= 28; ++code) {
        const std::string row = "\n| " + std::to_string(vbObjectError + code) + " | " + std::to_string(code) + " |";
        EXPECT_NE(page.find(row), std::string::npos) << row;
    }
}

TEST(ErrorNumbersPage, TellsTheModulesOwnNumberAndTheUserBand) {
    const std::string page = ContentOf("docs/error-numbers.md");
    for (const std::int32_t number :
         {HuntERR31::ERR_GENERAL, HuntERR31::kLowestUserError, HuntERR31::kHighestUserError, vbObjectError}) {
        EXPECT_NE(page.find(std::to_string(number)), std::string::npos) << number;
    }
}

}  // namespace
}  // namespace errors_test

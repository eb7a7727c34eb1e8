// The library as it is installed: what a consumer finds, builds with and sees.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

#include <unistd.h>

namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;
using testing::Not;

struct Finished {
    int status;
    std::string output;
};

Finished Shell(const std::string& command) {
    Finished finished{-1, {}};
    FILE* pipe = popen((command + " 2>&1").c_str(), "r");
    if (pipe == nullptr) return finished;
    std::array<char, 4096> buffer{};
    while (const std::size_t read = fread(buffer.data(), 1, buffer.size(), pipe))
        finished.output.append(buffer.data(), read);
    finished.status = pclose(pipe);
    return finished;
}

/// The library installed into a folder of its own, once for all tests.
class PackageTest : public testing::Test {
protected:
    static void SetUpTestSuite() {
        prefix = fs::temp_directory_path() / ("zontara-package-" + std::to_string(getpid()));
        installed = Shell("cmake --install " ZONTARA_LIBRARY_BUILD " --prefix " + prefix.string());
    }
    static void TearDownTestSuite() { fs::remove_all(prefix); }

    void SetUp() override { ASSERT_EQ(installed.status, 0) << installed.output; }

    static std::string Library() {
        for (const auto& entry : fs::recursive_directory_iterator(prefix)) {
            if (entry.path().filename() == "libZontara.so") return entry.path().string();
        }
        return "libZontara.so was not installed";
    }

    static fs::path prefix;
    static Finished installed;
};

fs::path PackageTest::prefix;
Finished PackageTest::installed;

const char* const kConsumerSays =
    "classes 16\n"
    "same object 1\n"
    "user 7\n"
    "rule 1\n"
    "error 91 ";

TEST_F(PackageTest, FindPackageBuildsAConsumer) {
    const fs::path build = prefix / "consumer";
    const Finished configured =
        Shell("cmake -S " ZONTARA_SOURCE_DIR "/tests/package/consumer -B " + build.string() +
              " -DCMAKE_PREFIX_PATH=" + prefix.string() + " -DCMAKE_CXX_FLAGS='" ZONTARA_FLAGS "'");
    ASSERT_EQ(configured.status, 0) << configured.output;
    const Finished built = Shell("cmake --build " + build.string());
    ASSERT_EQ(built.status, 0) << built.output;
    const Finished ran = Shell((build / "consumer").string());
    EXPECT_EQ(ran.status, 0) << ran.output;
    EXPECT_THAT(ran.output, HasSubstr(kConsumerSays));
    EXPECT_THAT(ran.output, HasSubstr("No session is open"));
}

TEST_F(PackageTest, PkgConfigBuildsAConsumer) {
    const fs::path lib = fs::path(Library()).parent_path();
    const std::string program = (prefix / "by-pkg-config").string();
    const Finished built =
        Shell("c++ " ZONTARA_SOURCE_DIR "/tests/package/consumer/main.cpp -o " + program +
              " " ZONTARA_FLAGS " $(PKG_CONFIG_PATH=" + (lib / "pkgconfig").string() +
              " pkg-config --define-variable=prefix=" + prefix.string() + " --cflags --libs zontara)");
    ASSERT_EQ(built.status, 0) << built.output;
    const Finished ran = Shell("LD_LIBRARY_PATH=" + lib.string() + " " + program);
    EXPECT_EQ(ran.status, 0) << ran.output;
    EXPECT_THAT(ran.output, HasSubstr(kConsumerSays));
}

TEST_F(PackageTest, ShowsOnlyWhatAUserNeeds) {
    const Finished symbols = Shell("nm -DC --defined-only " + Library());
    ASSERT_EQ(symbols.status, 0) << symbols.output;
    for (const char* entry : {"DllRegisterServer", "DllUnregisterServer", "DllGetClassObject", "DllCanUnloadNow",
                              "Zontara::CBoletin::Borrar(int)", "typeinfo for Zontara::RaisedError",
                              "Zontara::InstallProvider(", "Zontara::Descriptor()"}) {
        EXPECT_THAT(symbols.output, HasSubstr(entry));
    }
    std::istringstream lines(symbols.output);
    for (std::string line; std::getline(lines, line);) {
        for (const char* inside :
             {"HuntERR31::", "Libreria::", "LifeWatcher", "(anonymous namespace)", "trap_detail::", "sqlite3_"}) {
            EXPECT_THAT(line, Not(HasSubstr(inside)));
        }
    }
}

TEST_F(PackageTest, PublicHeadersStandOnTheirOwn) {
    const fs::path include = fs::path(Library()).parent_path().parent_path() / "include" / "zontara";
    const fs::path headers = fs::exists(include) ? include : prefix / "include" / "zontara";
    std::ofstream all(prefix / "all.sh");
    int count = 0;
    for (const auto& entry : fs::recursive_directory_iterator(headers)) {
        if (entry.path().extension() != ".h") continue;
        ++count;
        all << "#include \"" << fs::relative(entry.path(), headers).string() << "\"\n";
    }
    all.close();
    EXPECT_GE(count, 33);
    const Finished compiled =
        Shell("c++ -x c++ -std=c++20 -fsyntax-only -I" + headers.string() + " " + (prefix / "all.sh").string());
    EXPECT_EQ(compiled.status, 0) << compiled.output;
}

}  // namespace

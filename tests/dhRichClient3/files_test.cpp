#include "tests/dhRichClient3/engine_support.h"

#include <gmock/gmock.h>

#include <atomic>
#include <chrono>
#include <cstdlib>
#include <fstream>
#include <thread>

#ifndef _WIN32
#include <unistd.h>
#endif

namespace dhRichClient3 {
namespace {

using support::ErrorOf;
using support::OnFile;
using support::RowsOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using Mode = Options::Mode;

struct FilesTest : ::testing::Test {
    support::TempFolder folder;
    std::string file = folder.File("plant.db");

    void Make() { OnFile(file, Mode::Create)->RunScript("CREATE TABLE t(a); INSERT INTO t VALUES(1)"); }
    void Write(const std::string& content) { std::ofstream(file, std::ios::binary) << content; }
    /// Opening must fail, with this code, in a text that names the file and says this.
    void ExpectRefusal(Mode mode, std::int32_t number, const std::string& says) {
        const auto error = ErrorOf([&] { OnFile(file, mode); });
        EXPECT_EQ(error.number, number) << error.description;
        EXPECT_EQ(error.source, "dhRichClient3");
        EXPECT_EQ(error.description, "The database \"" + file + "\" " + says);
    }
};

TEST_F(FilesTest, AMissingFileIsNotMadeUnlessThatIsAsked) {
    ExpectRefusal(Mode::Existing, support::kCantOpen, "does not exist. Check the path, or create the database first.");
    ExpectRefusal(Mode::ReadOnly, support::kCantOpen, "does not exist. Check the path, or create the database first.");
    EXPECT_FALSE(std::filesystem::exists(file));
    Make();
    EXPECT_TRUE(std::filesystem::exists(file));
    EXPECT_THAT(RowsOf(OnFile(file), "SELECT a FROM t"), ElementsAre("1"));
    EXPECT_THAT(RowsOf(OnFile(file, Mode::Create), "SELECT a FROM t"), ElementsAre("1"));
}

TEST_F(FilesTest, AMissingFolderIsNotMade) {
    file = folder.File("nowhere") + "/plant.db";
    ExpectRefusal(Mode::Create, support::kCantOpen, "can't be opened: its folder does not exist. Check the path.");
}

TEST_F(FilesTest, AFolderIsNoDatabase) {
    file = folder.Path();
    ExpectRefusal(Mode::Create, support::kCantOpen, "can't be opened: it is a folder. Give the path of a file.");
}

TEST_F(FilesTest, AnEmptyPathNamesNothing) {
    const auto error = ErrorOf([] { Connection::Open(""); });
    EXPECT_EQ(error.number, support::kCantOpen);
    EXPECT_EQ(error.description, "No database is named. Give the path of a file, or :memory:.");
}

TEST_F(FilesTest, GarbageIsNoDatabaseAndStaysAsItIs) {
    for (const Mode mode : {Mode::Existing, Mode::Create, Mode::ReadOnly}) {
        for (const auto& content :
             {std::string("x"), std::string("These are a planner's notes."), std::string(4096, '\0')}) {
            Write(content);
            ExpectRefusal(mode, support::kNoDatabase,
                          "is no SQLite database. Check the path, or restore the file from a copy.");
            EXPECT_EQ(std::filesystem::file_size(file), content.size());
        }
    }
}

TEST_F(FilesTest, ADamagedDatabaseIsRefused) {
    Make();
    std::string content(100, 'z');
    content.replace(0, 16, std::string_view("SQLite format 3\0", 16));
    Write(content);
    ExpectRefusal(Mode::Existing, support::kNoDatabase,
                  "is no SQLite database. Check the path, or restore the file from a copy.");
}

TEST_F(FilesTest, ATruncatedDatabaseIsRefusedAsDamaged) {
    Make();
    std::filesystem::resize_file(file, std::filesystem::file_size(file) / 2);
    ExpectRefusal(Mode::Existing, support::Code(11), "is damaged. Restore the file from a copy.");
}

TEST_F(FilesTest, AnEmptyFileIsAnEmptyDatabase) {
    Write("");
    const auto connection = OnFile(file);
    connection->RunScript("CREATE TABLE t(a)");
    EXPECT_THAT(RowsOf(connection, "SELECT name FROM sqlite_schema"), ElementsAre("t"));
}

TEST_F(FilesTest, APathIsNeverReadAsAUri) {
    const auto before = std::filesystem::current_path();
    std::filesystem::current_path(folder.Path());
    OnFile("file:x.db?mode=memory", Mode::Create)->RunScript("CREATE TABLE t(a)");
    const bool made = std::filesystem::exists("file:x.db?mode=memory");
    std::filesystem::current_path(before);
    EXPECT_TRUE(made);
}

TEST_F(FilesTest, FilesAreInWalModeAndSafeAgainstPowerCuts) {
    Make();
    const auto connection = OnFile(file);
    const std::pair<std::string, std::string> cases[] = {
        {"PRAGMA journal_mode", "wal"},
        {"PRAGMA synchronous", "2"},
        {"PRAGMA foreign_keys", "0"},
        {"PRAGMA trusted_schema", "0"},
    };
    for (const auto& [pragma, value] : cases) {
        auto statement = connection->Prepare(pragma);
        ASSERT_TRUE(statement.Step());
        EXPECT_EQ(statement.Text(0), value) << pragma;
    }
}

TEST_F(FilesTest, ReadOnlyReadsAndNeverWrites) {
    Make();
    const auto connection = OnFile(file, Mode::ReadOnly);
    EXPECT_THAT(RowsOf(connection, "SELECT a FROM t"), ElementsAre("1"));
    const auto error = ErrorOf([&] { connection->Ejecutar("DELETE FROM t"); });
    EXPECT_EQ(error.number, support::kReadOnly);
    EXPECT_EQ(error.description, "attempt to write a readonly database");
    EXPECT_THAT(RowsOf(connection, "SELECT a FROM t"), ElementsAre("1"));
}

TEST_F(FilesTest, ALockedDatabaseIsRefusedAfterTheWait) {
    Make();
    const auto other = OnFile(file);
    other->RunScript(
        "PRAGMA journal_mode=DELETE; PRAGMA locking_mode=EXCLUSIVE; BEGIN EXCLUSIVE; INSERT INTO t VALUES(2)");
    for (const Mode mode : {Mode::Existing, Mode::Create, Mode::ReadOnly}) {
        ExpectRefusal(mode, support::kBusy, "is locked by another program. Close that program, or try again later.");
    }
    other->RunScript("COMMIT; PRAGMA locking_mode=NORMAL; SELECT 1 FROM t");
}

TEST_F(FilesTest, AWriterDoesNotKeepOthersFromOpeningAndReading) {
    Make();
    const auto writer = OnFile(file);
    writer->IniciarTrans("");
    writer->Ejecutar("INSERT INTO t VALUES(2)");
    const auto reader = OnFile(file);
    EXPECT_THAT(RowsOf(reader, "SELECT a FROM t"), ElementsAre("1"));
    writer->ConfirmarTrans("");
    EXPECT_THAT(RowsOf(reader, "SELECT a FROM t"), ElementsAre("1", "2"));
}

TEST_F(FilesTest, WritersQueueUpInsteadOfFailing) {
    Make();
    OnFile(file)->Ejecutar("UPDATE t SET a = 0");
    constexpr int kRounds = 40;
    const auto count = [&] {
        const auto connection = OnFile(file, Mode::Existing, 20'000);
        for (int i = 0; i < kRounds; ++i) {
            connection->IniciarTrans("");
            const auto value =
                Zontara::ConvertTo<std::int32_t>(support::Opened(connection, "SELECT a FROM t")->ValorEn(0));
            connection->Ejecutar("UPDATE t SET a = " + std::to_string(value + 1));
            connection->ConfirmarTrans("");
        }
    };
    std::thread other(count);
    count();
    other.join();
    EXPECT_THAT(RowsOf(OnFile(file), "SELECT a FROM t"), ElementsAre(std::to_string(2 * kRounds)));
}

TEST_F(FilesTest, ABeginWaitsAsLongAsItWasToldTo) {
    Make();
    const auto holder = OnFile(file);
    holder->IniciarTrans("");
    const auto waiting = OnFile(file, Mode::Existing, 123);
    const auto begun = std::chrono::steady_clock::now();
    EXPECT_EQ(ErrorOf([&] { waiting->IniciarTrans(""); }).number, support::Code(5));
    EXPECT_GE(std::chrono::steady_clock::now() - begun, std::chrono::milliseconds(123));
    waiting->RevertirTrans("", 0);
    holder->RevertirTrans("", 0);
}

TEST_F(FilesTest, AWriterWithoutAPauseLetsAnotherIn) {
    Make();
    std::atomic<bool> writing{false};
    std::atomic<bool> done{false};
    std::thread greedy([&] {
        const auto connection = OnFile(file, Mode::Existing, 20'000);
        while (!done) {
            connection->IniciarTrans("");
            for (int i = 0; i < 100; ++i)
                connection->Ejecutar("UPDATE t SET a = " + std::to_string(i));
            connection->ConfirmarTrans("");
            writing = true;
        }
    });
    while (!writing)
        std::this_thread::yield();
    const auto other = OnFile(file, Mode::Existing, 5'000);
    const auto write = [&] {
        for (int i = 0; i < 10; ++i) {
            other->IniciarTrans("");
            other->Ejecutar("INSERT INTO t VALUES (" + std::to_string(i) + ")");
            other->ConfirmarTrans("");
        }
    };
    EXPECT_NO_THROW(write());
    done = true;
    greedy.join();
}

TEST_F(FilesTest, TwoCanCreateAtOnce) {
    std::vector<std::thread> threads;
    std::atomic<int> opened = 0;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([&] {
            OnFile(file, Mode::Create, 10'000)->RunScript("CREATE TABLE IF NOT EXISTS t(a); INSERT INTO t VALUES(1)");
            ++opened;
        });
    }
    for (auto& thread : threads)
        thread.join();
    EXPECT_EQ(opened, 4);
    EXPECT_THAT(RowsOf(OnFile(file), "SELECT count(*) FROM t"), ElementsAre("4"));
}

TEST_F(FilesTest, AnUncommittedTransactionIsGoneWithItsConnection) {
    Make();
    {
        const auto connection = OnFile(file);
        connection->IniciarTrans("");
        connection->Ejecutar("INSERT INTO t VALUES(2)");
    }
    EXPECT_THAT(RowsOf(OnFile(file), "SELECT a FROM t"), ElementsAre("1"));
}

#ifndef _WIN32
/// Gives up the rights of the administrator, who may write everywhere, for as long as it lives.
class WithoutRights {
public:
    WithoutRights() { changed_ = geteuid() == 0 && seteuid(65534) == 0; }
    WithoutRights(const WithoutRights&) = delete;
    WithoutRights& operator=(const WithoutRights&) = delete;
    ~WithoutRights() {
        if (changed_ && seteuid(0) != 0) std::abort();
    }

private:
    bool changed_ = false;
};

struct FileRightsTest : FilesTest {
    using perms = std::filesystem::perms;
    static constexpr perms kReadable = perms::owner_read | perms::group_read | perms::others_read;
    static constexpr perms kEnter = perms::owner_exec | perms::group_exec | perms::others_exec;

    /// A database of one file, with no WAL beside it.
    void MakeAlone() {
        OnFile(file, Mode::Create)->RunScript("PRAGMA journal_mode=DELETE; CREATE TABLE t(a); INSERT INTO t VALUES(1)");
        ASSERT_FALSE(std::filesystem::exists(file + "-wal"));
    }
    void ExpectRefusalWithoutRights(Mode mode, std::int32_t number, const std::string& says) {
        const WithoutRights withoutRights;
        ExpectRefusal(mode, number, says);
    }
};

TEST_F(FileRightsTest, AFileThatCannotBeReadIsRefused) {
    MakeAlone();
    std::filesystem::permissions(file, perms::none);
    for (const Mode mode : {Mode::Existing, Mode::ReadOnly}) {
        ExpectRefusalWithoutRights(mode, support::kCantOpen,
                                   "can't be read. Check the permissions of the file and of its folder.");
    }
}

TEST_F(FileRightsTest, AFileThatCannotBeWrittenOpensReadOnlyAlone) {
    MakeAlone();
    std::filesystem::permissions(file, kReadable);
    std::filesystem::permissions(folder.Path(), perms::all);
    ExpectRefusalWithoutRights(Mode::Existing, support::kReadOnly,
                               "may not be written. Check the permissions of the file, or open it read-only.");
    const WithoutRights withoutRights;
    EXPECT_THAT(RowsOf(OnFile(file, Mode::ReadOnly), "SELECT a FROM t"), ElementsAre("1"));
}

TEST_F(FileRightsTest, AFolderThatCannotBeWrittenIsRefused) {
    MakeAlone();
    std::filesystem::permissions(file, perms::all);
    std::filesystem::permissions(folder.Path(), kReadable | kEnter);
    ExpectRefusalWithoutRights(Mode::Existing, support::kCantOpen,
                               "can't be used: its folder can't be written. Check the permissions of the folder.");
    file = folder.File("new.db");
    ExpectRefusalWithoutRights(Mode::Create, support::kCantOpen,
                               "can't be used: its folder can't be written. Check the permissions of the folder.");
}

TEST_F(FileRightsTest, AWalDatabaseInAFolderThatCannotBeWrittenIsExplained) {
    Make();
    std::filesystem::permissions(file, kReadable);
    std::filesystem::permissions(folder.Path(), kReadable | kEnter);
    ExpectRefusalWithoutRights(
        Mode::ReadOnly, support::kCantOpen,
        "can't be read where it is: its folder can't be written. Allow that, or copy it elsewhere.");
}
#endif

}  // namespace
}  // namespace dhRichClient3

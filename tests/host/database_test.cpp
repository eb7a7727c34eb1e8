#include "host/plant.h"

#include "host/program.h"
#include "tests/host/run.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>
#include <array>

namespace {

using host_test::Execute;
using host_test::Folder;
using host_test::MakeSmallPlant;
using host_test::Ran;
using host_test::Scalar;
using host_test::Zontara;
using testing::HasSubstr;

/// Each command that opens a database, with what else it needs.
std::vector<std::vector<std::string>> CommandsOn(const std::string& database, const Folder& folder) {
    return {
        {"import", database, folder.Path().string()},
        {"launch", database, "--date", "2026-01-05"},
        {"reading", database, "A-1", "2000"},
        {"overdue", database},
        {"explain", database, "A-1"},
        {"forecast", database, "--weeks", "1"},
        {"advance", database, "1", "A-1"},
        {"reprogram", database, "1", "A-1"},
    };
}

bool OnlyLooks(const std::string& command) {
    return command == "overdue" || command == "explain" || command == "forecast";
}

TEST(Database, AMissingFileIsRefusedAndNotMade) {
    const Folder folder;
    const std::string database = folder / "none.db";
    for (const auto& words : CommandsOn(database, folder)) {
        SCOPED_TRACE(words[0]);
        const Ran ran = Zontara(words);
        EXPECT_EQ(ran.status, host::kFailed);
        EXPECT_EQ(ran.err, "zontara " + words[0] + ": there is no database " + database +
                               ". Check the path, or make one with `zontara init " + database + "`.\n");
        EXPECT_FALSE(std::filesystem::exists(database));
    }
}

TEST(Database, AFolderIsRefused) {
    const Folder folder;
    for (const auto& words : CommandsOn(folder.Path().string(), folder)) {
        SCOPED_TRACE(words[0]);
        const Ran ran = Zontara(words);
        EXPECT_EQ(ran.status, host::kFailed);
        EXPECT_THAT(ran.err, HasSubstr("is a folder. Name the database inside it."));
    }
}

TEST(Database, AFileThatIsNoDatabaseIsRefusedAndLeftAlone) {
    const Folder folder;
    const std::string text(5000, 'x');
    folder.Write("notes.txt", text);
    for (const auto& words : CommandsOn(folder / "notes.txt", folder)) {
        SCOPED_TRACE(words[0]);
        const Ran ran = Zontara(words);
        EXPECT_EQ(ran.status, host::kFailed);
        EXPECT_THAT(ran.err, HasSubstr("is no SQLite database. Check the path, or restore the file from a copy.\n"));
        EXPECT_EQ(folder.Read("notes.txt"), text);
    }
}

TEST(Database, OneWithoutTheSchemaOrWithHalfOfItIsRefused) {
    const Folder folder;
    folder.Write("other.db", "");
    Execute(folder / "other.db", "CREATE TABLE Song (Title TEXT)");
    folder.Write("half.db", "");
    EXPECT_EQ(Zontara({"init", folder / "half.db"}).status, host::kDone);
    Execute(folder / "half.db", "DROP TABLE Boletin; DROP TABLE Proceso");
    for (const auto& words : CommandsOn(folder / "other.db", folder)) {
        SCOPED_TRACE(words[0]);
        const Ran ran = Zontara(words);
        EXPECT_EQ(ran.status, host::kFailed);
        EXPECT_THAT(ran.err, HasSubstr("is a database of something else: it has none of the tables."));
    }
    for (const auto& words : CommandsOn(folder / "half.db", folder)) {
        SCOPED_TRACE(words[0]);
        const Ran ran = Zontara(words);
        EXPECT_EQ(ran.status, host::kFailed);
        EXPECT_THAT(ran.err, HasSubstr("lacks the tables Proceso, Boletin. Make a new database with `zontara init`."));
    }
}

/// Runs a command in a child process as a user without rights.
Ran AsNobody(const std::vector<std::string>& words) {
    std::array<int, 2> pipe{};
    if (::pipe(pipe.data()) != 0) return {-1, "", "no pipe"};
    const pid_t child = fork();
    if (child == 0) {
        if (geteuid() == 0 && (setgid(65534) != 0 || setuid(65534) != 0)) _exit(99);
        const Ran ran = Zontara(words);
        const ssize_t written = write(pipe[1], ran.err.data(), ran.err.size());
        _exit(written < 0 ? 98 : ran.status);
    }
    close(pipe[1]);
    Ran ran;
    std::array<char, 4096> buffer{};
    for (ssize_t n = 0; (n = read(pipe[0], buffer.data(), buffer.size())) > 0;) {
        ran.err.append(buffer.data(), static_cast<std::size_t>(n));
    }
    close(pipe[0]);
    int status = 0;
    waitpid(child, &status, 0);
    ran.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return ran;
}

TEST(Database, AReadOnlyFileRefusesWritersAndAnswersReaders) {
    const Folder folder;
    const std::string database = MakeSmallPlant(folder);
    chmod(folder.Path().c_str(), 0777);
    chmod(database.c_str(), 0444);
    for (const auto& words : CommandsOn(database, folder)) {
        SCOPED_TRACE(words[0]);
        const Ran ran = AsNobody(words);
        if (OnlyLooks(words[0])) {
            EXPECT_EQ(ran.status, host::kDone) << ran.err;
            continue;
        }
        EXPECT_EQ(ran.status, host::kFailed);
        EXPECT_THAT(ran.err, HasSubstr("may not be written. Check the permissions of the file"));
    }
    chmod(database.c_str(), 0644);
    EXPECT_EQ(Scalar(database, "SELECT count(*) FROM Boletin"), "0");
}

TEST(Database, AFolderThatMayNotBeWrittenRefusesAll) {
    const Folder folder;
    const std::string database = MakeSmallPlant(folder);
    chmod(folder.Path().c_str(), 0555);
    chmod(database.c_str(), 0666);
    for (const auto& words : CommandsOn(database, folder)) {
        SCOPED_TRACE(words[0]);
        const Ran ran = AsNobody(words);
        EXPECT_EQ(ran.status, host::kFailed);
        EXPECT_THAT(ran.err, HasSubstr("its folder can't be written."));
    }
    const Ran made = AsNobody({"init", folder / "new.db"});
    EXPECT_EQ(made.status, host::kFailed);
    EXPECT_THAT(made.err, HasSubstr("its folder can't be written."));
    chmod(folder.Path().c_str(), 0755);
    EXPECT_FALSE(std::filesystem::exists(folder / "new.db"));
}

TEST(Database, AFileThatMayNotBeReadRefusesAll) {
    const Folder folder;
    const std::string database = MakeSmallPlant(folder);
    chmod(folder.Path().c_str(), 0777);
    chmod(database.c_str(), 0000);
    for (const auto& words : CommandsOn(database, folder)) {
        SCOPED_TRACE(words[0]);
        const Ran ran = AsNobody(words);
        EXPECT_EQ(ran.status, host::kFailed);
        EXPECT_THAT(ran.err, HasSubstr("can't be read. Check the permissions of the file and of its folder."));
    }
}

TEST(Database, OneThatAnotherHoldsIsGivenUpAfterTheWaitAndUnchanged) {
    const Folder folder;
    const std::string database = MakeSmallPlant(folder);
    {
        auto other = dhRichClient3::Connection::Open(database);
        other->IniciarTrans("");
        const Ran ran = Zontara({"launch", database, "--date", "2026-01-05"});
        EXPECT_EQ(ran.status, host::kFailed);
        EXPECT_THAT(ran.err, HasSubstr("Another program holds the database. Try again when it has finished."));
        EXPECT_THAT(ran.err, HasSubstr("Nothing was launched."));
        other->RevertirTrans("", 0);
    }
    EXPECT_EQ(Scalar(database, "SELECT count(*) FROM Boletin"), "0");
    EXPECT_EQ(Zontara({"launch", database, "--date", "2026-01-05"}).status, host::kDone);
}

TEST(Database, ReadersAnswerWhileAnotherWrites) {
    const Folder folder;
    const std::string database = MakeSmallPlant(folder);
    auto other = dhRichClient3::Connection::Open(database);
    other->IniciarTrans("");
    other->Ejecutar("DELETE FROM Imputacion_Preventiva");
    const Ran ran = Zontara({"overdue", database, "A-1", "--on", "2026-01-06"});
    EXPECT_EQ(ran.status, host::kDone) << ran.err;
    EXPECT_THAT(ran.out, HasSubstr("overdue by synchronised, conventional"));
    other->RevertirTrans("", 0);
}

TEST(Transaction, IsUndoneUnlessItIsCommitted) {
    const Folder folder;
    const std::string database = MakeSmallPlant(folder);
    {
        host::Plant plant(database, host::Plant::Use::Write);
        {
            host::Transaction transaction(plant);
            plant.Database().Prepare("DELETE FROM Activo").Run();
        }
        EXPECT_FALSE(plant.Database().InTransaction());
        {
            host::Transaction transaction(plant);
            plant.Database().Prepare("DELETE FROM Proceso").Run();
            transaction.Commit();
        }
    }
    EXPECT_EQ(Scalar(database, "SELECT count(*) FROM Activo"), "3");
    EXPECT_EQ(Scalar(database, "SELECT count(*) FROM Proceso"), "0");
}

}  // namespace

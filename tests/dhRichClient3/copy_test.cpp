#include "tests/dhRichClient3/engine_support.h"

#include <gmock/gmock.h>

#include <fstream>
#include <iterator>

namespace dhRichClient3 {
namespace {

using support::ErrorOf;
using support::InMemory;
using support::OnFile;
using support::RowsOf;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Mode = Options::Mode;

/// A plant on a file whose rows are all in the file itself, none in the log beside it.
struct CopyTest : ::testing::Test {
    support::TempFolder folder;
    std::string file = folder.File("plant.db");

    CopyTest() { OnFile(file, Mode::Create)->RunScript("CREATE TABLE t(a); INSERT INTO t VALUES(1)"); }

    Zontara::Ref<Connection> CopyOfFile() const { return OnFile(file, Mode::ReadOnly)->Copy(); }
    std::string Bytes() const {
        std::ifstream stream(file, std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
    }
};

TEST_F(CopyTest, HoldsWhatTheDatabaseHeld) {
    const auto copy = CopyOfFile();
    EXPECT_THAT(RowsOf(copy, "SELECT a FROM t"), ElementsAre("1"));
    EXPECT_THAT(RowsOf(InMemory("CREATE TABLE u(b); INSERT INTO u VALUES(7)")->Copy(), "SELECT b FROM u"),
                ElementsAre("7"));
}

TEST_F(CopyTest, OutlivesTheConnectionItCameFrom) {
    auto source = OnFile(file);
    const auto copy = source->Copy();
    source.reset();
    copy->Ejecutar("INSERT INTO t VALUES(2)");
    EXPECT_THAT(RowsOf(copy, "SELECT a FROM t ORDER BY a"), ElementsAre("1", "2"));
}

TEST_F(CopyTest, WhatIsWrittenToItLeavesTheFileAloneToTheByte) {
    const std::string before = Bytes();
    // A time that no write of this test could set by chance.
    const auto long_ago = std::filesystem::file_time_type::clock::now() - std::chrono::hours(48);
    std::filesystem::last_write_time(file, long_ago);
    {
        const auto copy = CopyOfFile();
        copy->IniciarTrans("");
        copy->Ejecutar("INSERT INTO t VALUES(2)");
        copy->ConfirmarTrans("");
        copy->RunScript("CREATE TABLE u(b)");
        EXPECT_THAT(RowsOf(copy, "SELECT count(*) FROM t"), ElementsAre("2"));
    }
    EXPECT_EQ(Bytes(), before);
    EXPECT_EQ(std::filesystem::last_write_time(file), long_ago);
}

TEST_F(CopyTest, AnotherConnectionWritesWhileTheCopyIsAtWork) {
    const auto source = OnFile(file, Mode::ReadOnly);
    const auto copy = source->Copy();
    copy->IniciarTrans("");
    copy->Ejecutar("INSERT INTO t VALUES(2)");
    const auto other = OnFile(file, Mode::Existing, 0);
    other->IniciarTrans("");
    other->Ejecutar("INSERT INTO t VALUES(3)");
    other->ConfirmarTrans("");
    EXPECT_THAT(RowsOf(copy, "SELECT a FROM t ORDER BY a"), ElementsAre("1", "2"));
    EXPECT_THAT(RowsOf(other, "SELECT a FROM t ORDER BY a"), ElementsAre("1", "3"));
}

TEST_F(CopyTest, IsTakenWhileAnotherConnectionHoldsTheRightToWrite) {
    const auto other = OnFile(file);
    other->IniciarTrans("");
    other->Ejecutar("INSERT INTO t VALUES(3)");
    EXPECT_THAT(RowsOf(CopyOfFile(), "SELECT a FROM t"), ElementsAre("1")) << "as of the last commit";
    other->ConfirmarTrans("");
    EXPECT_THAT(RowsOf(CopyOfFile(), "SELECT a FROM t ORDER BY a"), ElementsAre("1", "3"))
        << "from the log beside the file";
}

TEST_F(CopyTest, IsRefusedInsideATransactionOfItsOwnConnection) {
    const auto source = OnFile(file);
    source->IniciarTrans("");
    EXPECT_EQ(ErrorOf([&] { source->Copy(); }).number, support::kBusy);
    source->RevertirTrans("", 0);
    EXPECT_THAT(RowsOf(source->Copy(), "SELECT a FROM t"), ElementsAre("1"));
}

TEST_F(CopyTest, HasTransactionsOfItsOwn) {
    const auto copy = CopyOfFile();
    copy->IniciarTrans("");
    copy->Ejecutar("DELETE FROM t");
    copy->RevertirTrans("", 0);
    EXPECT_THAT(RowsOf(copy, "SELECT a FROM t"), ElementsAre("1"));
}

TEST_F(CopyTest, KeepsTheDoorAndTheLimits) {
    const auto copy = InMemory("CREATE TABLE t(a)", 1000)->Copy();
    EXPECT_EQ(ErrorOf([&] { copy->Ejecutar("DROP TABLE t"); }).number, support::kRefused);
    EXPECT_EQ(ErrorOf([&] {
                  RowsOf(copy,
                         "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n) SELECT count(*) FROM n");
              }).number,
              support::kInterrupted);
}

TEST_F(CopyTest, OfAnEmptyDatabaseIsEmpty) { EXPECT_THAT(RowsOf(InMemory()->Copy(), "SELECT 1 WHERE 0"), IsEmpty()); }

TEST_F(CopyTest, AProgramThatLocksTheWholeFileIsAnError) {
    const auto other = OnFile(file);
    // Without its log the database is one that a writer must have to itself.
    other->RunScript("PRAGMA journal_mode=DELETE");
    const auto source = OnFile(file, Mode::ReadOnly, 0);
    other->RunScript("BEGIN EXCLUSIVE");
    EXPECT_EQ(ErrorOf([&] { source->Copy(); }).number, support::kBusy);
}

}  // namespace
}  // namespace dhRichClient3

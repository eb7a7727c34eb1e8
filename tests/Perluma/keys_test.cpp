#include "Perluma/keys.h"

#include "tests/Perluma/session_fixture.h"

#include <filesystem>

namespace {

using dhRichClient3::Connection;
using support::ErrorOf;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::int32_t kOverflow = static_cast<std::int32_t>(Zontara::RunTimeError::Overflow);

/// The same claims with and without an open transaction.
class KeysTest : public SessionTest, public testing::WithParamInterface<bool> {
protected:
    KeysTest() {
        if (GetParam()) Begin();
    }
    ~KeysTest() override {
        if (connection->TransactionMeant()) Rollback();
    }
};

INSTANTIATE_TEST_SUITE_P(Transactions, KeysTest, testing::Bool(),
                         [](const auto& test) { return test.param ? "Inside" : "Outside"; });

TEST_P(KeysTest, KeysOfAnEmptyTableCountFromOne) {
    EXPECT_EQ(Key("Boletin"), 1);
    EXPECT_EQ(Key("Boletin"), 2);
    EXPECT_EQ(Key("Gama"), 1);
}

TEST_P(KeysTest, EverySpellingIsOneTable) {
    EXPECT_EQ(Key("Orden_Generada"), 1);
    EXPECT_EQ(Key("orden_generada"), 2);
    EXPECT_EQ(Key("ORDEN_GENERADA"), 3);
    if (GetParam()) Commit();
    EXPECT_THAT(Rows("SELECT lower(Tabla), Ultima_Clave FROM Clave"), ElementsAre("orden_generada|3"));
}

TEST_P(KeysTest, ALargerKeyInTheTableIsPassed) {
    Run("INSERT INTO Lectura_Equipo (SC_Lectura) VALUES (3), (41), (7)");
    EXPECT_EQ(Key("Lectura_Equipo"), 42);
}

TEST_P(KeysTest, TheFirstColumnIsTheKeyOfATableWithoutOne) {
    Run("INSERT INTO Documento_Equipo (SC_Documento_Equipo, Documento_Digital) VALUES (9, 1), (9, 200)");
    EXPECT_EQ(Key("Documento_Equipo"), 10);
}

TEST_P(KeysTest, ALargerStoredCounterIsPassed) {
    Run("INSERT INTO Clave (Tabla, Ultima_Clave) VALUES ('GAMA', 100); INSERT INTO Gama (SC_Gama) VALUES (5)");
    EXPECT_EQ(Key("Gama"), 101);
    if (GetParam()) Commit();
    EXPECT_THAT(Rows("SELECT Tabla, Ultima_Clave FROM Clave"), ElementsAre("GAMA|101"));
}

TEST_P(KeysTest, KeysBelowZeroAndACounterThatIsNoNumberCountAsNone) {
    Run("INSERT INTO Gama (SC_Gama) VALUES (-5); INSERT INTO Clave (Tabla, Ultima_Clave) VALUES ('Gama', 'many')");
    EXPECT_EQ(Key("Gama"), 1);
}

TEST_P(KeysTest, ATableThatIsMissingOrUnreadableOrOddCountsAsEmpty) {
    Run("CREATE VIEW Rota AS SELECT nada FROM ninguna;"
        "CREATE VIEW Revienta AS SELECT abs(-9223372036854775807 - 1) AS SC_Revienta;"
        "CREATE TABLE \"o'dd \"\"name\" (k INTEGER PRIMARY KEY);"
        "INSERT INTO \"o'dd \"\"name\" VALUES (4);"
        "INSERT INTO Equipo (ID_Equipo) VALUES ('E-1')");
    const std::vector<std::pair<std::string, std::int32_t>> cases = {
        {"no_such_table", 1}, {"Rota", 1}, {"Revienta", 1}, {"Equipo", 1}, {"", 1}, {"o'dd \"name", 5}};
    for (const auto& [table, first] : cases) {
        SCOPED_TRACE(table);
        EXPECT_EQ(Key(table), first);
        EXPECT_EQ(Key(table), first + 1);
    }
}

TEST(Keys, ATableThatTakesTooLongToReadIsNoEmptyOne) {
    dhRichClient3::Options options;
    options.stepLimit = 20'000;
    const auto connection = dhRichClient3::Connection::Open(":memory:", options);
    connection->RunScript(
        "CREATE TABLE Clave (Tabla TEXT PRIMARY KEY, Ultima_Clave INTEGER);"
        "CREATE VIEW Eterna AS WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n) SELECT i FROM n");
    const auto keys = Perluma::GeneradorClaves::On(connection);
    EXPECT_EQ(ErrorOf([&] { keys->ProximaClave("Eterna"); }).number, Zontara::vbObjectError + 9);
}

struct FullTable {
    const char* label;
    const char* sql;
};

TEST_P(KeysTest, NoKeyBeyondInt32IsHandedOut) {
    for (const FullTable& full : std::vector<FullTable>{
             {"row", "INSERT INTO Boletin (SC_Boletin) VALUES (2147483647)"},
             {"row beyond", "INSERT INTO Boletin (SC_Boletin) VALUES (3000000000)"},
             {"row above a counter",
              "INSERT INTO Boletin (SC_Boletin) VALUES (2147483647);"
              "INSERT INTO Clave (Tabla, Ultima_Clave) VALUES ('boletin', 5)"},
             {"counter", "INSERT INTO Clave (Tabla, Ultima_Clave) VALUES ('boletin', 2147483647)"},
             {"counter beyond", "INSERT INTO Clave (Tabla, Ultima_Clave) VALUES ('boletin', 9000000000)"}}) {
        SCOPED_TRACE(full.label);
        Run("DELETE FROM Boletin; DELETE FROM Clave");
        Run(full.sql);
        const auto stored = Rows("SELECT * FROM Clave");
        EXPECT_EQ(ErrorOf([&] { Key("Boletin"); }).number, kOverflow);
        EXPECT_EQ(Rows("SELECT * FROM Clave"), stored);
    }
    Run("DELETE FROM Boletin; DELETE FROM Clave");
    EXPECT_EQ(Key("Boletin"), 1);
}

TEST_P(KeysTest, TheLargestKeyIsStillGood) {
    Run("INSERT INTO Clave (Tabla, Ultima_Clave) VALUES ('Boletin', 2147483646)");
    EXPECT_EQ(Key("Boletin"), 2147483647);
    EXPECT_EQ(ErrorOf([&] { Key("Boletin"); }).number, kOverflow);
}

/// Counts the writes to the counters.
class CounterWritesTest : public SessionTest {
protected:
    CounterWritesTest() {
        Run("CREATE TABLE Escritura (Tabla, Ultima_Clave);"
            "CREATE TRIGGER a AFTER INSERT ON Clave BEGIN INSERT INTO Escritura VALUES (NEW.Tabla, NEW.Ultima_Clave); "
            "END;"
            "CREATE TRIGGER b AFTER UPDATE ON Clave BEGIN INSERT INTO Escritura VALUES (NEW.Tabla, NEW.Ultima_Clave); "
            "END;");
    }
};

TEST_F(CounterWritesTest, ATransactionWritesEachCounterOnceAtItsCommit) {
    Begin();
    for (int i = 0; i < 100; ++i)
        Key(i % 2 == 0 ? "Boletin" : "BOLETIN");
    Key("Gama");
    EXPECT_THAT(Rows("SELECT * FROM Clave"), IsEmpty());
    Commit();
    EXPECT_THAT(Rows("SELECT lower(Tabla), Ultima_Clave FROM Escritura ORDER BY 1"),
                ElementsAre("boletin|100", "gama|1"));
    Begin();
    Commit();
    EXPECT_THAT(Rows("SELECT count(*) FROM Escritura"), ElementsAre("2"));
}

TEST_F(CounterWritesTest, EachKeyOutsideATransactionIsOneWrite) {
    for (int i = 0; i < 3; ++i)
        Key("Boletin");
    EXPECT_THAT(Rows("SELECT Ultima_Clave FROM Escritura"), ElementsAre("1", "2", "3"));
}

TEST_F(CounterWritesTest, ARollbackWritesNothing) {
    Begin();
    Key("Boletin");
    Rollback();
    EXPECT_THAT(Rows("SELECT * FROM Clave"), IsEmpty());
    EXPECT_THAT(Rows("SELECT * FROM Escritura"), IsEmpty());
}

class KeyLifeTest : public SessionTest {};

TEST_F(KeyLifeTest, NoKeyComesTwiceAfterARollback) {
    Begin();
    EXPECT_EQ(Key("Boletin"), 1);
    EXPECT_EQ(Key("Boletin"), 2);
    Rollback();
    EXPECT_EQ(Key("Boletin"), 3);
    Begin();
    EXPECT_EQ(Key("Boletin"), 4);
    Rollback();
    Begin();
    EXPECT_EQ(Key("Boletin"), 5);
    Commit();
    EXPECT_THAT(Rows("SELECT Ultima_Clave FROM Clave"), ElementsAre("5"));
}

TEST_F(KeyLifeTest, NoKeyComesTwiceWhenTheCountersAreLost) {
    EXPECT_EQ(Key("Boletin"), 1);
    Run("DELETE FROM Clave");
    EXPECT_EQ(Key("Boletin"), 2);
    Begin();
    Run("DELETE FROM Clave");
    EXPECT_EQ(Key("Boletin"), 3);
    Commit();
    EXPECT_EQ(Key("Boletin"), 4);
}

TEST_F(KeyLifeTest, RowsThatWereRolledBackDoNotUseUpKeys) {
    Begin();
    Run("INSERT INTO Boletin (SC_Boletin) VALUES (2147483647)");
    EXPECT_EQ(ErrorOf([&] { Key("Boletin"); }).number, kOverflow);
    Rollback();
    EXPECT_EQ(Key("Boletin"), 1);
}

TEST_F(KeyLifeTest, ACommitThatCannotSaveTheCountersIsNone) {
    Begin();
    Key("Boletin");
    Run("INSERT INTO Boletin (SC_Boletin) VALUES (1); ALTER TABLE Clave RENAME TO Clave_Aparte");
    EXPECT_EQ(ErrorOf([&] { Commit(); }).number, Zontara::vbObjectError + 1);
    EXPECT_TRUE(connection->InTransaction());
    Run("ALTER TABLE Clave_Aparte RENAME TO Clave");
    Commit();
    EXPECT_THAT(Rows("SELECT (SELECT SC_Boletin FROM Boletin), Ultima_Clave FROM Clave"), ElementsAre("1|1"));
}

TEST_F(KeyLifeTest, AGeneratorThatWentLeavesItsConnectionUsable) {
    Begin();
    Key("Boletin");
    provider.reset();
    Run("INSERT INTO Boletin (SC_Boletin) VALUES (1)");
    Commit();
    EXPECT_EQ(Perluma::GeneradorClaves::On(connection)->ProximaClave("Boletin"), 2);
}

/// Two processes are two connections on one file, each with a generator of its own.
class SharedFileTest : public testing::Test {
protected:
    SharedFileTest() {
        Remove();
        using Mode = dhRichClient3::Options::Mode;
        first = Connection::Open(path, {Mode::Create, 0});
        schema::Create(*first);
        second = Connection::Open(path, {Mode::Existing, 0});
        ours = Perluma::GeneradorClaves::On(first);
        theirs = Perluma::GeneradorClaves::On(second);
    }
    ~SharedFileTest() override {
        ours.reset();
        theirs.reset();
        first.reset();
        second.reset();
        Remove();
    }
    void Remove() const {
        for (const char* tail : {"", "-wal", "-shm"})
            std::filesystem::remove(path + tail);
    }

    const std::string path =
        testing::TempDir() + "keys_" + testing::UnitTest::GetInstance()->current_test_info()->name() + ".db";
    Zontara::Ref<Connection> first;
    Zontara::Ref<Connection> second;
    Zontara::Ref<Perluma::GeneradorClaves> ours;
    Zontara::Ref<Perluma::GeneradorClaves> theirs;
};

TEST_F(SharedFileTest, KeysTakenInTurnsNeverMeet) {
    std::vector<std::int32_t> keys;
    for (int i = 0; i < 3; ++i) {
        keys.push_back(ours->ProximaClave("Boletin"));
        second->IniciarTrans("");
        keys.push_back(theirs->ProximaClave("boletin"));
        keys.push_back(theirs->ProximaClave("boletin"));
        second->ConfirmarTrans("");
    }
    EXPECT_THAT(keys, ElementsAre(1, 2, 3, 4, 5, 6, 7, 8, 9));
}

TEST_F(SharedFileTest, ARowThatTheOtherStoredIsPassed) {
    EXPECT_EQ(ours->ProximaClave("Boletin"), 1);
    second->RunScript("INSERT INTO Boletin (SC_Boletin) VALUES (20)");
    EXPECT_EQ(ours->ProximaClave("Boletin"), 21);
    EXPECT_EQ(theirs->ProximaClave("Boletin"), 22);
}

TEST_F(SharedFileTest, WhoHoldsTheTransactionKeepsOthersWaiting) {
    first->IniciarTrans("");
    EXPECT_EQ(ours->ProximaClave("Boletin"), 1);
    EXPECT_EQ(ErrorOf([&] { theirs->ProximaClave("Boletin"); }).number, Zontara::vbObjectError + 5);
    first->ConfirmarTrans("");
    EXPECT_EQ(theirs->ProximaClave("Boletin"), 2);
}

TEST_F(SharedFileTest, ANewProcessGoesOnWhereTheLastStopped) {
    for (int i = 0; i < 3; ++i)
        ours->ProximaClave("Gama");
    const auto later = Perluma::GeneradorClaves::On(Connection::Open(path));
    EXPECT_EQ(later->ProximaClave("Gama"), 4);
}

}  // namespace

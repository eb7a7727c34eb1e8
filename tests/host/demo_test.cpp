#include "host/story/story.h"

#include "host/program.h"
#include "tests/host/run.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using host_test::Folder;
using host_test::Ran;
using host_test::Rows;
using host_test::Scalar;
using host_test::Zontara;
using testing::HasSubstr;

int Number(const std::string& database, std::string_view sql) { return std::stoi(Scalar(database, sql)); }

TEST(Demo, ThePlantIsAsLargeAndVariedAsItSays) {
    const Folder folder;
    const std::string database = folder / "plant.db";
    EXPECT_EQ(Zontara({"init", database}).status, host::kDone);
    const Ran ran = Zontara({"import", database, host::story::PlantFolder().string()});
    ASSERT_EQ(ran.status, host::kDone) << ran.err;
    EXPECT_GE(Number(database, "SELECT count(*) FROM Activo"), 150);
    EXPECT_EQ(Number(database, "SELECT count(DISTINCT substr(ID_Activo, 1, 1)) FROM Activo"), 4);
    EXPECT_GE(Number(database, "SELECT count(*) FROM Activo WHERE estatus_actual IN (3, 4, 5, 7)"), 4);
    EXPECT_GE(Number(database, "SELECT count(*) FROM Gama WHERE Tiempo_Necesario <> '' AND Hombres_Necesarios > 0"),
              60);
    EXPECT_GE(Number(database, "SELECT count(DISTINCT sc_gama) FROM materiales_gama"), 40);
    EXPECT_GE(Number(database, "SELECT count(*) FROM Imputacion_Preventiva"), 400);
    EXPECT_EQ(Number(database, "SELECT count(DISTINCT Frecuencia) FROM Imputacion_Preventiva"), 9);
    EXPECT_EQ(Number(database, "SELECT count(DISTINCT Es_Sincronizada) FROM Imputacion_Preventiva"), 2);
    EXPECT_GE(Number(database, "SELECT count(*) FROM Imputacion_Preventiva WHERE Anulada = 1"), 5);
    EXPECT_GE(Number(database, "SELECT count(*) FROM Imputacion_Preventiva WHERE Finaliza = 1"), 5);
    EXPECT_GE(Number(database, "SELECT count(*) FROM Imputacion_Sistematica"), 100);
    EXPECT_GE(Number(database, "SELECT count(*) FROM Imputacion_Paralela"), 20);
    EXPECT_GE(Number(database, "SELECT count(*) FROM Equipo"), 190);
    EXPECT_GE(Number(database, "SELECT count(*) FROM Documento_Equipo"), 20);
}

class DemoTest : public testing::Test {
protected:
    /// The demo takes a while: all tests look at one.
    static void SetUpTestSuite() {
        folder_ = new Folder;
        ran_ = new Ran(Zontara({"demo", (folder_->Path() / "demo").string()}));
    }
    static void TearDownTestSuite() {
        delete ran_;
        delete folder_;
    }
    static std::string Database() { return *folder_ / "demo/plant.db"; }

    static Folder* folder_;
    static Ran* ran_;
};

Folder* DemoTest::folder_ = nullptr;
Ran* DemoTest::ran_ = nullptr;

TEST_F(DemoTest, TellsItsStoryInOrder) {
    ASSERT_EQ(ran_->status, host::kDone) << ran_->err;
    EXPECT_EQ(ran_->err, "");
    std::size_t at = 0;
    for (const char* part :
         {"A bottling plant in four chapters", "Five weekly launches of the synchronised assignments, into bulletins",
          "   2  2026-01-05", "   6  2026-02-02", "The bulletins of asset ", "A second run of week 6: looked at ",
          "launched 0\n", "Week 7 into work orders instead", "in full: ", "A year of Mondays", "2026-02 ", "2027-02 ",
          "Overdue on 2027-02-11: ", "The plant stands in "}) {
        const std::size_t found = ran_->out.find(part, at);
        ASSERT_NE(found, std::string::npos) << part;
        at = found;
    }
}

TEST_F(DemoTest, LeavesAYearOfPaperBehind) {
    ASSERT_EQ(ran_->status, host::kDone) << ran_->err;
    const std::string database = Database();
    EXPECT_GE(Number(database, "SELECT count(*) FROM Boletin"), 1000);
    EXPECT_GE(Number(database, "SELECT count(*) FROM Orden_Trabajo WHERE Origen = 0"), 10);
    EXPECT_GE(Number(database, "SELECT count(*) FROM Orden_Trabajo WHERE Origen = 1"), 100);
    EXPECT_GE(Number(database, "SELECT count(*) FROM Lectura_Equipo"), 1000);
    EXPECT_GE(Number(database,
                     "SELECT count(*) FROM Imputacion_Sistematica WHERE Acumulado_Lectura = 0"
                     " AND Fecha_Ultimo_Lanzamiento <> ''"),
              10);
    EXPECT_EQ(Number(database, "SELECT count(*) FROM Imputacion_Sistematica WHERE ID_Equipo IS NULL"), 0);
    EXPECT_EQ(Number(database,
                     "SELECT count(DISTINCT b.Fecha_Lanzamiento) FROM Boletin b JOIN Imputacion_Preventiva i"
                     " ON i.SC_Imputacion_Preventiva = b.SC_Imputacion_Preventiva"
                     " WHERE b.Fecha_Lanzamiento < '2026-02-10' AND i.Frecuencia = 'Diaria'"),
              5);
}

TEST_F(DemoTest, NoAssignmentIsLaunchedTwiceInAWeek) {
    ASSERT_EQ(ran_->status, host::kDone) << ran_->err;
    EXPECT_EQ(Number(Database(),
                     "SELECT count(*) FROM (SELECT 1 FROM Boletin b JOIN Imputacion_Preventiva i"
                     " ON i.SC_Imputacion_Preventiva = b.SC_Imputacion_Preventiva"
                     " WHERE i.Es_Sincronizada = 1"
                     " GROUP BY b.SC_Imputacion_Preventiva, b.Fecha_Lanzamiento HAVING count(*) > 1)"),
              0);
}

TEST_F(DemoTest, TheCommandsThatItNamesRun) {
    ASSERT_EQ(ran_->status, host::kDone) << ran_->err;
    EXPECT_THAT(ran_->out, HasSubstr("zontara overdue " + Database() + " --on 2027-02-15"));
    EXPECT_EQ(Zontara({"overdue", Database(), "--on", "2027-02-15"}).status, host::kDone);
    EXPECT_EQ(Zontara({"launch", Database(), "--date", "2027-02-15", "--kind", "all"}).status, host::kDone);
    EXPECT_EQ(Zontara({"reading", Database(), "M-CARR-01", "99999", "--date", "2027-02-15"}).status, host::kDone);
}

TEST_F(DemoTest, ASecondDemoReplacesTheFirstAndSaysTheSame) {
    ASSERT_EQ(ran_->status, host::kDone) << ran_->err;
    const Ran again = Zontara({"demo", (folder_->Path() / "demo").string()});
    EXPECT_EQ(again.status, host::kDone) << again.err;
    EXPECT_EQ(again.out, ran_->out);
}

TEST(Demo, ADatabaseOfAnotherOriginIsNotReplaced) {
    const Folder folder;
    folder.Write("plant.db", "mine");
    const Ran ran = Zontara({"demo", folder.Path().string()});
    EXPECT_EQ(ran.status, host::kFailed);
    EXPECT_THAT(ran.err, HasSubstr("plant.db is there already, and isn't of a former demo. Name another folder."));
    EXPECT_EQ(folder.Read("plant.db"), "mine");
}

TEST(Demo, AFileInPlaceOfTheFolderIsRefused) {
    const Folder folder;
    folder.Write("demo", "mine");
    const Ran ran = Zontara({"demo", folder / "demo"});
    EXPECT_EQ(ran.status, host::kFailed);
    EXPECT_THAT(ran.err, HasSubstr("can't be made. Name another one, or check the rights."));
    EXPECT_EQ(folder.Read("demo"), "mine");
}

}  // namespace

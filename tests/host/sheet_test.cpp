#include "host/program.h"
#include "host/story/story.h"

#include "tests/host/browser.h"
#include "tests/host/run.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <sstream>

namespace {

using host_test::Browse;
using host_test::Browser;
using host_test::Execute;
using host_test::Folder;
using host_test::Ran;
using host_test::Zontara;
using testing::HasSubstr;
using testing::Not;

/// The small plant with the bulletins of week 2 of 2026: tasks 7 and 8 on A-1, task 7 on A-2.
std::string MakeLaunchedPlant(const Folder& folder) {
    const std::string database = host_test::MakeSmallPlant(folder);
    Execute(database,
            "UPDATE Gama SET Seguridades = 'Gafas <y> guantes', Coordinaciones = 'Avisar', Especialista = 'Soldador',"
            " Equipo_Parado = 1, Materiales_Herramientas = 'Pistola de engrase' WHERE SC_Gama = 1");
    EXPECT_EQ(Zontara({"launch", database, "--date", "2026-01-05", "--kind", "all"}).status, host::kDone);
    return database;
}

std::string Sheet(const std::string& database, std::vector<std::string> more = {}) {
    std::vector<std::string> words = {"sheet", database, "--week", "2", "--year", "2026"};
    words.insert(words.end(), more.begin(), more.end());
    const Ran ran = Zontara(words);
    EXPECT_EQ(ran.status, host::kDone) << ran.err;
    return ran.out;
}

std::size_t Count(const std::string& text, const std::string& part) {
    std::size_t count = 0;
    for (std::size_t at = 0; (at = text.find(part, at)) != std::string::npos; at += part.size())
        ++count;
    return count;
}

TEST(Sheet, HoldsEachBulletinWithItsWorkMaterialsCrewSafetyAndSevenDays) {
    const Folder folder;
    const std::string page = Sheet(MakeLaunchedPlant(folder));
    EXPECT_EQ(Count(page, "<article>"), 3u);
    EXPECT_EQ(Count(page, "class=\"days\""), 3u);
    EXPECT_THAT(page, HasSubstr("<html lang=\"es\">"));
    EXPECT_THAT(page, HasSubstr("Semana 2 de 2026 · del 05/01/2026 al 11/01/2026"));
    EXPECT_THAT(page, HasSubstr("<h2>A-1 · Bomba</h2>"));
    EXPECT_THAT(page, HasSubstr("Tarea 7 · Engrase"));
    EXPECT_THAT(page, HasSubstr("1. Parar.<br>\n2. Engrasar."));
    EXPECT_THAT(page, HasSubstr("Pistola de engrase<ul><li>0.5 × Grasa, kg</li><li>4 × Paño</li></ul>"));
    EXPECT_THAT(page, HasSubstr("Taller · Soldador · 2 personas · 1.5 h"));
    EXPECT_THAT(page, HasSubstr("Equipo parado</span><br>Gafas &lt;y&gt; guantes"));
    EXPECT_THAT(page, HasSubstr("<dt>Estado</dt><dd>Pendiente</dd>"));
    EXPECT_THAT(page, HasSubstr("<b>Lunes 05/01</b>"));
    EXPECT_THAT(page, HasSubstr("<b>Domingo 11/01</b>"));
}

TEST(Sheet, IsOnePageThatNeedsNothingElse) {
    const Folder folder;
    const std::string page = Sheet(MakeLaunchedPlant(folder));
    EXPECT_THAT(page, HasSubstr("@page"));
    for (const char* reference : {"http:", "https:", "src=", "<link", "url(", "@import", "<script"})
        EXPECT_THAT(page, Not(HasSubstr(reference)));
}

TEST(Sheet, SpeaksEnglishAroundThePlantsOwnTexts) {
    const Folder folder;
    const std::string page = Sheet(MakeLaunchedPlant(folder), {"--lang", "en"});
    EXPECT_THAT(page, HasSubstr("<html lang=\"en\">"));
    EXPECT_THAT(page, HasSubstr("Week 2 of 2026 · 05/01/2026 to 11/01/2026"));
    EXPECT_THAT(page, HasSubstr("Machine stopped"));
    EXPECT_THAT(page, HasSubstr("<b>Monday 05/01</b>"));
    EXPECT_THAT(page, HasSubstr("Engrasar."));
    EXPECT_THAT(page, Not(HasSubstr("Lunes")));
}

TEST(Sheet, ShowsWhatIsNotedOnABulletin) {
    const Folder folder;
    const std::string database = MakeLaunchedPlant(folder);
    Execute(database,
            "UPDATE Boletin SET Miercoles = 'Hecho\nJuan', Nota = 'Fuga & ruido', Estatus = 2, sc_Orden_Trabajo = 77");
    const std::string page = Sheet(database);
    EXPECT_THAT(page, HasSubstr("<b>Miércoles 07/01</b>Hecho<br>\nJuan</div>"));
    EXPECT_THAT(page, HasSubstr("Fuga &amp; ruido"));
    EXPECT_THAT(page, HasSubstr("<dd>Ejecutado</dd>"));
    EXPECT_THAT(page, HasSubstr("<dt>Orden</dt><dd>77</dd>"));
}

TEST(Sheet, CanBeOfOneAssetAndGoToAFile) {
    const Folder folder;
    const std::string database = MakeLaunchedPlant(folder);
    const std::string said = Sheet(database, {"--asset", "A-2", "--out", folder / "sheet.html"});
    EXPECT_EQ(said, "Wrote 1 bulletin of week 2 of 2026 to " + folder / "sheet.html" + ".\n");
    const std::string page = folder.Read("sheet.html");
    EXPECT_EQ(Count(page, "<article>"), 1u);
    EXPECT_THAT(page, HasSubstr("<h2>A-2 · Compresor</h2>"));
}

TEST(Sheet, HoldsBulletinsThatTheComponentsListLeavesOut) {
    const Folder folder;
    const std::string database = MakeLaunchedPlant(folder);
    Execute(database, "DELETE FROM Ejecutor_Gama; DELETE FROM Grupo_Gama; DELETE FROM Equipo; DELETE FROM Gama");
    EXPECT_EQ(Count(Sheet(database), "<article>"), 3u);
}

TEST(Sheet, RefusesAWeekWithoutBulletinsAnUnknownAssetAndWrongWords) {
    const Folder folder;
    const std::string database = MakeLaunchedPlant(folder);
    const Ran empty = Zontara({"sheet", database, "--week", "3", "--year", "2026"});
    EXPECT_EQ(empty.status, host::kFailed);
    EXPECT_EQ(empty.err,
              "zontara sheet: there are no bulletins of week 3 of 2026. Launch the week first, or choose another.\n");
    EXPECT_THAT(Zontara({"sheet", database, "--asset", "Z-9"}).err, HasSubstr("there is no asset 'Z-9'"));
    for (const std::vector<std::string>& wrong :
         std::vector<std::vector<std::string>>{{"--week", "0"}, {"--week", "55"}, {"--year", "26"}, {"--lang", "fr"}}) {
        std::vector<std::string> words = {"sheet", database};
        words.insert(words.end(), wrong.begin(), wrong.end());
        EXPECT_EQ(Zontara(words).status, host::kUsage) << wrong[0] << " " << wrong[1];
    }
    const Ran unwritable = Zontara({"sheet", database, "--week", "2", "--year", "2026", "--out", folder / "no/s.html"});
    EXPECT_EQ(unwritable.status, host::kFailed);
    EXPECT_THAT(unwritable.err, HasSubstr("can't be written. Check its folder and the rights."));
}

/// Writes the text of a PDF to a file. False when the tool for it isn't installed.
bool WritePdfText(const std::string& pdf, const std::string& text) {
    return std::system(("pdftotext -layout '" + pdf + "' '" + text + "' 2>/dev/null").c_str()) == 0;
}

TEST(Sheet, PrintsOnPaper) {
    const std::string browser = Browser();
    if (browser.empty()) GTEST_SKIP() << "no Chromium is installed, so the page isn't printed";
    const Folder folder;
    Sheet(MakeLaunchedPlant(folder), {"--out", folder / "sheet.html"});
    ASSERT_TRUE(Browse(browser, folder.Path().string(), "--print-to-pdf='" + folder / "sheet.pdf" + "'",
                       folder / "sheet.html"));
    EXPECT_EQ(folder.Read("sheet.pdf").substr(0, 5), "%PDF-");
    if (!WritePdfText(folder / "sheet.pdf", folder / "sheet.txt")) return;
    const std::string text = folder.Read("sheet.txt");
    EXPECT_EQ(Count(text, "Lunes 05/01"), 3u);
    EXPECT_THAT(text, HasSubstr("2. Engrasar."));
}

TEST(SheetLong, NoBulletinOfAWholeWeekIsTornAcrossPages) {
    const std::string browser = Browser();
    if (browser.empty()) GTEST_SKIP() << "no Chromium is installed, so the page isn't printed";
    const Folder folder;
    const std::string database = folder / "plant.db";
    ASSERT_EQ(Zontara({"init", database}).status, host::kDone);
    ASSERT_EQ(Zontara({"import", database, host::story::PlantFolder().string()}).status, host::kDone);
    ASSERT_EQ(Zontara({"launch", database, "--date", "2026-01-05", "--kind", "all"}).status, host::kDone);
    Sheet(database, {"--out", folder / "sheet.html"});
    ASSERT_TRUE(Browse(browser, folder.Path().string(), "--print-to-pdf='" + folder / "sheet.pdf" + "'",
                       folder / "sheet.html"));
    ASSERT_TRUE(Browse(browser, folder.Path().string(),
                       "--window-size=900,1270 --screenshot='" + folder / "sheet.png" + "'", folder / "sheet.html"));
    EXPECT_GT(std::filesystem::file_size(folder / "sheet.png"), 20000u);
    if (!WritePdfText(folder / "sheet.pdf", folder / "sheet.txt")) GTEST_SKIP() << "no pdftotext is installed";
    // A page ends in a form feed. Each bulletin begins with its work and ends with its note, so both are on one page.
    std::istringstream pages(folder.Read("sheet.txt"));
    std::size_t bulletins = 0;
    for (std::string each; std::getline(pages, each, '\f');) {
        EXPECT_EQ(Count(each, "Boletín "), Count(each, "TERMINADO EL")) << each;
        bulletins += Count(each, "TERMINADO EL");
    }
    EXPECT_EQ(bulletins, Count(folder.Read("sheet.html"), "<article>"));
    EXPECT_GT(bulletins, 50u);
}

}  // namespace

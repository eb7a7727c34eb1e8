#include "planning/sheet.h"
#include "host/commands/commands.h"
#include "host/commands/options.h"
#include "host/failure.h"
#include "host/pages/sheet_page.h"

#include <fmt/format.h>
#include <fstream>
#include <sstream>

namespace host {

namespace {

struct SheetOptions {
    std::string path;
    std::optional<int> week;
    std::optional<int> year;
    std::string asset;
    std::string language = "es";
    std::string file;
};

void WriteFile(const std::string& path, const std::string& text) {
    std::ofstream file(path, std::ios::binary);
    file << text;
    file.close();
    if (!file) throw Failure(fmt::format("{} can't be written. Check its folder and the rights.", path));
}

void RunSheet(const SheetOptions& options, Console& console) {
    const Zontara::Date today = DayOption("", "");
    const int week = options.week.value_or(Zontara::WeekOfYear(today));
    const int year = options.year.value_or(Zontara::CivilOf(today).year);
    Plant plant(options.path, Plant::Use::Read);
    if (!options.asset.empty()) KnownAsset(plant, options.asset);
    const planning::WeekSheet sheet =
        planning::SheetOf(plant.Component(), plant.Database(), static_cast<std::uint8_t>(week), year, options.asset);
    if (sheet.bulletins.empty()) {
        throw Failure(
            fmt::format("there are no bulletins of week {} of {}{}. Launch the week first, or choose another.", week,
                        year, options.asset.empty() ? "" : " for asset " + options.asset));
    }
    std::ostringstream page;
    pages::WriteSheet(page, sheet, options.language == "en" ? pages::Language::English : pages::Language::Spanish);
    if (options.file.empty()) {
        console.out << page.str();
        return;
    }
    WriteFile(options.file, page.str());
    console.out << fmt::format("Wrote {} bulletin{} of week {} of {} to {}.\n", sheet.bulletins.size(),
                               sheet.bulletins.size() == 1 ? "" : "s", week, year, options.file);
}

}  // namespace

void AddSheetCommand(CLI::App& app, Console& console) {
    auto options = std::make_shared<SheetOptions>();
    CLI::App* command = AddCommand(app, "sheet", "Write a week's bulletins as a page to print and hang up.",
                                   "zontara sheet plant.db --week 10 --year 2026 --out sheet.html",
                                   "One HTML page for A4 paper: each bulletin with its work, materials, crew, safety, "
                                   "a box for each weekday and a\n"
                                   "note. Print it from any browser. Weeks are counted from January 1, Monday first.");
    AddDatabase(*command, options->path);
    command->add_option("--week", options->week, "The week of the year (today's)")->check(CLI::Range(1, 54));
    command->add_option("--year", options->year, "The year of the bulletins' launch (today's)")
        ->check(CLI::Range(1900, 9999));
    command->add_option("--asset", options->asset, "Only the bulletins of this asset");
    command->add_option("--lang", options->language, "The language of the words around: es or en (es)")
        ->check(CLI::IsMember({"es", "en"}));
    command->add_option("--out", options->file, "The file to write instead of the output");
    command->callback([options, &console] { RunSheet(*options, console); });
}

}  // namespace host

#include "host/story/story.h"

#include "host/failure.h"
#include "schema/create.h"

#include <fmt/format.h>
#include <fstream>

namespace host::story {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view kMark = "zontara-demo.txt";
constexpr std::string_view kDatabase = "plant.db";

/// Makes the folder ready: there, and without a database. Only a former demo is taken away.
void Prepare(const fs::path& folder) {
    std::error_code error;
    fs::create_directories(folder, error);
    if (error || !fs::is_directory(folder, error)) {
        throw Failure(
            fmt::format("the folder {} can't be made. Name another one, or check the rights.", folder.string()));
    }
    const fs::path database = folder / kDatabase;
    if (!fs::exists(database, error)) return;
    if (!fs::exists(folder / kMark, error)) {
        throw Failure(
            fmt::format("{} is there already, and isn't of a former demo. Name another folder.", database.string()));
    }
    for (const char* suffix : {"", "-wal", "-shm"}) {
        fs::remove(database.string() + suffix, error);
        if (error) throw Failure(fmt::format("{}{} can't be removed: {}.", database.string(), suffix, error.message()));
    }
}

std::string Closing(const fs::path& database) {
    const std::string path = database.string();
    return fmt::format(
        "The plant stands in {0}. To look at it:\n\n"
        "  zontara overdue {0} --on 2027-02-15\n"
        "  zontara launch {0} --date 2027-02-15 --kind all\n"
        "  zontara reading {0} M-CARR-01 99999 --date 2027-02-15\n"
        "  sqlite3 {0} \"SELECT Fecha_Lanzamiento, count(*) FROM Boletin GROUP BY 1\"\n",
        path);
}

void WriteMark(const fs::path& folder, const std::string& text) {
    std::ofstream mark(folder / kMark);
    mark << "A sample plant made by `zontara demo`, which replaces it at its next run.\n\n" << text;
    mark.close();
    if (!mark)
        throw Failure(fmt::format("{} can't be written. Check the rights and the disk.", (folder / kMark).string()));
}

void MakeDatabase(const fs::path& database) {
    dhRichClient3::Options options;
    options.mode = dhRichClient3::Options::Mode::Create;
    schema::Create(*dhRichClient3::Connection::Open(database.string(), options));
}

}  // namespace

void Tell(const fs::path& folder, Console& console) {
    const fs::path files = PlantFolder();
    Prepare(folder);
    const fs::path database = folder / kDatabase;
    const std::string closing = Closing(database);
    WriteMark(folder, closing);
    MakeDatabase(database);

    ClockInForce clock;
    Plant plant(database.string(), Plant::Use::Write);
    // The runs are short: a bar for each would only flicker.
    Console quiet{console.out, console.err, false};
    Stage stage{plant, *clock, quiet, files};
    Load(stage);
    FirstWeeks(stage);
    Year(stage);
    OverdueAtTheEnd(stage);
    console.out << '\n' << closing;
}

}  // namespace host::story

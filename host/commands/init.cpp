#include "host/commands/commands.h"
#include "host/commands/options.h"
#include "host/failure.h"
#include "schema/create.h"

#include <fmt/format.h>
#include <filesystem>

namespace host {

namespace {

namespace fs = std::filesystem;
using dhRichClient3::Connection;

/// Takes a file away that was made for nothing, with what the engine keeps beside it.
void Remove(const std::string& path) {
    std::error_code ignored;
    for (const char* suffix : {"", "-wal", "-shm"})
        fs::remove(path + suffix, ignored);
}

void Fill(Connection& database, const std::string& path) {
    if (schema::Exists(database)) {
        throw Failure(fmt::format("{} already holds a plant. Name another file, or remove this one first.", path));
    }
    if (!schema::IsEmpty(database)) {
        throw Failure(fmt::format("{} is a database of something else. Name another file.", path));
    }
    schema::Create(database);
}

void Init(const std::string& path, Console& console) {
    std::error_code ignored;
    if (fs::is_directory(path, ignored)) throw Failure(path + " is a folder. Name a file inside it.");
    const bool wasThere = fs::exists(path, ignored);
    dhRichClient3::Options options;
    options.mode = dhRichClient3::Options::Mode::Create;
    auto database = Connection::Open(path, options);
    try {
        Fill(*database, path);
    } catch (...) {
        const bool left = !wasThere && schema::IsEmpty(*database);
        database.reset();
        if (left) Remove(path);
        throw;
    }
    console.out << fmt::format("Made {}. Fill it with `zontara import {} DIR`.\n", path, path);
}

}  // namespace

void AddInitCommand(CLI::App& app, Console& console) {
    auto path = std::make_shared<std::string>();
    CLI::App* command = AddCommand(app, "init", "Make a new database with an empty schema.", "zontara init plant.db");
    command->add_option("DB", *path, "The file to make; an empty one may be there")->required();
    command->callback([path, &console] { Init(*path, console); });
}

}  // namespace host

#include "host/commands/commands.h"
#include "host/commands/options.h"
#include "host/dump/tables.h"
#include "host/load/importer.h"
#include "host/load/table.h"

#include <fmt/format.h>

namespace host {

namespace {

struct ImportOptions {
    std::string path;
    std::string folder;
    bool restore = false;
    bool json = false;
};

void ImportFolder(const ImportOptions& options, Console& console) {
    Plant plant(options.path, Plant::Use::Write);
    Transaction transaction(plant);
    const auto files = options.restore ? dump::Restore(plant, options.folder) : load::Import(plant, options.folder);
    transaction.Commit();
    PrintFiles(console, files, options.json);
}

/// What the files hold, from the tables themselves.
std::string Details() {
    std::string details =
        "UTF-8 with , or ; between the cells. Lines refer to one another by name, number or identifier. Dates are\n"
        "yyyy-mm-dd or dd/mm/yyyy, numbers have a decimal point, flags are 0 or 1. The files and their columns, in "
        "any\n"
        "order (* must be there and filled in):\n";
    for (const load::Table& table : load::Tables()) {
        details += fmt::format("\n  {}\n", table.file);
        std::string line = "   ";
        for (const load::Column& column : table.columns) {
            const std::string name = std::string(column.name) + (column.required ? "*" : "");
            if (line.size() + name.size() > 100) {
                details += line + '\n';
                line = "   ";
            }
            line += ' ' + name;
        }
        details += line;
    }
    return details;
}

}  // namespace

void AddImportCommand(CLI::App& app, Console& console) {
    auto options = std::make_shared<ImportOptions>();
    CLI::App* command = AddCommand(app, "import", "Read a plant from CSV files: all of it, or nothing.",
                                   "zontara import plant.db ./my-plant", Details());
    AddDatabase(*command, options->path);
    command->add_option("DIR", options->folder, "The folder with the files; those that aren't needed may be missing")
        ->required();
    command->add_flag("--restore", options->restore,
                      "DIR holds an export: put its rows back as they were, keys included, into an empty database");
    AddJson(*command, options->json);
    command->callback([options, &console] { ImportFolder(*options, console); });
}

}  // namespace host

#include "host/commands/commands.h"
#include "host/commands/options.h"
#include "host/dump/tables.h"
#include "host/text/grid.h"
#include "host/text/json.h"

#include <fmt/format.h>
#include <nlohmann/json.hpp>

namespace host {

namespace {

struct ExportOptions {
    std::string path;
    std::string table;
    std::string folder;
    bool json = false;
};

void RunExport(const ExportOptions& options, Console& console) {
    const std::vector<std::string> tables = dump::TablesNamed(options.table);
    Plant plant(options.path, Plant::Use::Read);
    PrintFiles(console, dump::Export(plant, tables, options.folder), options.json);
}

}  // namespace

void AddExportCommand(CLI::App& app, Console& console) {
    auto options = std::make_shared<ExportOptions>();
    CLI::App* command = AddCommand(app, "export", "Write tables as they are to CSV files: TABLE.csv each.",
                                   "zontara export plant.db all ./export",
                                   "Texts stand in quotes always, \"\" being the empty one; nothing between two commas "
                                   "is null; numbers stand bare;\n"
                                   "x'0aff' are bytes, t'c3' those of a text that isn't UTF-8. All files are of one "
                                   "moment. Put them back into an\n"
                                   "empty database with `zontara import --restore`.");
    AddDatabase(*command, options->path);
    command->add_option("TABLE", options->table, "The table, or all")->required();
    command->add_option("DIR", options->folder, "The folder for the files, made if needed; files there are replaced")
        ->required();
    AddJson(*command, options->json);
    command->callback([options, &console] { RunExport(*options, console); });
}

}  // namespace host

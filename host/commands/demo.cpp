#include "host/commands/commands.h"
#include "host/commands/options.h"
#include "host/story/story.h"

namespace host {

void AddDemoCommand(CLI::App& app, Console& console) {
    auto folder = std::make_shared<std::string>("./zontara-demo");
    CLI::App* command =
        AddCommand(app, "demo", "Load a sample plant, launch it for weeks and a year, and show what comes of it.",
                   "zontara demo ./my-demo");
    command->add_option("DIR", *folder,
                        "The folder for the database; a former demo in it is replaced (./zontara-demo)");
    command->callback([folder, &console] { story::Tell(*folder, console); });
}

}  // namespace host

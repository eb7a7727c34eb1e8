#include "host/manual/manual.h"

#include "host/commands/commands.h"
#include "host/commands/options.h"

namespace host {

void AddManualCommands(CLI::App& app, Console& console) {
    AddCommand(app, "completion", "Print the completion of commands and options for bash.",
               "source <(zontara completion)", "An installed program has it already, in bash-completion's folder.")
        ->callback([&app, &console] { console.out << manual::BashCompletion(app); });
    AddCommand(app, "manual", "Print the manual page.", "zontara manual > zontara.1",
               "An installed program has it already: `man zontara`.")
        ->callback([&app, &console] { console.out << manual::Page(app); });
}

}  // namespace host

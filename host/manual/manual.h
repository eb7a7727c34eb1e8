#pragma once

#include <string>
#include <vector>

namespace CLI {
class App;
class Option;
}  // namespace CLI

/// What installs beside the program, written from its own table of commands, so that it can't tell another story.
namespace host::manual {

/// The manual page, in the format of man(7).
std::string Page(const CLI::App& program);

/// The completion of commands, options and their choices for bash.
std::string BashCompletion(const CLI::App& program);

/// The commands in the order of the help.
std::vector<const CLI::App*> Commands(const CLI::App& program);
/// The words that an option may take, when it names them.
std::vector<std::string> Choices(const CLI::Option& option);

}  // namespace host::manual

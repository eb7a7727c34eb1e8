#include "host/manual/manual.h"

#include <fmt/format.h>
#include <fmt/ranges.h>
#include <CLI/CLI.hpp>

namespace host::manual {

namespace {

std::vector<std::string> OptionNames(const CLI::App& command) {
    std::vector<std::string> names;
    for (const CLI::Option* option : command.get_options()) {
        for (const std::string& name : option->get_lnames())
            names.push_back("--" + name);
    }
    return names;
}

/// One branch of the shell's `case`: the words that a pattern is completed with.
std::string Branch(const std::string& pattern, const std::vector<std::string>& words) {
    return fmt::format("        {}) words=\"{}\" ;;\n", pattern, fmt::join(words, " "));
}

}  // namespace

std::vector<const CLI::App*> Commands(const CLI::App& program) {
    return program.get_subcommands([](const CLI::App*) { return true; });
}

std::vector<std::string> Choices(const CLI::Option& option) {
    const std::string type = option.get_type_name();
    const std::size_t from = type.find('{');
    const std::size_t to = type.find('}', from);
    if (to == std::string::npos) return {};
    return CLI::detail::split(type.substr(from + 1, to - from - 1), ',');
}

std::string BashCompletion(const CLI::App& program) {
    std::vector<std::string> names;
    std::string choices;
    std::string options;
    for (const CLI::App* command : Commands(program)) {
        names.push_back(command->get_name());
        options += Branch(command->get_name(), OptionNames(*command));
        for (const CLI::Option* option : command->get_options()) {
            const std::vector<std::string> words = Choices(*option);
            if (words.empty() || option->get_lnames().empty()) continue;
            choices += Branch(fmt::format("\"{} --{}\"", command->get_name(), option->get_lnames().front()), words);
        }
    }
    return fmt::format(
        "# Completion of zontara for bash, as `zontara completion` prints it.\n"
        "_zontara() {{\n"
        "    local current=${{COMP_WORDS[COMP_CWORD]}} before=${{COMP_WORDS[COMP_CWORD - 1]}} words=\n"
        "    COMPREPLY=()\n"
        "    if [ \"$COMP_CWORD\" -eq 1 ]; then\n"
        "        mapfile -t COMPREPLY < <(compgen -W \"{} {}\" -- \"$current\")\n"
        "        return\n"
        "    fi\n"
        "    # The choices of an option, else the options; whatever else there is to write is a file.\n"
        "    case \"${{COMP_WORDS[1]}} $before\" in\n"
        "{}"
        "    esac\n"
        "    [ -n \"$words\" ] || [[ $current != -* ]] || case ${{COMP_WORDS[1]}} in\n"
        "{}"
        "    esac\n"
        "    [ -z \"$words\" ] || mapfile -t COMPREPLY < <(compgen -W \"$words\" -- \"$current\")\n"
        "}}\n"
        "complete -o default -F _zontara zontara\n",
        fmt::join(names, " "), fmt::join(OptionNames(program), " "), choices, options);
}

}  // namespace host::manual

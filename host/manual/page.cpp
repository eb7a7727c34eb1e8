#include "host/manual/manual.h"

#include <fmt/format.h>
#include <CLI/CLI.hpp>
#include <sstream>

namespace host::manual {

namespace {

/// A text as the formatter takes it: nothing in it is a request or an escape.
std::string Plain(const std::string& text) {
    std::string plain;
    for (const char c : text) {
        if (c == '\\') {
            plain += "\\e";
        } else if (c == '-') {
            plain += "\\-";
        } else {
            plain += c;
        }
    }
    const bool request = !plain.empty() && (plain.front() == '.' || plain.front() == '\'');
    return request ? "\\&" + plain : plain;
}

/// Text for people in paragraphs: lines flow together, those that are set in columns stay lines.
std::string Flowing(const std::string& text) {
    std::string page;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        const std::size_t from = line.find_first_not_of(' ');
        if (from == std::string::npos) {
            page += ".PP\n";
            continue;
        }
        const bool columns = from > 0 || line.find("  ") != std::string::npos;
        page += (columns ? ".br\n" : "") + Plain(line.substr(from)) + '\n' + (columns ? ".br\n" : "");
    }
    return page;
}

std::string Exactly(const std::string& text) {
    std::string page = ".PP\n.nf\n.RS 4\n";
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        const std::size_t from = line.find_first_not_of(' ');
        if (from != std::string::npos) page += Plain(line.substr(from)) + '\n';
    }
    return page + ".RE\n.fi\n";
}

bool IsPositional(const CLI::Option& option) { return option.get_lnames().empty() && option.get_snames().empty(); }

std::string Value(const CLI::Option& option) {
    if (option.get_items_expected_max() == 0 || IsPositional(option)) return {};
    return " " + option.get_type_name();
}

std::string Synopsis(const CLI::App& command) {
    std::string synopsis = "zontara " + command.get_name();
    for (const CLI::Option* option : command.get_options()) {
        if (!IsPositional(*option)) continue;
        const std::string name = option->get_single_name();
        synopsis += option->get_required() ? " " + name : " [" + name + "]";
    }
    return synopsis + " [options]";
}

std::string Options(const CLI::App& command) {
    std::string page;
    for (const CLI::Option* option : command.get_options()) {
        const std::string name = IsPositional(*option) ? option->get_single_name() : option->get_name(false, true);
        page += fmt::format(".TP\n.B {}\n{}\n", Plain(name + Value(*option)), Plain(option->get_description()));
    }
    return page;
}

/// What stands below a command's options, and its example.
std::string Footer(const std::string& footer) {
    constexpr std::string_view kExample = "\nExample:\n";
    const std::size_t example = footer.find(kExample);
    std::string page = Flowing(footer.substr(0, example));
    if (example != std::string::npos) page += Exactly(footer.substr(example + kExample.size()));
    return page;
}

std::string OfCommand(const CLI::App& command) {
    return fmt::format(".SS {}\n{}\n{}{}", Plain(Synopsis(command)), Plain(command.get_description()), Options(command),
                       Footer(command.get_footer()));
}

constexpr std::string_view kRest =
    ".SH EXIT STATUS\n"
    ".TP\n.B 0\nThe command did what it was asked to.\n"
    ".TP\n.B 1\nIt failed. The reason stands on the error stream, and the database is as it was.\n"
    ".TP\n.B 2\nIt was called in a wrong way.\n"
    ".TP\n.B 3\nIt did what it was asked to, and has findings (lint).\n"
    ".SH ENVIRONMENT\n"
    ".TP\n.B NO_COLOR\nWhen it is set to anything, nothing is coloured. Colour is for terminals only.\n"
    ".TP\n.B TERM\nA terminal named dumb gets neither colour nor a progress bar.\n"
    ".SH NOTES\n"
    "Days are written as yyyy\\-mm\\-dd or dd/mm/yyyy. With \\-\\-json a command prints JSON in place of its tables: "
    "one "
    "object\na line, numbers as numbers. Failures are told in plain text all the same.\n";

}  // namespace

std::string Page(const CLI::App& program) {
    std::string page = fmt::format(
        ".\\\" Written by `zontara manual`.\n.TH ZONTARA 1\n.SH NAME\nzontara \\- preventive maintenance, what falls "
        "due "
        "turned into paperwork\n.SH SYNOPSIS\n.B zontara\nCOMMAND [options]\n.SH DESCRIPTION\n{}\n.SH OPTIONS\n{}"
        ".SH COMMANDS\n",
        Plain(program.get_description()), Options(program));
    for (const CLI::App* command : Commands(program))
        page += OfCommand(*command);
    return page + std::string(kRest);
}

}  // namespace host::manual

#include "host/typelib/command.h"

#include "host/commands/options.h"
#include "host/failure.h"
#include "host/typelib/idl.h"
#include "host/typelib/listing.h"

#include <fmt/format.h>
#include <filesystem>
#include <fstream>
#include <memory>

namespace host {

namespace {

struct IdlOptions {
    std::string library;
    std::string folder;
    bool listing = false;
};

std::vector<const typelib::TypeLibrary*> Chosen(const std::string& name) {
    if (!name.empty()) {
        const typelib::TypeLibrary* library = typelib::FindLibrary(name);
        if (library == nullptr) {
            throw UsageFailure(
                fmt::format("--library {}: no such library. There are dhRichClient3, Perluma and Zontara.", name));
        }
        return {library};
    }
    std::vector<const typelib::TypeLibrary*> all;
    for (const typelib::TypeLibrary& library : typelib::TypeLibraries())
        all.push_back(&library);
    return all;
}

void WriteFile(const std::filesystem::path& path, const std::string& text, Console& console) {
    std::ofstream file(path, std::ios::binary);
    file << text;
    file.close();
    if (!file) throw Failure(fmt::format("{} couldn't be written. Check the folder.", path.string()));
    console.out << path.string() << "\n";
}

void WriteIdl(const IdlOptions& options, Console& console) {
    const std::vector<const typelib::TypeLibrary*> libraries = Chosen(options.library);
    if (!options.folder.empty()) {
        std::error_code ignored;
        std::filesystem::create_directories(options.folder, ignored);
    }
    bool first = true;
    for (const typelib::TypeLibrary* library : libraries) {
        const std::string text = options.listing ? typelib::Listing(*library) : typelib::Idl(*library);
        if (!options.folder.empty()) {
            const std::string name = std::string(library->name) + (options.listing ? ".typelib.txt" : ".idl");
            WriteFile(std::filesystem::path(options.folder) / name, text, console);
            continue;
        }
        console.out << (first ? "" : options.listing ? "\n\n" : "\n") << text;
        first = false;
    }
}

}  // namespace

void AddIdlCommand(CLI::App& app, Console& console) {
    auto options = std::make_shared<IdlOptions>();
    CLI::App* command = AddCommand(app, "idl", "Write the type libraries as IDL, or as a text to read.",
                                   "zontara idl --out idl && cat idl/Zontara.idl");
    command->add_option("--library", options->library, "Only this library: dhRichClient3, Perluma or Zontara");
    command->add_option("--out", options->folder, "A folder to write NAME.idl into, instead of the output");
    command->add_flag("--text", options->listing, "A listing of classes and members instead of IDL");
    command->callback([options, &console] { WriteIdl(*options, console); });
}

}  // namespace host

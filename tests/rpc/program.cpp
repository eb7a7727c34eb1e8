#include "tests/rpc/program.h"

#include <cstdlib>
#include <fstream>
#include <sstream>

#include <sys/wait.h>

namespace support {

void WriteFile(const std::string& path, const std::string& text) { std::ofstream(path, std::ios::binary) << text; }

std::string ReadFile(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    std::stringstream text;
    text << file.rdbuf();
    return text.str();
}

Ran RunCommand(const std::string& command, const std::string& input) {
    const Folder folder;
    WriteFile(folder / "in", input);
    const std::string whole =
        "( " + command + " ) < " + folder / "in" + " > " + folder / "out" + " 2> " + folder / "err";
    const int status = std::system(whole.c_str());
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, ReadFile(folder / "out"), ReadFile(folder / "err")};
}

Ran RunZontara(const std::string& words, const std::string& input) {
    return RunCommand("'" ZONTARA_PROGRAM "' " + words, input);
}

bool HasProgram(const std::string& name) { return RunCommand("command -v " + name).status == 0; }

}  // namespace support

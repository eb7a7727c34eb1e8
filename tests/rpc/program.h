#pragma once

#include "tests/support/folder.h"

#include <string>

namespace support {

/// What a program left behind.
struct Ran {
    int status = -1;
    std::string out;
    std::string err;
};

void WriteFile(const std::string& path, const std::string& text);
std::string ReadFile(const std::string& path);

/// Runs a shell command with a text as its input.
Ran RunCommand(const std::string& command, const std::string& input = "");

/// `zontara` with these words of the command line.
Ran RunZontara(const std::string& words, const std::string& input = "");

/// Whether there is a program of that name.
bool HasProgram(const std::string& name);

}  // namespace support

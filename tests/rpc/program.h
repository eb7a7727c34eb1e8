#pragma once

#include <string>

namespace support {

/// What a program left behind.
struct Ran {
    int status = -1;
    std::string out;
    std::string err;
};

/// A new folder for a test, taken away at its end.
class Folder {
public:
    Folder();
    ~Folder();
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;

    /// Path of a file in it.
    std::string operator/(const std::string& name) const { return path_ + "/" + name; }
    const std::string& Path() const { return path_; }

private:
    std::string path_;
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

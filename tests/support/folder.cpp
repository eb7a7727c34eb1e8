#include "tests/support/folder.h"

#include <stdlib.h>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace support {

namespace fs = std::filesystem;

Folder::Folder() {
    std::string pattern = (fs::temp_directory_path() / "zontara-test-XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("no folder for the test");
    path_ = pattern;
}

Folder::~Folder() {
    std::error_code ignored;
    fs::remove_all(path_, ignored);
}

void Folder::Write(std::string_view name, std::string_view text) const {
    fs::create_directories((path_ / name).parent_path());
    std::ofstream file(path_ / name, std::ios::binary);
    file << text;
    if (!file.flush()) throw std::runtime_error("a test file can't be written");
}

std::string Folder::Read(std::string_view name) const {
    std::ifstream file(path_ / name, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

}  // namespace support

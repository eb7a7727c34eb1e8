#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace support {

/// A folder of its own that goes with the object.
class Folder {
public:
    Folder();
    ~Folder();
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;

    const std::filesystem::path& Path() const { return path_; }
    /// Path of a file inside, as text.
    std::string operator/(std::string_view name) const { return (path_ / name).string(); }
    /// Writes a file inside.
    void Write(std::string_view name, std::string_view text) const;
    /// Text of a file inside.
    std::string Read(std::string_view name) const;

private:
    std::filesystem::path path_;
};

}  // namespace support

#pragma once

#include <cstdlib>
#include <string>

namespace host_test {

/// The browser that pages are looked at with; empty when none is installed.
inline std::string Browser() {
    for (const char* name : {"chromium", "chromium-browser", "google-chrome"}) {
        if (std::system(("command -v " + std::string(name) + " >/dev/null 2>&1").c_str()) == 0) return name;
    }
    return {};
}

/// Has the browser do something with a page, its files in a folder of its own. False when it fails.
inline bool Browse(const std::string& browser, const std::string& folder, const std::string& what,
                   const std::string& page) {
    return std::system((browser + " --headless --no-sandbox --disable-gpu --user-data-dir='" + folder + "/profile' " +
                        what + " 'file://" + page + "' >/dev/null 2>&1")
                           .c_str()) == 0;
}

}  // namespace host_test

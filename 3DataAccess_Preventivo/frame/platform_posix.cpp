#include "frame/platform.h"

#include <cstring>
#include <ctime>
#include <string_view>

#include <unistd.h>

namespace Zontara {

Date Platform::Now() const {
    const std::time_t present = std::time(nullptr);
    std::tm local{};
    localtime_r(&present, &local);
    return WithTime(DateOf(local.tm_year + 1900, local.tm_mon + 1, local.tm_mday),
                    {local.tm_hour, local.tm_min, local.tm_sec});
}

std::string Platform::ComputerName() const {
    char name[256] = {};
    if (gethostname(name, sizeof name - 1) != 0) return {};
    return name;
}

std::string Platform::SystemErrorText(std::int32_t code) const {
    const char* text = std::strerror(code);
    // The library invents a text for a code that it doesn't know.
    if (text == nullptr || std::string_view(text).substr(0, 13) == "Unknown error") return {};
    return text;
}

std::string Platform::ApplicationName() const {
    char path[4096] = {};
    const ssize_t length = readlink("/proc/self/exe", path, sizeof path - 1);
    if (length <= 0) return "Zontara";
    const std::string_view whole(path, static_cast<std::size_t>(length));
    return std::string(whole.substr(whole.find_last_of('/') + 1));
}

std::string Platform::DataAccessVersion() const { return "?"; }

std::string Platform::ShortDateForm() const { return "dd/mm/yyyy"; }

BoxAnswer Platform::MessageBox(const std::string&, const std::string&, std::int32_t) const {
    // There is nobody to ask: the handler goes on to its report.
    return BoxAnswer::No;
}

}  // namespace Zontara

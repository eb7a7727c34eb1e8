#include "frame/platform.h"

#include <ctime>
#include <string_view>

#include <windows.h>

#undef MessageBox

namespace Zontara {

Date Platform::Now() const {
    SYSTEMTIME local{};
    GetLocalTime(&local);
    return WithTime(DateOf(local.wYear, local.wMonth, local.wDay), {local.wHour, local.wMinute, local.wSecond});
}

std::string Platform::ComputerName() const {
    char name[255] = {};
    DWORD length = sizeof name;
    if (!GetComputerNameA(name, &length)) return {};
    return std::string(name, length);
}

std::string Platform::SystemErrorText(std::int32_t code) const {
    char text[512] = {};
    const DWORD length =
        FormatMessageA(FORMAT_MESSAGE_FROM_SYSTEM, nullptr, static_cast<DWORD>(code), 0, text, sizeof text, nullptr);
    return std::string(text, length);
}

std::string Platform::ApplicationName() const {
    char path[MAX_PATH] = {};
    const DWORD length = GetModuleFileNameA(nullptr, path, sizeof path);
    std::string_view name(path, length);
    name = name.substr(name.find_last_of('\\') + 1);
    return std::string(name.substr(0, name.find_last_of('.')));
}

std::string Platform::DataAccessVersion() const { return "?"; }

std::string Platform::ShortDateForm() const {
    char form[80] = {};
    const int length = GetLocaleInfoA(LOCALE_USER_DEFAULT, LOCALE_SSHORTDATE, form, sizeof form);
    const std::string text(form, length > 0 ? static_cast<std::size_t>(length - 1) : 0);
    return text.find("yyyy") == std::string::npos ? "dd/mm/yyyy" : text;
}

BoxAnswer Platform::MessageBox(const std::string& text, const std::string& title, std::int32_t style) const {
    switch (MessageBoxA(nullptr, text.c_str(), title.c_str(), static_cast<UINT>(style))) {
        case IDYES:
            return BoxAnswer::Yes;
        case IDNO:
            return BoxAnswer::No;
        case IDCANCEL:
            return BoxAnswer::Cancel;
        default:
            return BoxAnswer::Other;
    }
}

}  // namespace Zontara

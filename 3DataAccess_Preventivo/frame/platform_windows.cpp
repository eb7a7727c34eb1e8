#include "frame/platform.h"

#include <string_view>

#include <windows.h>

#undef MessageBox

namespace Zontara {

namespace {

/// A text of the system's, in its code page, as UTF-8.
std::string Utf8(std::string_view text) {
    const int length = static_cast<int>(text.size());
    std::wstring wide(text.size(), L'\0');
    wide.resize(static_cast<std::size_t>(
        MultiByteToWideChar(CP_ACP, 0, text.data(), length, wide.data(), static_cast<int>(wide.size()))));
    const int wideLength = static_cast<int>(wide.size());
    const int size = WideCharToMultiByte(CP_UTF8, 0, wide.data(), wideLength, nullptr, 0, nullptr, nullptr);
    std::string made(static_cast<std::size_t>(size), '\0');
    WideCharToMultiByte(CP_UTF8, 0, wide.data(), wideLength, made.data(), size, nullptr, nullptr);
    return made;
}

/// The system's short date form ("d/M/yyyy") as the component has it: the same order and separator, every part with all
/// its digits. A form that names no day, month or year by its number has no counterpart.
std::string DigitsOnly(std::string_view form) {
    static constexpr std::string_view kDefault = "dd/mm/yyyy";
    const std::size_t separator = form.find_first_of("/-.");
    if (separator == std::string_view::npos || form.find("MMM") != std::string_view::npos) return std::string(kDefault);
    std::string made;
    for (const char part : form) {
        const std::string_view word = part == 'd' ? "dd" : part == 'M' ? "mm" : part == 'y' ? "yyyy" : "";
        if (word.empty() || made.find(word) != std::string::npos) continue;
        if (!made.empty()) made += form[separator];
        made += word;
    }
    return made.size() == kDefault.size() ? made : std::string(kDefault);
}

}  // namespace

Date Platform::Now() const {
    SYSTEMTIME local{};
    GetLocalTime(&local);
    return WithTime(DateOf(local.wYear, local.wMonth, local.wDay), {local.wHour, local.wMinute, local.wSecond});
}

std::string Platform::ComputerName() const {
    char name[255] = {};
    DWORD length = sizeof name;
    if (!GetComputerNameA(name, &length)) return {};
    return Utf8({name, length});
}

std::string Platform::SystemErrorText(std::int32_t code) const {
    char text[512] = {};
    const DWORD length =
        FormatMessageA(FORMAT_MESSAGE_FROM_SYSTEM, nullptr, static_cast<DWORD>(code), 0, text, sizeof text, nullptr);
    return Utf8({text, length});
}

std::string Platform::ApplicationName() const {
    char path[MAX_PATH] = {};
    const DWORD length = GetModuleFileNameA(nullptr, path, sizeof path);
    std::string_view name(path, length);
    name = name.substr(name.find_last_of('\\') + 1);
    return Utf8(name.substr(0, name.find_last_of('.')));
}

std::string Platform::DataAccessVersion() const { return "?"; }

std::string Platform::ShortDateForm() const {
    char form[80] = {};
    const int length = GetLocaleInfoA(LOCALE_USER_DEFAULT, LOCALE_SSHORTDATE, form, sizeof form);
    return DigitsOnly({form, length > 0 ? static_cast<std::size_t>(length - 1) : 0});
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

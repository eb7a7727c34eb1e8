#include "com/text.h"

#include "com/windows_api.h"

#include <new>

namespace com {

std::wstring Widen(std::string_view utf8) {
    const int length = static_cast<int>(utf8.size());
    std::wstring wide(static_cast<std::size_t>(MultiByteToWideChar(CP_UTF8, 0, utf8.data(), length, nullptr, 0)),
                      L'\0');
    MultiByteToWideChar(CP_UTF8, 0, utf8.data(), length, wide.data(), static_cast<int>(wide.size()));
    return wide;
}

std::string Narrow(std::wstring_view utf16) {
    const int length = static_cast<int>(utf16.size());
    const int size = WideCharToMultiByte(CP_UTF8, 0, utf16.data(), length, nullptr, 0, nullptr, nullptr);
    std::string narrow(static_cast<std::size_t>(size), '\0');
    WideCharToMultiByte(CP_UTF8, 0, utf16.data(), length, narrow.data(), size, nullptr, nullptr);
    return narrow;
}

BSTR ToBstr(std::string_view utf8) {
    const std::wstring wide = Widen(utf8);
    BSTR text = SysAllocStringLen(wide.data(), static_cast<UINT>(wide.size()));
    if (text == nullptr) throw std::bad_alloc();
    return text;
}

std::string FromBstr(BSTR text) { return Narrow({text, SysStringLen(text)}); }

}  // namespace com

#pragma once

#include "com/counted.h"
#include "com/text.h"
#include "com/windows_api.h"

#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

/// What the C++ clients share: texts, values, and telling what they see in the words of the script clients.
namespace client {

using com::Counted;

/// A BSTR of this client's own.
class Text {
public:
    Text() = default;
    explicit Text(std::wstring_view text) : held_(SysAllocStringLen(text.data(), static_cast<UINT>(text.size()))) {}
    Text(const Text&) = delete;
    Text& operator=(const Text&) = delete;
    ~Text() { SysFreeString(held_); }

    operator BSTR() const { return held_; }
    BSTR* operator&() { return &held_; }
    std::wstring Wide() const { return {held_, SysStringLen(held_)}; }

private:
    BSTR held_ = nullptr;
};

/// A VARIANT of this client's own.
class Variant : public VARIANT {
public:
    Variant() { VariantInit(this); }
    explicit Variant(std::wstring_view text) : Variant() {
        bstrVal = SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
        vt = VT_BSTR;
    }
    explicit Variant(LONG number) : Variant() {
        lVal = number;
        vt = VT_I4;
    }
    Variant(const Variant&) = delete;
    Variant& operator=(const Variant&) = delete;
    ~Variant() { VariantClear(this); }
};

inline std::string Escaped(std::wstring_view text) {
    std::string made;
    for (const wchar_t unit : text) {
        char code[8];
        std::snprintf(code, sizeof code, unit < 32 || unit > 126 ? "\\u%04x" : "%c", unit);
        made += code;
    }
    return made;
}

inline std::string Shown(double number) {
    char text[32];
    std::snprintf(text, sizeof text, "%.15g", number);
    return text;
}

inline std::string Shown(const VARIANT& value) {
    switch (value.vt) {
        case VT_NULL:
            return "null";
        case VT_EMPTY:
            return "empty";
        case VT_BSTR:
            return "\"" + Escaped({value.bstrVal, SysStringLen(value.bstrVal)}) + "\"";
        case VT_I4:
            return std::to_string(value.lVal);
        case VT_R8:
            return Shown(value.dblVal);
        default:
            return "a value of type " + std::to_string(value.vt);
    }
}

inline void Tell(const char* label, const std::string& shown) { std::printf("%s = %s\n", label, shown.c_str()); }
inline void Tell(const char* label, LONG number) { Tell(label, std::to_string(number)); }
inline void TellBool(const char* label, VARIANT_BOOL value) { Tell(label, value == VARIANT_FALSE ? "false" : "true"); }

/// Claims that didn't hold.
inline int& Failures() {
    static int failures = 0;
    return failures;
}

/// Silent as long as the claim holds.
inline void Expect(const char* claim, bool holds) {
    if (holds) return;
    ++Failures();
    std::printf("FAILED %s\n", claim);
}
inline void ExpectResult(const char* claim, HRESULT actual, HRESULT expected) {
    if (actual == expected) return;
    ++Failures();
    std::printf("FAILED %s: %08lx instead of %08lx\n", claim, static_cast<unsigned long>(actual),
                static_cast<unsigned long>(expected));
}

/// The report's second line tells time, program and computer.
inline void TellReport(const std::wstring& report) {
    std::size_t begin = 0;
    for (int number = 0;; ++number) {
        const std::size_t end = report.find(L"\r\n", begin);
        if (number != 1) std::printf("  %s\n", Escaped(report.substr(begin, end - begin)).c_str());
        if (end == std::wstring::npos) return;
        begin = end + 2;
    }
}

/// A new object of a class, under one of its interfaces.
template <class Interface> Counted<Interface> Create(REFCLSID classId) {
    Counted<Interface> made;
    const HRESULT result =
        CoCreateInstance(classId, nullptr, CLSCTX_INPROC_SERVER, __uuidof(Interface), made.ReceiveAny());
    if (FAILED(result)) {
        std::printf("FAILED to create an object: %08lx\n", static_cast<unsigned long>(result));
        std::exit(1);
    }
    return made;
}

}  // namespace client

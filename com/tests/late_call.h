#pragma once

#include "com/tests/console.h"
#include "com/windows_api.h"

#include <string>
#include <vector>

namespace client {

inline DISPID NumberOf(IDispatch* object, const wchar_t* name) {
    auto* text = const_cast<wchar_t*>(name);
    DISPID number = DISPID_UNKNOWN;
    object->GetIDsOfNames(IID_NULL, &text, 1, LOCALE_USER_DEFAULT, &number);
    return number;
}

/// What a late-bound call gave, and the exception that it raised, if it did.
struct Outcome {
    HRESULT result = S_OK;
    HRESULT number = S_OK;
    std::wstring source;
    std::wstring description;
    std::wstring helpFile;
    DWORD helpContext = 0;
};

inline std::wstring Taken(BSTR text) {
    std::wstring taken(text, SysStringLen(text));
    SysFreeString(text);
    return taken;
}

/// Calls a member late-bound with positional arguments in order, which may be by reference.
inline Outcome Call(IDispatch* object, const wchar_t* name, const std::vector<VARIANT>& arguments,
                    WORD flags = DISPATCH_METHOD, VARIANT* result = nullptr) {
    std::vector<VARIANT> reversed(arguments.rbegin(), arguments.rend());
    DISPPARAMS given{reversed.data(), nullptr, static_cast<UINT>(reversed.size()), 0};
    EXCEPINFO exception{};
    Outcome outcome;
    outcome.result = object->Invoke(NumberOf(object, name), IID_NULL, LOCALE_USER_DEFAULT, flags, &given, result,
                                    &exception, nullptr);
    outcome.number = exception.scode;
    outcome.source = Taken(exception.bstrSource);
    outcome.description = Taken(exception.bstrDescription);
    outcome.helpFile = Taken(exception.bstrHelpFile);
    outcome.helpContext = exception.dwHelpContext;
    return outcome;
}

inline VARIANT Number(LONG number) {
    VARIANT made{};
    made.vt = VT_I4;
    made.lVal = number;
    return made;
}

inline VARIANT Missing() {
    VARIANT made{};
    made.vt = VT_ERROR;
    made.scode = DISP_E_PARAMNOTFOUND;
    return made;
}

inline VARIANT Borrowed(BSTR text) {
    VARIANT made{};
    made.vt = VT_BSTR;
    made.bstrVal = text;
    return made;
}

}  // namespace client

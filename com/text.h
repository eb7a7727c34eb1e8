#pragma once

#include "com/windows_api.h"

#include <string>
#include <string_view>

/// Texts are UTF-8 inside and UTF-16 outside. Everything that is well formed crosses without loss, characters beyond
/// the basic plane and zeros inside included; half of a surrogate pair becomes U+FFFD.
namespace com {

std::wstring Widen(std::string_view utf8);
std::string Narrow(std::wstring_view utf16);

/// A new BSTR, for the caller to free. Never none: the empty text has one too.
BSTR ToBstr(std::string_view utf8);
/// The text of a BSTR; none is the empty text.
std::string FromBstr(BSTR text);

}  // namespace com

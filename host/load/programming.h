#pragma once

#include <string>
#include <string_view>

namespace host::load {

/// The nine frequency words.
bool IsFrequency(std::string_view word);

/// Why a calendar anchor can't serve a frequency; empty when it can. A launch stops at the first assignment whose
/// anchor it can't read, so none may get in.
std::string ProgrammingFault(bool synchronised, std::string_view frequency, std::string_view programming);

}  // namespace host::load

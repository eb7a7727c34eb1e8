#pragma once

#include <cstdlib>
#include <iostream>
#include <string_view>

namespace fuzz {

/// Ends the program, as a finding, unless something holds that always must.
inline void Require(bool holds, std::string_view what) {
    if (holds) return;
    std::cerr << "finding: " << what << std::endl;
    std::abort();
}

}  // namespace fuzz

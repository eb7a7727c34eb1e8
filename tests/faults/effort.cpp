#include "tests/faults/effort.h"

#include <cstdlib>
#include <iostream>
#include <string_view>

namespace faults {

bool IsLong() {
    const char* const form = std::getenv("ZONTARA_FAULTS");
    return form != nullptr && std::string_view(form) == "long";
}

void Say(const std::string& figures) { std::cout << "faults: " << figures << std::endl; }

}  // namespace faults

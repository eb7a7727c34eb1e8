#include "tests/fuzz/statement_text.h"

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::FeedStatement({reinterpret_cast<const char*>(data), size});
    return 0;
}

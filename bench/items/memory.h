#pragma once

#include <cstddef>

namespace bench {

/// How much the memory of this process has grown at its highest since the object was made.
class PeakMemory {
public:
    PeakMemory();
    std::size_t Grown() const;

private:
    std::size_t begun_;
};

}  // namespace bench

#include "bench/items/memory.h"

#include <malloc.h>

#include <fstream>
#include <string>

namespace bench {

namespace {

/// A line of the process's status, in bytes.
std::size_t StatusOf(const std::string& name) {
    std::ifstream status("/proc/self/status");
    std::string word;
    while (status >> word) {
        std::size_t kilobytes = 0;
        if (word == name && status >> kilobytes) return kilobytes * 1024;
    }
    return 0;
}

}  // namespace

PeakMemory::PeakMemory() {
    // What was freed goes back to the system, or it would be used again and not be counted.
    malloc_trim(0);
    std::ofstream("/proc/self/clear_refs") << 5;
    begun_ = StatusOf("VmRSS:");
}

std::size_t PeakMemory::Grown() const { return StatusOf("VmHWM:") - begun_; }

}  // namespace bench

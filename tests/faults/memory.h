#pragma once

#include <cstdint>

/// Memory that runs out: the program's own, by `operator new`, and the engine's.
namespace faults::memory {

enum class Shortage { Once, ForGood };

/// While one of these lives, allocations are counted, and the one after so many others fails: alone, or with all that
/// follow. A negative number only counts.
class Failing {
public:
    explicit Failing(std::int64_t after, Shortage shortage = Shortage::Once);
    ~Failing();
    Failing(const Failing&) = delete;
    Failing& operator=(const Failing&) = delete;

    static std::int64_t Allocations();
};

}  // namespace faults::memory

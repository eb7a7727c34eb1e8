#include "tests/faults/memory.h"

#include <sqlite3.h>

#include <atomic>
#include <cstdlib>
#include <new>
#include <stdexcept>

namespace {

std::atomic<bool> watching{false};
std::atomic<std::int64_t> allocations{0};
std::int64_t failAt = -1;
bool forGood = false;

bool MustFail() {
    if (!watching.load(std::memory_order_relaxed)) return false;
    const std::int64_t number = allocations.fetch_add(1, std::memory_order_relaxed);
    return failAt >= 0 && (forGood ? number >= failAt : number == failAt);
}

void* Allocate(std::size_t size) {
    void* const memory = MustFail() ? nullptr : std::malloc(size == 0 ? 1 : size);
    if (memory == nullptr) throw std::bad_alloc();
    return memory;
}

sqlite3_mem_methods engine;

void* AllocateForEngine(int size) { return MustFail() ? nullptr : engine.xMalloc(size); }
void* ReallocateForEngine(void* memory, int size) { return MustFail() ? nullptr : engine.xRealloc(memory, size); }

/// Stands between the engine and its memory, which it takes note of before its first database alone.
bool WatchEngine() {
    const bool known = sqlite3_config(SQLITE_CONFIG_GETMALLOC, &engine) == SQLITE_OK;
    sqlite3_mem_methods watched = engine;
    watched.xMalloc = &AllocateForEngine;
    watched.xRealloc = &ReallocateForEngine;
    return known && sqlite3_config(SQLITE_CONFIG_MALLOC, &watched) == SQLITE_OK;
}

const bool watchesEngine = WatchEngine();

}  // namespace

void* operator new(std::size_t size) { return Allocate(size); }
void* operator new[](std::size_t size) { return Allocate(size); }
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete[](void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }
void operator delete[](void* memory, std::size_t) noexcept { std::free(memory); }

namespace faults::memory {

Failing::Failing(std::int64_t after, Shortage shortage) {
    if (!watchesEngine) throw std::runtime_error("the engine's memory can't be watched");
    failAt = after;
    forGood = shortage == Shortage::ForGood;
    allocations = 0;
    watching = true;
}

Failing::~Failing() { watching = false; }

std::int64_t Failing::Allocations() { return allocations; }

}  // namespace faults::memory

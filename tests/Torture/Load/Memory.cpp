#include "tests/Torture/Load/Memory.h"

#include <atomic>
#include <cstdlib>
#include <fstream>
#include <malloc.h>
#include <new>
#include <unistd.h>

namespace {

std::atomic<std::size_t> bytesInUse = 0;
constexpr long never = -1;
/// How many allocations of this thread still succeed.
thread_local long successesLeft = never;

}  // namespace

void* operator new(std::size_t size) {
    if (successesLeft != never && successesLeft-- == 0) throw std::bad_alloc();
    void* memory = std::malloc(size);
    if (!memory) throw std::bad_alloc();
    bytesInUse += ::malloc_usable_size(memory);
    return memory;
}

void* operator new(std::size_t size, const std::nothrow_t&) noexcept try {
    return operator new(size);
} catch (const std::bad_alloc&) {
    return nullptr;
}

void operator delete(void* memory) noexcept {
    bytesInUse -= memory ? ::malloc_usable_size(memory) : 0;
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept { operator delete(memory); }

namespace vantix::Memory {

std::size_t inUse() { return bytesInUse; }

std::size_t resident() {
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    return 0;
#else
    ::malloc_trim(0);
    std::size_t all = 0, pages = 0;
    std::ifstream("/proc/self/statm") >> all >> pages;
    return pages * static_cast<std::size_t>(::sysconf(_SC_PAGESIZE));
#endif
}

Failure::Failure(long number) { successesLeft = number; }

Failure::~Failure() { successesLeft = never; }

/// Once it has happened, all later ones succeed.
bool Failure::hasHappened() const { return successesLeft == never; }

}  // namespace vantix::Memory

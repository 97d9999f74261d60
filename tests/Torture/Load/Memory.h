#pragma once

#include <cstddef>

namespace vantix {

/// The memory of this program, whose operators new and delete are those of Memory.cpp.
namespace Memory {

/// Bytes in use, of all threads.
std::size_t inUse();
/// Bytes of the process in the machine's memory, once all that is free has been given back; 0 under a sanitizer.
std::size_t resident();

/// While it lives, the allocation of that number fails that this thread makes; the first is number 0.
class Failure {
public:
    explicit Failure(long number);
    ~Failure();
    Failure(const Failure&) = delete;
    Failure& operator=(const Failure&) = delete;

    bool hasHappened() const;
};

}  // namespace Memory

}  // namespace vantix

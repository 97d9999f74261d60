#include "VantixQt/Drawing/DecodingTime.h"

#include <ctime>

namespace vantix {

namespace {

std::chrono::nanoseconds spentByThread() {
    std::timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
}

}  // namespace

DecodingTime::DecodingTime(std::chrono::nanoseconds most) : end_(spentByThread() + most) {}

bool DecodingTime::isOver() const { return spentByThread() >= end_; }

}  // namespace vantix

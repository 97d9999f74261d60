#include "VantixCore/Reports/ReportPolicy.h"

#include <algorithm>

namespace vantix {

bool ReportPolicy::isTaken(int httpStatus) { return httpStatus >= 200 && httpStatus < 300; }

bool ReportPolicy::isFinalRefusal(int httpStatus) {
    constexpr int requestTimeOut = 408;
    constexpr int tooManyRequests = 429;
    return httpStatus >= 400 && httpStatus < 500 && httpStatus != requestTimeOut && httpStatus != tooManyRequests;
}

Duration ReportPolicy::waitAfter(int failures, Duration asked, double random) {
    Duration wait = firstWait;
    for (int failure = 1; failure < failures && wait < longestWait; ++failure) wait *= 2;
    wait = std::min(wait, longestWait);

    Duration half = wait / 2;
    auto spread = std::chrono::duration_cast<Duration>(half * random);
    return std::clamp(asked, Duration(0), longestWaitAsked) + half + spread;
}

}  // namespace vantix

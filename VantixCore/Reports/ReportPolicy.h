#pragma once

#include "Platform/Ports/Clock.h"

#include <cstddef>

namespace vantix {

/// How much reporting may cost, and how patient it is.
namespace ReportPolicy {

/// Reports that wait at most; beyond them the oldest goes.
inline constexpr std::size_t mostPending = 1000;
/// How long keeping or sending waits for an outbox that another process holds.
inline constexpr Duration outboxTimeOut = seconds(5);
/// Reports that are sent at once.
inline constexpr std::size_t largestBatch = 50;
/// Bytes of a batch beyond which no further report joins it.
inline constexpr std::size_t largestBatchBody = 256U << 10;

/// For one batch as a whole, in seconds.
inline constexpr double timeOut = 60;

/// The wait after the first failure; each further one doubles it.
inline constexpr Duration firstWait = seconds(5);
inline constexpr Duration longestWait = seconds(15 * 60);
/// Of the wait that the back end asks for.
inline constexpr Duration longestWaitAsked = seconds(24 * 60 * 60);

/// Whether the back end has taken what it was sent.
bool isTaken(int httpStatus);
/// Whether it never will.
bool isFinalRefusal(int httpStatus);

/// How long to wait after so many failures in a row (from 1). `asked` is the back end's own wish, zero for none: it is
/// waited for first. `random`, from 0 to 1, spreads the rest between half of it and all of it.
Duration waitAfter(int failures, Duration asked, double random);

}  // namespace ReportPolicy

}  // namespace vantix

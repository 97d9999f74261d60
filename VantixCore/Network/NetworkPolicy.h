#pragma once

#include "Platform/Ports/Clock.h"

#include <cstddef>

namespace vantix {

/// What the network is allowed to cost. Only reports are ever sent twice by themselves (ReportPolicy).
namespace NetworkPolicy {

/// The longest body of an answer of the back end, in bytes.
inline constexpr std::size_t largestAnswer = 8U << 20;
/// The longest body of an image, in bytes.
inline constexpr std::size_t largestImage = 20U << 20;

/// For name, connection and TLS together.
inline constexpr Duration connectTimeOut = seconds(10);
/// For an image as a whole.
inline constexpr Duration imageTimeOut = seconds(30);

/// A redirect leads to http or https only, and never from https to http.
inline constexpr int mostRedirects = 5;

/// So that a host that does not answer holds up nobody else.
inline constexpr std::size_t mostTransfersPerOrigin = 6;

}  // namespace NetworkPolicy

}  // namespace vantix

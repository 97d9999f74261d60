#pragma once

#include "Platform/Ports/Clock.h"

#include <cstddef>

namespace vantix {

/// What the network is allowed to cost.
///
/// Only reports are sent again after a failure (ReportPolicy). Any request, though, a POST too, may reach a server
/// twice: when a connection that was kept from an earlier request turns out to be dead, and not a byte of an answer has
/// come over it, libcurl sends the request again over another.
namespace NetworkPolicy {

/// The longest body of an answer of the back end, in bytes.
inline constexpr std::size_t largestAnswer = 8U << 20;
/// The longest body of an image, in bytes.
inline constexpr std::size_t largestImage = 20U << 20;

/// For an image as a whole. (A call of the back end has a time of its own.)
inline constexpr Duration imageTimeOut = seconds(30);
/// For name, connection and TLS together, on the way to an image.
inline constexpr Duration imageConnectTimeOut = seconds(10);

/// A redirect leads to http or https only, and never from https to http.
inline constexpr int mostRedirects = 5;

/// So that a host that does not answer holds up nobody else; for images and for calls of the back end each, which may
/// live on one host.
inline constexpr std::size_t mostTransfersPerOrigin = 6;
/// Of all transfers so many are never images, as far as there are more than one.
inline constexpr std::size_t transfersForCalls = 4;

}  // namespace NetworkPolicy

}  // namespace vantix

#pragma once

#include "Platform/Values/WordTable.h"

namespace vantix {

/// How the network misbehaves.
enum class NetworkFault {
    none,
    /// Every request fails, as without a connection; those under way, too.
    off,
    /// Every request starts three seconds late.
    slow,
};

inline constexpr WordTable<NetworkFault, 3> networkFaultWords{
    {{NetworkFault::none, "on"}, {NetworkFault::off, "off"}, {NetworkFault::slow, "slow"}}};

}  // namespace vantix

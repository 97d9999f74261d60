#pragma once

#include "VantixCore/VantixHost.h"

namespace vantix {

/// A host for tools that show something else than what happens.
inline VantixHost silentHost() {
    VantixHost host;
    host.logSink = [](const LogLine&) {};
    return host;
}

}  // namespace vantix

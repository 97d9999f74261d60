#pragma once

#include "Platform/Values/Export.h"
#include "VantixCore/NetworkFault.h"
#include "VantixCore/VantixAPIRequestGenerator.h"
#include "VantixCore/VantixResponseGenerator.h"

#include <memory>

namespace vantix {

/// Sends calls to the back end. Usable from any thread but the main one.
class VANTIX_EXPORT VantixNetworkManager {
public:
    /// Blocks until the answer is there, so call it on the utility queue. An answer with an HTTP status of 400 or above
    /// is returned, with its error set. Throws VantixError when no answer arrives: no base address, name, connection,
    /// TLS, time-out, pin, or more than 8 MiB. Never null from this implementation.
    std::shared_ptr<const VantixResponseGenerator> callAPI(const VantixAPIRequestGenerator& request) const;

    /// Lets every call and image download that is under way fail soon, for a program that wants to end.
    static void cancelAll();

    /// For trying out what a program makes of a bad network: from now on calls and image downloads of this installation
    /// meet it. Any thread.
    static void setFault(NetworkFault fault);
};

}  // namespace vantix

#pragma once

#include "Platform/Values/Export.h"
#include "Platform/Values/Result.h"
#include "VantixCore/NetworkFault.h"
#include "VantixCore/TransferHandle.h"
#include "VantixCore/VantixAPIRequestGenerator.h"
#include "VantixCore/VantixError.h"
#include "VantixCore/VantixResponseGenerator.h"

#include <functional>
#include <memory>

namespace vantix {

/// Sends calls to the back end. Usable from any thread.
class VANTIX_EXPORT VantixNetworkManager {
public:
    /// An answer with an HTTP status of 400 or above is an answer, with its error set. An error means that none
    /// arrived: no base address, name, connection, TLS, time-out, pin, or more than 8 MiB. Never null from this
    /// implementation.
    using Outcome = Result<std::shared_ptr<const VantixResponseGenerator>, VantixError>;

    /// The call is read at once. The completion runs on the network queue, at most once, and must not block.
    TransferHandle callAPI(const VantixAPIRequestGenerator& request, std::function<void(Outcome)> completion) const;

    /// The same, and blocks until the outcome is there, so call it on the utility queue. Throws the error.
    std::shared_ptr<const VantixResponseGenerator> callAPI(const VantixAPIRequestGenerator& request) const;

    /// Lets every call and image download that is under way fail soon, for a program that wants to end.
    static void cancelAll();

    /// For trying out what a program makes of a bad network: from now on calls and image downloads of this installation
    /// meet it. Any thread.
    static void setFault(NetworkFault fault);
};

}  // namespace vantix

#pragma once

#include "Platform/Ports/Dispatcher.h"
#include "VantixCore/Network/BackEndAnswer.h"
#include "VantixCore/Network/HTTPClient.h"
#include "VantixCore/VantixAPIRequestGenerator.h"

#include <functional>
#include <memory>

namespace vantix {

/// Calls the back end: makes an HTTP request of a call, and an answer of what comes back. Usable from any thread.
class BackEndClient {
public:
    /// An error means that no answer arrived, or that the call could not be sent (`configuration`).
    using Outcome = Result<BackEndAnswer, VantixError>;

    explicit BackEndClient(std::shared_ptr<HTTPClient> client);

    /// The call is read at once. The completion runs on the network queue, at most once, and must not block.
    TransferHandle send(const VantixAPIRequestGenerator& call, std::function<void(Outcome)> completion) const;

    /// The same, and waits for the outcome in a group of the dispatcher: never on the main thread, nor where the
    /// network or the store works.
    Outcome sendAndWait(const VantixAPIRequestGenerator& call, Dispatcher& dispatcher) const;

private:
    std::shared_ptr<HTTPClient> client_;
};

}  // namespace vantix

#pragma once

#include "VantixCore/Network/HTTPTransport.h"
#include "VantixCore/VantixHost.h"

#include <memory>
#include <mutex>

namespace vantix {

/// A request, and those that its redirects lead to, one at a time. Lives as long as one of them is under way. Usable
/// from any thread.
class RedirectChain : public std::enable_shared_from_this<RedirectChain> {
public:
    /// `host` is told of every request that is sent. The completion runs on the network queue, at most once.
    RedirectChain(std::shared_ptr<const VantixHost> host, std::shared_ptr<HTTPTransport> transport,
                  HTTPCompletion completion);

    void send(HTTPRequest request, int redirectsLeft);
    /// Ends what is under way; from now on nothing is sent and nobody called.
    void cancel();

private:
    bool isCancelled();
    void follow(const HTTPRequest& request, int redirectsLeft, HTTPOutcome outcome);

    std::shared_ptr<const VantixHost> host_;
    std::shared_ptr<HTTPTransport> transport_;
    HTTPCompletion completion_;

    std::mutex mutex_;
    // Behind the mutex.
    bool isCancelled_ = false;
    TransferHandle underWay_;
};

}  // namespace vantix

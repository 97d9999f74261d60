#pragma once

#include "VantixCore/Network/HTTPTransport.h"
#include "VantixCore/VantixHost.h"

#include <memory>

namespace vantix {

/// Sends requests as the policy of the network asks: follows redirects, tells the host of everything that is sent.
/// Usable from any thread.
class HTTPClient {
public:
    HTTPClient(Dispatcher& dispatcher, std::shared_ptr<const VantixHost> host);

    /// The completion runs on the network queue, once, and must not block. An answer of any status is an answer.
    void send(HTTPRequest request, HTTPTransport::Completion completion) const;

    /// See HTTPTransport::cancelAll.
    void cancelAll() const;

private:
    /// One request, and those that its redirects lead to.
    void exchange(HTTPRequest request, int redirectsLeft, HTTPTransport::Completion completion) const;

    std::shared_ptr<const VantixHost> host_;
    std::shared_ptr<HTTPTransport> transport_;
};

}  // namespace vantix

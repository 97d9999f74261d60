#pragma once

#include "VantixCore/Network/HTTPTransport.h"
#include "VantixCore/VantixHost.h"

#include <memory>

namespace vantix {

/// Sends requests as the policy of the network asks: follows redirects, tells the host of everything that is sent.
/// Usable from any thread.
class HTTPClient {
public:
    /// `queue` is a serial queue for this client alone.
    HTTPClient(std::shared_ptr<DispatchQueue> queue, std::shared_ptr<const VantixHost> host);

    /// The completion runs on the network queue, at most once, and must not block. An answer of any status is an
    /// answer. The handle stands for the request and all that its redirects lead to.
    TransferHandle send(HTTPRequest request, HTTPCompletion completion) const;
    /// See HTTPTransport::refuse.
    TransferHandle refuse(VantixError error, HTTPCompletion completion) const;

    /// See HTTPTransport::cancelAll.
    void cancelAll() const;
    /// See HTTPTransport::setFault.
    void setFault(NetworkFault fault) const;

private:
    std::shared_ptr<const VantixHost> host_;
    std::shared_ptr<HTTPTransport> transport_;
};

}  // namespace vantix

#pragma once

#include "VantixCore/HTTPTransport.h"

#include <memory>

namespace vantix {

/// Sends requests as the policy of the network asks: follows redirects, tells the host of everything that is sent.
/// Usable from any thread.
class HTTPClient {
public:
    HTTPClient();

    /// The client of the platform that is installed.
    static std::shared_ptr<HTTPClient> current();

    /// The completion runs on the network queue, once, and must not block. An answer of any status is an answer.
    void send(HTTPRequest request, HTTPTransport::Completion completion) const;

    /// See HTTPTransport::cancelAll.
    void cancelAll() const;

private:
    std::shared_ptr<HTTPTransport> transport_;
};

}  // namespace vantix

#pragma once

#include "Platform/Ports/Clock.h"
#include "Platform/Values/Result.h"
#include "VantixCore/VantixError.h"
#include "VantixCore/VantixNetworkManager.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace vantix {

class Dispatcher;

/// One exchange over HTTP, with its limits.
struct HTTPRequest {
    std::string method = "GET";
    /// Scheme http or https; any other is refused.
    std::string url;
    HTTPHeaders headers = {};
    /// Sent with every method, GET included.
    std::optional<std::string> body = {};
    /// Bytes, compressed or not, beyond which the answer is abandoned.
    std::size_t largestBody = 0;
    /// For the whole exchange, from the moment at which it starts.
    Duration timeOut = {};
    Duration connectTimeOut = {};
    /// "sha256//BASE64": over TLS, the server's public key decides instead of its certificate. Empty: the certificate
    /// must be valid.
    std::string pin = {};
};

struct HTTPResponse {
    int status = 0;
    std::string body;
    /// Where a redirect leads, as an absolute URL; empty when the answer is none.
    std::string redirectURL;
    Duration elapsed = {};
    /// How long the server asks to be left alone (Retry-After); zero when it does not.
    Duration retryAfter = {};
};

/// Exchanges requests for answers, and nothing more: no redirects, no cookies, no retries. Connections are kept alive
/// and shared. Usable from any thread.
///
/// One piece of work on a queue of its own drives all transfers and ends with the last of them, so that an idle
/// transport neither occupies a thread nor wakes one.
class HTTPTransport {
public:
    using Completion = std::function<void(Result<HTTPResponse, VantixError>)>;

    /// At most so many transfers are under way at a time; the others wait and start in order, except that those to an
    /// origin that has its share (NetworkPolicy::mostTransfersPerOrigin) let others pass.
    HTTPTransport(Dispatcher& dispatcher, std::size_t maximumConcurrentTransfers);

    /// The completion runs on the network queue, once, and must not block.
    void send(HTTPRequest request, Completion completion);

    /// Scheme, host and port of a URL, in a form that can be compared; empty for what is no URL.
    static std::string originOf(const std::string& url);

    /// Every transfer that was handed over before fails soon (`connection`), so that nobody waits for it any more.
    void cancelAll();

private:
    class Driver;
    std::shared_ptr<Driver> driver_;
};

}  // namespace vantix

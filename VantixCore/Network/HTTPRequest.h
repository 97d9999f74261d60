#pragma once

#include "Platform/Ports/Clock.h"
#include "Platform/Values/URL.h"
#include "VantixCore/URLRequestHeaders.h"

#include <cstddef>
#include <optional>
#include <string>

namespace vantix {

/// Images share the room that there is for transfers, and leave some of it to calls of the back end.
enum class TransferPurpose { call, image };

/// One exchange over HTTP, with its limits.
struct HTTPRequest {
    /// A web address.
    URL url;
    std::string method = "GET";
    HTTPHeaders headers = {};
    /// Sent with every method, GET included.
    std::optional<std::string> body = {};
    /// Bytes, compressed or not, beyond which the answer is abandoned.
    std::size_t largestBody = 0;
    /// For the whole exchange, from the moment at which it starts.
    Duration timeOut = {};
    /// For name, connection and TLS together; absent: they may take the whole time.
    std::optional<Duration> connectTimeOut = {};
    /// "sha256//BASE64": over TLS, the server's public key decides instead of its certificate. Empty: the certificate
    /// must be valid.
    std::string pin = {};
    TransferPurpose purpose = TransferPurpose::call;
};

}  // namespace vantix

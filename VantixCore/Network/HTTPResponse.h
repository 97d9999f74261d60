#pragma once

#include "Platform/Ports/Clock.h"
#include "Platform/Values/Result.h"
#include "VantixCore/VantixError.h"

#include <functional>
#include <string>

namespace vantix {

/// The answer to one exchange over HTTP.
struct HTTPResponse {
    int status = 0;
    std::string body;
    /// Where a redirect leads, as an absolute URL; empty when the answer is none.
    std::string redirectURL;
    Duration elapsed = {};
    /// How long the server asks to be left alone (Retry-After); zero when it does not.
    Duration retryAfter = {};
};

/// An answer of any status is an answer; an error means that none arrived.
using HTTPOutcome = Result<HTTPResponse, VantixError>;
using HTTPCompletion = std::function<void(HTTPOutcome)>;

}  // namespace vantix

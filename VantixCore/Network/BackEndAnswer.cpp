#include "VantixCore/Network/BackEndAnswer.h"

#include <utility>

namespace vantix {

BackEndAnswer::BackEndAnswer(HTTPResponse response) : httpStatus_(response.status), retryAfter_(response.retryAfter) {
    if (!response.body.empty()) data_ = std::move(response.body);
    if (httpStatus_ < 400) return;
    error_ = VantixError(VantixError::Kind::server, httpStatus_,
                         "The server answered with status " + std::to_string(httpStatus_));
}

}  // namespace vantix

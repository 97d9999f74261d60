#pragma once

#include <string>
#include <utility>
#include <vector>

namespace vantix {

/// A network call as it is sent. Header names are sorted, secrets replaced by "…".
struct SentRequest {
    std::string method;
    std::string url;
    std::vector<std::pair<std::string, std::string>> headers;
    std::string body;
};

}  // namespace vantix

#pragma once

#include "Platform/Values/Export.h"
#include "VantixCore/URLRequestHeaders.h"

#include <optional>
#include <string>

namespace vantix {

enum class HTTPMethod { get, post, put, del };

/// A call of the back end.
class VANTIX_EXPORT VantixAPIRequestGenerator {
public:
    virtual ~VantixAPIRequestGenerator() = default;

    virtual std::string accountId() const = 0;
    virtual HTTPMethod method() const = 0;
    /// Below the base address ("/mapp/events").
    virtual std::string path() const = 0;
    virtual std::optional<std::string> body() const = 0;
    virtual std::optional<HTTPHeaders> header() const = 0;
    /// Seconds for the whole call, connecting included.
    virtual double timeOut() const = 0;
    virtual bool shouldSendAccessToken() const = 0;

    virtual std::string baseURL() const = 0;
    virtual std::string sslKeyHash() const = 0;
    virtual std::string getAccessToken() const = 0;
};

}  // namespace vantix

#pragma once

#include "Platform/Ports/Clock.h"
#include "VantixCore/VantixError.h"

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>

namespace vantix {

enum class HTTPMethod { get, post, put, del };

using HTTPHeaders = std::map<std::string, std::string>;

/// Header sets for the back end.
namespace URLRequestHeaders {
/// For authenticated event calls.
HTTPHeaders authEventReportHeaders();
}  // namespace URLRequestHeaders

/// A call of the back end.
class VantixAPIRequestGenerator {
public:
    virtual ~VantixAPIRequestGenerator() = default;

    virtual std::string accountId() const = 0;
    virtual HTTPMethod method() const = 0;
    /// Below the base address ("/mapp/events").
    virtual std::string path() const = 0;
    virtual std::optional<std::string> body() const = 0;
    virtual std::optional<HTTPHeaders> header() const = 0;
    /// Seconds for the whole call.
    virtual double timeOut() const = 0;
    virtual bool shouldSendAccessToken() const = 0;

    virtual std::string baseURL() const = 0;
    virtual std::string sslKeyHash() const = 0;
    virtual std::string getAccessToken() const = 0;
};

/// The answer to a call.
struct VantixResponseGenerator {
    /// Absent when the answer has no bytes.
    std::optional<std::string> rcvdData;
    /// Set for an HTTP status of 400 and above; the data is kept beside it.
    std::optional<VantixError> error;
    int httpStatus = 0;
    /// How long the back end asks to be left alone; zero when it does not.
    Duration retryAfter{0};
};

/// Sends calls to the back end. Usable from any thread but the main one.
class VantixNetworkManager {
public:
    /// Blocks until the answer is there, so call it on the utility queue. Throws VantixError when no answer arrives: no
    /// base address, name, connection, TLS, time-out, pin, or more than 8 MiB.
    std::optional<VantixResponseGenerator> callAPI(const VantixAPIRequestGenerator& request) const;

    /// Lets every call and image download that is under way fail soon, for a program that wants to end.
    static void cancelAll();
};

}  // namespace vantix

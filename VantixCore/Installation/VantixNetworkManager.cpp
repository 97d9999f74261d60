#include "VantixCore/VantixNetworkManager.h"

#include "Platform/Ports/Dispatcher.h"
#include "Platform/Ports/Platform.h"
#include "Platform/Values/URL.h"
#include "VantixCore/Installation/Installation.h"
#include "VantixCore/Network/HTTPClient.h"
#include "VantixCore/Network/NetworkPolicy.h"

#include <cmath>
#include <utility>

namespace vantix {

namespace {

const char* nameOf(HTTPMethod method) {
    switch (method) {
        case HTTPMethod::get:
            return "GET";
        case HTTPMethod::post:
            return "POST";
        case HTTPMethod::put:
            return "PUT";
        case HTTPMethod::del:
            return "DELETE";
    }
    return "GET";
}

std::string addressOf(const VantixAPIRequestGenerator& request) {
    std::string base = request.baseURL();
    std::string path = request.path();
    if (base.ends_with('/') && path.starts_with('/')) base.pop_back();
    auto url = URL::parse(base + path);
    if (!url || !url->isWebAddress()) {
        throw VantixError(VantixError::Kind::configuration, 0, "There is no valid base address: \"" + base + "\"");
    }
    return url->text();
}

HTTPHeaders headersOf(const VantixAPIRequestGenerator& request) {
    HTTPHeaders headers = request.header().value_or(HTTPHeaders{});
    std::string token = request.shouldSendAccessToken() ? request.getAccessToken() : "";
    if (!token.empty()) headers["Authorization"] = "Bearer " + token;
    return headers;
}

/// Between a millisecond and a day, whatever was asked for.
Duration timeOutOf(const VantixAPIRequestGenerator& request) {
    return seconds(std::fmin(std::fmax(request.timeOut(), 0.001), 86400));
}

HTTPRequest makeHTTPRequest(const VantixAPIRequestGenerator& request) {
    return {nameOf(request.method()),
            addressOf(request),
            headersOf(request),
            request.body(),
            NetworkPolicy::largestAnswer,
            timeOutOf(request),
            NetworkPolicy::connectTimeOut,
            request.sslKeyHash()};
}

HTTPResponse sendAndWait(HTTPRequest request) {
    std::optional<Result<HTTPResponse, VantixError>> outcome;
    auto group = Platform::current()->dispatcher->makeGroup();
    group->enter();
    Installation::current()->httpClient()->send(std::move(request),
                                                [&outcome, group](Result<HTTPResponse, VantixError> result) {
                                                    outcome = std::move(result);
                                                    group->leave();
                                                });
    group->wait();
    if (!*outcome) throw outcome->error();
    return std::move(*outcome).value();
}

}  // namespace

HTTPHeaders URLRequestHeaders::authEventReportHeaders() {
    return {{"Accept", "application/json"}, {"Content-Type", "application/json"}};
}

std::optional<VantixResponseGenerator> VantixNetworkManager::callAPI(const VantixAPIRequestGenerator& request) const {
    HTTPResponse response = sendAndWait(makeHTTPRequest(request));
    VantixResponseGenerator answer;
    answer.httpStatus = response.status;
    answer.retryAfter = response.retryAfter;
    if (!response.body.empty()) answer.rcvdData = std::move(response.body);
    if (response.status >= 400) {
        answer.error = VantixError(VantixError::Kind::server, response.status,
                                   "The server answered with status " + std::to_string(response.status));
    }
    return answer;
}

void VantixNetworkManager::cancelAll() { Installation::current()->httpClient()->cancelAll(); }

}  // namespace vantix

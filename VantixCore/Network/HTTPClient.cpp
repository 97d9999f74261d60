#include "VantixCore/Network/HTTPClient.h"

#include "Platform/Values/URL.h"
#include "VantixCore/Network/NetworkPolicy.h"

#include <strings.h>
#include <utility>

namespace vantix {

namespace {

bool isSecret(const std::string& headerName) { return strcasecmp(headerName.c_str(), "Authorization") == 0; }

/// The value with all but its scheme hidden ("Bearer …").
std::string withoutSecret(const std::string& value) { return value.substr(0, value.find(' ') + 1) + "…"; }

void tellHost(const VantixHost& host, const HTTPRequest& request) {
    if (!host.onRequest) return;
    SentRequest sent{request.method, request.url, {}, request.body.value_or("")};
    for (const auto& [name, value] : request.headers) {
        sent.headers.emplace_back(name, isSecret(name) ? withoutSecret(value) : value);
    }
    host.onRequest(sent);
}

std::string schemeOf(const std::string& url) {
    auto parsed = URL::parse(url);
    return parsed ? parsed->scheme() : std::string();
}

/// Why a redirect is not followed, if so.
std::optional<VantixError> objectionTo(const HTTPRequest& from, const std::string& to, int redirectsLeft) {
    auto refused = [](const std::string& why) { return VantixError(VantixError::Kind::refused, 0, why); };
    if (redirectsLeft == 0) return refused("More than " + std::to_string(NetworkPolicy::mostRedirects) + " redirects");
    auto url = URL::parse(to);
    if (!url || !url->isWebAddress()) return refused("A redirect leads to an address that cannot be fetched");
    if (url->scheme() == "http" && schemeOf(from.url) == "https") {
        return refused("A redirect leads from https to http");
    }
    return {};
}

/// Only "See Other" turns a call into a GET: a call that lost what it had to say on its way to a new address would take
/// the answer for a receipt.
HTTPRequest redirected(HTTPRequest request, const HTTPResponse& response) {
    constexpr int seeOther = 303;
    if (response.status == seeOther && request.method != "GET") {
        request.method = "GET";
        request.body.reset();
        request.headers.erase("Content-Type");
    }
    if (HTTPTransport::originOf(response.redirectURL) != HTTPTransport::originOf(request.url)) {
        std::erase_if(request.headers, [](const auto& header) { return isSecret(header.first); });
    }
    request.url = response.redirectURL;
    request.timeOut -= response.elapsed;
    return request;
}

}  // namespace

HTTPClient::HTTPClient(Dispatcher& dispatcher, std::shared_ptr<const VantixHost> host)
    : host_(std::move(host)),
      transport_(std::make_shared<HTTPTransport>(dispatcher, host_->maximumConcurrentTransfers)) {}

void HTTPClient::send(HTTPRequest request, HTTPTransport::Completion completion) const {
    exchange(std::move(request), NetworkPolicy::mostRedirects, std::move(completion));
}

void HTTPClient::exchange(HTTPRequest request, int redirectsLeft, HTTPTransport::Completion completion) const {
    tellHost(*host_, request);
    auto follow = [self = *this, request, redirectsLeft, completion](Result<HTTPResponse, VantixError> result) {
        if (!result || result.value().redirectURL.empty()) return completion(std::move(result));
        if (auto objection = objectionTo(request, result.value().redirectURL, redirectsLeft)) {
            return completion(*objection);
        }
        self.exchange(redirected(request, result.value()), redirectsLeft - 1, completion);
    };
    transport_->send(std::move(request), std::move(follow));
}

void HTTPClient::cancelAll() const { transport_->cancelAll(); }

}  // namespace vantix

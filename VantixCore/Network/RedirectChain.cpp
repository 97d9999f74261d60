#include "VantixCore/Network/RedirectChain.h"

#include "VantixCore/Network/NetworkPolicy.h"

#include <optional>
#include <string>
#include <strings.h>
#include <utility>

namespace vantix {

namespace {

bool isSecret(const std::string& headerName) { return strcasecmp(headerName.c_str(), "Authorization") == 0; }

/// The value with all but its scheme hidden ("Bearer …").
std::string withoutSecret(const std::string& value) { return value.substr(0, value.find(' ') + 1) + "…"; }

void tellHost(const VantixHost& host, const HTTPRequest& request) {
    if (!host.onRequest) return;
    SentRequest sent{request.method, request.url.text(), {}, request.body.value_or("")};
    for (const auto& [name, value] : request.headers) {
        sent.headers.emplace_back(name, isSecret(name) ? withoutSecret(value) : value);
    }
    host.onRequest(sent);
}

VantixError refused(const std::string& why) { return {VantixError::Kind::refused, 0, why}; }

/// Where a redirect leads, or why it is not followed.
Result<URL, VantixError> destination(const URL& from, const std::string& redirectURL, int redirectsLeft) {
    if (redirectsLeft == 0) return refused("More than " + std::to_string(NetworkPolicy::mostRedirects) + " redirects");
    auto url = URL::parse(redirectURL);
    if (!url || !url->isWebAddress()) return refused("A redirect leads to an address that cannot be fetched");
    if (url->scheme() == "http" && from.scheme() == "https") return refused("A redirect leads from https to http");
    return *std::move(url);
}

/// Only "See Other" turns a call into a GET: a call that lost what it had to say on its way to a new address would take
/// the answer for a receipt.
HTTPRequest redirected(HTTPRequest request, const URL& destination, const HTTPResponse& response) {
    constexpr int seeOther = 303;
    if (response.status == seeOther && request.method != "GET") {
        request.method = "GET";
        request.body.reset();
        request.headers.erase("Content-Type");
    }
    if (destination.origin() != request.url.origin()) {
        std::erase_if(request.headers, [](const auto& header) { return isSecret(header.first); });
    }
    request.url = destination;
    request.timeOut -= response.elapsed;
    return request;
}

}  // namespace

RedirectChain::RedirectChain(std::shared_ptr<const VantixHost> host, std::shared_ptr<HTTPTransport> transport,
                             HTTPCompletion completion)
    : host_(std::move(host)), transport_(std::move(transport)), completion_(std::move(completion)) {}

void RedirectChain::send(HTTPRequest request, int redirectsLeft) {
    auto follow = [self = shared_from_this(), request, redirectsLeft](HTTPOutcome outcome) {
        self->follow(request, redirectsLeft, std::move(outcome));
    };
    if (isCancelled()) return;
    if (!HTTPTransport::objectionTo(request)) tellHost(*host_, request);
    std::lock_guard lock(mutex_);
    if (!isCancelled_) underWay_ = transport_->send(std::move(request), std::move(follow));
}

void RedirectChain::follow(const HTTPRequest& request, int redirectsLeft, HTTPOutcome outcome) {
    if (!outcome || outcome.value().redirectURL.empty()) return completion_(std::move(outcome));
    auto next = destination(request.url, outcome.value().redirectURL, redirectsLeft);
    if (!next) return completion_(next.error());
    send(redirected(request, next.value(), outcome.value()), redirectsLeft - 1);
}

bool RedirectChain::isCancelled() {
    std::lock_guard lock(mutex_);
    return isCancelled_;
}

void RedirectChain::cancel() {
    TransferHandle underWay;
    std::lock_guard lock(mutex_);
    isCancelled_ = true;
    underWay = std::move(underWay_);
}

}  // namespace vantix

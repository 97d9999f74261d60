#include "VantixCore/Network/BackEndClient.h"

#include "Platform/Values/URL.h"
#include "Platform/Values/WordTable.h"
#include "VantixCore/Network/NetworkPolicy.h"

#include <cmath>
#include <optional>
#include <string>
#include <utility>

namespace vantix {

namespace {

constexpr WordTable<HTTPMethod, 4> methods{
    {{HTTPMethod::get, "GET"}, {HTTPMethod::post, "POST"}, {HTTPMethod::put, "PUT"}, {HTTPMethod::del, "DELETE"}}};

Result<URL, VantixError> addressOf(const VantixAPIRequestGenerator& call) {
    std::string base = call.baseURL();
    std::string path = call.path();
    if (base.ends_with('/') && path.starts_with('/')) base.pop_back();
    auto url = URL::parse(base + path);
    if (!url || !url->isWebAddress()) {
        return VantixError(VantixError::Kind::configuration, 0, "There is no valid base address: \"" + base + "\"");
    }
    return *std::move(url);
}

HTTPHeaders headersOf(const VantixAPIRequestGenerator& call) {
    HTTPHeaders headers = call.header().value_or(HTTPHeaders{});
    std::string token = call.shouldSendAccessToken() ? call.getAccessToken() : "";
    if (!token.empty()) headers["Authorization"] = "Bearer " + token;
    return headers;
}

/// Between a millisecond and a day, whatever was asked for.
Duration timeOutOf(const VantixAPIRequestGenerator& call) {
    return seconds(std::fmin(std::fmax(call.timeOut(), 0.001), 86400));
}

HTTPRequest httpRequest(const VantixAPIRequestGenerator& call, URL address) {
    return {.url = std::move(address),
            .method = std::string(methods.word(call.method())),
            .headers = headersOf(call),
            .body = call.body(),
            .largestBody = NetworkPolicy::largestAnswer,
            .timeOut = timeOutOf(call),
            .pin = call.sslKeyHash()};
}

}  // namespace

BackEndClient::BackEndClient(std::shared_ptr<HTTPClient> client) : client_(std::move(client)) {}

TransferHandle BackEndClient::send(const VantixAPIRequestGenerator& call,
                                   std::function<void(Outcome)> completion) const {
    auto answer = [completion = std::move(completion)](HTTPOutcome outcome) {
        if (!outcome) return completion(outcome.error());
        completion(BackEndAnswer(std::move(outcome).value()));
    };
    auto address = addressOf(call);
    if (!address) return client_->refuse(address.error(), std::move(answer));
    return client_->send(httpRequest(call, address.value()), std::move(answer));
}

BackEndClient::Outcome BackEndClient::sendAndWait(const VantixAPIRequestGenerator& call, Dispatcher& dispatcher) const {
    std::optional<Outcome> outcome;
    auto group = dispatcher.makeGroup();
    group->enter();
    auto transfer = send(call, [&outcome, group](Outcome answer) {
        outcome.emplace(std::move(answer));
        group->leave();
    });
    group->wait();
    return *std::move(outcome);
}

}  // namespace vantix

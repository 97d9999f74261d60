#include "VantixInAppMessage/API/InAppTriggersRequest.h"

#include "Platform/Values/JSON.h"

#include <utility>

namespace vantix {

InAppTriggersRequest::InAppTriggersRequest(std::shared_ptr<ConfigurationGenerator> configuration, HTTPMethod method,
                                           std::optional<std::string> body, std::optional<HTTPHeaders> header,
                                           double timeOut, bool shouldSendAccessToken)
    : ConfiguredRequest(std::move(configuration)),
      accountId_(ConfiguredRequest::accountId()),
      method_(method),
      content_(std::make_shared<const Content>(Content{std::move(body), std::move(header)})),
      timeOut_(timeOut),
      shouldSendAccessToken_(shouldSendAccessToken) {}

InAppTriggersRequest::InAppTriggersRequest(const InAppTriggersRequest& other)
    : ConfiguredRequest(other),
      accountId_(other.accountId_),
      method_(other.method_),
      content_(other.content_.load()),
      timeOut_(other.timeOut_),
      shouldSendAccessToken_(other.shouldSendAccessToken_) {}

TransferHandle InAppTriggersRequest::syncTriggers(const Dictionary& body, const std::string& accountId,
                                                  std::function<void(VantixNetworkManager::Outcome)> completion) {
    auto content = std::make_shared<const Content>(Content{toJSON(body), URLRequestHeaders::authEventReportHeaders()});
    content_.store(content);

    InAppTriggersRequest request = *this;
    request.accountId_ = accountId;
    request.content_.store(content);
    return apiManager_.callAPI(request, std::move(completion));
}

}  // namespace vantix

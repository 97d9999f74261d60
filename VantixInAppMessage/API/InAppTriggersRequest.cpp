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
      body_(std::move(body)),
      header_(std::move(header)),
      timeOut_(timeOut),
      shouldSendAccessToken_(shouldSendAccessToken) {}

std::optional<VantixResponseGenerator> InAppTriggersRequest::syncTriggers(const Dictionary& body,
                                                                          const std::string& accountId) const {
    InAppTriggersRequest request = *this;
    request.accountId_ = accountId;
    request.body_ = toJSON(body);
    request.header_ = URLRequestHeaders::authEventReportHeaders();
    return apiManager_.callAPI(request);
}

}  // namespace vantix

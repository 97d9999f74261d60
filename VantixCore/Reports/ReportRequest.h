#pragma once

#include "VantixCore/ConfiguredRequest.h"
#include "VantixCore/Reports/ReportOutbox.h"

#include <vector>

namespace vantix {

/// The call that hands a batch of reports to the back end:
/// `{"events":[{"id","kind","name","attributes"},…],"accountId"}`.
class ReportRequest final : public ConfiguredRequest {
public:
    ReportRequest(std::shared_ptr<ConfigurationGenerator> configuration, const std::vector<PendingReport>& batch);

    HTTPMethod method() const override { return HTTPMethod::post; }
    std::string path() const override;
    std::optional<std::string> body() const override { return body_; }
    std::optional<HTTPHeaders> header() const override { return URLRequestHeaders::authEventReportHeaders(); }
    double timeOut() const override;
    bool shouldSendAccessToken() const override { return true; }

private:
    std::string body_;
};

}  // namespace vantix

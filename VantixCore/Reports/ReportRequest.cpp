#include "VantixCore/Reports/ReportRequest.h"

#include "Platform/Values/JSON.h"
#include "VantixCore/Reports/ReportPolicy.h"
#include "VantixCore/VantixConstants.h"

namespace vantix {

ReportRequest::ReportRequest(std::shared_ptr<ConfigurationGenerator> configuration,
                             const std::vector<PendingReport>& batch)
    : ConfiguredRequest(std::move(configuration)) {
    std::string events;
    for (const auto& report : batch) events += (events.empty() ? "" : ",") + report.event;
    body_ = "{\"events\":[" + events + "],\"accountId\":" + toJSON(accountId()) + "}";
}

std::string ReportRequest::path() const { return VantixConstants::API::ReportPath; }

double ReportRequest::timeOut() const { return ReportPolicy::timeOut; }

}  // namespace vantix

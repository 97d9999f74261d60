#include "Tools/vantix-inapp/Play/CampaignRemarks.h"

#include "Platform/Values/JSONText.h"
#include "Platform/Values/UTF8.h"
#include "Tools/vantix-inapp/Backend/Backend.h"
#include "Tools/vantix-inapp/Check/FindingLine.h"
#include "Tools/vantix-inapp/Play/EventLines.h"
#include "Tools/vantix-inapp/Play/LineWriter.h"
#include "Tools/vantix-inapp/Scenario/BackendAddress.h"

namespace vantix {

namespace {

CheckOptions optionsOf(const Configuration& configuration) {
    CheckOptions options;
    options.customer = configuration.customerId;
    options.storeId = configuration.appStoreId.value_or("");
    options.device = configuration.device;
    return options;
}

}  // namespace

CampaignRemarks::CampaignRemarks(const Scenario& scenario, EventLines& events, LineWriter& lines)
    : file_(scenario.file), options_(optionsOf(scenario.configuration)), events_(events), lines_(lines) {}

void CampaignRemarks::remark(const Scenario::Line& line, const Backend* backend) {
    if (auto* customer = std::get_if<step::SetCustomer>(&line.step)) options_.customer = customer->customerId;
    std::string text = backend ? withBackendAddress(line.text, backend->url()) : line.text;
    auto campaign = memberAsWritten(text, "campaign");
    if (!campaign) return;

    // The module is not told of this decoding.
    EventLines::Silence silence(events_);
    auto before = std::string_view(text).substr(0, static_cast<std::size_t>(campaign->data() - text.data()));
    for (Finding& finding : checker_.check({file_, std::string(*campaign)}, options_)) {
        finding.line = line.number;
        finding.column += static_cast<int>(codePoints(before).size());
        lines_.write("finding", objectOf(finding));
    }
}

}  // namespace vantix

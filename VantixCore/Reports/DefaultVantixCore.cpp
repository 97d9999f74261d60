#include "VantixCore/Reports/DefaultVantixCore.h"

#include "VantixCore/Reports/ReportSender.h"

#include <utility>

namespace vantix {

DefaultVantixCore::DefaultVantixCore(std::shared_ptr<ConfigurationGenerator> configuration,
                                     std::shared_ptr<const VantixHost> host, std::shared_ptr<ReportSender> reports)
    : host_(std::move(host)), reports_(std::move(reports)) {
    if (reports_) reports_->use(std::move(configuration));
}

void DefaultVantixCore::reportDLREvent(VantixDLREvents dlrEventType, const Dictionary& customAttributes,
                                       std::function<void(bool)> completion) {
    bool isKept = report("delivery", rawValue(dlrEventType), customAttributes);
    if (completion) completion(isKept);
}

void DefaultVantixCore::reportBehavioralEvent(std::string_view name, const Dictionary& customAttributes) {
    report("behavioral", name, customAttributes);
}

void DefaultVantixCore::performCTAAction(const CTA& cta, const Dictionary& notificationPayload) {
    if (host_->onCallToAction) host_->onCallToAction(cta, notificationPayload);

    if (cta.type == rawValue(CTAActionType::external)) openExternal(cta.action);
    if (cta.type == rawValue(CTAActionType::deepLink) && host_->handleDeepLink) host_->handleDeepLink(cta.action);
}

void DefaultVantixCore::openExternal(const std::string& url) {
    if (!url.empty() && host_->openURL) host_->openURL(url);
}

/// The host is told of nothing that could still be lost.
bool DefaultVantixCore::report(const char* kind, std::string_view name, const Dictionary& attributes) {
    bool isKept = reports_ && reports_->keep(kind, name, attributes);
    if (host_->onReport) host_->onReport(kind, name, attributes);
    if (reports_) reports_->send();
    return isKept;
}

}  // namespace vantix

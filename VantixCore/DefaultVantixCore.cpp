#include "VantixCore/DefaultVantixCore.h"

#include "VantixCore/ReportSender.h"
#include "VantixCore/Vantix.h"

namespace vantix {

namespace {

void followDeepLink(const std::string& link) {
    if (const auto& handleDeepLink = Vantix::host().handleDeepLink) handleDeepLink(link);
}

}  // namespace

DefaultVantixCore::DefaultVantixCore(std::shared_ptr<ConfigurationGenerator> configuration)
    : reports_(ReportSender::shared()) {
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
    if (const auto& onCallToAction = Vantix::host().onCallToAction) onCallToAction(cta, notificationPayload);

    if (cta.type == rawValue(CTAActionType::external)) openExternal(cta.action);
    if (cta.type == rawValue(CTAActionType::deepLink)) followDeepLink(cta.action);
}

void DefaultVantixCore::openExternal(const std::string& url) {
    if (url.empty()) return;
    if (const auto& openURL = Vantix::host().openURL) openURL(url);
}

/// The host is told of nothing that could still be lost.
bool DefaultVantixCore::report(const char* kind, std::string_view name, const Dictionary& attributes) {
    bool isKept = reports_ && reports_->keep(kind, name, attributes);
    if (const auto& onReport = Vantix::host().onReport) onReport(kind, name, attributes);
    if (reports_) reports_->send();
    return isKept;
}

}  // namespace vantix

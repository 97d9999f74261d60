#include "VantixCore/DefaultVantixCore.h"

#include "VantixCore/Vantix.h"

namespace vantix {

namespace {

void report(const char* kind, std::string_view name, const Dictionary& attributes) {
    if (const auto& onReport = Vantix::host().onReport) onReport(kind, name, attributes);
}

void followDeepLink(const std::string& link) {
    if (const auto& handleDeepLink = Vantix::host().handleDeepLink) handleDeepLink(link);
}

}  // namespace

void DefaultVantixCore::reportDLREvent(VantixDLREvents dlrEventType, const Dictionary& customAttributes,
                                       std::function<void(bool)> completion) {
    report("delivery", rawValue(dlrEventType), customAttributes);
    if (completion) completion(true);
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

}  // namespace vantix

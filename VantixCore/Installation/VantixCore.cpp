#include "VantixCore/VantixCore.h"

#include "Platform/Values/URLRefusal.h"
#include "VantixCore/Installation/Installation.h"
#include "VantixCore/Reports/ReportSender.h"
#include "VantixCore/VantixError.h"

#include <utility>

namespace vantix {

namespace {

constexpr LogSource log{"Installation/VantixCore"};

/// Keeps reports until the back end has them, and tells the installed host of them; hands it the calls to action. All
/// on the calling thread, except for the sending.
class InstalledCore final : public VantixCore {
public:
    /// Without a sender reports are only told to the host.
    InstalledCore(std::shared_ptr<const VantixHost> host, std::shared_ptr<ReportSender> reports)
        : host_(std::move(host)), reports_(std::move(reports)) {}

    void reportDLREvent(VantixDLREvents dlrEventType, const Dictionary& customAttributes,
                        std::function<void(bool)> completion) override {
        bool isKept = report("delivery", rawValue(dlrEventType), customAttributes);
        if (completion) completion(isKept);
    }

    void reportBehavioralEvent(std::string_view name, const Dictionary& customAttributes) override {
        report("behavioral", name, customAttributes);
    }

    void performCTAAction(const CTA& cta, const Dictionary& notificationPayload) override {
        if (host_->onCallToAction) host_->onCallToAction(cta, notificationPayload);

        if (cta.type == rawValue(CTAActionType::external)) openExternal(cta.action);
        if (cta.type == rawValue(CTAActionType::deepLink)) followDeepLink(cta.action);
    }

    void openExternal(const std::string& url) override {
        if (url.empty()) return;
        if (auto refusal = refusalToOpen(url, host_->refusedSchemes)) {
            log.error("openExternal(url:)", [&] { return refused("the URL", url, *refusal); });
        } else if (host_->openURL) {
            host_->openURL(url);
        }
    }

private:
    void followDeepLink(const std::string& link) const {
        if (link.empty()) return;
        if (auto refusal = refusalToOpen(link, host_->refusedSchemes, host_->deepLinkSchemes)) {
            log.error("performCTAAction(cta:notificationPayload:)",
                      [&] { return refused("the deep link", link, *refusal); });
        } else if (host_->handleDeepLink) {
            host_->handleDeepLink(link);
        }
    }

    static std::string refused(const char* what, const std::string& text, const std::string& reason) {
        return std::string("Refused to open ") + what + " \"" + text + "\": " + reason;
    }

    /// The host is told of nothing that could still be lost.
    bool report(const char* kind, std::string_view name, const Dictionary& attributes) {
        bool isKept = reports_ && reports_->keep(kind, name, attributes);
        if (host_->onReport) host_->onReport(kind, name, attributes);
        if (reports_) reports_->send();
        return isKept;
    }

    std::shared_ptr<const VantixHost> host_;
    std::shared_ptr<ReportSender> reports_;
};

}  // namespace

std::shared_ptr<VantixCore> VantixCore::generate(std::shared_ptr<ConfigurationGenerator> configuration,
                                                 std::optional<Dictionary>, bool, std::optional<Dictionary>,
                                                 std::optional<Dictionary>, Env, LogLevel consoleLogLevel, LogLevel) {
    if (!configuration) throw VantixError(VantixError::Kind::configuration, 0, "There is no configuration");
    VantixLogger::setConsoleLogLevel(consoleLogLevel);
    auto installation = Installation::current();
    auto reports = installation->reports();
    if (reports) reports->use(std::move(configuration));
    return std::make_shared<InstalledCore>(installation->host(), std::move(reports));
}

}  // namespace vantix

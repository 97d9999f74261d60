#pragma once

#include "VantixCore/VantixCore.h"
#include "VantixCore/VantixHost.h"

namespace vantix {

class ReportSender;

/// Keeps reports until the back end has them, and tells the installed host of them; hands it the calls to action. All
/// on the calling thread, except for the sending.
class DefaultVantixCore final : public VantixCore {
public:
    /// Without a sender reports are only told to the host.
    DefaultVantixCore(std::shared_ptr<ConfigurationGenerator> configuration, std::shared_ptr<const VantixHost> host,
                      std::shared_ptr<ReportSender> reports);

    void reportDLREvent(VantixDLREvents dlrEventType, const Dictionary& customAttributes,
                        std::function<void(bool)> completion) override;
    void reportBehavioralEvent(std::string_view name, const Dictionary& customAttributes) override;

    void performCTAAction(const CTA& cta, const Dictionary& notificationPayload) override;
    void openExternal(const std::string& url) override;

private:
    bool report(const char* kind, std::string_view name, const Dictionary& attributes);

    std::shared_ptr<const VantixHost> host_;
    std::shared_ptr<ReportSender> reports_;
};

}  // namespace vantix

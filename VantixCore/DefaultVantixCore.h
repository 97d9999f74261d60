#pragma once

#include "VantixCore/VantixCore.h"

namespace vantix {

/// Hands reports and calls to action to the installed host, on the calling thread.
class DefaultVantixCore final : public VantixCore {
public:
    void reportDLREvent(VantixDLREvents dlrEventType, const Dictionary& customAttributes,
                        std::function<void(bool)> completion) override;
    void reportBehavioralEvent(std::string_view name, const Dictionary& customAttributes) override;

    void performCTAAction(const CTA& cta, const Dictionary& notificationPayload) override;
    void openExternal(const std::string& url) override;
};

}  // namespace vantix

#pragma once

#include "CampaignCheck/Rules/Finding.h"
#include "CampaignCheck/Rules/Rule.h"

#include <string>
#include <vector>

namespace vantix {

/// One file with a campaign, or what claims to be one.
struct CampaignFile {
    /// As findings name it.
    std::string name;
    std::string text;
};

/// Says what a device would do with the campaigns of one run that their authors may not mean. The ports and the host
/// are installed; main thread only.
class CampaignChecker {
public:
    /// In the order of the rules. Any bytes will do.
    std::vector<Finding> check(const CampaignFile& file, const CheckOptions& options);

private:
    ScopesInUse scopesInUse_;
};

/// The findings of one run with these campaigns, in their order.
std::vector<Finding> checkCampaigns(const std::vector<CampaignFile>& files, const CheckOptions& options);

}  // namespace vantix

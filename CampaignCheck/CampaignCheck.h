#pragma once

#include "CampaignCheck/Finding.h"
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

/// What a device would do with each of these campaigns that its author may not mean, in the order of the files and of
/// the rules. Any bytes will do. The ports and the host are installed; main thread only.
std::vector<Finding> checkCampaigns(const std::vector<CampaignFile>& files, const CheckOptions& options);

}  // namespace vantix

#include "Tools/vantix-inapp/Input/Campaign.h"

#include "Tools/vantix-inapp/Input/BadInput.h"
#include "Tools/vantix-inapp/Input/InputFile.h"
#include "VantixInAppMessage/Core/InAppCampaign.h"

#include <utility>

namespace vantix {

Dictionary pushOfCampaignText(std::string_view text) {
    auto push = pushOfCampaign(text);
    if (!push) throw BadInput(push.error().localizedDescription);
    return std::move(push).value();
}

Dictionary pushOfCampaignFile(const std::string& file) {
    std::string text = readInputFile(file);
    try {
        return pushOfCampaignText(text);
    } catch (const BadInput& problem) {
        throw BadInput::at(file, 1, problem.what());
    }
}

}  // namespace vantix

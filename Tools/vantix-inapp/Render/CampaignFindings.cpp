#include "Tools/vantix-inapp/Render/CampaignFindings.h"

#include "Tools/vantix-inapp/Headless/ImageFetch.h"
#include "VantixInAppMessage/Core/InAppMessageObjections.h"
#include "VantixInAppMessage/Core/InAppMessagePayload/InAppMessagePayloadKeys.h"

#include <optional>

namespace vantix {

namespace {

using Finding = std::optional<std::string>;

Finding unreadableStyle(const Dictionary& push, const VantixInAppMessagePayload& message) {
    bool isGiven = push.find(InAppMessagePayloadKeys::templateKey);
    if (!isGiven || !message.style.textRepresentation.empty()) return {};
    return "the template cannot be read, and the message is shown without its style";
}

Finding lostImage(const VantixInAppMessagePayload& message, Pace& pace) {
    bool isFetched = !message.body.image.empty() && !applies(InAppMessageObjection::insecureBannerImage, message);
    if (!isFetched) return {};
    std::string placeholder = "a placeholder stands for the lost image: ";
    auto url = message.getImageURL();
    if (!url) return placeholder + "\"" + message.body.image + "\" is no URL";
    auto image = fetchImage(*url, pace);
    if (image) return {};
    bool isRemoved = image.error().isImageLost() && message.canDeleteInAppMessageWhenImageDownloadingFailed();
    return (isRemoved ? "a message of type " + std::string(rawValue(message.body.type)) + " goes with its lost image: "
                      : placeholder) +
           image.error().localizedDescription;
}

}  // namespace

std::vector<std::string> campaignFindings(const Dictionary& push, const VantixInAppMessagePayload& message,
                                          const std::string& customer, Pace& pace) {
    std::vector<std::string> findings;
    for (const Finding& finding : {firstObjection(message), customerObjection(message, customer),
                                   unreadableStyle(push, message), lostImage(message, pace)}) {
        if (finding) findings.push_back(*finding);
    }
    return findings;
}

}  // namespace vantix

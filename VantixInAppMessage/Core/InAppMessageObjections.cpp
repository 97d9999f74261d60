#include "VantixInAppMessage/Core/InAppMessageObjections.h"

#include <algorithm>
#include <cctype>

namespace vantix {

namespace {

using Objection = InAppMessageObjection;

bool namesSecureConnection(std::string url) {
    std::transform(url.begin(), url.end(), url.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return url.find("https:") != std::string::npos;
}

std::string inWords(Objection objection, const VantixInAppMessagePayload& message) {
    const InAppBody& body = message.body;
    std::string ofType = "a message of type " + std::string(rawValue(body.type));
    switch (objection) {
        case Objection::noScope:
            return "a message without scope is not stored";
        case Objection::noEventName:
            return message.trigger.textRepresentation.empty()
                       ? "a message whose trigger is missing or cannot be read is not stored"
                       : "a message whose trigger names no event is not stored";
        case Objection::insecureBannerImage:
            return ofType + " whose image is not https is not stored";
        case Objection::unsupportedType:
            return body.textRepresentation.empty() ? "a message whose body is missing or cannot be read is never shown"
                                                   : ofType + ", or of a type that nobody knows, is never shown";
        case Objection::bannerWithoutText:
            return ofType + " without message text is never shown";
    }
    return {};
}

}  // namespace

bool applies(InAppMessageObjection objection, const VantixInAppMessagePayload& message) {
    const InAppBody& body = message.body;
    switch (objection) {
        case Objection::noScope:
            return message.scope.empty();
        case Objection::noEventName:
            return message.trigger.eventName.empty();
        case Objection::insecureBannerImage:
            return body.isBanner() && !body.image.empty() && !namesSecureConnection(body.image);
        case Objection::unsupportedType:
            return std::find(supportedInAppMessageTypes.begin(), supportedInAppMessageTypes.end(), body.type) ==
                   supportedInAppMessageTypes.end();
        case Objection::bannerWithoutText:
            return body.isBanner() && body.message.empty();
    }
    return false;
}

std::optional<std::string> firstObjection(const VantixInAppMessagePayload& message) {
    for (Objection objection : {Objection::noScope, Objection::noEventName, Objection::insecureBannerImage,
                                Objection::unsupportedType, Objection::bannerWithoutText}) {
        if (applies(objection, message)) return inWords(objection, message);
    }
    return {};
}

std::optional<std::string> customerObjection(const VantixInAppMessagePayload& message, const std::string& customer) {
    if (message.cuid.empty() || message.cuid == customer) return {};
    return "a message for customer \"" + message.cuid + "\" is not read back from the store for \"" + customer + "\"";
}

}  // namespace vantix

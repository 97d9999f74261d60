#include "VantixInAppMessage/Core/InAppCampaign.h"

#include "Platform/Values/JSON.h"
#include "Platform/Values/JSONText.h"

namespace vantix {

Result<Dictionary> pushOfCampaign(std::string_view text) {
    auto parsed = parseJSON(text);
    if (!parsed) return Error{"not valid JSON: " + parsed.error().localizedDescription};
    if (!parsed.value().dictionary()) return Error{"a campaign must be a JSON object"};
    Dictionary push = *parsed.value().dictionary();
    for (const char* key : {"trigger", "body", "template"}) {
        if (auto object = objectAsWritten(text, key)) push.set(key, minifyJSON(*object));
    }
    return push;
}

}  // namespace vantix

#include "Tools/vantix-inapp/Input/Campaign.h"

#include "Platform/Values/JSON.h"
#include "Tools/vantix-inapp/Input/BadInput.h"
#include "Tools/vantix-inapp/Input/InputFile.h"

namespace vantix {

Dictionary pushOfCampaign(std::string_view text) {
    auto parsed = parseJSON(text);
    if (!parsed) throw BadInput("not valid JSON: " + parsed.error().localizedDescription);
    if (!parsed.value().dictionary()) throw BadInput("a campaign must be a JSON object");
    Dictionary push = *parsed.value().dictionary();
    for (const char* key : {"trigger", "body", "template"}) {
        if (auto object = objectAsWritten(text, key)) push.set(key, minifyJSON(*object));
    }
    return push;
}

Dictionary pushOfCampaignFile(const std::string& file) {
    std::string text = readInputFile(file);
    try {
        return pushOfCampaign(text);
    } catch (const BadInput& problem) {
        throw BadInput::at(file, 1, problem.what());
    }
}

}  // namespace vantix

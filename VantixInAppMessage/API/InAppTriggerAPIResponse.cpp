#include "VantixInAppMessage/API/InAppTriggerAPIResponse.h"

#include "VantixInAppMessage/Core/InAppMessagePayload/NestedJSON.h"

namespace vantix {

namespace {

std::optional<std::string> textUnder(const char* key, const Dictionary& answer) {
    const std::string* text = answer.text(key);
    return text ? std::optional(*text) : std::nullopt;
}

std::optional<std::vector<VantixInAppMessagePayload>> decodedTriggers(const List& list) {
    auto items = dictionaries(list);
    if (!items) return {};
    std::vector<VantixInAppMessagePayload> triggers;
    for (const Dictionary& item : *items) triggers.push_back(VantixInAppMessagePayload::generate(item));
    return triggers;
}

}  // namespace

InAppTriggerAPIResponse InAppTriggerAPIResponse::generate(const Dictionary& answer) {
    InAppTriggerAPIResponse response{textUnder("message", answer), textUnder("status", answer), {}};
    if (const List* list = answer.list("triggers")) response.triggers = decodedTriggers(*list);
    return response;
}

}  // namespace vantix

#include "VantixInAppMessage/API/InAppTriggerAPIResponse.h"

#include <algorithm>

namespace vantix {

namespace {

std::optional<std::string> textUnder(const char* key, const Dictionary& answer) {
    const std::string* text = answer.text(key);
    return text ? std::optional(*text) : std::nullopt;
}

std::optional<std::vector<VantixInAppMessagePayload>> decodedTriggers(const List& list) {
    bool allAreDictionaries = std::ranges::all_of(list, [](const Value& item) { return item.dictionary() != nullptr; });
    if (!allAreDictionaries) return {};
    std::vector<VantixInAppMessagePayload> triggers;
    for (const Value& item : list) triggers.push_back(VantixInAppMessagePayload::generate(*item.dictionary()));
    return triggers;
}

}  // namespace

InAppTriggerAPIResponse InAppTriggerAPIResponse::generate(const Dictionary& answer) {
    InAppTriggerAPIResponse response{textUnder("message", answer), textUnder("status", answer), {}};
    if (const List* list = answer.list("triggers")) response.triggers = decodedTriggers(*list);
    return response;
}

}  // namespace vantix

#include "VantixInAppMessage/API/InAppTriggerAPIResponse.h"

#include "Platform/Values/JSON.h"

namespace vantix {

namespace {

std::optional<std::string> textUnder(const char* key, std::string_view answer) {
    auto written = memberAsWritten(answer, key);
    if (!written || !written->starts_with('"')) return {};
    return *parseJSON(*written).value().text();
}

}  // namespace

std::optional<InAppTriggers> InAppTriggers::in(std::string_view value) {
    if (!value.starts_with('[')) return {};
    const WrittenElements objects(value);
    for (WrittenElements rest = objects; auto element = rest.next();) {
        if (!element->starts_with('{')) return {};
    }
    return InAppTriggers(objects);
}

std::optional<VantixInAppMessagePayload> InAppTriggers::next() {
    auto object = objects_.next();
    if (!object) return {};
    return VantixInAppMessagePayload::generate(*parseJSON(*object).value().dictionary());
}

InAppTriggerAPIResponse InAppTriggerAPIResponse::generate(std::string_view answer) {
    InAppTriggerAPIResponse response{textUnder("message", answer), textUnder("status", answer), {}};
    if (auto triggers = memberAsWritten(answer, "triggers")) response.triggers = InAppTriggers::in(*triggers);
    return response;
}

}  // namespace vantix

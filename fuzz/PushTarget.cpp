#include "VantixInAppMessage/Core/InAppCampaign.h"
#include "VantixInAppMessage/Core/InAppMessageObjections.h"
#include "fuzz/FuzzTarget.h"

using namespace vantix;

namespace {

/// The push that says what the payload's own dictionary does.
Dictionary pushOf(const VantixInAppMessagePayload& payload) {
    Dictionary push = payload.getJSON();
    for (const char* nested : {"trigger", "body", "template"}) push.set(nested, toJSON(*push.find(nested)));
    return push;
}

void decode(const Dictionary& push) {
    auto payload = VantixInAppMessagePayload::generate(push);
    for (const InAppCTA& cta : payload.body.ctas) fuzz::expect(cta.actionText.has_value(), "every button has a text");
    auto objection = firstObjection(payload);
    fuzz::expect(objection != "", "an objection is in words");
    fuzz::expect(!payload.scope.empty() || objection, "a message without scope is objected to");
    static_cast<void>(customerObjection(payload, "customer"));
    static_cast<void>(payload.getImageURL());
    fuzz::expect(parseJSON(payload.description()) && payload.description().find('\n') == std::string::npos,
                 "a description is one line of JSON");
    fuzz::expectComesBack(payload.getJSON());

    auto again = VantixInAppMessagePayload::generate(pushOf(payload));
    again.imageIdentifier = payload.imageIdentifier;
    // Sizes are numbers in the dictionary form and texts in a push.
    again.style = payload.style;
    fuzz::expect(Value(again.getJSON()) == Value(payload.getJSON()), "what is written is read back");
}

}  // namespace

/// A campaign's text, and the same text as a push dictionary.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::installPlatform();
    auto text = fuzz::textOf(data, size);
    if (auto push = pushOfCampaign(text)) decode(push.value());
    auto parsed = parseJSON(text);
    if (parsed && parsed.value().dictionary()) decode(*parsed.value().dictionary());
    return 0;
}

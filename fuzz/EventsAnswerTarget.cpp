#include "VantixInAppMessage/API/InAppTriggerAPIResponse.h"
#include "VantixInAppMessage/API/Status.h"
#include "VantixInAppMessage/Core/InAppMessageObjections.h"
#include "fuzz/FuzzTarget.h"

using namespace vantix;

/// An answer of the events API.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::installPlatform();
    auto parsed = parseJSON(fuzz::textOf(data, size));
    if (!parsed || !parsed.value().dictionary()) return 0;
    const Dictionary& dictionary = *parsed.value().dictionary();
    static_cast<void>(Status::generate(dictionary));
    auto answer = InAppTriggerAPIResponse::generate(dictionary);
    fuzz::expect(answer.status.has_value() == (dictionary.text("status") != nullptr), "a status is a text");
    if (!answer.triggers) return 0;
    fuzz::expect(answer.triggers->size() == dictionary.list("triggers")->size(), "the list is taken whole");
    for (const auto& message : *answer.triggers) {
        static_cast<void>(firstObjection(message));
        fuzz::expectComesBack(message.getJSON());
    }
    return 0;
}

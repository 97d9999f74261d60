#include "VantixInAppMessage/API/InAppTriggerAPIResponse.h"
#include "VantixInAppMessage/API/Status.h"
#include "VantixInAppMessage/Core/InAppMessageObjections.h"
#include "fuzz/FuzzTarget.h"

using namespace vantix;

/// An answer of the events API.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::installPlatform();
    auto text = fuzz::textOf(data, size);
    auto parsed = parseJSON(text);
    if (!parsed || !parsed.value().dictionary()) return 0;
    const Dictionary& dictionary = *parsed.value().dictionary();
    static_cast<void>(Status::generate(dictionary));
    auto answer = InAppTriggerAPIResponse::generate(text);
    fuzz::expect(answer.status.has_value() == (dictionary.text("status") != nullptr), "a status is a text");
    if (!answer.triggers) return 0;
    std::size_t count = 0;
    while (auto message = answer.triggers->next()) {
        static_cast<void>(firstObjection(*message));
        fuzz::expectComesBack(message->getJSON());
        ++count;
    }
    fuzz::expect(count == dictionary.list("triggers")->size(), "the list is taken whole");
    return 0;
}

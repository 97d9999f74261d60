#include "Platform/Values/JSONText.h"
#include "VantixInAppMessage/Core/InAppMessagePayload/InAppBody.h"
#include "VantixInAppMessage/Core/InAppMessagePayload/NotificationTrigger.h"
#include "fuzz/FuzzTarget.h"

using namespace vantix;

namespace {

/// A record must come back from what it writes, except for the text that it was read from.
template <typename Record>
void decode(const std::string& text, bool isObject) {
    auto record = Record::generate(text);
    if (!isObject) fuzz::expect(record == Record(), "what is no object gives the default");
    fuzz::expectComesBack(record.description());
    auto again = Record::generate(toJSON(record.getJSON()));
    again.textRepresentation = record.textRepresentation;
    fuzz::expect(again == record, "what is written is read back");
}

/// The text's tokens, which must say the same without the white space between them.
void read(const std::string& text, const Value& value) {
    fuzz::expectComesBack(value);
    auto minified = minifyJSON(text);
    auto again = parseJSON(minified);
    fuzz::expect(again && again.value() == value, "without white space it is the same value");
    fuzz::expect(minifyJSON(minified) == minified, "no white space is left");
    fuzz::expect(!value.isHashable() || hashValue(again.value()) == hashValue(value), "equal values hash alike");
    if (!value.dictionary()) return;
    static_cast<void>(repeatedKey(text));
    for (const auto& [key, member] : *value.dictionary()) {
        auto object = objectAsWritten(text, key);
        fuzz::expect(object.has_value() == (member.dictionary() != nullptr), "each object is found as written");
        if (object) fuzz::expect(parseJSON(*object).value() == member, "an object as written is the object");
    }
}

}  // namespace

/// The JSON texts of a push: trigger and body.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::installPlatform();
    std::string text(fuzz::textOf(data, size));
    auto value = parseJSON(text);
    bool isObject = value && value.value().dictionary();
    decode<NotificationTrigger>(text, isObject);
    decode<InAppBody>(text, isObject);
    if (value) read(text, value.value());
    return 0;
}

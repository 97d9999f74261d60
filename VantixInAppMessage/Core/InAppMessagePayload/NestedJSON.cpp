#include "VantixInAppMessage/Core/InAppMessagePayload/NestedJSON.h"

#include "Platform/Values/JSON.h"

namespace vantix {

std::optional<Dictionary> dictionaryFromText(std::string_view text, std::string_view notADictionary,
                                             std::string_view parseError, LegacyLogSource source) {
    auto value = parseJSON(text);
    if (!value) {
        VantixLogger::error(std::string(parseError) + value.error().localizedDescription, source);
        return {};
    }
    const Dictionary* dictionary = value.value().dictionary();
    if (!dictionary) {
        VantixLogger::error(notADictionary, source);
        return {};
    }
    return *dictionary;
}

void readText(const Dictionary& dictionary, const char* key, std::string& field) {
    if (const std::string* text = dictionary.text(key)) field = *text;
}

void readText(const Dictionary& dictionary, const char* key, std::optional<std::string>& field) {
    if (const std::string* text = dictionary.text(key)) field = *text;
}

namespace {

template <typename Kind>
std::optional<std::vector<Kind>> elements(const List& list, const Kind* (Value::*accessor)() const) {
    std::vector<Kind> result;
    for (const Value& element : list) {
        const Kind* kind = (element.*accessor)();
        if (!kind) return {};
        result.push_back(*kind);
    }
    return result;
}

}  // namespace

std::optional<std::vector<Dictionary>> dictionaries(const List& list) { return elements(list, &Value::dictionary); }

std::optional<std::vector<std::string>> texts(const List& list) { return elements(list, &Value::text); }

}  // namespace vantix

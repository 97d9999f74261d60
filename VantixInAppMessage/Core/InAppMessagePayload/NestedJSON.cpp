#include "VantixInAppMessage/Core/InAppMessagePayload/NestedJSON.h"

#include "Platform/Values/JSON.h"

namespace vantix {

std::optional<Dictionary> dictionaryFromText(std::string_view text, std::string_view notADictionary,
                                             std::string_view parseError, const LogSource& log) {
    auto value = parseJSON(text);
    if (!value) {
        log.error("generate(from:)", [&] { return std::string(parseError) + value.error().localizedDescription; });
        return {};
    }
    const Dictionary* dictionary = value.value().dictionary();
    if (!dictionary) {
        log.error("generate(from:)", notADictionary);
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

Value orNull(const std::optional<std::string>& text) { return text ? Value(*text) : Value(); }

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

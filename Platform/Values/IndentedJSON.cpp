#include "Platform/Values/IndentedJSON.h"

#include "Platform/Values/JSON.h"

#include <cstddef>
#include <string_view>
#include <vector>

namespace vantix {

namespace {

constexpr std::size_t widestLine = 120;
constexpr std::size_t step = 2;

/// An element of a list, or of an object with its key in front.
struct Element {
    std::string key;
    const Value* value;
};

std::vector<Element> elementsOf(const Value& value) {
    std::vector<Element> elements;
    if (const List* list = value.list()) {
        for (const Value& element : *list) elements.push_back({"", &element});
    } else if (const Dictionary* dictionary = value.dictionary()) {
        for (const auto& [key, element] : *dictionary) elements.push_back({toJSON(key) + ": ", &element});
    }
    return elements;
}

std::string enclosed(const Value& value, const std::string& elements) {
    return value.list() ? "[" + elements + "]" : "{" + elements + "}";
}

std::string inOneLine(const Value& value) {
    if (!value.list() && !value.dictionary()) return toJSON(value);
    std::string text;
    std::string_view separator;
    for (const auto& [key, element] : elementsOf(value)) {
        text.append(separator).append(key).append(inOneLine(*element));
        separator = ", ";
    }
    return enclosed(value, text);
}

/// With `indent` blanks before each line but the first, which begins at a column of its own.
std::string inLines(const Value& value, std::size_t indent, std::size_t column) {
    std::string line = inOneLine(value);
    auto elements = elementsOf(value);
    if (elements.empty() || column + line.size() < widestLine) return line;
    const std::string margin = "\n" + std::string(indent + step, ' ');
    std::string text;
    std::string_view separator;
    for (const auto& [key, element] : elements) {
        text.append(separator).append(margin).append(key);
        text += inLines(*element, indent + step, indent + step + key.size());
        separator = ",";
    }
    return enclosed(value, text + "\n" + std::string(indent, ' '));
}

}  // namespace

std::string toIndentedJSON(const Value& value) { return inLines(value, 0, 0); }

}  // namespace vantix

#include "Tools/vantix-inapp/Input/Fields.h"

#include "Platform/Values/JSON.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <limits>

namespace vantix {

namespace {

[[noreturn]] void complain(std::string_view key, const std::string& kind) {
    throw BadInput(inQuotes(key) + " must be " + kind);
}

}  // namespace

std::string inQuotes(std::string_view key) { return toJSON(std::string(key)); }

std::string inShort(double number) {
    char text[32];
    std::snprintf(text, sizeof text, "%g", number);
    return text;
}

const std::string& textField(std::string_view key, const Value& value) {
    if (!value.text()) complain(key, "a text");
    return *value.text();
}

bool boolField(std::string_view key, const Value& value) {
    if (!value.boolean()) complain(key, "true or false");
    return *value.boolean();
}

void trueField(std::string_view key, const Value& value) {
    if (!value.boolean() || !*value.boolean()) complain(key, "true");
}

double numberField(std::string_view key, const Value& value, double least, double most) {
    double number = std::numeric_limits<double>::quiet_NaN();
    if (value.integer()) number = static_cast<double>(*value.integer());
    if (value.real()) number = *value.real();
    if (!(number >= least && number <= most)) {
        complain(key, "a number between " + inShort(least) + " and " + inShort(most));
    }
    return number;
}

int indexField(std::string_view key, const Value& value) {
    constexpr std::int64_t most = std::numeric_limits<int>::max();
    if (!value.integer() || *value.integer() < 0 || *value.integer() > most) complain(key, "a whole number from 0 up");
    return static_cast<int>(*value.integer());
}

const Dictionary& objectField(std::string_view key, const Value& value) {
    if (!value.dictionary()) complain(key, "an object");
    return *value.dictionary();
}

const List& listField(std::string_view key, const Value& value) {
    if (!value.list()) complain(key, "a list");
    return *value.list();
}

const std::string& wordField(std::string_view key, const Value& value, std::span<const std::string_view> words) {
    const std::string& word = textField(key, value);
    if (std::find(words.begin(), words.end(), word) != words.end()) return word;
    std::string all;
    for (std::string_view known : words) all += (all.empty() ? "" : ", ") + inQuotes(known);
    complain(key, "one of " + all);
}

void expectOnlyKeys(std::string_view owner, const Dictionary& object, std::initializer_list<std::string_view> known) {
    for (const auto& [key, value] : object) {
        if (std::find(known.begin(), known.end(), key) == known.end()) {
            throw BadInput(inQuotes(owner) + " has no key " + inQuotes(key));
        }
    }
}

}  // namespace vantix

#pragma once

#include "Platform/Values/Value.h"
#include "Tools/vantix-inapp/BadInput.h"

#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>

namespace vantix {

/// Readers of values that stand under a key in something a person wrote. Each throws BadInput, naming the key, when the
/// value is of another kind.
const std::string& textField(std::string_view key, const Value& value);
bool boolField(std::string_view key, const Value& value);
/// Only `true`; for keys that merely ask for something.
void trueField(std::string_view key, const Value& value);
double numberField(std::string_view key, const Value& value, double least, double most);
/// A whole number from 0 up.
int indexField(std::string_view key, const Value& value);
const Dictionary& objectField(std::string_view key, const Value& value);
const List& listField(std::string_view key, const Value& value);

/// Throws BadInput for the first key that is not among `known`; `owner` names the object.
void expectOnlyKeys(std::string_view owner, const Dictionary& object, std::initializer_list<std::string_view> known);

/// The key in quotation marks, for complaints.
std::string inQuotes(std::string_view key);

/// One of a few words, each with its meaning.
template <typename Meaning>
Meaning wordField(std::string_view key, const Value& value,
                  std::initializer_list<std::pair<std::string_view, Meaning>> words) {
    const std::string& text = textField(key, value);
    std::string all;
    for (const auto& [word, meaning] : words) {
        if (text == word) return meaning;
        all += (all.empty() ? "" : ", ") + inQuotes(word);
    }
    throw BadInput(inQuotes(key) + " must be one of " + all);
}

}  // namespace vantix

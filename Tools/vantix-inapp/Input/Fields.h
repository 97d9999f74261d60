#pragma once

#include "Platform/Values/Value.h"
#include "Platform/Values/WordTable.h"
#include "Tools/vantix-inapp/Input/BadInput.h"

#include <initializer_list>
#include <string>
#include <string_view>

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

/// What one of the table's words means.
template <typename Meaning, std::size_t count>
Meaning wordField(std::string_view key, const Value& value, const WordTable<Meaning, count>& words) {
    if (auto meaning = words.value(textField(key, value))) return *meaning;
    std::string all;
    for (const auto& entry : words.entries) all += (all.empty() ? "" : ", ") + inQuotes(entry.word);
    throw BadInput(inQuotes(key) + " must be one of " + all);
}

}  // namespace vantix

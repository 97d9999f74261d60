#pragma once

#include "Platform/Values/Value.h"
#include "Platform/Values/WordTable.h"
#include "Tools/vantix-inapp/Input/BadInput.h"

#include <algorithm>
#include <array>
#include <initializer_list>
#include <iterator>
#include <span>
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

/// The key as a JSON text, for complaints: whatever stands in it, they stay one line.
std::string inQuotes(std::string_view key);

/// The number as complaints write it.
std::string inShort(double number);

/// One of the words.
const std::string& wordField(std::string_view key, const Value& value, std::span<const std::string_view> words);
/// What one of the table's words means.
template <typename Meaning, std::size_t count>
Meaning wordField(std::string_view key, const Value& value, const WordTable<Meaning, count>& words) {
    std::array<std::string_view, count> known;
    std::transform(std::begin(words.entries), std::end(words.entries), known.begin(),
                   [](const auto& entry) { return entry.word; });
    return *words.value(wordField(key, value, known));
}

}  // namespace vantix

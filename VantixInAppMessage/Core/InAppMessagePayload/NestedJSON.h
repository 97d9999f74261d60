#pragma once

#include "Platform/Values/Value.h"
#include "VantixCore/VantixLogger.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vantix {

/// The dictionary that a JSON text holds. Absent, with one error line, when the text holds another value
/// (`notADictionary` is the line) or cannot be parsed (`parseError`, followed by the reason). The line names the
/// function "generate(from:)".
std::optional<Dictionary> dictionaryFromText(std::string_view text, std::string_view notADictionary,
                                             std::string_view parseError, const LogSource& log);

/// Takes the value under the key when it is a text, otherwise leaves the field as it is.
void readText(const Dictionary& dictionary, const char* key, std::string& field);
void readText(const Dictionary& dictionary, const char* key, std::optional<std::string>& field);

/// The text, or null for an absent one.
Value orNull(const std::optional<std::string>& text);

/// The dictionaries, or texts, of a list; absent when one element is of another kind.
std::optional<std::vector<Dictionary>> dictionaries(const List& list);
std::optional<std::vector<std::string>> texts(const List& list);

}  // namespace vantix

#pragma once

#include "Platform/Values/Export.h"

#include <optional>
#include <string>
#include <string_view>

namespace vantix {

/// Whether parseJSON takes the text. Needs no memory beside the text, however long that is. Usable from any thread.
VANTIX_EXPORT bool isJSON(std::string_view text);

/// Whether it is an object. Only for valid JSON.
VANTIX_EXPORT bool isObject(std::string_view text);

/// The elements of a list, or the keys and values of an object in turn, each as it is written. Only for the text of a
/// valid list or object, which must outlive this. Cheap to copy; a copy goes on by itself.
class VANTIX_EXPORT WrittenElements {
public:
    explicit WrittenElements(std::string_view container);

    /// Absent after the last one.
    std::optional<std::string_view> next();

    bool operator==(const WrittenElements&) const = default;

private:
    /// What has not been read yet.
    std::string_view rest_;
};

/// A key that an object's text writes more than once; absent when it writes none twice. Only for valid JSON.
VANTIX_EXPORT std::optional<std::string> repeatedKey(std::string_view object);

/// The value that stands under the key of an object, as it is written, a part of that text. Of a repeated key the last
/// value counts. Absent when the text is no object or the key is missing. Only for valid JSON.
VANTIX_EXPORT std::optional<std::string_view> memberAsWritten(std::string_view object, std::string_view key);

/// The object that stands under the key of an object, as it is written, white space included. Of a repeated key the
/// last value counts. Absent when the text is no object, or the key is missing or holds anything else. Only for valid
/// JSON.
VANTIX_EXPORT std::optional<std::string> objectAsWritten(std::string_view object, std::string_view key);

}  // namespace vantix

#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

namespace vantix {

/// A key as a step of a JSON pointer.
std::string pointerStep(std::string_view key);

/// Where a value stands in a text, as offsets of bytes. A list's element has no key of its own.
struct JSONPlace {
    std::size_t key = 0;
    std::size_t value = 0;
};

/// What a walk through a JSON text meets. Pointers are JSON pointers; a nested text is met as if what it holds stood
/// there itself, and the offset of a value in it is that of its first byte, as it is escaped in the text around it.
struct JSONVisitor {
    /// Whether the text under the pointer holds JSON itself.
    std::function<bool(const std::string& pointer)> holdsJSON;
    /// Each value, containers before what they hold; of a repeated key each time.
    std::function<void(const std::string& pointer, JSONPlace place)> value;
    /// The offset at which the text, or the nested text under the pointer, stops being JSON. The walk of that text
    /// ends.
    std::function<void(const std::string& pointer, std::size_t offset)> mistake;
};

/// Walks through a text and tells where each value stands. The text may be anything.
void walkJSON(std::string_view json, const JSONVisitor& visitor);

}  // namespace vantix

#pragma once

#include <string>

namespace vantix {

/// An error when the message is dropped, blocks others, can never be shown, or loses the person's answer; a warning
/// when it is shown, but hardly as meant.
enum class Severity { error, warning };

/// Something that a device does with a campaign and its author may not mean.
struct Finding {
    /// The campaign's file, as it was named.
    std::string file;
    /// In the file, from 1, also inside a nested text; a column is one character.
    int line = 1;
    int column = 1;
    /// A JSON pointer, into nested texts as if they were objects: "/body/ctas/0/type".
    std::string place;
    /// The rule's code: "unknown-type".
    std::string rule;
    Severity severity = Severity::error;
    /// What is wrong, and what the device does about it.
    std::string message;
    /// What to write instead.
    std::string instead;

    bool operator==(const Finding&) const = default;
};

}  // namespace vantix

#pragma once

#include "Platform/Values/JSONText.h"
#include "VantixInAppMessage/Core/InAppMessagePayload/VantixInAppMessagePayload.h"

#include <optional>
#include <string>
#include <string_view>

namespace vantix {

/// The messages of an answer, which may be many. Each is decoded when it is asked for, so that no more of them are in
/// memory than are in use. A copy goes on by itself.
class InAppTriggers {
public:
    /// Absent when the value is no list of objects. The text, valid JSON, must outlive this.
    static std::optional<InAppTriggers> in(std::string_view value);

    /// Absent after the last one.
    std::optional<VantixInAppMessagePayload> next();

    bool operator==(const InAppTriggers&) const = default;

private:
    explicit InAppTriggers(WrittenElements objects) : objects_(objects) {}

    WrittenElements objects_;
};

/// The answer of the events API.
struct InAppTriggerAPIResponse {
    std::optional<std::string> message;
    /// A number as text ("200"). A number itself does not count.
    std::optional<std::string> status;
    std::optional<InAppTriggers> triggers;

    bool operator==(const InAppTriggerAPIResponse&) const = default;

    /// Of the text of an object, valid JSON, which must outlive the messages. Never fails: what is missing or of a
    /// wrong kind is absent. A list of triggers is taken whole or not at all.
    static InAppTriggerAPIResponse generate(std::string_view answer);
};

}  // namespace vantix

#pragma once

#include "Platform/Values/Export.h"
#include "Platform/Values/Value.h"
#include "VantixCore/VantixEvents.h"
#include "VantixInAppMessage/Core/InAppMessagePayload/InAppMessageTypes.h"

#include <optional>
#include <string>
#include <vector>

namespace vantix {

/// One call to action.
struct VANTIX_EXPORT InAppCTA {
    std::optional<std::string> actionText;
    std::string action;
    std::string type;

    bool operator==(const InAppCTA&) const = default;

    /// An absent list gives an empty one and one error line.
    static std::vector<InAppCTA> generate(const std::optional<std::vector<Dictionary>>& dictionaries);
    static List getJSON(const std::vector<InAppCTA>& ctas);
    /// All fields in order, absent ones as null, for log lines.
    Dictionary description() const;
    /// The same for the core library.
    CTA generateCTA() const;
};

/// The options of a feedback message.
struct VANTIX_EXPORT InAppFeedback {
    InAppFeedbackSelectionType selectionType = InAppFeedbackSelectionType::singleSelection;
    std::vector<std::string> options;

    bool operator==(const InAppFeedback&) const = default;

    static InAppFeedback generate(const Dictionary& dictionary);
    Dictionary getJSON() const;
};

/// What a message shows.
struct VANTIX_EXPORT InAppBody {
    /// The JSON text that this body was parsed from; the store keeps it.
    std::string textRepresentation;
    VantixInAppNotificationType type = VantixInAppNotificationType::badge;
    std::string title;
    std::string message;
    /// The text of an image's URL.
    std::string image;
    std::vector<InAppCTA> ctas;
    InAppFeedback feedback;

    bool operator==(const InAppBody&) const = default;

    /// Never fails: a text that is no JSON object gives the empty body and one error line. Every call to action it
    /// keeps has a text, if an empty one.
    static InAppBody generate(const std::string& text);
    Dictionary getJSON() const;
    /// Whether it is shown as a strip at an edge of the screen.
    bool isBanner() const;
    /// All fields in order, for log lines.
    Dictionary description() const;
};

}  // namespace vantix

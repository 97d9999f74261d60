#pragma once

#include "Platform/Values/JSON.h"
#include "Platform/Values/Value.h"
#include "VantixInAppMessage/Core/InAppMessagePayload/VantixInAppMessagePayload.h"

#include <string>

namespace vantix {

inline Value callToAction(const std::string& type, const std::string& action, const std::string& text = "Go") {
    return Dictionary{{"type", type}, {"action", action}, {"actionText", text}};
}

/// A campaign as a test describes it: a message that is shown at once, unless the test says otherwise.
struct Campaign {
    std::string scope = "a";
    std::string event = "INSTANT";
    std::string type = "POPUP";
    std::string message = "Hello";
    std::string image = {};
    List ctas = {callToAction("EXTERNAL", "https://a.example")};
    Dictionary attributes = {};
    Dictionary style = {{"ctas", List{Dictionary()}}};
    List feedbackOptions = {};
    std::string cuid = "customer";

    Dictionary push() const {
        Dictionary body{{"type", type},   {"title", "Title"}, {"message", message},
                        {"image", image}, {"ctas", ctas},     {"feedbackOptions", feedback()}};
        return {{"cuid", cuid},
                {"scope", scope},
                {"senderId", "sender"},
                {"messageId", "id-" + scope},
                {"trigger", toJSON(Dictionary{{"eventName", event}, {"attributes", attributes}})},
                {"body", toJSON(body)},
                {"template", toJSON(style)}};
    }

    VantixInAppMessagePayload payload() const { return VantixInAppMessagePayload::generate(push()); }

private:
    Dictionary feedback() const { return {{"selectionType", "multiSelection"}, {"options", feedbackOptions}}; }
};

}  // namespace vantix

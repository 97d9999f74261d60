#pragma once

#include "Platform/Values/JSON.h"
#include "Platform/Values/Value.h"
#include "VantixInAppMessage/Core/InAppMessagePayload/VantixInAppMessagePayload.h"

#include <memory>
#include <string>

namespace vantix {

/// A campaign as a test describes it: a message that is shown at once, unless the test says otherwise.
struct Campaign {
    std::string scope = "a";
    std::string event = "INSTANT";
    std::string type = "POPUP";
    std::string message = "Hello";
    std::string image = {};
    Dictionary attributes = {};
    Dictionary style = {{"ctas", List{Dictionary()}}};
    List feedbackOptions = {};
    std::string cuid = "customer";
    std::string title = "Title";
    std::vector<std::string> buttons = {"Go"};

    Dictionary push() const {
        List ctas;
        for (const std::string& button : buttons) {
            ctas.push_back(Dictionary{{"type", "EXTERNAL"}, {"action", "https://a.example"}, {"actionText", button}});
        }
        Dictionary feedback{{"selectionType", "multiSelection"}, {"options", feedbackOptions}};
        Dictionary body{{"type", type},   {"title", title}, {"message", message},
                        {"image", image}, {"ctas", ctas},   {"feedbackOptions", feedback}};
        return {{"cuid", cuid},
                {"scope", scope},
                {"senderId", "sender"},
                {"messageId", "id-" + scope},
                {"trigger", toJSON(Dictionary{{"eventName", event}, {"attributes", attributes}})},
                {"body", toJSON(body)},
                {"template", toJSON(style)}};
    }

    VantixInAppMessagePayload payload() const { return VantixInAppMessagePayload::generate(push()); }
    SharedPayload shared() const { return std::make_shared<const VantixInAppMessagePayload>(payload()); }
};

}  // namespace vantix

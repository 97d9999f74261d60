#pragma once

#include "DeclarativeUI/AccessibleElement.h"
#include "DeclarativeUI/DisplayList.h"
#include "Platform/Ports/Application.h"
#include "VantixInAppMessage/Core/InAppMessagePayload/VantixInAppMessagePayload.h"

#include <cstddef>
#include <optional>
#include <vector>

namespace vantix {

/// What a device draws of a message before anyone has touched it, and once it is answered: the module's own templates,
/// laid out with the platform's fonts. Nothing is fetched, a placeholder stands for the image. Main thread only.
class Picture {
public:
    /// One state of the message.
    struct State {
        DisplayList items = {};
        std::vector<AccessibleElement> elements = {};
        /// How far it must be scrolled to its end, in points.
        double scrollRange = 0;

        /// What is painted at a point before the item at `end`, none of it see-through; absent where the application
        /// is seen.
        std::optional<Color> background(Point point, std::size_t end, std::optional<Color> window) const;
    };

    Picture(const VantixInAppMessagePayload& message, const SceneTraits& traits);

    const State& untouched() const { return untouched_; }
    /// With the last star and the first option chosen.
    const State& answered() const { return answered_; }
    /// Behind the card.
    const std::optional<Color>& window() const { return window_; }
    const SceneTraits& traits() const { return traits_; }

    /// Whether the same device draws something else for the other message.
    bool differsFor(const VantixInAppMessagePayload& other) const;

private:
    SceneTraits traits_;
    std::optional<Color> window_;
    State untouched_;
    State answered_;
};

}  // namespace vantix

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
/// laid out with the platform's fonts. What must be scrolled is drawn whole, on a screen that is higher by as much.
/// Nothing is fetched, a placeholder stands for the image. Main thread only.
class Picture {
public:
    /// One state of the message.
    struct State {
        DisplayList items = {};
        std::vector<AccessibleElement> elements = {};

        /// Null when nothing draws it.
        const AccessibleElement* element(const ElementIdentity& identity) const;
        /// Whether the message itself paints anything at a point before the item at `end`.
        bool isPainted(Point point, std::size_t end) const;
        /// The colour at a point before the item at `end`, where this one lies behind the message.
        Color background(Point point, std::size_t end, Color behind) const;
    };

    Picture(const VantixInAppMessagePayload& message, const SceneTraits& traits);

    const State& untouched() const { return untouched_; }
    /// With the last star and the first option chosen.
    const State& answered() const { return answered_; }
    bool isEmpty() const { return untouched_.items.empty(); }
    /// How many buttons can be seen.
    std::size_t drawnButtons() const;
    /// How far it must be scrolled to its end on the device, in points.
    double scrollRange() const { return scrollRange_; }
    /// What is seen behind the card where the application is of this colour.
    Color window(Color application) const;
    /// Pixels per point.
    double scale() const { return traits_.scale; }

    /// Whether the same device draws something else for the other message.
    bool differsFor(const VantixInAppMessagePayload& other) const;

private:
    /// Of a screen on which nothing is scrolled.
    SceneTraits traits_;
    std::optional<Color> windowColor_;
    double scrollRange_ = 0;
    State untouched_;
    State answered_;
};

}  // namespace vantix

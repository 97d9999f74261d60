#pragma once

#include "DeclarativeUI/Elements/SymbolImage.h"
#include "DeclarativeUI/State.h"
#include "DeclarativeUI/View.h"

#include <optional>

namespace vantix {

/// A row of stars; a tap on one selects it and all before it. Each star stands in the middle of a frame that a finger
/// can hit, narrower only where the row has no room.
struct StarRatingsView {
    /// The width and height of a star's frame, at least.
    static constexpr double touchSize = 44;

    Binding<int> rating;
    /// Below 1 is a programming error and stops the process.
    int maximumRating = 5;
    /// Absent: the picture of a selected star.
    std::optional<Image> offImage = {};
    Image onImage = systemSymbol("star.fill");
    /// Absent: gray.
    std::optional<Color> offColor = {};
    /// Absent: yellow.
    std::optional<Color> onColor = {};

    View body() const;

private:
    View star(int number) const;
    View picture(int number) const;
    void adjust(int steps) const;
    Image image(int number) const;
};

}  // namespace vantix

#pragma once

#include "DeclarativeUI/Elements/SymbolImage.h"
#include "DeclarativeUI/State.h"
#include "DeclarativeUI/View.h"

#include <optional>

namespace vantix {

/// A row of stars; a tap on one selects it and all before it.
struct StarRatingsView {
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
    Image image(int number) const;
};

}  // namespace vantix

#pragma once

#include "VantixInAppMessage/templates/CloseButton.h"
#include "VantixInAppMessage/templates/MessageBlocks.h"

#include <functional>
#include <vector>

namespace vantix {

/// A card that floats over the application, centred in the safe area, with a close control at its top-right corner;
/// scrolls when it is taller.
struct PopupCard {
    static constexpr double closeRowPadding = 5;

    ViewModel viewModel;
    double cornerRadius = 0;
    /// Between the close control and the trailing edge of its row.
    double trailingPaddingCloseButton = 0;
    /// From the top down.
    std::vector<View> rows;
    /// Without it a tap on the card does nothing.
    std::function<void()> onTap = {};

    View body() const;

    /// How far the target of the close control reaches into the card from its trailing edge.
    static constexpr double closeTargetReach(double trailingPaddingCloseButton) {
        return CloseButton::touchSize + trailingPaddingCloseButton + closeRowPadding - standardPadding;
    }

private:
    View card() const;
    View closeControl() const;
};

}  // namespace vantix

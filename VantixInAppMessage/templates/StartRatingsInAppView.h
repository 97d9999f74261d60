#pragma once

#include "DeclarativeUI/State.h"
#include "VantixInAppMessage/templates/MessageBlocks.h"

namespace vantix {

/// A card that asks for a number of stars: title, stars, and one button for each call to action.
class StartRatingsInAppView {
public:
    static constexpr double trailingPaddingCloseButton = 5;
    /// Of the cards that show an image; this one shows none.
    static constexpr double imageCornerRadius = 10;
    static constexpr double buttonCornerRadius = 5;
    static constexpr double popupCornerRadius = 5;

    explicit StartRatingsInAppView(ViewModel inAppMessageViewModel) : viewModel_(std::move(inAppMessageViewModel)) {}

    View body() const;

private:
    View stars() const;
    std::vector<View> buttons() const;

    ViewModel viewModel_;
    /// 0 until a star is tapped.
    State<int> rating_{0};
};

}  // namespace vantix

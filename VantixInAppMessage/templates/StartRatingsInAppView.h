#pragma once

#include "DeclarativeUI/State.h"
#include "VantixInAppMessage/templates/MessageBlocks.h"

namespace vantix {

/// A card that asks for a number of stars: title, stars, and one button for each call to action.
class StartRatingsInAppView {
public:
    explicit StartRatingsInAppView(ViewModel inAppMessageViewModel) : viewModel_(std::move(inAppMessageViewModel)) {}

    View body() const;

private:
    ViewModel viewModel_;
    double buttonCornerRadius_ = 5;
    double popupCornerRadius_ = 5;
    /// 0 until a star is tapped.
    State<int> rating_{0};
};

}  // namespace vantix

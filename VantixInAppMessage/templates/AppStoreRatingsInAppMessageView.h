#pragma once

#include "VantixInAppMessage/templates/MessageBlocks.h"

namespace vantix {

/// A card that asks for a review in the store: title, and one button for each call to action.
class AppStoreRatingsInAppMessageView {
public:
    /// Of the cards that show an image; this one shows none.
    static constexpr double imageCornerRadius = 10;
    static constexpr double buttonCornerRadius = 5;
    static constexpr double popupCornerRadius = 5;

    explicit AppStoreRatingsInAppMessageView(ViewModel inAppMessageViewModel)
        : viewModel_(std::move(inAppMessageViewModel)) {}

    View body() const;

private:
    std::vector<View> buttons() const;

    ViewModel viewModel_;
};

}  // namespace vantix

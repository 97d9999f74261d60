#pragma once

#include "VantixInAppMessage/templates/MessageBlocks.h"

namespace vantix {

/// A card that asks for a review in the store: title, and one button for each call to action.
class AppStoreRatingsInAppMessageView {
public:
    explicit AppStoreRatingsInAppMessageView(ViewModel inAppMessageViewModel)
        : viewModel_(std::move(inAppMessageViewModel)) {}

    View body() const;

private:
    ViewModel viewModel_;
    double buttonCornerRadius_ = 5;
    double popupCornerRadius_ = 5;
};

}  // namespace vantix

#pragma once

#include "VantixInAppMessage/templates/MessageBlocks.h"

namespace vantix {

/// A card floating over the application: title, image, message and button, each when there is one.
class PopupInAppMessageView {
public:
    explicit PopupInAppMessageView(ViewModel inAppMessageViewModel) : viewModel_(std::move(inAppMessageViewModel)) {}

    View body() const;

private:
    void handleButtonAction() const;
    View messageBlock() const;
    View primaryButton() const;

    ViewModel viewModel_;
    double imageCornerRadius_ = 10;
    double buttonCornerRadius_ = 5;
    double popupCornerRadius_ = 5;
};

}  // namespace vantix

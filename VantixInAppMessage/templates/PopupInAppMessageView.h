#pragma once

#include "VantixInAppMessage/templates/MessageBlocks.h"

namespace vantix {

/// A card floating over the application: title, image, message and button, each when there is one.
class PopupInAppMessageView {
public:
    static constexpr double trailingPaddingCloseButton = 5;
    static constexpr double imageCornerRadius = 10;
    static constexpr double buttonCornerRadius = 5;
    static constexpr double popupCornerRadius = 5;

    explicit PopupInAppMessageView(ViewModel inAppMessageViewModel) : viewModel_(std::move(inAppMessageViewModel)) {}

    View body() const;

private:
    void handleButtonAction() const;
    View image() const;
    View message() const;
    View primaryButton() const;

    ViewModel viewModel_;
};

}  // namespace vantix

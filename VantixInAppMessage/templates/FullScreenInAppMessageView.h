#pragma once

#include "VantixInAppMessage/templates/MessageBlocks.h"

namespace vantix {

/// The whole screen, under the status bar and the home indicator: a close row, then title, image, message and button,
/// each when there is one.
class FullScreenInAppMessageView {
public:
    static constexpr double imageCornerRadius = 10;
    static constexpr double buttonCornerRadius = 5;

    explicit FullScreenInAppMessageView(ViewModel inAppMessageViewModel)
        : viewModel_(std::move(inAppMessageViewModel)) {}

    View body() const;

private:
    View content() const;
    View closeControl() const;
    View title() const;
    View image() const;
    View message() const;
    View primaryButton() const;

    ViewModel viewModel_;
};

}  // namespace vantix

#pragma once

#include "VantixInAppMessage/templates/MessageBlocks.h"

namespace vantix {

/// The whole screen, under the status bar and the home indicator: a close row, then title, image, message and button,
/// each when there is one.
class FullScreenInAppMessageView {
public:
    explicit FullScreenInAppMessageView(ViewModel inAppMessageViewModel)
        : viewModel_(std::move(inAppMessageViewModel)) {}

    View body() const;

private:
    View closeBlock() const;
    View content() const;
    View textBlock(const View& text) const;
    View primaryButton() const;

    ViewModel viewModel_;
    double imageCornerRadius_ = 10;
    double buttonCornerRadius_ = 5;
};

}  // namespace vantix

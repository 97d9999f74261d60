#pragma once

#include "VantixInAppMessage/templates/MessageBlocks.h"

#include <optional>
#include <string>
#include <vector>

namespace vantix {

/// What banners at the top and at the bottom of the screen share: a card with a row of a thumbnail and texts, a button
/// under it, and a close control over its top-right corner. Everything outside the card belongs to the application
/// below.
class BannerInAppView {
public:
    static constexpr double closeButtonPadding = 5;
    static constexpr double buttonCornerRadius = 5;
    static constexpr double imageCornerRadius = 5;
    static constexpr double layoutCornerRadius = 8;
    static constexpr double deafultPadding = 8;
    /// At least; a button is higher where its text is.
    static constexpr double primaryCtaButtonHeight = 40;
    static constexpr double imageViewSize = 60;
    /// Keeps texts from running under the cross of the close control.
    static constexpr double contentRowTrailingPadding = 29;
    /// At least: the target of the close control ends above the button.
    static constexpr double contentRowHeight = 33;

    explicit BannerInAppView(ViewModel inAppMessageViewModel) : viewModel_(std::move(inAppMessageViewModel)) {}

protected:
    /// The card whose row holds these parts.
    View card(std::vector<View> parts) const;
    View thumbnail() const;
    View texts() const;

private:
    View contentRow(std::vector<View> parts) const;
    View text(const std::string& text, std::optional<Color> color, const Font& font, std::optional<Color> background,
              Role role) const;
    View primaryButton() const;
    View closeControl() const;

    ViewModel viewModel_;
};

}  // namespace vantix

#pragma once

#include "VantixInAppMessage/templates/MessageBlocks.h"

namespace vantix {

/// Which parts of its content row a banner shows.
enum class BannerContent { everything, imageOnly, messageOnly };

/// The card that banners at the top and at the bottom of the screen share: a thumbnail with title and message beside
/// it, a button under them, a close control over the top-right corner. Everything outside the card belongs to the
/// application below.
class BannerCard {
public:
    BannerCard(ViewModel viewModel, BannerContent content) : viewModel_(std::move(viewModel)), content_(content) {}

    View body() const;

private:
    View contentRow() const;
    std::string spokenTexts() const;
    View thumbnail() const;
    View texts() const;
    View text(const std::string& text, std::optional<Color> color, const Font& font, std::optional<Color> background,
              Role role) const;
    View primaryButton() const;
    View closeControl() const;

    ViewModel viewModel_;
    BannerContent content_;
    double closeButtonPadding_ = 5;
    double buttonCornerRadius_ = 5;
    double imageCornerRadius_ = 5;
    double layoutCornerRadius_ = 8;
    double deafultPadding_ = 8;
    double primaryCtaButtonHeight_ = 40;
    double imageViewSize_ = 60;
    /// Only texts that stand alone keep clear of the close control.
    double spacingBetweenMessageAndCloseButton_ = 5;
};

}  // namespace vantix

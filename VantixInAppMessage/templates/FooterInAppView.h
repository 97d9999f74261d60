#pragma once

#include "DeclarativeUI/State.h"
#include "VantixInAppMessage/templates/BannerCard.h"

namespace vantix {

/// A card that rests on the bottom edge of the screen. It is measured in its first layout, at the top, and pushed down
/// in the second.
class FooterInAppView {
public:
    explicit FooterInAppView(ViewModel inAppMessageViewModel)
        : FooterInAppView(std::move(inAppMessageViewModel), BannerContent::everything) {}

    View body() const;

protected:
    FooterInAppView(ViewModel viewModel, BannerContent content) : card_(std::move(viewModel), content) {}

private:
    View spacer(double availableHeight) const;

    BannerCard card_;
    /// The card's size with its outer padding.
    State<Size> contentSize_;
};

/// The footer restricted to its image.
class FooterImageInAppView final : public FooterInAppView {
public:
    explicit FooterImageInAppView(ViewModel viewModel)
        : FooterInAppView(std::move(viewModel), BannerContent::imageOnly) {}
};

/// The footer restricted to its texts.
class FooterMessageInAppView final : public FooterInAppView {
public:
    explicit FooterMessageInAppView(ViewModel viewModel)
        : FooterInAppView(std::move(viewModel), BannerContent::messageOnly) {}
};

}  // namespace vantix

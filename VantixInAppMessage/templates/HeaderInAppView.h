#pragma once

#include "VantixInAppMessage/templates/BannerCard.h"

namespace vantix {

/// A card at the top of the screen.
class HeaderInAppView {
public:
    explicit HeaderInAppView(ViewModel inAppMessageViewModel)
        : HeaderInAppView(std::move(inAppMessageViewModel), BannerContent::everything) {}

    View body() const;

protected:
    HeaderInAppView(ViewModel viewModel, BannerContent content) : card_(std::move(viewModel), content) {}

private:
    BannerCard card_;
};

/// The header restricted to its image.
class HeaderImageInAppView final : public HeaderInAppView {
public:
    explicit HeaderImageInAppView(ViewModel viewModel)
        : HeaderInAppView(std::move(viewModel), BannerContent::imageOnly) {}
};

/// The header restricted to its texts.
class HeaderMessageInAppView final : public HeaderInAppView {
public:
    explicit HeaderMessageInAppView(ViewModel viewModel)
        : HeaderInAppView(std::move(viewModel), BannerContent::messageOnly) {}
};

}  // namespace vantix

#pragma once

#include "VantixInAppMessage/templates/BannerInAppView.h"

namespace vantix {

/// A card at the top of the screen.
class HeaderInAppView final : public BannerInAppView {
public:
    using BannerInAppView::BannerInAppView;

    View body() const;
};

/// The header restricted to its image.
class HeaderImageInAppView final : public BannerInAppView {
public:
    using BannerInAppView::BannerInAppView;

    View body() const;
};

/// The header restricted to its texts, which keep clear of the close control.
class HeaderMessageInAppView final : public BannerInAppView {
public:
    static constexpr double spacingBetweenMessageAndCloseButton = 5;

    using BannerInAppView::BannerInAppView;

    View body() const;
};

}  // namespace vantix

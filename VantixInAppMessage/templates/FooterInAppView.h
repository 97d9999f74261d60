#pragma once

#include "DeclarativeUI/State.h"
#include "VantixInAppMessage/templates/BannerInAppView.h"

namespace vantix {

/// A card that rests on the bottom edge of the screen. It is measured in its first layout, at the top, and pushed down
/// in the second.
class FooterInAppView final : public BannerInAppView {
public:
    using BannerInAppView::BannerInAppView;

    View body() const;

private:
    /// The card's size with its outer padding; nothing until it is measured.
    State<Size> contentSize_;
};

/// The footer restricted to its image.
class FooterImageInAppView final : public BannerInAppView {
public:
    using BannerInAppView::BannerInAppView;

    View body() const;

private:
    State<Size> contentSize_;
};

/// The footer restricted to its texts, which keep clear of the close control.
class FooterMessageInAppView final : public BannerInAppView {
public:
    static constexpr double spacingBetweenMessageAndCloseButton = 5;

    using BannerInAppView::BannerInAppView;

    View body() const;

private:
    State<Size> contentSize_;
};

}  // namespace vantix

#include "VantixInAppMessage/templates/BannerInAppView.h"

#include "DeclarativeUI/Elements/Button.h"
#include "DeclarativeUI/Elements/Stacks.h"
#include "DeclarativeUI/Elements/Text.h"
#include "VantixInAppMessage/templates/CloseButton.h"

namespace vantix {

View BannerInAppView::card(std::vector<View> parts) const {
    View content = VStack({contentRow(std::move(parts)), primaryButton()}).padding(Edge::vertical, deafultPadding);
    return ZStack(Alignment::top(), {content, closeControl()})
        .background(viewModel_->layoutBackgroundColor())
        .cornerRadius(layoutCornerRadius)
        .element(Role::card);
}

View BannerInAppView::contentRow(std::vector<View> parts) const {
    return HStack(VerticalAlignment::top, std::move(parts))
        .padding(Edge::leading)
        .padding(Edge::trailing, contentRowTrailingPadding)
        .frame({.minHeight = contentRowHeight, .maxWidth = infinity})
        .actsOnTap(actsOnTap(viewModel_))
        .element(Role::row)
        .onTapGesture([viewModel = viewModel_] { viewModel->handlePrimaryCTAAction(); });
}

View BannerInAppView::thumbnail() const {
    if (!viewModel_->hasImage()) return {};
    return VantixImageView{.url = viewModel_->getImageURL(),
                           .delegate = viewModel_,
                           .actsOnTap = actsOnTap(viewModel_),
                           .cornerRadius = imageCornerRadius}
        .body()
        .frame({.width = imageViewSize, .height = imageViewSize});
}

View BannerInAppView::texts() const {
    constexpr double spacing = 2;
    return VStack(HorizontalAlignment::leading, spacing,
                  {text(viewModel_->getTitle(), viewModel_->titleTextColor(), viewModel_->titleFont(),
                        viewModel_->titleBackgroundColor(), Role::title),
                   text(viewModel_->getMessage(), viewModel_->messageTextColor(), viewModel_->messageFont(),
                        viewModel_->messageBackgroundColor(), Role::message)});
}

View BannerInAppView::text(const std::string& text, std::optional<Color> color, const Font& font,
                           std::optional<Color> background, Role role) const {
    if (text.empty()) return {};
    constexpr double trailingPadding = 2;
    return Text(text)
        .foregroundColor(color)
        .font(font)
        .padding(Edge::trailing, trailingPadding)
        .frame({.maxWidth = infinity, .alignment = Alignment::leading()})
        .background(background)
        .element(role);
}

View BannerInAppView::primaryButton() const {
    if (!viewModel_->hasPrimaryCTA()) return {};
    constexpr double aboveAndBelow = 8;
    View label =
        Text(viewModel_->getPrimaryCTAButtonTitle()).padding(Edge::horizontal).padding(Edge::vertical, aboveAndBelow);
    return Button([viewModel = viewModel_] { viewModel->handlePrimaryCTAAction(); }, label)
        .foregroundColor(viewModel_->ctaTextColor())
        .font(viewModel_->ctaFont())
        .frame({.minHeight = primaryCtaButtonHeight, .maxWidth = infinity})
        .background(viewModel_->ctaBackgroundColor())
        .cornerRadius(buttonCornerRadius)
        .padding(Edge::horizontal);
}

View BannerInAppView::closeControl() const {
    return closeRow(CloseButton(VantixCloseButtonType::close, viewModel_).body())
        .padding(Edge::top | Edge::trailing, closeButtonPadding);
}

}  // namespace vantix

#include "VantixInAppMessage/templates/BannerCard.h"

namespace vantix {

View BannerCard::body() const {
    return ZStack(Alignment::top(),
                  {VStack({contentRow(), primaryButton()}).padding(Edge::vertical, deafultPadding_), closeControl()})
        .background(viewModel_->layoutBackgroundColor())
        .cornerRadius(layoutCornerRadius_)
        .element(Role::card);
}

View BannerCard::contentRow() const {
    return HStack(VerticalAlignment::top, {thumbnail(), texts()})
        .padding(Edge::horizontal)
        .frame({.maxWidth = infinity})
        .spokenText(spokenTexts() + ", button")
        .element(Role::row)
        .onTapGesture([viewModel = viewModel_] { viewModel->handlePrimaryCTAAction(); });
}

std::string BannerCard::spokenTexts() const {
    if (!viewModel_->hasTitle()) return viewModel_->getMessage();
    return viewModel_->getTitle() + ", " + viewModel_->getMessage();
}

View BannerCard::thumbnail() const {
    if (!viewModel_->hasImage() || content_ == BannerContent::messageOnly) return {};
    return VantixImageView{.url = viewModel_->getImageURL(), .delegate = viewModel_, .cornerRadius = imageCornerRadius_}
        .body()
        .frame({.width = imageViewSize_, .height = imageViewSize_});
}

View BannerCard::texts() const {
    if (content_ == BannerContent::imageOnly) return {};
    constexpr double spacing = 2;
    constexpr double closeTarget = 44;
    double besideCloseControl =
        content_ == BannerContent::messageOnly ? closeTarget + spacingBetweenMessageAndCloseButton_ : 0;
    return VStack(HorizontalAlignment::leading, spacing,
                  {text(viewModel_->getTitle(), viewModel_->titleTextColor(), viewModel_->titleFont(),
                        viewModel_->titleBackgroundColor(), Role::title),
                   text(viewModel_->getMessage(), viewModel_->messageTextColor(), viewModel_->messageFont(),
                        viewModel_->messageBackgroundColor(), Role::message)})
        .padding(Edge::trailing, besideCloseControl);
}

View BannerCard::text(const std::string& text, std::optional<Color> color, const Font& font,
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

View BannerCard::primaryButton() const {
    if (!viewModel_->hasPrimaryCTA()) return {};
    return Button([viewModel = viewModel_] { viewModel->handlePrimaryCTAAction(); },
                  Text(viewModel_->getPrimaryCTAButtonTitle()).padding(Edge::horizontal))
        .foregroundColor(viewModel_->ctaTextColor())
        .font(viewModel_->ctaFont())
        .frame({.minHeight = primaryCtaButtonHeight_, .maxWidth = infinity})
        .background(viewModel_->ctaBackgroundColor())
        .cornerRadius(buttonCornerRadius_)
        .padding(Edge::horizontal);
}

View BannerCard::closeControl() const {
    return closeRow(CloseButton(VantixCloseButtonType::close, viewModel_).body())
        .padding(Edge::top | Edge::trailing, closeButtonPadding_);
}

}  // namespace vantix

#include "VantixInAppMessage/templates/PopupInAppMessageView.h"

#include "DeclarativeUI/Elements/Button.h"
#include "DeclarativeUI/Elements/Text.h"
#include "VantixInAppMessage/templates/PopupCard.h"

namespace vantix {

View PopupInAppMessageView::body() const {
    return PopupCard{.viewModel = viewModel_,
                     .cornerRadius = popupCornerRadius,
                     .trailingPaddingCloseButton = trailingPaddingCloseButton,
                     .rows = {titleBlock(viewModel_), image(), message(), primaryButton()},
                     .onTap = [self = *this] { self.handleButtonAction(); }}
        .body();
}

void PopupInAppMessageView::handleButtonAction() const { viewModel_->handlePrimaryCTAAction(); }

View PopupInAppMessageView::image() const {
    if (!viewModel_->hasImage()) return {};
    return imageBlock({.url = viewModel_->getImageURL(),
                       .delegate = viewModel_,
                       .actsOnTap = actsOnTap(viewModel_),
                       .cornerRadius = imageCornerRadius});
}

View PopupInAppMessageView::message() const {
    if (!viewModel_->hasMessage()) return {};
    return centredText(viewModel_->getMessage(), viewModel_->messageTextColor(), viewModel_->messageFont(),
                       viewModel_->messageBackgroundColor())
        .element(Role::message)
        .padding(Edge::top);
}

View PopupInAppMessageView::primaryButton() const {
    if (!viewModel_->hasPrimaryCTA()) return {};
    return Button([self = *this] { self.handleButtonAction(); }, Text(viewModel_->getPrimaryCTAButtonTitle()).padding())
        .foregroundColor(viewModel_->ctaTextColor())
        .font(viewModel_->ctaFont())
        .cornerRadius(buttonCornerRadius)
        .frame({.maxWidth = infinity})
        .background(viewModel_->ctaBackgroundColor())
        .padding(Edge::top);
}

}  // namespace vantix

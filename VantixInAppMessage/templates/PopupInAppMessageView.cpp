#include "VantixInAppMessage/templates/PopupInAppMessageView.h"

namespace vantix {

View PopupInAppMessageView::body() const {
    return popupCard(
        viewModel_, popupCornerRadius_,
        [self = *this] {
            return std::vector{
                titleBlock(self.viewModel_),
                imageBlock(self.viewModel_, self.imageCornerRadius_),
                self.messageBlock(),
                self.primaryButton(),
            };
        },
        [self = *this] { self.handleButtonAction(); });
}

void PopupInAppMessageView::handleButtonAction() const { viewModel_->handlePrimaryCTAAction(); }

View PopupInAppMessageView::messageBlock() const {
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
        .cornerRadius(buttonCornerRadius_)
        .frame({.maxWidth = infinity})
        .background(viewModel_->ctaBackgroundColor())
        .padding(Edge::top);
}

}  // namespace vantix

#include "VantixInAppMessage/templates/InAppMessageView.h"

#include "DeclarativeUI/Elements/Stacks.h"
#include "Platform/Values/UTF8.h"
#include "VantixInAppMessage/templates/AppStoreRatingsInAppMessageView.h"
#include "VantixInAppMessage/templates/FeedbackInAppMessageView.h"
#include "VantixInAppMessage/templates/FooterInAppView.h"
#include "VantixInAppMessage/templates/FullScreenInAppMessageView.h"
#include "VantixInAppMessage/templates/HeaderInAppView.h"
#include "VantixInAppMessage/templates/MessageLanguage.h"
#include "VantixInAppMessage/templates/PopupInAppMessageView.h"
#include "VantixInAppMessage/templates/StartRatingsInAppView.h"

namespace vantix {

namespace {

/// The body of a template that is made once and kept.
template <typename Template>
std::function<View()> bodyOf(const ViewModel& viewModel) {
    return [kept = std::make_shared<Template>(viewModel)] { return kept->body(); };
}

/// All that the message says, in the order of reading.
std::string textsOf(const InAppBody& message) {
    std::string texts = message.title + '\n' + message.message;
    for (const InAppCTA& cta : message.ctas) texts += '\n' + cta.actionText.value_or("");
    for (const std::string& option : message.feedback.options) texts += '\n' + option;
    return texts;
}

std::function<View()> nothing() {
    return [] { return View(); };
}

std::function<View()> templateFor(const ViewModel& viewModel) {
    switch (viewModel->inAppMessage().body.type) {
        case VantixInAppNotificationType::badge:
            return [] { return VStack({}); };
        case VantixInAppNotificationType::popup:
            return bodyOf<PopupInAppMessageView>(viewModel);
        case VantixInAppNotificationType::fullScreen:
            return bodyOf<FullScreenInAppMessageView>(viewModel);
        case VantixInAppNotificationType::header:
            return viewModel->hasMessage() ? bodyOf<HeaderInAppView>(viewModel) : nothing();
        case VantixInAppNotificationType::footer:
            return viewModel->hasMessage() ? bodyOf<FooterInAppView>(viewModel) : nothing();
        case VantixInAppNotificationType::rating:
            return bodyOf<StartRatingsInAppView>(viewModel);
        case VantixInAppNotificationType::feedback:
            return bodyOf<FeedbackInAppMessageView>(viewModel);
        case VantixInAppNotificationType::appRating:
            return bodyOf<AppStoreRatingsInAppMessageView>(viewModel);
    }
    return nothing();
}

}  // namespace

InAppMessageView::InAppMessageView(SharedPayload inAppMessage, std::shared_ptr<InAppMessageActions> displayManager)
    : viewModel_(std::make_shared<InAppMessageViewModel>(std::move(inAppMessage), std::move(displayManager))),
      template_(templateFor(viewModel_)),
      layoutDirection_(strongDirection(textsOf(viewModel_->inAppMessage().body))),
      language_(messageLanguage(textsOf(viewModel_->inAppMessage().body))) {}

View InAppMessageView::body() const {
    View root = VStack(HorizontalAlignment::leading, {template_()})
                    .standsOn(viewModel_->inAppMessage().style.phoneBackgroundColor)
                    .language(language_);
    return layoutDirection_ ? root.layoutDirection(*layoutDirection_) : root;
}

}  // namespace vantix

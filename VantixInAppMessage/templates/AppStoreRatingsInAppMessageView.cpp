#include "VantixInAppMessage/templates/AppStoreRatingsInAppMessageView.h"

#include "VantixInAppMessage/templates/CTAButtons.h"
#include "VantixInAppMessage/templates/PopupCard.h"
#include "VantixInAppMessage/templates/PopupInAppMessageView.h"

namespace vantix {

View AppStoreRatingsInAppMessageView::body() const {
    std::vector rows{titleBlock(viewModel_)};
    for (View& button : buttons()) rows.push_back(std::move(button));
    return PopupCard{.viewModel = viewModel_,
                     .cornerRadius = popupCornerRadius,
                     .trailingPaddingCloseButton = PopupInAppMessageView::trailingPaddingCloseButton,
                     .rows = std::move(rows)}
        .body();
}

std::vector<View> AppStoreRatingsInAppMessageView::buttons() const {
    return ctaButtons(viewModel_, buttonCornerRadius, [viewModel = viewModel_](const InAppCTA& cta) {
        viewModel->handleCTAAction(cta, {}, {}, {}, {});
    });
}

}  // namespace vantix

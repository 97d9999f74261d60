#include "VantixInAppMessage/templates/AppStoreRatingsInAppMessageView.h"

namespace vantix {

View AppStoreRatingsInAppMessageView::body() const {
    return popupCard(viewModel_, popupCornerRadius_, [self = *this] {
        auto submit = [viewModel = self.viewModel_](const InAppCTA& cta) {
            viewModel->handleCTAAction(cta, {}, {}, {}, {});
        };
        std::vector rows{titleBlock(self.viewModel_)};
        for (View& button : ctaButtons(self.viewModel_, self.buttonCornerRadius_, submit)) rows.push_back(button);
        return rows;
    });
}

}  // namespace vantix

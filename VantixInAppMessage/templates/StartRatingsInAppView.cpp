#include "VantixInAppMessage/templates/StartRatingsInAppView.h"

#include "VantixInAppMessage/templates/StarRatingsView.h"

namespace vantix {

View StartRatingsInAppView::body() const {
    return popupCard(viewModel_, popupCornerRadius_, [self = *this] {
        auto submit = [viewModel = self.viewModel_, rating = self.rating_](const InAppCTA& cta) {
            viewModel->handleCTAAction(cta, rating.get(), {}, {}, {});
        };
        StarRatingsView stars{.rating = self.rating_,
                              .offColor = self.viewModel_->starNotSelectedColor(),
                              .onColor = self.viewModel_->starSelectedColor()};
        std::vector rows{titleBlock(self.viewModel_), stars.body()};
        for (View& button : ctaButtons(self.viewModel_, self.buttonCornerRadius_, submit)) rows.push_back(button);
        return rows;
    });
}

}  // namespace vantix

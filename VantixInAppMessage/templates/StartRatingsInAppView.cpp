#include "VantixInAppMessage/templates/StartRatingsInAppView.h"

#include "VantixInAppMessage/templates/CTAButtons.h"
#include "VantixInAppMessage/templates/PopupCard.h"
#include "VantixInAppMessage/templates/StarRatingsView.h"

namespace vantix {

View StartRatingsInAppView::body() const {
    std::vector rows{titleBlock(viewModel_), stars()};
    for (View& button : buttons()) rows.push_back(std::move(button));
    return PopupCard{.viewModel = viewModel_,
                     .cornerRadius = popupCornerRadius,
                     .trailingPaddingCloseButton = trailingPaddingCloseButton,
                     .rows = std::move(rows)}
        .body();
}

/// The stars keep clear of the close control, however large they are: below the title, or else beside it.
View StartRatingsInAppView::stars() const {
    StarRatingsView row{
        .rating = rating_, .offColor = viewModel_->starNotSelectedColor(), .onColor = viewModel_->starSelectedColor()};
    if (viewModel_->hasTitle()) return row.body().padding(Edge::horizontal);
    return row.body()
        .padding(Edge::horizontal, PopupCard::closeTargetReach(trailingPaddingCloseButton))
        .padding(Edge::top);
}

std::vector<View> StartRatingsInAppView::buttons() const {
    return ctaButtons(viewModel_, buttonCornerRadius, [viewModel = viewModel_, rating = rating_](const InAppCTA& cta) {
        viewModel->handleCTAAction(cta, rating.get(), {}, {}, {});
    });
}

}  // namespace vantix

#include "VantixInAppMessage/templates/HeaderInAppView.h"

#include "DeclarativeUI/Elements/ScrollView.h"
#include "VantixInAppMessage/templates/CloseButton.h"

namespace vantix {

namespace {

View atTheTop(const View& card) {
    return ScrollView(card.padding()).ignoresSafeArea(Edge::bottom).passesTouchesOutsideCard();
}

}  // namespace

View HeaderInAppView::body() const { return atTheTop(card({thumbnail(), texts()})); }

View HeaderImageInAppView::body() const { return atTheTop(card({thumbnail()})); }

View HeaderMessageInAppView::body() const {
    return atTheTop(
        card({texts().padding(Edge::trailing, CloseButton::touchSize + spacingBetweenMessageAndCloseButton)}));
}

}  // namespace vantix

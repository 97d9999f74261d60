#include "VantixInAppMessage/templates/HeaderInAppView.h"

namespace vantix {

View HeaderInAppView::body() const {
    return GeometryReader([card = card_](const GeometryProxy&) {
               return ScrollView(card.body().padding()).ignoresSafeArea(Edge::bottom);
           })
        .passesTouchesOutsideCard();
}

}  // namespace vantix

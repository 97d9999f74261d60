#include "VantixInAppMessage/templates/FooterInAppView.h"

namespace vantix {

View FooterInAppView::body() const {
    return GeometryReader([self = *this](const GeometryProxy& area) {
               constexpr double noSpacing = 0;
               double availableHeight = area.size.height - standardPadding;
               auto measure = [contentSize = self.contentSize_](Size size) { contentSize.set(size); };
               return ScrollView(
                          VStack(HorizontalAlignment::center, noSpacing,
                                 {self.spacer(availableHeight), self.card_.body().padding().onLayout("card", measure)}))
                   .padding(Edge::top);
           })
        .passesTouchesOutsideCard();
}

View FooterInAppView::spacer(double availableHeight) const {
    double height = availableHeight - contentSize_.get().height;
    if (contentSize_.get().height == 0 || height <= 0) return {};
    return ColorRectangle(Color::clear()).frame({.height = height});
}

}  // namespace vantix

#include "VantixInAppMessage/templates/FooterInAppView.h"

#include "DeclarativeUI/Elements/GeometryReader.h"
#include "DeclarativeUI/Elements/ScrollView.h"
#include "DeclarativeUI/Elements/Shapes.h"
#include "DeclarativeUI/Elements/Stacks.h"
#include "VantixInAppMessage/templates/CloseButton.h"

namespace vantix {

namespace {

/// What pushes a card that has been measured down to the bottom.
View spacer(double availableHeight, Size contentSize) {
    double height = availableHeight - contentSize.height;
    if (contentSize.height == 0 || height <= 0) return {};
    return ColorRectangle(Color::clear()).frame({.height = height});
}

View atTheBottom(const View& card, const State<Size>& contentSize) {
    return GeometryReader([card, contentSize](const GeometryProxy& area) {
               constexpr double noSpacing = 0;
               auto measure = [contentSize](Size size) { contentSize.set(size); };
               return ScrollView(VStack(HorizontalAlignment::center, noSpacing,
                                        {spacer(area.size.height - standardPadding, contentSize.get()),
                                         card.padding().onLayout("card", measure)}))
                   .padding(Edge::top);
           })
        .passesTouchesOutsideCard();
}

}  // namespace

View FooterInAppView::body() const { return atTheBottom(card({thumbnail(), texts()}), contentSize_); }

View FooterImageInAppView::body() const { return atTheBottom(card({thumbnail()}), contentSize_); }

View FooterMessageInAppView::body() const {
    View message = texts().padding(Edge::trailing, CloseButton::touchSize + spacingBetweenMessageAndCloseButton);
    return atTheBottom(card({message}), contentSize_);
}

}  // namespace vantix

#include "VantixInAppMessage/templates/PopupCard.h"

#include "DeclarativeUI/Elements/GeometryReader.h"
#include "DeclarativeUI/Elements/ScrollView.h"
#include "DeclarativeUI/Elements/Stacks.h"
#include "VantixInAppMessage/templates/CloseButton.h"

namespace vantix {

View PopupCard::body() const {
    View cardWithCloseControl = card().padding().overlay(Alignment::topTrailing(), closeControl());
    return GeometryReader([cardWithCloseControl](const GeometryProxy& area) {
        return ScrollView(cardWithCloseControl.frame({.width = area.size.width, .minHeight = area.size.height}))
            .frame({.width = area.size.width, .height = area.size.height});
    });
}

View PopupCard::card() const {
    View painted = VStack(rows)
                       .frame({.maxWidth = infinity})
                       .background(viewModel->layoutBackgroundColor())
                       .cornerRadius(cornerRadius);
    View card = dialog(painted, viewModel);
    return onTap ? card.onTapGesture(onTap) : card;
}

View PopupCard::closeControl() const {
    return closeRow(CloseButton(VantixCloseButtonType::close, viewModel)
                        .body()
                        .padding(Edge::trailing, trailingPaddingCloseButton))
        .padding(Edge::trailing | Edge::top, closeRowPadding);
}

}  // namespace vantix

#include "VantixInAppMessage/templates/FullScreenInAppMessageView.h"

#include "DeclarativeUI/Elements/GeometryReader.h"
#include "DeclarativeUI/Elements/ScrollView.h"
#include "DeclarativeUI/Elements/Stacks.h"
#include "Platform/Ports/Application.h"
#include "Platform/Ports/Platform.h"
#include "VantixInAppMessage/templates/CTAButtons.h"
#include "VantixInAppMessage/templates/CloseButton.h"

namespace vantix {

View FullScreenInAppMessageView::body() const {
    return GeometryReader([content = content(), viewModel = viewModel_](const GeometryProxy& area) {
        View painted = content.padding(area.safeArea)
                           .frame({.width = area.windowSize().width,
                                   .minHeight = area.windowSize().height,
                                   .alignment = Alignment::top()})
                           .background(viewModel->layoutBackgroundColor());
        return ScrollView(dialog(painted, viewModel).onTapGesture([viewModel] { viewModel->handlePrimaryCTAAction(); }))
            .ignoresSafeArea(Edge::all);
    });
}

View FullScreenInAppMessageView::content() const {
    return VStack({closeControl(), VStack({title(), image(), message(), primaryButton()})}).padding(Edge::top);
}

View FullScreenInAppMessageView::closeControl() const {
    return closeRow(CloseButton(VantixCloseButtonType::closeFilled, viewModel_).body().padding(Edge::top));
}

View FullScreenInAppMessageView::title() const {
    if (!viewModel_->hasTitle()) return {};
    return centredText(viewModel_->getTitle(), viewModel_->titleTextColor(), viewModel_->titleFont(),
                       viewModel_->titleBackgroundColor())
        .element(Role::title)
        .padding(Edge::horizontal)
        .padding(Edge::top);
}

View FullScreenInAppMessageView::image() const {
    if (!viewModel_->hasImage()) return {};
    Image icon = Platform::current()->application->icon();
    return imageBlock({.url = viewModel_->getImageURL(),
                       .placeholder = icon.isNull() ? std::nullopt : std::optional(icon),
                       .delegate = viewModel_,
                       .actsOnTap = actsOnTap(viewModel_),
                       .cornerRadius = imageCornerRadius});
}

/// The message stands on the title's background.
View FullScreenInAppMessageView::message() const {
    if (!viewModel_->hasMessage()) return {};
    return centredText(viewModel_->getMessage(), viewModel_->messageTextColor(), viewModel_->messageFont(),
                       viewModel_->titleBackgroundColor())
        .element(Role::message)
        .padding(Edge::horizontal)
        .padding(Edge::top);
}

View FullScreenInAppMessageView::primaryButton() const {
    if (!viewModel_->hasPrimaryCTA()) return {};
    return compactButton(viewModel_->getPrimaryCTAButtonTitle(), viewModel_->ctaTextColor(), viewModel_->ctaFont(),
                         viewModel_->ctaBackgroundColor(), buttonCornerRadius,
                         [viewModel = viewModel_] { viewModel->handlePrimaryCTAAction(); });
}

}  // namespace vantix

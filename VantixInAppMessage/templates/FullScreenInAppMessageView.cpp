#include "VantixInAppMessage/templates/FullScreenInAppMessageView.h"

#include "Platform/Ports/Application.h"
#include "Platform/Ports/Platform.h"

namespace vantix {

View FullScreenInAppMessageView::body() const {
    return GeometryReader([self = *this](const GeometryProxy& area) {
        auto handlePrimaryCTAAction = [viewModel = self.viewModel_] { viewModel->handlePrimaryCTAAction(); };
        return ScrollView(VStack({self.closeBlock(), self.content()})
                              .padding(Edge::top)
                              .padding(area.safeArea)
                              .frame({.width = area.windowSize().width,
                                      .minHeight = area.windowSize().height,
                                      .alignment = Alignment::top()})
                              .background(self.viewModel_->layoutBackgroundColor())
                              .element(Role::card)
                              .onTapGesture(handlePrimaryCTAAction))
            .ignoresSafeArea(Edge::all);
    });
}

View FullScreenInAppMessageView::closeBlock() const {
    return closeRow(CloseButton(VantixCloseButtonType::closeFilled, viewModel_).body().padding(Edge::top));
}

View FullScreenInAppMessageView::content() const {
    View title = viewModel_->hasTitle() ? centredText(viewModel_->getTitle(), viewModel_->titleTextColor(),
                                                      viewModel_->titleFont(), viewModel_->titleBackgroundColor())
                                              .element(Role::title)
                                        : View();
    // The message stands on the title's background.
    View message = viewModel_->hasMessage() ? centredText(viewModel_->getMessage(), viewModel_->messageTextColor(),
                                                          viewModel_->messageFont(), viewModel_->titleBackgroundColor())
                                                  .element(Role::message)
                                            : View();
    Image icon = Platform::current()->application->icon();
    auto placeholder = icon.isNull() ? std::nullopt : std::optional(icon);
    return VStack({
        textBlock(title),
        imageBlock(viewModel_, imageCornerRadius_, placeholder),
        textBlock(message),
        primaryButton(),
    });
}

View FullScreenInAppMessageView::textBlock(const View& text) const {
    return text.padding(Edge::horizontal).padding(Edge::top);
}

View FullScreenInAppMessageView::primaryButton() const {
    if (!viewModel_->hasPrimaryCTA()) return {};
    return compactButton(viewModel_->getPrimaryCTAButtonTitle(), viewModel_->ctaTextColor(), viewModel_->ctaFont(),
                         viewModel_->ctaBackgroundColor(), buttonCornerRadius_,
                         [viewModel = viewModel_] { viewModel->handlePrimaryCTAAction(); });
}

}  // namespace vantix

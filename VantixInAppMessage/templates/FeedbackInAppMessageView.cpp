#include "VantixInAppMessage/templates/FeedbackInAppMessageView.h"

#include "DeclarativeUI/Elements/Shapes.h"
#include "DeclarativeUI/Elements/Stacks.h"
#include "DeclarativeUI/Elements/SymbolImage.h"
#include "DeclarativeUI/Elements/Text.h"
#include "VantixInAppMessage/templates/CTAButtons.h"
#include "VantixInAppMessage/templates/DrawnRows.h"
#include "VantixInAppMessage/templates/PopupCard.h"
#include "VantixInAppMessage/templates/PopupInAppMessageView.h"

namespace vantix {

namespace {

View radioMark(bool isSelected) {
    View inside = FilledCircle(isSelected ? Color::systemBlue() : Color::white());
    View centre = isSelected ? FilledCircle(Color::white()).frame({.width = 8, .height = 8}) : View();
    return ZStack(Alignment::center(), {inside, StrokedCircle(Color::gray()), centre})
        .frame({.width = 20, .height = 20})
        .element(Role::mark);
}

View checkMark(bool isSelected) {
    return SymbolImage(isSelected ? "checkmark.square.fill" : "square")
        .foregroundColor(isSelected ? Color::systemBlue() : Color::secondary())
        .element(Role::mark);
}

}  // namespace

View FeedbackInAppMessageView::body() const {
    return PopupCard{.viewModel = viewModel_,
                     .cornerRadius = popupCornerRadius,
                     .trailingPaddingCloseButton = PopupInAppMessageView::trailingPaddingCloseButton,
                     .rows = {image(), titleRow(), message(), optionList(), buttons()}}
        .body();
}

/// Takes no taps: touching the picture must not throw a choice away.
View FeedbackInAppMessageView::image() const {
    if (!viewModel_->hasImage()) return {};
    return imageBlock({.url = viewModel_->getImageURL(), .cornerRadius = imageCornerRadius});
}

View FeedbackInAppMessageView::titleRow() const {
    if (!viewModel_->hasTitle()) return {};
    return HStack({Text(viewModel_->getTitle())})
        .multilineTextAlignment(TextAlignment::center)
        .frame({.maxWidth = infinity})
        .background(viewModel_->titleBackgroundColor())
        .element(Role::title)
        .padding(Edge::top);
}

View FeedbackInAppMessageView::message() const {
    if (!viewModel_->hasMessage()) return {};
    return Text(viewModel_->getMessage())
        .foregroundColor(viewModel_->messageTextColor())
        .font(viewModel_->messageFont())
        .multilineTextAlignment(TextAlignment::center)
        .frame({.maxWidth = infinity})
        .padding(Edge::horizontal)
        .background(viewModel_->messageBackgroundColor())
        .element(Role::message)
        .padding(Edge::top);
}

View FeedbackInAppMessageView::optionList() const {
    if (!viewModel_->feedbackOptionsAvailable()) return {};
    bool single = viewModel_->feedbackSelectionType() == InAppFeedbackSelectionType::singleSelection;
    constexpr double listCornerRadius = 10;
    return VStack({single ? singleSelectionFeedbackView() : multipleSelectionFeedbackView()})
        .background(Color::white())
        .cornerRadius(listCornerRadius)
        .padding(Edge::horizontal)
        .padding(Edge::top);
}

View FeedbackInAppMessageView::singleSelectionFeedbackView() const { return options(ButtonType::radio, radioMark); }

View FeedbackInAppMessageView::multipleSelectionFeedbackView() const {
    return options(ButtonType::checkMark, checkMark);
}

View FeedbackInAppMessageView::options(ButtonType type, View (*mark)(bool)) const {
    ButtonGroup<std::string> group{
        .multiSelection = selectionFeedbackOptions_,
        .singleSelection = selectedFeedback_,
        .orientation = Orientation::vertical,
        .tags = drawnRows(viewModel_->feedbackOptions()),
        .type = type,
        .button = [mark](const std::string&, bool isSelected) { return mark(isSelected); },
        .label = [](const std::string& option) { return Text(option); },
    };
    return group.body();
}

View FeedbackInAppMessageView::buttons() const {
    auto submit = [viewModel = viewModel_, single = selectedFeedback_, several = selectionFeedbackOptions_](
                      const InAppCTA& cta) { viewModel->handleCTAAction(cta, {}, {}, single.get(), several.get()); };
    return VStack(ctaButtons(viewModel_, buttonCornerRadius, submit)).padding(Edge::bottom);
}

}  // namespace vantix
